// Filling, copying, sums, differences, products and conjugates against 113-bit arithmetic and bit rules.
#include <cmath>
#include <limits>

#include "support/levels.h"
#include "support/reports.h"
#include "support/vectors.h"

namespace {

using namespace test;

class Arith : public AtLevel {};
VEK_AT_ALL_LEVELS(Arith);

enum class Op {
    zero,
    set,
    copy,
    add,
    sub,
    mpy,
    conj
};

// Form 0: (dst, n), 1: (val, dst, n), 2: (src, dst, n) with dst an operand, 3: (srcA, srcB, dst, n),
// 4: (src, dst, n) with dst a result only.
template <class T>
struct Member {
    const char* name;
    Op op;
    int form;
    void (*run)(const T* a, const T* b, T val, T* dst, int n);
};

template <auto F, class T>
void form0(const T*, const T*, T, T* dst, int n) {
    F(dst, n);
}
template <auto F, class T>
void form1(const T*, const T*, T val, T* dst, int n) {
    F(val, dst, n);
}
template <auto F, class T>
void form2(const T* a, const T*, T, T* dst, int n) {
    F(a, dst, n);
}
template <auto F, class T>
void form3(const T* a, const T* b, T, T* dst, int n) {
    F(a, b, dst, n);
}

// The members that every type has.
#define VEK_MEMBERS(prefix, T)                                                                                       \
    {#prefix "Zero", Op::zero, 0, form0<prefix##Zero, T>}, {#prefix "Set", Op::set, 1, form1<prefix##Set, T>},       \
        {#prefix "Copy", Op::copy, 4, form2<prefix##Copy, T>}, {#prefix "Add1", Op::add, 1, form1<prefix##Add1, T>}, \
        {#prefix "Add2", Op::add, 2, form2<prefix##Add2, T>}, {#prefix "Add3", Op::add, 3, form3<prefix##Add3, T>},  \
        {#prefix "Sub1", Op::sub, 1, form1<prefix##Sub1, T>}, {#prefix "Sub2", Op::sub, 2, form2<prefix##Sub2, T>},  \
        {#prefix "Sub3", Op::sub, 3, form3<prefix##Sub3, T>}, {#prefix "Mpy1", Op::mpy, 1, form1<prefix##Mpy1, T>},  \
        {#prefix "Mpy2", Op::mpy, 2, form2<prefix##Mpy2, T>}, {                                                      \
#prefix "Mpy3", Op::mpy, 3, form3 < prefix##Mpy3, T>                                                         \
    }

using C = VekCplx;
using Z = VekDCplx;
const std::vector<Member<float>> membersS = {VEK_MEMBERS(veksb, float)};
const std::vector<Member<double>> membersD = {VEK_MEMBERS(vekdb, double)};
const std::vector<Member<C>> membersC = {VEK_MEMBERS(vekcb, C),
                                         {"vekcbConj1", Op::conj, 0, form0<vekcbConj1, C>},
                                         {"vekcbConj2", Op::conj, 4, form2<vekcbConj2, C>}};
const std::vector<Member<Z>> membersZ = {VEK_MEMBERS(vekzb, Z),
                                         {"vekzbConj1", Op::conj, 0, form0<vekzbConj1, Z>},
                                         {"vekzbConj2", Op::conj, 4, form2<vekzbConj2, Z>}};

template <class T>
T exactly(Op op, T a, T b) {
    const Exact x = a;
    const Exact y = b;
    return static_cast<T>(op == Op::add ? x + y : op == Op::sub ? x - y : x * y);
}
// 113 bits keep no sign of a zero sum of T, nor need they keep NaN: both follow from the operands' own
// arithmetic.
template <class T>
bool agrees(Op op, T got, T a, T b) {
    switch (op) {
        case Op::zero: return bitsOf(got) == 0;
        case Op::set: return bitsOf(got) == bitsOf(b);
        case Op::copy: return bitsOf(got) == bitsOf(a);
        default: return same(got, exactly(op, a, b));
    }
}

// Two roundings of each product and one of their sum, or fewer; and what underflow drops.
template <class Real>
bool near(Real got, Exact p, Exact q) {
    const Exact size = (p < 0 ? -p : p) + (q < 0 ? -q : q);
    if (!(size <= static_cast<Exact>(std::numeric_limits<Real>::max()))) return true;   // a product may overflow
    const Exact bound = size * std::numeric_limits<Real>::epsilon() + 2 * std::numeric_limits<Real>::denorm_min();
    const Exact error = static_cast<Exact>(got) - (p + q);
    return error <= bound && -error <= bound;
}
// A factor is infinite or NaN. Either product may have been rounded, and so have overflowed, before the sum.
template <class Real>
bool nearInfinite(Real got, Exact p, Exact q) {
    if (isFinite(p + q)) return true;
    const Real roundedP = static_cast<Real>(p);
    const Real roundedQ = static_cast<Real>(q);
    return same(got, static_cast<Real>(p + q)) || same(got, static_cast<Real>(p + roundedQ)) ||
           same(got, static_cast<Real>(roundedP + q)) || same(got, static_cast<Real>(Exact{roundedP} + roundedQ));
}
template <class T>
bool agreesComplex(Op op, T got, T a, T b) {
    if (op == Op::conj) {
        auto flipped = bitsOf(a.im);
        flipped ^= decltype(flipped){1} << (8 * sizeof flipped - 1);
        return bitsOf(got.re) == bitsOf(a.re) && bitsOf(got.im) == flipped;
    }
    if (op != Op::mpy) return agrees(op, got.re, a.re, b.re) && agrees(op, got.im, a.im, b.im);
    if (isFinite(a.re) && isFinite(a.im) && isFinite(b.re) && isFinite(b.im))
        return near(got.re, Exact{a.re} * b.re, -(Exact{a.im} * b.im)) &&
               near(got.im, Exact{a.re} * b.im, Exact{a.im} * b.re);
    return nearInfinite(got.re, Exact{a.re} * b.re, -(Exact{a.im} * b.im)) &&
           nearInfinite(got.im, Exact{a.re} * b.im, Exact{a.im} * b.re);
}

template <class T>
T scalarOf(Data& data) {
    return data.mixed<T>(1)[0];
}

template <class T>
void checkMembers(const std::vector<Member<T>>& members) {
    Data data(7);
    for (const Member<T>& member : members) {
        for (const Placement& at : placements()) {
            for (const Alias alias : {Alias::none, Alias::first, Alias::second}) {
                if (member.form != 3 && alias == Alias::second) continue;
                if (member.form < 2 && alias == Alias::first) continue;
                const T val = scalarOf<T>(data);
                checkElements<T>(
                    member.name, alias, at,
                    [&](const T* a, const T* b, T* dst, int n) { member.run(a, b, val, dst, n); },
                    [&](std::size_t i, T got, const auto& a, const auto& b, const auto& former) {
                        const T left = member.form >= 3 ? a[i] : former[i];
                        const T right = member.form == 1 ? val : member.form == 2 ? a[i] : b[i];
                        if constexpr (isComplexElement<T>)
                            return agreesComplex(member.op, got, left, right);
                        else
                            return agrees(member.op, got, left, right);
                    });
            }
        }
        if (testing::Test::HasFailure()) return;
    }
}

TEST_P(Arith, MembersS) { checkMembers(membersS); }
TEST_P(Arith, MembersD) { checkMembers(membersD); }
TEST_P(Arith, MembersC) { checkMembers(membersC); }
TEST_P(Arith, MembersZ) { checkMembers(membersZ); }

// ---- Reversal and extension ---------------------------------------------------------------------

template <class T>
T conjugate(T a) {
    return {a.re, std::signbit(a.im) ? std::fabs(a.im) : -std::fabs(a.im)};
}

template <class T>
struct Mirrors {
    const char* type;
    void(VEKAPI* flip2)(const T*, T*, int);
    void(VEKAPI* extend1)(T*, int);
    void(VEKAPI* extend2)(const T*, T*, int);
};
const Mirrors<C> mirrorsC = {"vekcbConjFlip2, vekcbConjExtend1, vekcbConjExtend2", vekcbConjFlip2, vekcbConjExtend1,
                             vekcbConjExtend2};
const Mirrors<Z> mirrorsZ = {"vekzbConjFlip2, vekzbConjExtend1, vekzbConjExtend2", vekzbConjFlip2, vekzbConjExtend1,
                             vekzbConjExtend2};

template <class T>
void checkMirrors(const Mirrors<T>& members) {
    for (const Placement& at : placements()) {
        const auto n = static_cast<std::size_t>(at.n);
        const auto offset = static_cast<std::size_t>(at.dst);
        const std::size_t extended = n > 2 ? 2 * n - 2 : n;
        Data data(static_cast<std::uint64_t>(at.n));
        const std::vector<T> src = data.mixed<T>(n);
        const std::vector<T> fresh = data.mixed<T>(offset + extended + 8);

        std::vector<T> flipped = fresh;
        std::vector<T> expectedFlip = fresh;
        for (std::size_t k = 0; k < n; ++k) expectedFlip[offset + n - 1 - k] = conjugate(src[k]);
        members.flip2(src.data(), &flipped[offset], at.n);

        std::vector<T> expected = fresh;
        for (std::size_t k = 0; k < n; ++k) expected[offset + k] = src[k];
        std::vector<T> inPlace = expected;
        std::vector<T> apart = fresh;
        for (std::size_t k = 1; k + 1 < n; ++k) expected[offset + 2 * n - 2 - k] = conjugate(src[k]);
        members.extend1(&inPlace[offset], at.n);
        members.extend2(src.data(), &apart[offset], at.n);

        for (std::size_t i = 0; i < fresh.size(); ++i) {
            ASSERT_TRUE(same(flipped[i], expectedFlip[i])) << members.type << " n=" << n << " at " << i;
            ASSERT_TRUE(same(inPlace[i], expected[i])) << members.type << " n=" << n << " at " << i;
            ASSERT_TRUE(same(apart[i], expected[i])) << members.type << " n=" << n << " at " << i;
        }
    }
}

TEST_P(Arith, MirrorsC) { checkMirrors(mirrorsC); }
TEST_P(Arith, MirrorsZ) { checkMirrors(mirrorsZ); }

// ---- One sample ---------------------------------------------------------------------------------

template <class T>
struct Samples {
    const char* names;
    T(VEKAPI* add)(T, T);
    T(VEKAPI* sub)(T, T);
    T(VEKAPI* mpy)(T, T);
    T(VEKAPI* div)(T, T);
    T(VEKAPI* conj)(T);
};
const Samples<C> samplesC = {
    "vekcAdd, vekcSub, vekcMpy, vekcDiv, vekcConj", vekcAdd, vekcSub, vekcMpy, vekcDiv, vekcConj};
const Samples<Z> samplesZ = {
    "vekzAdd, vekzSub, vekzMpy, vekzDiv, vekzConj", vekzAdd, vekzSub, vekzMpy, vekzDiv, vekzConj};

template <class T>
void checkSamples(const Samples<T>& members) {
    using Real = decltype(T::re);
    Data data(11);
    const std::vector<T> values = data.mixed<T>(2000);
    for (std::size_t i = 1; i < values.size(); ++i) {
        const T a = values[i - 1];
        const T b = values[i];
        EXPECT_TRUE(agreesComplex(Op::add, members.add(a, b), a, b)) << members.names << shown(a) << shown(b);
        EXPECT_TRUE(agreesComplex(Op::sub, members.sub(a, b), a, b)) << members.names << shown(a) << shown(b);
        EXPECT_TRUE(agreesComplex(Op::mpy, members.mpy(a, b), a, b)) << members.names << shown(a) << shown(b);
        EXPECT_TRUE(agreesComplex(Op::conj, members.conj(a), a, a)) << members.names << shown(a);
        const T x = data.ordinary<T>(1)[0];
        const T y = data.ordinary<T>(1)[0];
        const Exact square = Exact{y.re} * y.re + Exact{y.im} * y.im;
        const T quotient = members.div(x, y);
        // In double: three roundings of the denominator's kind, two of the numerator's, one of the product.
        const Exact unit = std::numeric_limits<double>::epsilon() * Exact{4} +
                           (sizeof(Real) == 4 ? std::numeric_limits<float>::epsilon() / Exact{2} : Exact{0});
        const Exact terms[2][2] = {{Exact{x.re} * y.re, Exact{x.im} * y.im},
                                   {Exact{x.im} * y.re, -(Exact{x.re} * y.im)}};
        const Real parts[2] = {quotient.re, quotient.im};
        for (int k = 0; k < 2; ++k) {
            const Exact p = terms[k][0] / square;
            const Exact q = terms[k][1] / square;
            const Exact error = parts[k] - (p + q);
            const Exact bound = unit * ((p < 0 ? -p : p) + (q < 0 ? -q : q));
            EXPECT_TRUE(error <= bound && -error <= bound) << members.names << shown(x) << shown(y);
        }
    }
}

TEST(ArithSample, C) { checkSamples(samplesC); }
TEST(ArithSample, Z) { checkSamples(samplesZ); }

TEST(ArithSample, Set) {
    EXPECT_TRUE(same(vekcSet(1.5f, -0.0f), C{1.5f, -0.0f}));
    EXPECT_TRUE(same(vekzSet(-0.0, 2.5), Z{-0.0, 2.5}));
}

// The reciprocal of |b|^2 is formed first, in double, whatever becomes of it.
TEST(ArithSample, DivisionIsNotScaled) {
    EXPECT_TRUE(same(vekcDiv({1, 0}, {1e-30f, 0}), C{1e30f, 0}));
    EXPECT_TRUE(same(vekzDiv({1, 0}, {1e200, 0}), Z{0, 0}));
    EXPECT_TRUE(isNan(vekzDiv({1, 0}, {1e-200, 0}).im));
}

TEST(ArithSample, DivisionByZero) {
    for (const float zero : {0.0f, -0.0f}) {
        Reports reports;
        EXPECT_TRUE(same(vekcDiv({1, 2}, {0, zero}), C{0, 0}));
        EXPECT_EQ(reports.text(), reportLine(VEK_StsBadArg, "vekcDiv", "(b.re==0.0)&&(b.im==0.0)", "vekarith"));
        reports.clear();
        EXPECT_TRUE(same(vekzDiv({1, 2}, {zero, 0}), Z{0, 0}));
        EXPECT_EQ(reports.text(), reportLine(VEK_StsBadArg, "vekzDiv", "(b.re==0.0)&&(b.im==0.0)", "vekarith"));
        EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    }
}

}   // namespace
