// Scale modes and factors of operations with int16 results, as the scaling that their loops carry out.
#pragma once

#include "call.h"
#include "common/scaling.h"

namespace vek::core {

// Automatic scaling has to put the factor somewhere; fixed scaling without one is by factor 0.
inline bool lacksFactor(int mode, const int* factor) { return mode == VEK_AUTO_SCALE && factor == nullptr; }

// Modes are told apart by their whole value: all that are not listed scale by the given factor and wrap. places() is
// the least shift that makes all results fit, of `bits` bits beside the sign.
template <class Places>
VEK_STEPS Scaling scalingOf(int mode, int* factor, Places places, int bits = 32) {
    if (mode == VEK_NO_SCALE) return {fitWraps};
    if (mode == VEK_SATURATE) return {fitSaturates};
    if (mode != VEK_AUTO_SCALE)
        return scalingBy(factor == nullptr ? 0 : *factor, mode == (VEK_FIXED_SCALE | VEK_SATURATE), bits);
    *factor = places();
    return scalingBy(*factor, false, bits);   // all fit, so that to wrap is enough
}

}   // namespace vek::core
