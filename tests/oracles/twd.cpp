#include "tests/support/oracle.h"

namespace test {

namespace {

std::size_t length(const Element& e) { return e.call.array(e.call.results[0].c_str()).size(); }

// Computed in double, then rounded to the element; in double two roundings of an angle below pi/4, one of the result.
Expected twiddle(const Element& e) {
    const Wide wanted = root(e.index, length(e));
    const Exact within = (e.real.letter == 's' ? 0.5000001 : 1.5) * e.real.epsilon / 2;
    const auto part = [&](long double value) {
        Part made = {Part::near, value, within};
        made.others = {-made.value};
        return made;
    };
    return {part(wanted.re), part(wanted.im)};
}

// Q14, truncated toward zero. Where the true product is a whole number, 64 bits may stay just below it.
Expected shortTwiddle(const Element& e) {
    const Wide wanted = root(e.index, length(e));
    const auto part = [](long double value) -> Exact {
        const long double product = value * 16384;
        const bool isWhole = std::fabs(product - std::round(product)) < 1e-10L;
        return isWhole ? std::round(product) : std::trunc(product);
    };
    return Number{part(wanted.re), part(wanted.im)};
}

}   // namespace

VEK_ORACLES(twd) {
    each("CalcDftTwdTbl CalcFftTwdTbl", "c z", twiddle);
    each("CalcDftTwdTbl CalcFftTwdTbl", "v", shortTwiddle);
}

}   // namespace test
