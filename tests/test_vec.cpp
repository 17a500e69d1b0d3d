// Squares, square roots, absolute values and thresholds against 113-bit arithmetic and bit rules.
#include <cmath>
#include <limits>

#include "support/levels.h"
#include "support/reports.h"
#include "support/vectors.h"

namespace {

using namespace test;
using C = VekCplx;
using Z = VekDCplx;

class Vector : public AtLevel {};
VEK_AT_ALL_LEVELS(Vector);

template <class T>
using Limit = typename RealOfElement<T>::type;

// The members of one operation and type. In: (vec, len), Out: (src, dst, len), with a threshold where one is
// taken.
template <class T, class... Extra>
struct Members {
    const char *name1, *name2;
    VekStatus(VEKAPI* in)(T*, int, Extra...);
    VekStatus(VEKAPI* out)(const T*, T*, int, Extra...);
};
template <class T>
using Plain = Members<T>;
template <class T>
using Thresholds = Members<T, Limit<T>, int>;
template <class T>
using Inverses = Members<T, Limit<T>>;

#define VEK_BOTH(name) \
    { #name "1", #name "2", name##1, name##2 }
const Plain<float> sqrS = VEK_BOTH(veksbSqr), sqrtS = VEK_BOTH(veksbSqrt), absS = VEK_BOTH(veksbAbs);
const Plain<double> sqrD = VEK_BOTH(vekdbSqr), sqrtD = VEK_BOTH(vekdbSqrt), absD = VEK_BOTH(vekdbAbs);
const Plain<C> sqrC = VEK_BOTH(vekcbSqr), sqrtC = VEK_BOTH(vekcbSqrt);
const Plain<Z> sqrZ = VEK_BOTH(vekzbSqr), sqrtZ = VEK_BOTH(vekzbSqrt);
const Thresholds<float> threshS = VEK_BOTH(veksbThresh);
const Thresholds<double> threshD = VEK_BOTH(vekdbThresh);
const Thresholds<C> threshC = VEK_BOTH(vekcbThresh);
const Thresholds<Z> threshZ = VEK_BOTH(vekzbThresh);
const Inverses<float> invS = VEK_BOTH(veksbInvThresh);
const Inverses<double> invD = VEK_BOTH(vekdbInvThresh);
const Inverses<C> invC = VEK_BOTH(vekcbInvThresh);
const Inverses<Z> invZ = VEK_BOTH(vekzbInvThresh);

// Runs members 1 and 2, the latter also with dst == src, at all placements; agree(got, x, formerDst). Reports
// that come after a computation are looked at elsewhere.
template <class T, class Both, class Agree, class... Extra>
void checkAll(const Both& members, Agree agree, Extra... extra) {
    Reports reports;
    for (const Placement& at : placements()) {
        for (const int way : {0, 1, 2}) {
            vekSetErrStatus(VEK_StsOk);
            const bool inPlace = way == 0;
            checkElements<T>(
                inPlace ? members.name1 : members.name2, way == 1 ? Alias::none : Alias::first, at,
                [&](const T* src, const T*, T* dst, int n) {
                    if (inPlace)
                        members.in(dst, n, extra...);
                    else
                        members.out(src, dst, n, extra...);
                },
                [&](std::size_t i, T got, const auto& src, const auto&, const auto& former) {
                    return agree(got, src[i], former[i]);
                });
            if (testing::Test::HasFailure()) return;
        }
    }
}

template <class T>
T rounded(Exact value) {
    return static_cast<T>(value);
}

// ---- Squares and absolute values: the same bits at every level ----------------------------------

template <class T>
bool isSquare(T got, T x, T) {
    return same(got, rounded<T>(Exact{x} * x));
}
template <class T>
bool isComplexSquare(T got, T x, T) {
    using Real = Limit<T>;
    const Real difference = rounded<Real>(Exact{x.re} - x.im);
    const Real sum = rounded<Real>(Exact{x.re} + x.im);
    const Real cross = rounded<Real>(Exact{x.re} * x.im);
    return same(got.re, rounded<Real>(Exact{difference} * sum)) && same(got.im, rounded<Real>(Exact{cross} + cross));
}
template <class T>
bool isMagnitude(T got, T x, T) {
    return bitsOf(got) == static_cast<Bits<T>>(bitsOf(x) << 1) >> 1;
}

TEST_P(Vector, Squares) {
    checkAll<float>(sqrS, isSquare<float>);
    checkAll<double>(sqrD, isSquare<double>);
    checkAll<C>(sqrC, isComplexSquare<C>);
    checkAll<Z>(sqrZ, isComplexSquare<Z>);
}

TEST_P(Vector, Magnitudes) {
    checkAll<float>(absS, isMagnitude<float>);
    checkAll<double>(absD, isMagnitude<double>);
}

// ---- Square roots of reals: correctly rounded ---------------------------------------------------

// x lies between the squares of the midpoints to the root's neighbours; a midpoint has one bit more than T,
// its square twice as many, and 113 hold them.
template <class T>
bool isRoot(T got, T x, T former) {
    if (x < 0) return bitsOf(got) == bitsOf(former);
    if (x == 0) return bitsOf(got) == bitsOf(x);
    if (!isFinite(x)) return same(got, x);
    if (!isFinite(got) || got <= 0) return false;
    const Exact below = (Exact{got} + std::nextafter(got, T{0})) / 2;
    const Exact above = (Exact{got} + std::nextafter(got, std::numeric_limits<T>::infinity())) / 2;
    return below * below <= x && x <= above * above;
}

TEST_P(Vector, RealRoots) {
    checkAll<float>(sqrtS, isRoot<float>);
    checkAll<double>(sqrtD, isRoot<double>);
}

// ---- Complex: long double as the oracle ---------------------------------------------------------

struct WidePair {
    long double re, im;
};

// |error| <= units eps |expected|, for each part where `parts`, else for the whole; and what underflow drops.
template <class T>
bool close(T got, WidePair expected, bool parts, long double units) {
    using Real = Limit<T>;
    using Limits = std::numeric_limits<Real>;
    const long double eps = units * Limits::epsilon();
    const long double whole = std::hypot(expected.re, expected.im);
    const long double values[2][2] = {{got.re, expected.re}, {got.im, expected.im}};
    for (const auto& [g, e] : values) {
        const long double size = parts ? std::fabs(e) : whole;
        const bool overflows = std::fabs(e) * (1 + eps) > Limits::max();
        if (overflows && std::isinf(g) && std::signbit(g) == std::signbit(e)) continue;
        if (!(std::fabs(g - e) <= eps * size + 2 * static_cast<long double>(Limits::denorm_min()))) return false;
        if (e == 0 && parts && std::signbit(g) != std::signbit(e)) return false;
    }
    return true;
}

WidePair wideRoot(long double re, long double im) {
    const long double t = std::sqrt((std::fabs(re) + std::hypot(re, im)) / 2);
    const long double other = t == 0 ? 0 : std::fabs(im) / (2 * t);
    return {re < 0 ? other : t, std::copysign(re < 0 ? t : other, im)};
}

// Of epsilon. Roundings on the way, half an epsilon each: of the squared modulus three, halved by its root;
// then the root, the sum, the outer root, the quotient; or the root, the quotient and a product.
constexpr long double rootUnits = 1.75;
constexpr long double thresholdUnits = 2;

template <class T>
bool isComplexRoot(T got, T x, T) {
    if (!isFinite(x.re) || !isFinite(x.im)) return true;   // see the table below
    return close(got, wideRoot(x.re, x.im), true, rootUnits);
}

TEST_P(Vector, ComplexRoots) {
    checkAll<C>(sqrtC, isComplexRoot<C>);
    checkAll<Z>(sqrtZ, isComplexRoot<Z>);
}

constexpr float inf = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

struct Pairs {
    C x, expected;
};

// Places each x, one after the other, among ordinary elements, in all lanes of a vector, in both precisions.
template <class RunC, class RunZ>
void checkPairs(const std::vector<Pairs>& table, RunC runC, RunZ runZ) {
    for (const Pairs& row : table) {
        for (std::size_t lane = 0; lane < 19; ++lane) {
            std::vector<C> c(19, C{3, 4});
            std::vector<Z> z(19, Z{3, 4});
            c[lane] = row.x;
            z[lane] = {row.x.re, row.x.im};
            runC(c.data(), 19);
            runZ(z.data(), 19);
            EXPECT_TRUE(same(c[lane], row.expected)) << shown(row.x) << " became " << shown(c[lane]);
            EXPECT_TRUE(same(z[lane], Z{row.expected.re, row.expected.im}))
                << shown(row.x) << " became " << shown(z[lane]);
        }
    }
}

TEST_P(Vector, ComplexRootsOfSpecials) {
    const std::vector<Pairs> table = {
        {{0, 0}, {0, 0}},           {{-0.0f, 0}, {0, 0}},      {{0, -0.0f}, {0, -0.0f}},   {{4, 0}, {2, 0}},
        {{4, -0.0f}, {2, -0.0f}},   {{-4, 0}, {0, 2}},         {{-4, -0.0f}, {0, -2}},     {{0, 2}, {1, 1}},
        {{0, -2}, {1, -1}},         {{inf, 1}, {inf, 0}},      {{inf, -1}, {inf, -0.0f}},  {{-inf, 1}, {0, inf}},
        {{-inf, -1}, {0, -inf}},    {{1, inf}, {inf, inf}},    {{1, -inf}, {inf, -inf}},   {{nan, inf}, {inf, inf}},
        {{nan, -inf}, {inf, -inf}}, {{-inf, inf}, {inf, inf}}, {{inf, nan}, {inf, nan}},   {{nan, 1}, {nan, nan}},
        {{1, nan}, {nan, nan}},     {{nan, nan}, {nan, nan}},  {{inf, -inf}, {inf, -inf}}, {{-3, 4}, {1, 2}},
    };
    checkPairs(
        table, [](C* x, int n) { vekcbSqrt1(x, n); }, [](Z* x, int n) { vekzbSqrt1(x, n); });
}

// ---- Thresholds of reals: bits ------------------------------------------------------------------

// As sign and magnitude: -0 below +0, NaNs beyond the infinities.
template <class T>
bool isBelow(T a, T b) {
    constexpr Bits<T> sign = Bits<T>{1} << (8 * sizeof(T) - 1);
    const bool negativeA = (bitsOf(a) & sign) != 0;
    const bool negativeB = (bitsOf(b) & sign) != 0;
    if (negativeA != negativeB) return negativeA;
    return negativeA ? bitsOf(a) > bitsOf(b) : bitsOf(a) < bitsOf(b);
}

template <class T>
void checkThresholds(const Thresholds<T>& members) {
    using Limits = std::numeric_limits<T>;
    for (const T thresh : {T{0}, -T{0}, T{0.5}, T{-0.5}, Limits::denorm_min(), -Limits::max(), Limits::infinity(),
                           Limits::quiet_NaN(), -Limits::quiet_NaN()}) {
        for (const int relOp : {int{VEK_LT}, int{VEK_GT}, -7}) {
            const auto agree = [=](T got, T x, T) {
                const bool replaced = relOp == 0 ? isBelow(x, thresh) : isBelow(thresh, x);
                return bitsOf(got) == bitsOf(replaced ? thresh : x);
            };
            checkAll<T>(members, agree, thresh, relOp);
        }
    }
}

TEST_P(Vector, RealThresholds) {
    checkThresholds(threshS);
    checkThresholds(threshD);
}

template <class T>
void checkInverses(const Inverses<T>& members) {
    using Limits = std::numeric_limits<T>;
    for (const T thresh : {T{0}, -T{0}, T{0.3}, T{1}, Limits::denorm_min(), Limits::max(), Limits::infinity()}) {
        const auto agree = [=](T got, T x, T) {
            if (thresh == 0 && x == 0) return got == static_cast<T>(std::numeric_limits<float>::max());
            if (thresh == 0 || x > thresh || -x > thresh) return same(got, rounded<T>(Exact{1} / x));
            const T limited = rounded<T>(Exact{1} / thresh);
            return same(got, x < 0 ? -limited : limited);
        };
        checkAll<T>(members, agree, thresh);
    }
}

TEST_P(Vector, RealInverses) {
    checkInverses(invS);
    checkInverses(invD);
}

// ---- Thresholds of complex elements -------------------------------------------------------------

template <class T>
std::vector<Limit<T>> complexLimits() {
    using Limits = std::numeric_limits<Limit<T>>;
    return {0, Limit<T>{0.75}, Limit<T>{2}, Limits::min(), 3 * Limits::denorm_min(), Limits::max() / 2};
}

template <class T>
void checkComplexThresholds(const Thresholds<T>& members) {
    for (const Limit<T> thresh : complexLimits<T>()) {
        for (const int relOp : {int{VEK_LT}, int{VEK_GT}}) {
            const auto agree = [=](T got, T x, T) {
                if (!isFinite(x.re) || !isFinite(x.im)) return true;   // see the table below
                const long double modulus = std::hypot(static_cast<long double>(x.re), static_cast<long double>(x.im));
                const bool replaced = relOp == VEK_LT ? modulus < thresh : modulus > thresh;
                if (!replaced && same(got, x)) return true;
                if (modulus == 0) return same(got, T{thresh, 0});
                // an element at the threshold may count as either
                const bool atThreshold =
                    std::fabs(modulus - thresh) <= 4 * std::numeric_limits<Limit<T>>::epsilon() * thresh;
                if (!replaced && !atThreshold) return false;
                const long double factor = thresh / modulus;
                return close(got, {x.re * factor, x.im * factor}, false, atThreshold ? 5 : thresholdUnits);
            };
            checkAll<T>(members, agree, thresh, relOp);
        }
    }
}

TEST_P(Vector, ComplexThresholds) {
    checkComplexThresholds(threshC);
    checkComplexThresholds(threshZ);
}

template <class T>
void checkComplexInverses(const Inverses<T>& members) {
    for (const Limit<T> thresh : complexLimits<T>()) {
        const auto agree = [=](T got, T x, T) {
            if (!isFinite(x.re) || !isFinite(x.im)) return true;
            const long double re = x.re;
            const long double im = x.im;
            const long double modulus = std::hypot(re, im);
            if (modulus == 0) {
                const Limit<T> ofZero = thresh == 0 ? std::numeric_limits<float>::max() : 1 / thresh;
                return same(got, T{ofZero, 0});
            }
            const bool atThreshold =
                std::fabs(modulus - thresh) <= 4 * std::numeric_limits<Limit<T>>::epsilon() * thresh;
            const long double divisor = modulus > thresh ? modulus : static_cast<long double>(thresh);
            return close(got, {re / modulus / divisor, -im / modulus / divisor}, false,
                         atThreshold ? 5 : thresholdUnits);
        };
        checkAll<T>(members, agree, thresh);
    }
}

TEST_P(Vector, ComplexInverses) {
    checkComplexInverses(invC);
    checkComplexInverses(invZ);
}

struct Specials {
    float thresh;
    std::vector<Pairs> table;
};

TEST_P(Vector, ComplexThresholdsOfSpecials) {
    const Specials below[] = {
        {5,
         {{{3, 4}, {3, 4}},
          {{0, 0}, {5, 0}},
          {{-0.0f, -0.0f}, {5, 0}},
          {{-2, 0}, {-5, 0}},
          {{0, -2}, {0, -5}},
          {{inf, 1}, {inf, 1}},
          {{nan, 1}, {nan, 1}}}},
        {inf, {{{3, 0}, {inf, 0}}, {{-2, 5}, {-inf, inf}}, {{0, 0}, {inf, 0}}, {{0, inf}, {0, inf}}}},
        {0, {{{3, 4}, {3, 4}}, {{-0.0f, 0}, {-0.0f, 0}}}},
    };
    const Specials above[] = {
        {5,
         {{{3, 4}, {3, 4}},
          {{6, 8}, {3, 4}},
          {{inf, 1}, {5, 0}},
          {{1, -inf}, {0, -5}},
          {{-inf, -2}, {-5, -0.0f}},
          {{nan, 1}, {nan, 1}},
          {{0, 0}, {0, 0}}}},
        {inf, {{{inf, 1}, {inf, 1}}, {{6, 8}, {6, 8}}}},
        {0, {{{-3, 4}, {-0.0f, 0}}, {{inf, -1}, {0, -0.0f}}}},
        {-0.0f, {{{-3, 4}, {-0.0f, 0}}}},
    };
    for (const Specials& group : below)
        checkPairs(
            group.table, [&](C* x, int n) { vekcbThresh1(x, n, group.thresh, VEK_LT); },
            [&](Z* x, int n) { vekzbThresh1(x, n, group.thresh, VEK_LT); });
    for (const Specials& group : above)
        checkPairs(
            group.table, [&](C* x, int n) { vekcbThresh1(x, n, group.thresh, VEK_GT); },
            [&](Z* x, int n) { vekzbThresh1(x, n, group.thresh, VEK_GT); });
}

TEST_P(Vector, ComplexInversesOfSpecials) {
    const Specials groups[] = {
        {0, {{{2, 0}, {0.5f, -0.0f}}, {{0, 2}, {0, -0.5f}}, {{inf, 1}, {0, -0.0f}}, {{-1, -inf}, {-0.0f, 0}}}},
        {1, {{{0.5f, 0}, {1, -0.0f}}, {{0, -4}, {0, 0.25f}}, {{0, 0}, {1, 0}}, {{inf, inf}, {0, -0.0f}}}},
        {inf, {{{-3, 4}, {-0.0f, -0.0f}}, {{0, 0}, {0, 0}}}},
    };
    for (const Specials& group : groups)
        checkPairs(
            group.table, [&](C* x, int n) { vekcbInvThresh1(x, n, group.thresh); },
            [&](Z* x, int n) { vekzbInvThresh1(x, n, group.thresh); });
}

// ---- Reports after the computation --------------------------------------------------------------

const char* const negative = "Element of input vector is negative";
const char* const zeroMet = "zero element and zero thresh";

// One element on the wrong side, at each place of short and long vectors: one report, its answer, and a
// negative status; none without such an element.
template <class T, class Run>
void checkLateReport(const char* name, const char* message, T wrong, T right, Run run) {
    for (const int n : {1, 2, 3, 5, 17, 40, 300}) {
        for (int at = -1; at < n; ++at) {
            Reports reports;
            std::vector<T> values(static_cast<std::size_t>(n), right);
            if (at >= 0) values[static_cast<std::size_t>(at)] = wrong;
            std::vector<T> dst = values;
            const VekStatus status = run(values.data(), dst.data(), n);
            EXPECT_EQ(reports.text(), at < 0 ? "" : reportLine(VEK_StsBadArg, name, message, "vekvec"))
                << n << " at " << at;
            EXPECT_EQ(status, at < 0 ? VEK_StsOk : Reports::answer(VEK_StsBadArg));
            EXPECT_EQ(vekGetErrStatus(), at < 0 ? VEK_StsOk : VEK_StsBadArg);
            if (testing::Test::HasFailure()) return;
        }
    }
}

template <class T>
void checkNegativeReport(const Plain<T>& members) {
    checkLateReport(members.name1, negative, T{-1}, -T{0}, [&](T*, T* dst, int n) { return members.in(dst, n); });
    checkLateReport(members.name2, negative, T{-1}, T{2},
                    [&](T* src, T* dst, int n) { return members.out(src, dst, n); });
}
template <class T>
void checkZeroReport(const Inverses<T>& members, T zero, T other) {
    checkLateReport(members.name1, zeroMet, zero, other, [&](T*, T* dst, int n) { return members.in(dst, n, 0); });
    checkLateReport(members.name2, zeroMet, zero, other,
                    [&](T* src, T* dst, int n) { return members.out(src, dst, n, 0); });
    Reports reports;   // a threshold above zero has an answer to zeros
    std::vector<T> values(20, zero);
    EXPECT_EQ(members.in(values.data(), 20, 1), VEK_StsOk);
    EXPECT_EQ(reports.count(), 0u);
}

TEST_P(Vector, ReportsNegativeElements) {
    checkNegativeReport(sqrtS);
    checkNegativeReport(sqrtD);
}

TEST_P(Vector, ReportsZeroElements) {
    checkZeroReport<float>(invS, -0.0f, 2.0f);
    checkZeroReport<double>(invD, 0.0, -3.0);
    checkZeroReport<C>(invC, {0, -0.0f}, {0, 1e-45f});
    checkZeroReport<Z>(invZ, {-0.0, 0}, {5e-324, 0});
}

TEST_P(Vector, OutputStandsAfterALateReport) {
    Reports reports;
    float roots[] = {4, -1, 9};
    veksbSqrt1(roots, 3);
    EXPECT_EQ(std::vector<float>(roots, roots + 3), (std::vector<float>{2, -1, 3}));
    reports.clear();
    float inverses[] = {2, 0, -4};
    veksbInvThresh1(inverses, 3, 0);
    EXPECT_EQ(std::vector<float>(inverses, inverses + 3), (std::vector<float>{0.5f, 3.4028235e+38f, -0.25f}));
}

}   // namespace
