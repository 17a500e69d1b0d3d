#include "roots.h"

#include <cmath>

namespace vek::core {

Root octantRoot(std::uint64_t distance, std::uint64_t n) {
    constexpr double twoPi = 6.283185307179586;
    const double angle = twoPi * (static_cast<double>(distance) / (8.0 * static_cast<double>(n)));
    // sin(pi/6) is one half; the rounded angle would miss it.
    return {std::cos(angle), 3 * distance == 2 * n ? 0.5 : std::sin(angle)};
}

Root unitRoot(std::uint64_t k, std::uint64_t n) {
    const std::uint64_t octant = 8 * k / n;
    // Distance to the nearer multiple of a quarter circle, in units of 1/(8 n) of the circle: at most n.
    const std::uint64_t position = 8 * k - octant * n;
    const auto [c, s] = octantRoot((octant & 1) != 0 ? n - position : position, n);
    switch (octant) {
        case 0: return {c, -s};
        case 1: return {s, -c};
        case 2: return {-s, -c};
        case 3: return {-c, -s};
        case 4: return {-c, s};
        case 5: return {-s, c};
        case 6: return {s, c};
        default: return {c, s};
    }
}

}   // namespace vek::core
