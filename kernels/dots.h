// Sums of floating-point products, real and complex, in an order whose error grows with the logarithm of their number.
// Internal linkage throughout, for the reasons that simd.h gives.
#pragma once

#include "pairs.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T>
VEK_INLINE Pair<T> operator+(Pair<T> a, Pair<T> b) {
    return {a.re + b.re, a.im + b.im};
}

// A vector of pairs, at width 1 one.
template <class T, int W>
struct PairsOf {
    typedef Vec<T, W> type;
};
template <class T>
struct PairsOf<T, 1> {
    typedef Pair<T> type;
};
template <class T, int W>
using Pairs = typename PairsOf<T, W>::type;

// The sum of a vector's pairs.
template <class T, int W, int Apart, int... I>
VEK_INLINE Pair<T> sumOfPairs(Vec<T, W> v, Ints<I...> indices) {
    if constexpr (Apart == 1)
        return {v[0], v[1]};
    else
        return sumOfPairs<T, W, Apart / 2>(v + Vec<T, W>(__builtin_shufflevector(v, v, (I + Apart) % W...)), indices);
}
template <class T, int W>
VEK_INLINE Pair<T> sumOfPairs(Pairs<T, W> v) {
    if constexpr (W == 1)
        return v;
    else
        return sumOfPairs<T, W, W / 2>(v, typename MakeInts<W>::type{});
}

// Sums of (a.re b.re, a.im b.im) and of (a.re b.im, a.im b.re): what products are made of, conjugated or not.
template <class V>
struct Products {
    V like, unlike;
    VEK_INLINE Products operator+(Products other) const { return {like + other.like, unlike + other.unlike}; }
};

inline constexpr auto joinSums = [](auto a, auto b) VEK_INLINE_LAMBDA { return a + b; };

template <class T>
VEK_INLINE T dotOfReals(const T* a, const T* b, size_t n) {
    return reducePairwise<T, RealStep<Bound::byMemory>>(
        0, n, [](auto w) VEK_INLINE_LAMBDA { return Vec<T, w>{}; },
        [=](auto w, size_t i, auto sum)
            VEK_INLINE_LAMBDA { return Vec<T, w>(fma(load<w>(a + i), load<w>(b + i), sum)); },
        joinSums, [](auto w, auto sum) VEK_INLINE_LAMBDA { return joinLanes<T, w>(sum, joinSums); });
}

template <class T>
VEK_INLINE Products<Pair<T>> productsOfPairs(const T* a, const T* b, size_t n) {
    return reducePairwise<T, PairStep<Bound::byMemory>>(
        0, n, [](auto w) VEK_INLINE_LAMBDA { return Products<Pairs<T, w>>{}; },
        [=](auto w, size_t i, auto sum) VEK_INLINE_LAMBDA {
            const T* const x = a + 2 * i;
            const T* const y = b + 2 * i;
            if constexpr (w == 1) {
                sum.like = {fma(x[0], y[0], sum.like.re), fma(x[1], y[1], sum.like.im)};
                sum.unlike = {fma(x[0], y[1], sum.unlike.re), fma(x[1], y[0], sum.unlike.im)};
            } else {
                const auto u = held(load<w>(x)), v = held(load<w>(y));
                sum.like = fma(u, v, sum.like);
                sum.unlike = fma(u, exchanged(v, typename MakeInts<w>::type{}), sum.unlike);
            }
            return sum;
        },
        joinSums,
        [](auto w, auto sum) VEK_INLINE_LAMBDA {
            return Products<Pair<T>>{sumOfPairs<T, w>(sum.like), sumOfPairs<T, w>(sum.unlike)};
        });
}

// a b, and conj(a) b.
template <class T>
VEK_INLINE Pair<T> dotOfPairs(const T* a, const T* b, size_t n) {
    const auto sums = productsOfPairs(a, b, n);
    return {sums.like.re - sums.like.im, sums.unlike.re + sums.unlike.im};
}
template <class T>
VEK_INLINE Pair<T> dotOfConjugate(const T* a, const T* b, size_t n) {
    const auto sums = productsOfPairs(a, b, n);
    return {sums.like.re + sums.like.im, sums.unlike.re - sums.unlike.im};
}

// Keeps a scalar from a vector of the compiler's making. Of two floats it would make half of one, and multiply the
// zeros in the other half too, which is invalid for infinities.
template <class T>
VEK_INLINE T alone(T value) {
#if defined(__SSE2__)
    __asm__("" : "+x"(value));
#endif
    return value;
}

// Each real of the lower half twice; of the upper half.
template <class V, int... I>
VEK_INLINE V lowerTwice(V v, Ints<I...>) {
    return __builtin_shufflevector(v, v, (I / 2)...);
}
template <class V, int... I>
VEK_INLINE V upperTwice(V v, Ints<I...>) {
    return __builtin_shufflevector(v, v, (static_cast<int>(sizeof...(I)) / 2 + I / 2)...);
}

// A step takes a vector of reals and two of pairs: half a vector would take as long to load.
template <class T>
VEK_INLINE Pair<T> dotOfRealsAndPairs(const T* reals, const T* pairs, size_t n) {
    return reducePairwise<T, PlanarStep<Bound::byMemory>>(
        0, n, [](auto w) VEK_INLINE_LAMBDA { return Products<Pairs<T, w>>{}; },
        [=](auto w, size_t i, auto sum) VEK_INLINE_LAMBDA {
            const T* const y = pairs + 2 * i;
            if constexpr (w == 1) {
                const T x = alone(reals[i]);
                sum.like = {fma(x, y[0], sum.like.re), fma(x, y[1], sum.like.im)};
            } else {
                constexpr typename MakeInts<w>::type indices;
                const auto x = held(load<w>(reals + i));
                sum.like = fma(lowerTwice(x, indices), load<w>(y), sum.like);
                sum.unlike = fma(upperTwice(x, indices), load<w>(y + w), sum.unlike);
            }
            return sum;
        },
        joinSums,
        [](auto w, auto sum) VEK_INLINE_LAMBDA {
            if constexpr (w == 1)
                return sum.like;
            else
                return sumOfPairs<T, w>(sum.like + sum.unlike);
        });
}

}   // namespace
}   // namespace vek::VEK_LEVEL
