// How an exact result becomes an int16: what core reads from a scale mode and factor, and the loops carry out.
#pragma once

namespace vek {

// Each is a loop of its own; the places to the right are an argument of the last two.
enum Fit {
    fitWraps,        // the low 16 bits
    fitSaturates,    // the nearest int16
    fitRightWraps,   // after a shift to the right, of results of 32 bits by 1 ... 16 places
    fitRight,        // after one by 1 ... 32 places, saturated; from 17 places on every shifted result fits
    fitCount
};

// One way in full. A shift to the left goes over the results that `fit` has left, as they are 16 bits: what wraps or
// saturates does so once more, with the same bits as if the exact result had been shifted.
struct Scaling {
    Fit fit;
    int right = 0;   // places
    int left = 0;    // 0 ... 16 places, with fitWraps and fitSaturates
};

// Results times 2^-factor, rounded down; any factor. Exact results are of `bits` bits beside the sign: once shifted by
// so many places only the sign is left, and some 16 places earlier every result fits, wrapped or saturated. After 16
// places to the left no bit of 16 is left, and what is not zero has saturated.
static constexpr Scaling scalingBy(int factor, bool saturates, int bits = 32) {
    if (factor > 0) return {saturates || factor > bits - 16 ? fitRight : fitRightWraps, factor < bits ? factor : bits};
    return {saturates ? fitSaturates : fitWraps, 0, factor < -16 ? 16 : -factor};
}

}   // namespace vek
