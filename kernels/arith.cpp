// Element-wise arithmetic. Every loop loads a step's sources before it stores its results, so dst may equal a
// source.
#include "arith.h"

#include "pairs.h"

namespace vek::VEK_LEVEL {
namespace {

// ---- Reals, and complex vectors taken as reals --------------------------------------------------

template <class T>
void set(T value, T* dst, size_t n) {
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t) { return splat<w>(value); });
}

template <class T>
void copy(const T* src, T* dst, size_t n) {
    copyReals(src, dst, n);
}

template <class T>
void add1(T value, T* dst, size_t n) {
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t i) { return load<w>(dst + i) + splat<w>(value); });
}

template <class T>
void mpy1(T value, T* dst, size_t n) {
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t i) { return load<w>(dst + i) * splat<w>(value); });
}

template <class T>
void add3(const T* srcA, const T* srcB, T* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return load<w>(srcA + i) + load<w>(srcB + i); });
}

template <class T>
void sub3(const T* src, const T* val, T* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return load<w>(src + i) - load<w>(val + i); });
}

template <class T>
void mpy3(const T* srcA, const T* srcB, T* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return load<w>(srcA + i) * load<w>(srcB + i); });
}

// ---- Pairs (re, im) -----------------------------------------------------------------------------

template <class T, int W>
VEK_INLINE Vec<T, W> conjugated(Vec<T, W> a) {
    using I = typename IntOf<T>::type;
    return bitsAs<Vec<T, W>>(bitsAs<IntVec<T, W>>(a) ^ alternating<W>(I{0}, signBit<T>));
}

// a * b + c in odd lanes, a * b - c in even ones.
template <class T, int W>
VEK_INLINE Vec<T, W> multiplySubAdd(Vec<T, W> a, Vec<T, W> b, Vec<T, W> c) {
#if defined(__AVX512F__)
    if constexpr (sizeof(a) == 64 && sizeof(T) == 4) return _mm512_fmaddsub_ps(a, b, c);
    if constexpr (sizeof(a) == 64 && sizeof(T) == 8) return _mm512_fmaddsub_pd(a, b, c);
#endif
#if defined(__FMA__)
    if constexpr (sizeof(a) == 32 && sizeof(T) == 4) return _mm256_fmaddsub_ps(a, b, c);
    if constexpr (sizeof(a) == 32 && sizeof(T) == 8) return _mm256_fmaddsub_pd(a, b, c);
    if constexpr (sizeof(a) == 16 && sizeof(T) == 4) return _mm_fmaddsub_ps(a, b, c);
    if constexpr (sizeof(a) == 16 && sizeof(T) == 8) return _mm_fmaddsub_pd(a, b, c);
#else
    using I = typename IntOf<T>::type;
    return a * b + bitsAs<Vec<T, W>>(bitsAs<IntVec<T, W>>(c) ^ alternating<W>(signBit<T>, I{0}));
#endif
}

template <class T>
void complexSet(T re, T im, T* dst, size_t count) {
    mapPairs<Bound::byStores>(
        dst, count,
        [=](size_t) {
            return Pair<T>{re, im};
        },
        [=](auto w, size_t) { return alternating<w>(re, im); });
}

template <class T>
void complexAdd1(T re, T im, T* dst, size_t count) {
    mapPairs<Bound::byStores>(
        dst, count,
        [=](size_t i) {
            return Pair<T>{dst[2 * i] + re, dst[2 * i + 1] + im};
        },
        [=](auto w, size_t i) { return load<w>(dst + 2 * i) + alternating<w>(re, im); });
}

// Both parts are sums: of a sum and a difference a compiler's own vectors would compute both in both lanes, and raise
// what the lane thrown away earns.
template <class T>
VEK_INLINE Pair<T> product(Pair<T> a, Pair<T> b) {
    return {a.re * b.re + a.im * negated<T, 1>(b.im), a.re * b.im + a.im * b.re};
}

template <class T>
void complexMpy1(T re, T im, T* dst, size_t count) {
    mapPairs<Bound::byStores>(
        dst, count,
        [=](size_t i) {
            return product(Pair<T>{dst[2 * i], dst[2 * i + 1]}, Pair<T>{re, im});
        },
        [=](auto w, size_t i) {
            const auto a = held(load<w>(dst + 2 * i));
            const auto cross = exchanged(a, typename MakeInts<w>::type{}) * alternating<w>(-im, im);
            return fma(a, splat<w>(re), cross);
        });
}

template <class T>
void complexMpy3(const T* srcA, const T* srcB, T* dst, size_t count) {
    mapPairs(
        dst, count,
        [=](size_t i) {
            return product(Pair<T>{srcA[2 * i], srcA[2 * i + 1]}, Pair<T>{srcB[2 * i], srcB[2 * i + 1]});
        },
        [=](auto w, size_t i) {
            constexpr typename MakeInts<w>::type indices;
            const auto a = held(load<w>(srcA + 2 * i));
            const auto b = held(load<w>(srcB + 2 * i));
            return multiplySubAdd<T, w>(a, evenTwice(b, indices), exchanged(a, indices) * oddTwice(b, indices));
        });
}

template <class T>
void conj2(const T* src, T* dst, size_t count) {
    mapPairs(
        dst, count,
        [=](size_t i) {
            return Pair<T>{src[2 * i], negated<T, 1>(src[2 * i + 1])};
        },
        [=](auto w, size_t i) { return conjugated<T, w>(load<w>(src + 2 * i)); });
}

template <class T>
void conjFlip2(const T* src, T* dst, size_t count) {
    mapPairs(
        dst, count,
        [=](size_t i) {
            const T* const from = src + 2 * (count - 1 - i);
            return Pair<T>{from[0], negated<T, 1>(from[1])};
        },
        [=](auto w, size_t i) {
            const auto forward = load<w>(src + 2 * (count - i) - w);
            return conjugated<T, w>(pairsReversed(forward, typename MakeInts<w>::type{}));
        });
}

template <class T>
constexpr kernels::ArithOf<T> entries = {set<T>,         copy<T>,  add1<T>,       mpy1<T>,        add3<T>,
                                         sub3<T>,        mpy3<T>,  complexSet<T>, complexAdd1<T>, complexMpy1<T>,
                                         complexMpy3<T>, conj2<T>, conjFlip2<T>};

}   // namespace

extern const kernels::ArithTable arith;
const kernels::ArithTable arith = {{entries<float>, entries<double>}};

}   // namespace vek::VEK_LEVEL
