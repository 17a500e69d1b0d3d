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

}   // namespace vek::core
