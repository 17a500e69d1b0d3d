#include "tests/support/oracle.h"

namespace test {

namespace {

// p + q, where each product and the sum may have been rounded, or only the sum.
Part sumOfProducts(const RealType& real, Exact p, Exact q) {
    const Exact size = magnitude(p) + magnitude(q);
    if (isFinite(p) && isFinite(q)) {
        if (size > real.largest) return {Part::anything, 0};   // a product may overflow
        Part part = {Part::near, p + q, size * real.epsilon + 2 * real.smallest};
        part.others = {-(p + q)};   // a zero of the other sign
        return part;
    }
    // A factor is infinite or NaN. Either product may have overflowed before the sum.
    if (isFinite(p + q)) return {Part::anything, 0};
    Part part = p + q;
    part.others = {p + real.rounded(q), real.rounded(p) + q, real.rounded(p) + real.rounded(q)};
    return part;
}

Expected product(const Element& e) {
    if (e.call.row.function.letters == "s" || e.call.row.function.letters == "d") return e.x.re * e.y.re;
    return {sumOfProducts(e.real, e.x.re * e.y.re, -(e.x.im * e.y.im)),
            sumOfProducts(e.real, e.x.re * e.y.im, e.x.im * e.y.re)};
}

// In double, and the reciprocal of |y|^2 first, whatever becomes of it: three roundings of the denominator's kind, two
// of the numerator's, one of the product.
Expected quotient(const Element& e) {
    const RealType wide = realType('d');
    const Exact square = e.y.re * e.y.re + e.y.im * e.y.im;
    const Exact inverse = wide.rounded(1 / wide.rounded(square));
    const Exact unit = 4 * wide.epsilon + (e.real.letter == 's' ? e.real.epsilon / 2 : Exact{0});
    const auto part = [&](Exact p, Exact q) -> Part {
        const Exact size = magnitude(p) + magnitude(q);
        if (!(size <= wide.largest)) return {Part::anything, 0};
        Part sum = (p + q) * inverse;
        sum.others = {-sum.value};
        if (!isFinite(sum.value) || inverse == 0) return sum;
        sum.kind = Part::near;
        sum.error = unit * size * inverse + 2 * e.real.smallest + 2 * wide.smallest * (1 + inverse + size);
        return sum;
    };
    return {part(e.x.re * e.y.re, e.x.im * e.y.im), part(e.x.im * e.y.re, -(e.x.re * e.y.im))};
}

// Elements n ... 2n - 3 are the conjugates of n - 2 ... 1.
void extend(Sight& call) {
    const std::vector<Number>& x = call.array(call.operands[0].c_str());
    const std::vector<Number>& former = call.array(call.results[0].c_str());
    const auto n = static_cast<std::size_t>(call.number("n"));
    std::vector<Expected>& elements = call.wanted[call.results[0]].elements;
    for (std::size_t k = 0; k < former.size(); ++k) elements.push_back(exactly(k < n ? x[k] : conj(x[2 * n - 2 - k])));
}

}   // namespace

VEK_ORACLES(arith) {
    const std::string all = "s d c z";
    each("bZero", all, [](const Element&) { return exactly({}); });
    each("bSet bCopy", all, [](const Element& e) { return exactly(e.x); });
    each("bAdd1 bAdd2 bAdd3 Add", all, [](const Element& e) -> Expected { return e.x + e.y; });
    each("bSub1 bSub2 bSub3 Sub", all, [](const Element& e) -> Expected { return e.x - e.y; });
    each("bMpy1 bMpy2 bMpy3 Mpy", all, product);
    each("bConj1 bConj2 Conj", all, [](const Element& e) { return exactly(conj(e.x)); });
    each("Set", all, [](const Element& e) { return exactly({e.x.re, e.y.re}); });
    each("Div", all, quotient);
    each("bConjFlip2", all, [](const Element& e) {
        const std::vector<Number>& src = e.call.array("src");
        return exactly(conj(src[src.size() - 1 - e.index]));
    });
    whole("bConjExtend1 bConjExtend2", all, extend);
}

}   // namespace test
