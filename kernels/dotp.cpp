// Dot products. Those of int16 are exact: products are added in pairs to 32 bits, those in 64.
#include "dotp.h"

#include "dots.h"
#include "integers.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::DotPair;
using kernels::DotpOf;

// ---- Reals and complex numbers --------------------------------------------------------------------------------------

template <class T>
T real(const T* a, const T* b, size_t n) {
    return dotOfReals(a, b, n);
}
template <class T>
DotPair<T> complex(const T* a, const T* b, size_t n) {
    const Pair<T> dot = dotOfPairs(a, b, n);
    return {dot.re, dot.im};
}
template <class T>
DotPair<T> mixed(const T* reals, const T* pairs, size_t n) {
    const Pair<T> dot = dotOfRealsAndPairs(reals, pairs, n);
    return {dot.re, dot.im};
}

template <class T>
constexpr DotpOf<T> entries = {real<T>, complex<T>, mixed<T>};

// ---- int16 ----------------------------------------------------------------------------------------------------------

// Sums of two products, -2^31 + 2^15 ... 2^31, become numbers without sign by it; 2^31 wraps into its place.
inline constexpr uint32_t bias = 0x7fff8000;

// Of biased sums, which stand in the lower and upper halves of 64 bits: the sum of all 64 bits, modulo 2^64, and the
// sum of the upper halves, which gives that of the lower ones.
template <int W>
struct Halves {
    Unsigned<int64_t, W / 4> all, upper;

    VEK_INLINE Halves operator+(Halves other) const { return {all + other.all, upper + other.upper}; }
    VEK_INLINE Halves with(Int32s<W / 2> sums) const {
        const auto both = bitsAs<Unsigned<int64_t, W / 4>>(bitsAs<Unsigned<int32_t, W / 2>>(sums) + splat<W / 2>(bias));
        return {all + both, upper + (both >> 32)};
    }
    // {lower, upper}.
    VEK_INLINE DotPair<uint64_t> sums() const {
        const uint64_t high = joinLanes<uint64_t, W / 4>(upper, joinSums);
        return {joinLanes<uint64_t, W / 4>(all, joinSums) - (high << 32), high};
    }
};
template <>
struct Halves<1> {};

// What the biases of n elements add up to that go in vectors: `each` to a bias. The last ones go singly.
template <class Step>
VEK_INLINE uint64_t biases(size_t n, size_t each) {
    if constexpr (lanes<int16_t> == 1)
        return 0;
    else
        return uint64_t{bias} * (n / Step::elements(8) * Step::elements(8) / each);
}

// Sums modulo 2^64 of two kinds.
struct Sums {
    uint64_t first, second;
    VEK_INLINE Sums operator+(Sums other) const { return {first + other.first, second + other.second}; }
};
template <int W>
struct Accumulators {
    Halves<W> first, second;
    VEK_INLINE Accumulators operator+(Accumulators other) const { return {first + other.first, second + other.second}; }
};
template <>
struct Accumulators<1> : Sums {
    VEK_INLINE Accumulators operator+(Accumulators other) const {
        return {{first + other.first, second + other.second}};
    }
};

// Additions take one cycle: chains would only take registers. one(i) gives the Sums of an element, wide(Int<W>, i,
// accumulators) adds a vector's to both, and fold(Halves) makes one number of what came together.
template <class Step, class One, class Wide, class Fold>
VEK_INLINE Sums integerSums(size_t n, One one, Wide wide, Fold fold) {
    return reduce<int16_t, Step, 1>(
        n, [](auto w) VEK_INLINE_LAMBDA { return Accumulators<w>{}; },
        [=](auto w, size_t i, auto sums) VEK_INLINE_LAMBDA {
            if constexpr (w == 1) {
                const Sums more = one(i);
                return Accumulators<1>{{sums.first + more.first, sums.second + more.second}};
            } else {
                return wide(w, i, sums);
            }
        },
        joinSums,
        [=](auto w, auto sums) VEK_INLINE_LAMBDA {
            if constexpr (w == 1)
                return Sums{sums.first, sums.second};
            else
                return fold(sums);
        });
}

VEK_INLINE uint64_t product(int16_t a, int16_t b) { return static_cast<uint64_t>(int64_t{a} * b); }
[[maybe_unused]] VEK_INLINE uint64_t together(DotPair<uint64_t> halves) { return halves.re + halves.im; }
VEK_INLINE Sums eachTogether(const auto& sums) { return {together(sums.first.sums()), together(sums.second.sums())}; }
VEK_INLINE DotPair<int64_t> signedPair(uint64_t re, uint64_t im) {
    return {static_cast<int64_t>(re), static_cast<int64_t>(im)};
}

int64_t integerReal(const int16_t* a, const int16_t* b, size_t n) {
    using Step = RealStep<Bound::byMemory>;
    const Sums sums = integerSums<Step>(
        n,
        [=](size_t i) {
            return Sums{product(a[i], b[i]), 0};
        },
        [=](auto w, size_t i, auto to) VEK_INLINE_LAMBDA {
            to.first = to.first.with(pairSums<w>(load<w>(a + i), load<w>(b + i)));
            return to;
        },
        [](const auto& all) VEK_INLINE_LAMBDA {
            return Sums{together(all.first.sums()), 0};
        });
    return static_cast<int64_t>(sums.first - biases<Step>(n, 2));
}

// a.re b.re - a.im b.im is a.re b.re + a.im ~b.im + a.im, and fits 32 bits; the like goes for the conjugate.
template <bool Conjugated>
DotPair<int64_t> integerComplex(const int16_t* a, const int16_t* b, size_t n) {
    using Step = PairStep<Bound::byMemory>;
    const Sums sums = integerSums<Step>(
        n,
        [=](size_t i) {
            const int16_t *x = a + 2 * i, *y = b + 2 * i;
            const uint64_t re = product(x[0], y[0]), re2 = product(x[1], y[1]);
            const uint64_t im = product(x[0], y[1]), im2 = product(x[1], y[0]);
            return Conjugated ? Sums{re + re2, im - im2} : Sums{re - re2, im + im2};
        },
        [=](auto w, size_t i, auto to) VEK_INLINE_LAMBDA {
            constexpr int half = w / 2;
            const auto x = held(load<w>(a + 2 * i)), y = held(load<w>(b + 2 * i));
            const auto crossed = exchanged(y, typename MakeInts<w>::type{});
            const auto turned = static_cast<Int16s<w>>((Conjugated ? x : y) ^ alternating<w, int16_t>(0, -1));
            if constexpr (Conjugated) {
                to.first = to.first.with(pairSums<w>(x, y));
                to.second = to.second.with(
                    sumWrapped<int32_t, half>(pairSums<w>(turned, crossed), bitsAs<Int32s<half>>(y) << 16 >> 16));
            } else {
                to.first =
                    to.first.with(sumWrapped<int32_t, half>(pairSums<w>(x, turned), bitsAs<Int32s<half>>(x) >> 16));
                to.second = to.second.with(pairSums<w>(x, crossed));
            }
            return to;
        },
        [](const auto& all) VEK_INLINE_LAMBDA { return eachTogether(all); });
    const uint64_t offset = biases<Step>(n, 1);
    return signedPair(sums.first - offset, sums.second - offset);
}

// Of two pairs the real parts together, and the imaginary ones.
template <class V, int... I>
VEK_INLINE V partsTogether(V v, Ints<I...>) {
    return __builtin_shufflevector(v, v, (I / 4 * 4 + I % 4 / 2 + I % 2 * 2)...);
}

DotPair<int64_t> integerMixed(const int16_t* reals, const int16_t* pairs, size_t n) {
    using Step = PairStep<Bound::byMemory>;
    const Sums sums = integerSums<Step>(
        n,
        [=](size_t i) {
            return Sums{product(reals[i], pairs[2 * i]), product(reals[i], pairs[2 * i + 1])};
        },
        [=](auto w, size_t i, auto to) VEK_INLINE_LAMBDA {
            const auto x = bitsAs<Int16s<w>>(loadTwice<w / 2>(reinterpret_cast<const int32_t*>(reals + i)));
            const auto y = partsTogether(load<w>(pairs + 2 * i), typename MakeInts<w>::type{});
            to.first = to.first.with(pairSums<w>(x, y));
            return to;
        },
        [](const auto& all) VEK_INLINE_LAMBDA {
            const DotPair<uint64_t> halves = all.first.sums();
            return Sums{halves.re, halves.im};
        });
    const uint64_t offset = biases<Step>(n, 2);
    return signedPair(sums.first - offset, sums.second - offset);
}

template <>
constexpr DotpOf<int16_t> entries<int16_t> = {integerReal, integerComplex<false>, integerComplex<true>, integerMixed};

}   // namespace

extern const kernels::DotpTable dotp;
const kernels::DotpTable dotp = {{entries<float>, entries<double>, entries<int16_t>}};

}   // namespace vek::VEK_LEVEL
