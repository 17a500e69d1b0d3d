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

}   // namespace vek
