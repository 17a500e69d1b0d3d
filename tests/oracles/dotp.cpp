#include "tests/support/oracle.h"

namespace test {

namespace {

// What one part of a sum is made of: products, of reals only those that there are.
struct Terms {
    std::vector<Exact> re, im;
};
Terms termsOf(Sight& call) {
    const std::vector<Number>& a = call.array("a");
    const std::vector<Number>& b = call.array("b");
    const bool complexA = call.row.arguments[0].type.isComplex();
    const bool complexB = call.row.arguments[1].type.isComplex();
    Terms terms;
    for (std::size_t i = 0; i < a.size(); ++i) {
        terms.re.push_back(a[i].re * b[i].re);
        if (complexA && complexB) terms.re.push_back(-(a[i].im * b[i].im));
        if (complexA) terms.im.push_back(a[i].im * b[i].re);
        if (complexB) terms.im.push_back(a[i].re * b[i].im);
    }
    return terms;
}

Exact sum(const std::vector<Exact>& terms) {
    Exact total = 0;
    for (const Exact term : terms) total += term;
    return total;
}

// Sums of halves down to blocks: eps/2 of all magnitudes for each addition that a term goes through.
Part sumOf(const RealType& real, const std::vector<Exact>& terms) {
    Exact magnitudes = 0;
    for (const Exact term : terms)
        if (isFinite(term)) magnitudes += magnitude(term);
    if (magnitudes >= real.largest / 2) return {Part::anything, 0};
    const Exact units = 70 + std::log2(static_cast<double>(terms.size() + 1));
    const Exact within = units * real.epsilon / 2 * magnitudes + static_cast<double>(terms.size()) * real.smallest;
    Part part = {Part::near, sum(terms), within};
    if (part.value == 0) part.others = {-part.value};
    return part;
}

// By the highest bit of the larger magnitude, where one does not fit.
Exact automaticFactor(Number exact, Exact limit) {
    const auto fits = [limit](Exact value) { return value >= -limit && value < limit; };
    if (fits(exact.re) && fits(exact.im)) return 0;
    const Exact larger = std::max(magnitude(exact.re), magnitude(exact.im));
    int factor = 1;
    while (larger >= 2 * limit * static_cast<Exact>(std::ldexp(1.0, factor - 1))) ++factor;
    return factor;
}

// Of quotients by powers of two, which lose no bit.
Exact floorOf(Exact value) {
    const Exact whole = static_cast<long long>(value);
    return whole > value ? whole - 1 : whole;
}

void scaledDot(Sight& call) {
    const Terms terms = termsOf(call);
    const Number exact = {sum(terms.re), sum(terms.im)};
    const int mode = call.number("scaleMode");
    const int bits = call.row.function.operation == "DotProd" ? 16 : 32;
    const Exact limit = std::ldexp(1.0, bits - 1);
    const Exact given = call.array("scaleFactor")[0].re;
    Exact factor = 0;
    if ((mode == 2 || mode == 3) && !call.isNull("scaleFactor"))
        factor = std::max<Exact>(std::min<Exact>(given, 63), 1 - bits);
    if (mode == 4) factor = automaticFactor(exact, limit);
    const auto part = [&](Exact value) -> Exact {
        Exact moved = value * static_cast<Exact>(std::ldexp(1.0, static_cast<int>(-factor)));
        if (factor > 0) moved = floorOf(moved);
        if (mode == 1 || mode == 3) return std::max(-limit, std::min(limit - 1, moved));
        return moved - 2 * limit * floorOf((moved + limit) / (2 * limit));
    };
    call.wanted[""].elements = {exactly({part(exact.re), part(exact.im)})};
    call.wanted["scaleFactor"].elements = {exactly({mode == 4 ? factor : given})};
}

}   // namespace

VEK_ORACLES(dotp) {
    whole("DotProd", "s c d z sc cs dz zd", [](Sight& call) {
        const Terms terms = termsOf(call);
        call.wanted[""].elements = {{sumOf(call.real, terms.re), sumOf(call.real, terms.im)}};
    });
    whole("DotProd DotProdExt", "w v wv vw", scaledDot);
}

}   // namespace test
