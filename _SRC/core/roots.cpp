#include "roots.h"

#include <cmath>

namespace vek::core {

Root unitRoot(std::uint64_t k, std::uint64_t n) {
    const std::uint64_t octant = 8 * k / n;
    // Distance to the nearer multiple of a quarter circle, in units of 1/(8 n) of the circle: at most n.
    const std::uint64_t position = 8 * k - octant * n;
    const std::uint64_t distance = (octant & 1) != 0 ? n - position : position;
    constexpr double twoPi = 6.283185307179586;
    const double angle = twoPi * (static_cast<double>(distance) / (8.0 * static_cast<double>(n)));
    const double c = std::cos(angle);
    // sin(pi/6) is one half; the rounded angle would miss it.
    const double s = 3 * distance == 2 * n ? 0.5 : std::sin(angle);
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
