#include <complex>

#include "tests/support/oracle.h"

namespace test {

namespace {

// ---- Squares and roots ----------------------------------------------------------------------------------------------

Expected square(const Element& e) {
    if (e.call.row.function.letters == "s" || e.call.row.function.letters == "d") return e.x.re * e.x.re;
    const Exact cross = e.real.rounded(e.x.re * e.x.im);
    return Number{e.real.rounded(e.x.re - e.x.im) * e.real.rounded(e.x.re + e.x.im), cross + cross};
}

Expected realRoot(const Element& e) {
    if (e.x.re < 0) return exactly(e.former);   // left out
    return squareRoot(e.x.re);
}

// Of epsilon, for each part: roundings on the way, half an epsilon each: of the squared modulus three, halved by its
// root; then the root, the sum, the outer root, the quotient.
constexpr double rootUnits = 1.75;

Expected complexRoot(const Element& e) {
    if (!isFinite(e.x)) {   // as the C library does, which leaves one sign open
        const std::complex<double> root =
            std::sqrt(std::complex<double>(static_cast<double>(e.x.re), static_cast<double>(e.x.im)));
        Part im = Exact{root.imag()};
        if (e.x.im != e.x.im) im.others = {-im.value};
        return {Exact{root.real()}, im};
    }
    const Exact t = squareRoot((magnitude(e.x.re) + modulus(e.x)) / 2);
    const Exact other = t == 0 ? 0 : magnitude(e.x.im) / (2 * t);
    const auto part = [&](Exact value) {
        return Part{Part::near, value, rootUnits * e.real.epsilon * magnitude(value) + 2 * e.real.smallest};
    };
    const bool left = e.x.re < 0;
    return {part(left ? other : t), part(withSign(left ? t : other, e.x.im))};
}

// ---- Thresholds of reals: bits --------------------------------------------------------------------------------------

// As sign and magnitude: -0 below +0, NaNs beyond the infinities. Exact keeps a NaN's sign.
bool isBelow(Exact a, Exact b) {
    if (isNegative(a) != isNegative(b)) return isNegative(a);
    const Exact& nearer = isNegative(a) ? b : a;
    const Exact& farther = isNegative(a) ? a : b;
    if (farther != farther) return nearer == nearer;
    return magnitude(nearer) < magnitude(farther);
}

Expected threshold(const Element& e) {
    const bool replaced = e.call.number("relOp") == VEK_LT ? isBelow(e.x.re, e.y.re) : isBelow(e.y.re, e.x.re);
    return exactly(replaced ? e.y : e.x);
}

constexpr Exact inverseOfZero = std::numeric_limits<float>::max();

Expected inverse(const Element& e) {
    const Exact x = e.x.re;
    const Exact thresh = e.y.re;
    if (thresh == 0 && x == 0) return inverseOfZero;
    if (thresh == 0 || x > thresh || -x > thresh) return 1 / x;
    const Exact limited = 1 / thresh;
    return x < 0 ? -limited : limited;
}

// ---- Thresholds of complex elements ---------------------------------------------------------------------------------

// A number whose modulus is `factor` of that of x, with a few roundings of the whole; twice as many where x lies so
// close to the threshold that it may count as either.
constexpr double thresholdUnits = 2;
Expected scaled(const Element& e, Number x, Exact factor, bool open) {
    const Exact within = (open ? 2.5 : 1) * thresholdUnits * e.real.epsilon * modulus(x) * factor + 2 * e.real.smallest;
    const auto part = [&](Exact value) { return Part{Part::near, value, within}; };
    return {part(x.re == 0 ? x.re : x.re * factor), part(x.im == 0 ? x.im : x.im * factor)};
}

bool isNan(Number a) { return a.re != a.re || a.im != a.im; }

// Where a part is infinite, the corner or side of the unit square that lies in that direction.
Number direction(Number x) {
    if (isFinite(x)) return x;
    const auto part = [](Exact of) { return withSign(isFinite(of) ? 0 : 1, of); };
    return {part(x.re), part(x.im)};
}

bool nearThreshold(const Element& e, Exact size) {
    return isFinite(size) && isFinite(e.y.re) && magnitude(size - e.y.re) <= 4 * e.real.epsilon * e.y.re;
}

Expected complexThreshold(const Element& e) {
    if (isNan(e.x)) return isFinite(e.x.re) || isFinite(e.x.im) ? Expected(e.x) : anything();
    const Exact size = isFinite(e.x) ? modulus(e.x) : magnitude(e.x.re) + magnitude(e.x.im);
    const Exact thresh = magnitude(e.y.re);
    const bool replaced = e.call.number("relOp") == VEK_LT ? size < thresh : size > thresh;
    const bool open = nearThreshold(e, size);
    if (!replaced && !open) return exactly(e.x);
    if (size == 0) return replaced ? Expected(Number{thresh, 0}) : exactly(e.x);
    const Number x = direction(e.x);
    return scaled(e, x, thresh / modulus(x), open);
}

Expected complexInverse(const Element& e) {
    if (isNan(e.x)) return anything();
    const Exact thresh = e.y.re;
    const Exact size = isFinite(e.x) ? modulus(e.x) : magnitude(e.x.re) + magnitude(e.x.im);
    if (size == 0 && thresh == 0) return Number{inverseOfZero, 0};
    if (size == 0) return {Part{Part::near, 1 / thresh, 2 * e.real.smallest}, Part{}};
    if (!isFinite(size) && isFinite(thresh)) return Number{withSign(0, e.x.re), withSign(0, -e.x.im)};
    const Number x = direction(e.x);
    const Exact factor = 1 / modulus(x) / (size > thresh ? size : thresh);
    return scaled(e, conj(x), factor, nearThreshold(e, size));
}

}   // namespace

VEK_ORACLES(vec) {
    each("bSqr1 bSqr2", "s d c z", square);
    each("bAbs1 bAbs2", "s d", [](const Element& e) { return exactly({withSign(e.x.re, 1), 0}); });
    each("bSqrt1 bSqrt2", "s d", realRoot);
    each("bSqrt1 bSqrt2", "c z", complexRoot);
    each("bThresh1 bThresh2", "s d", threshold);
    each("bThresh1 bThresh2", "c z", complexThreshold);
    each("bInvThresh1 bInvThresh2", "s d", inverse);
    each("bInvThresh1 bInvThresh2", "c z", complexInverse);
}

}   // namespace test
