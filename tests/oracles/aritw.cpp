#include "scaled.h"

namespace test {

namespace {

// Exact results of the operands' elements, a scalar's beside all of the others'.
void eachScaled(const std::string& operations, Number (*compute)(Number x, Number y)) {
    whole(operations, "w v", [compute](Sight& call) {
        const std::vector<Number>& x = call.array(call.operands[0].c_str());
        const std::vector<Number>& y = call.array(call.operands[1].c_str());
        std::vector<Number> exact;
        for (std::size_t i = 0; i < x.size(); ++i) exact.push_back(compute(x[i], y[y.size() == 1 ? 0 : i]));
        scaled(call, exact);
    });
}

// The nearest integer, the even one of two.
Exact nearest(Exact dividend, Exact divisor) {
    const auto a = static_cast<long long>(dividend);
    const auto b = static_cast<long long>(divisor);
    long long quotient = a / b - 1;   // from below
    while (2 * (a - quotient * b) > b || (2 * (a - quotient * b) == b && quotient % 2 != 0)) ++quotient;
    return static_cast<Exact>(quotient);
}

Number shortConj(Number x) { return {x.re, saturatedToShort(-x.im)}; }

}   // namespace

VEK_ORACLES(aritw) {
    each("bZero", "w v", [](const Element&) { return exactly({}); });
    each("bSet bCopy", "w v", [](const Element& e) { return exactly(e.x); });
    eachScaled("bAdd1 bAdd2 bAdd3 Add", [](Number x, Number y) { return x + y; });
    eachScaled("bSub1 bSub2 bSub3 Sub", [](Number x, Number y) { return x - y; });
    eachScaled("bMpy1 bMpy2 bMpy3 Mpy", [](Number x, Number y) {
        return Number{x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
    });
    each("bConj1 bConj2 Conj", "v", [](const Element& e) { return exactly(shortConj(e.x)); });
    each("Set", "v", [](const Element& e) { return exactly({e.x.re, e.y.re}); });
    each("Div", "v", [](const Element& e) {
        const Exact square = e.y.re * e.y.re + e.y.im * e.y.im;
        return exactly({saturatedToShort(nearest(e.x.re * e.y.re + e.x.im * e.y.im, square)),
                        saturatedToShort(nearest(e.x.im * e.y.re - e.x.re * e.y.im, square))});
    });
    each("bConjFlip2", "v", [](const Element& e) {
        const std::vector<Number>& src = e.call.array("src");
        return exactly(shortConj(src[src.size() - 1 - e.index]));
    });
    // Elements n ... 2n - 3 are the conjugates of n - 2 ... 1.
    whole("bConjExtend1 bConjExtend2", "v", [](Sight& call) {
        const std::vector<Number>& x = call.array(call.operands[0].c_str());
        const auto n = static_cast<std::size_t>(call.number("n"));
        for (std::size_t k = 0; k < call.array(call.results[0].c_str()).size(); ++k)
            call.wanted[call.results[0]].elements.push_back(exactly(k < n ? x[k] : shortConj(x[2 * n - 2 - k])));
    });
}

}   // namespace test
