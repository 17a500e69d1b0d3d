#include "shorts.h"

#include "scaled.h"

namespace test {

namespace {

// The factor that brings the largest magnitude to 16 bits; -1 where the error leaves it open.
int chosenFactor(const std::vector<Wide>& values, long double error) {
    const long double margin = error > 0 ? error + 0.5L : 0;   // the rounding's
    long double largest = 0;
    bool allFit = true, sure = true;
    for (const Wide& value : values) {
        for (const long double part : {value.re, value.im}) {
            largest = std::max(largest, std::fabs(part));
            allFit = allFit && fitsShort(part);
            sure = sure && fitsShort(part - margin) == fitsShort(part + margin);
        }
    }
    if (!allFit && std::ilogb(largest - margin) != std::ilogb(largest + margin)) sure = false;
    return !sure ? -1 : allFit ? 0 : std::ilogb(largest) - 14;
}

Part shortPart(long double value, long double error, int mode, int factor) {
    const bool clamps = (mode & 5) == 1;
    if (error == 0) {
        const Exact moved = shifted(value, factor);
        return {Part::bits, clamps ? saturatedToShort(moved) : wrappedToShort(moved)};
    }
    const long double moved = std::ldexp(value, -factor);
    const long double within = std::ldexp(error + 0.5L, -factor) + 1;
    const bool inside = fitsShort(moved - within) && fitsShort(moved + within);
    return clamps || inside ? Part{Part::near, saturatedToShort(moved), within} : Part{Part::anything, 0};
}

}   // namespace

void wantShorts(Sight& call, const std::string& name, const std::vector<Wide>& values, long double error) {
    const int mode = call.number("scaleMode");
    const bool chosen = (mode & 4) != 0;
    const auto given = static_cast<int>(call.array("scaleFactor")[0].re);
    const int used = call.isNull("scaleFactor") ? 0 : std::min(std::max(given, -15), 31);
    const int factor = chosen ? chosenFactor(values, error) : (mode & 2) == 0 ? 0 : used;
    std::vector<Expected>& elements = call.wanted[name].elements;
    for (const Wide& value : values) {
        if (chosen && factor < 0)
            elements.push_back(anything());
        else
            elements.push_back({shortPart(value.re, error, mode, factor), shortPart(value.im, error, mode, factor)});
    }
    if (!chosen || factor >= 0) call.wanted["scaleFactor"].elements = {static_cast<Exact>(chosen ? factor : given)};
}

}   // namespace test
