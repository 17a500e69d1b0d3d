// int32 results of other families, brought to int16 by scale mode and factor.
#pragma once

#include "core/scaling.h"
#include "kernels/aritw.h"
#include "kernels/level/levels.h"

namespace vek {

// dst[i] is src[i] as `mode` says, whose whole value counts; n >= 1, no overlap, and a factor in mode VEK_AUTO_SCALE.
// The factor of that mode comes from the element of largest magnitude, m >= 32768: it is the place of m's highest bit
// less 14, so that -65536 is shifted by 2 though 1 would do. -32768 fits, and asks for none. Given factors shift by at
// most 31 places to the right and 15 to the left.
inline void vekbScaleIntToShort(const int32_t* src, int16_t* dst, int n, int mode, int* factor) {
    const kernels::AritwTable& loops = *kernelsNow().aritw;
    const auto count = static_cast<std::size_t>(n);
    Scaling scaling = {mode == VEK_SATURATE ? fitSaturates : fitWraps};
    if (mode == VEK_AUTO_SCALE) {
        const kernels::LeastAndMost range = loops.range(src, count);
        const bool fits = range.least >= -32768 && range.most <= 32767;
        const auto low = 0u - static_cast<unsigned>(range.least);
        const auto high = static_cast<unsigned>(range.most);
        const unsigned magnitude = range.least < 0 && (range.most < 0 || low > high) ? low : high;
        *factor = fits ? 0 : 17 - __builtin_clz(magnitude);
        scaling = scalingBy(*factor, false);   // all fit
    } else if (mode == VEK_FIXED_SCALE || mode == (VEK_FIXED_SCALE | VEK_SATURATE)) {
        const int given = factor == nullptr ? 0 : *factor;
        scaling = scalingBy(given < -15 ? -15 : given > 31 ? 31 : given, mode != VEK_FIXED_SCALE);
    }
    loops.narrow[scaling.fit](src, dst, count, scaling.right);
    if (scaling.left != 0) loops.left[scaling.fit](dst, count, scaling.left);
}

inline int16_t vekScaleIntToShort(int32_t value, int mode, int* factor) {
    int16_t scaled = 0;
    vekbScaleIntToShort(&value, &scaled, 1, mode, factor);
    return scaled;
}

// Exact sums of 64 bits as T, int16 or int32, by the same modes: the shift by which `mode` scales those of one result,
// which mode VEK_AUTO_SCALE stores; and one of them so scaled. Given factors shift by at most 63 places to the right.
template <class T>
int factorOf(int64_t a, int64_t b, int mode, int* factor) {
    constexpr int bits = 8 * sizeof(T);
    if (mode == VEK_AUTO_SCALE) {
        const auto excess = static_cast<uint64_t>((a ^ (a >> 63)) | (b ^ (b >> 63))) >> (bits - 1);
        const auto magnitude = [](int64_t x) {
            return x < 0 ? 0 - static_cast<uint64_t>(x) : static_cast<uint64_t>(x);
        };
        *factor = excess == 0 ? 0 : 65 - bits - __builtin_clzll(magnitude(a) | magnitude(b));
        return *factor;
    }
    if (factor == nullptr || (mode != VEK_FIXED_SCALE && mode != (VEK_FIXED_SCALE | VEK_SATURATE))) return 0;
    return *factor > 63 ? 63 : *factor < 1 - bits ? 1 - bits : *factor;
}

template <class T>
T scaledSum(int64_t sum, int mode, int factor) {
    constexpr int bits = 8 * sizeof(T);
    constexpr auto most = static_cast<int64_t>((uint64_t{1} << (bits - 1)) - 1);
    if (factor > 0) sum >>= factor;
    const int left = factor < 0 ? -factor : 0;
    if (mode == VEK_SATURATE || mode == (VEK_FIXED_SCALE | VEK_SATURATE)) {
        if (sum > most >> left) return static_cast<T>(most);
        if (sum < (-most - 1) >> left) return static_cast<T>(-most - 1);
    }
    return static_cast<T>(static_cast<uint64_t>(sum) << left);
}

}   // namespace vek
