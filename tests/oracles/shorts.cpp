#include "shorts.h"

namespace test {

namespace {

constexpr Exact least = -32768, most = 32767;

bool fits(long double value) { return value >= -32768 && value <= 32767; }

// The factor that brings the largest magnitude to 16 bits; -1 where the error leaves it open.
int chosenFactor(const std::vector<Wide>& values, long double error) {
    const long double margin = error > 0 ? error + 0.5L : 0;   // the rounding's
    long double largest = 0;
    bool allFit = true, sure = true;
    for (const Wide& value : values) {
        for (const long double part : {value.re, value.im}) {
            largest = std::max(largest, std::fabs(part));
            allFit = allFit && fits(part);
            sure = sure && fits(part - margin) == fits(part + margin);
        }
    }
    if (!allFit && std::ilogb(largest - margin) != std::ilogb(largest + margin)) sure = false;
    return !sure ? -1 : allFit ? 0 : std::ilogb(largest) - 14;
}

Part shortPart(long double value, long double error, int mode, int factor) {
    const bool clamps = (mode & 5) == 1;
    const long double scaled = std::floor(std::ldexp(value, -factor));
    const long double within = error > 0 ? std::ldexp(error + 0.5L, -factor) + 1 : 0;
    const Exact clamped = std::min(std::max<Exact>(scaled, least), most);
    if (within > 0) {
        const bool inside = fits(scaled - within) && fits(scaled + within);
        return clamps || inside ? Part{Part::near, clamped, within} : Part{Part::anything, 0};
    }
    if (clamps) return clamped;
    const long double wrapped = std::fmod(scaled, 65536);   // the low 16 bits
    return Exact{wrapped > 32767 ? wrapped - 65536 : wrapped < -32768 ? wrapped + 65536 : wrapped};
}

}   // namespace

void wantShorts(Sight& call, const std::string& name, const std::vector<Wide>& values, long double error) {
    const int mode = call.number("scaleMode");
    const bool chosen = (mode & 4) != 0;
    const auto given = static_cast<int>(call.array("scaleFactor")[0].re);
    const int factor = chosen ? chosenFactor(values, error) : (mode & 2) == 0 ? 0 : std::min(std::max(given, -15), 31);
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
