// Roots of unity, accurate to about the last bit, at any length.
#pragma once

#include <cstdint>

namespace vek::core {

struct Root {
    double re;
    double im;
};

// exp(-2 pi i k / n) for 0 <= k < n. The angle is reduced in integers to an eighth of the circle, where sine and
// cosine of the rounded angle stay within one and a quarter units in the last place; multiples of a twelfth are exact.
Root unitRoot(std::uint64_t k, std::uint64_t n);

// exp(2 pi i distance / (8 n)), distance at most n: what unitRoot puts together.
Root octantRoot(std::uint64_t distance, std::uint64_t n);

// put(k, unitRoot(k, n)) for all k, in no order. Where the circle comes apart into octants, eight entries share a sine
// and a cosine.
template <class Put>
void forUnitRoots(std::uint64_t n, Put put) {
    if (n % 8 != 0) {
        for (std::uint64_t k = 0; k < n; ++k) put(k, unitRoot(k, n));
        return;
    }
    const std::uint64_t quarter = n / 4;
    for (std::uint64_t k = 0; k <= n / 8; ++k) {
        // Where two octants meet, the one that unitRoot takes is put last.
        const auto [c, s] = octantRoot(8 * k, n);
        put(k, {c, -s});
        put(quarter - k, {s, -c});
        put(quarter + k, {-s, -c});
        put(2 * quarter - k, {-c, -s});
        put(2 * quarter + k, {-c, s});
        put(3 * quarter - k, {-s, c});
        put(3 * quarter + k, {s, c});
        if (k > 0) put(n - k, {c, s});
    }
}

}   // namespace vek::core
