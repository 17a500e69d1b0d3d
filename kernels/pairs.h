// Pairs (re, im) of an element-wise kernel, two reals of a vector each. Internal linkage throughout, for the reasons
// that simd.h gives.
#pragma once

#include "elementwise.h"

namespace vek::VEK_LEVEL {
namespace {

// One pair, at width 1; wider ones stand in memory order in one vector.
template <class T>
struct Pair {
    T re, im;
};

template <class T>
VEK_INLINE void storePairs(T* to, Pair<T> value) {
    to[0] = value.re;
    to[1] = value.im;
}
template <class T, class V>
VEK_INLINE void storePairs(T* to, V value) {
    store(to, value);
}

// dst[i ...] = one(i), a Pair, or wide(Int<W>, i), a vector of W / 2 pairs.
template <Bound B = Bound::byMemory, class T, class One, class Wide>
VEK_INLINE void mapPairs(T* dst, size_t count, One one, Wide wide) {
    forAll<T, PairStep<B>>(
        dst, count,
        [=](auto w, size_t i) {
            if constexpr (w == 1)
                return one(i);
            else
                return wide(w, i);
        },
        [=](size_t i, auto value) { storePairs(dst + 2 * i, value); });
}

template <class T, int... I>
VEK_INLINE auto alternating(T even, T odd, Ints<I...>) {
    return Vec<T, sizeof...(I)>{(I % 2 == 0 ? even : odd)...};
}
// even, odd, even, odd ...
template <int W, class T>
VEK_INLINE Vec<T, W> alternating(T even, T odd) {
    return alternating(even, odd, typename MakeInts<W>::type{});
}
template <class V, int... I>
VEK_INLINE V evenTwice(V a, Ints<I...>) {
    return __builtin_shufflevector(a, a, (I / 2 * 2)...);
}
template <class V, int... I>
VEK_INLINE V oddTwice(V a, Ints<I...>) {
    return __builtin_shufflevector(a, a, (I / 2 * 2 + 1)...);
}
template <class V, int... I>
VEK_INLINE V exchanged(V a, Ints<I...>) {
    return __builtin_shufflevector(a, a, (I ^ 1)...);
}
template <class V, int... I>
VEK_INLINE V pairsReversed(V a, Ints<I...>) {
    constexpr int w = sizeof...(I);
    return __builtin_shufflevector(a, a, ((w - 2 - I / 2 * 2) + I % 2)...);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
