// Wide integers as int16, by scale mode and factor.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "vekm6/types.h"

namespace vek::core {

// a / d to the nearest integer, ties to even; d > 0.
inline std::int64_t nearestQuotient(std::int64_t a, std::int64_t d) {
    const std::int64_t quotient = a / d;
    const std::int64_t rest = a % d < 0 ? -(a % d) : a % d;
    const bool away = 2 * rest > d || (2 * rest == d && quotient % 2 != 0);
    return quotient + (!away ? 0 : a < 0 ? -1 : 1);
}

// By the bits of the mode: with automatic scaling the factor comes from the largest magnitude as vekbScaleIntToShort
// has it; with fixed scaling it is given, null being 0; saturation clamps what does not fit, which else wraps.
inline void toShorts(const std::int64_t* values, std::size_t n, std::int16_t* dst, int mode, int* factor) {
    const bool chosen = (mode & VEK_AUTO_SCALE) != 0;
    const bool clamps = (mode & VEK_SATURATE) != 0;
    int shift = 0;
    if (chosen) {
        std::uint64_t largest = 0;
        bool fits = true;
        for (std::size_t i = 0; i < n; ++i) {
            const auto bits = static_cast<std::uint64_t>(values[i]);
            largest = std::max(largest, values[i] < 0 ? 0 - bits : bits);
            fits = fits && values[i] >= -32768 && values[i] <= 32767;
        }
        if (!fits) shift = static_cast<int>(std::bit_width(largest)) - 1 - 14;
        *factor = shift;
    } else if ((mode & VEK_FIXED_SCALE) != 0 && factor != nullptr) {
        shift = std::clamp(*factor, -15, 31);
    }
    for (std::size_t i = 0; i < n; ++i) {
        std::int64_t value = values[i];
        if (clamps && shift < 0) value = std::clamp<std::int64_t>(value, -32768, 32767);
        value = shift >= 0 ? value >> shift : static_cast<std::int64_t>(static_cast<std::uint64_t>(value) << -shift);
        if (clamps) value = std::clamp<std::int64_t>(value, -32768, 32767);
        dst[i] = static_cast<std::int16_t>(value);
    }
}

}   // namespace vek::core
