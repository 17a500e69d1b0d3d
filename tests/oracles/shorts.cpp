#include "shorts.h"

#include "scaled.h"

namespace test {

namespace {

// The factor that brings the largest magnitude to 16 bits, when all are larger by `margin`.
int chosenFactor(const std::vector<Wide>& values, long double margin) {
    long double largest = 0;
    bool fits = true;
    for (const Wide& value : values) {
        for (const long double part : {value.re, value.im}) {
            const long double grown = part < 0 ? part - margin : part + margin;
            largest = std::max(largest, std::fabs(grown));
            fits = fits && fitsShort(grown);
        }
    }
    return fits ? 0 : std::ilogb(largest) - 14;
}

Part shortPart(long double value, long double margin, bool clamps, int factor) {
    const Exact moved = margin > 0 ? Exact{std::ldexp(value, -factor)} : shifted(value, factor);
    if (margin == 0) return {Part::bits, clamps ? saturatedToShort(moved) : wrappedToShort(moved)};
    const long double within = std::ldexp(margin, -factor) + 1;
    const bool inside = fitsShort(moved - within) && fitsShort(moved + within);
    return clamps || inside ? Part{Part::near, saturatedToShort(moved), within} : Part{Part::anything, 0};
}

}   // namespace

void wantShorts(Sight& call, const std::string& name, const std::vector<Wide>& values, long double error) {
    const long double margin = error > 0 ? error + 0.5L : 0;   // the rounding's
    const int mode = call.number("scaleMode");
    const bool chosen = (mode & 4) != 0;
    const Exact given = call.array("scaleFactor")[0].re;
    int factor = 0;
    if (chosen) {
        factor = chosenFactor(values, margin);
        if (factor != chosenFactor(values, -margin)) return;   // the error leaves it open
    } else if ((mode & 2) != 0 && !call.isNull("scaleFactor")) {
        factor = std::min(std::max(static_cast<int>(given), -15), 31);
    }
    const auto part = [&](long double value) { return shortPart(value, margin, (mode & 5) == 1, factor); };
    for (const Wide& value : values) call.wanted[name].elements.push_back({part(value.re), part(value.im)});
    call.wanted["scaleFactor"].elements = {chosen ? Exact(factor) : given};
}

}   // namespace test
