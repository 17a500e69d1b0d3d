// The vector layer of the kernels: the compiler's vector types at the width of the level that is being built.
//
// Everything here has internal linkage, for each level compiles it with its own instructions: a function that the
// linker could merge with another level's copy would run on processors that lack them. For the same reason kernel
// files include no standard header with inline functions; sizes and fixed-width integers come from C headers.
#pragma once

#include <stddef.h>
#include <stdint.h>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#ifndef VEK_LEVEL
#error "kernel files are compiled once per level, with VEK_LEVEL naming it"
#endif

#define VEK_INLINE [[gnu::always_inline]] inline
#define VEK_INLINE_LAMBDA __attribute__((always_inline))   // after the parameters

namespace vek::VEK_LEVEL {
namespace {

#define VEK_LEVEL_portable 0
#define VEK_LEVEL_sse2 16
#define VEK_LEVEL_avx2 32
#define VEK_LEVEL_avx512 64
#define VEK_PASTE(a, b) a##b
#define VEK_BYTES_OF(level) VEK_PASTE(VEK_LEVEL_, level)

inline constexpr int vectorBytes = VEK_BYTES_OF(VEK_LEVEL);   // 0: plain scalars

// Lanes of the widest vector of T; 1 where the level has none.
template <class T>
inline constexpr int lanes = vectorBytes == 0 ? 1 : vectorBytes / static_cast<int>(sizeof(T));

// The next narrower width: half of W, down to 16 bytes, then scalars. Shorter vectors would be MMX registers on
// 32-bit processors.
template <class T, int W>
inline constexpr int narrower = W / 2 * static_cast<int>(sizeof(T)) >= 16 ? W / 2 : 1;

template <class T, int W>
struct VecType {
    typedef T type __attribute__((vector_size(W * sizeof(T))));
};
template <class T>
struct VecType<T, 1> {
    typedef T type;
};
template <class T, int W>
using Vec = typename VecType<T, W>::type;

template <class T>
struct IntOf;
template <>
struct IntOf<float> {
    typedef int32_t type;
};
template <>
struct IntOf<double> {
    typedef int64_t type;
};

// Any alignment.
template <int W, class T>
VEK_INLINE Vec<T, W> load(const T* from) {
    Vec<T, W> value;
    __builtin_memcpy(&value, from, sizeof value);
    return value;
}

template <class V, class T>
VEK_INLINE void store(T* to, V value) {
    if constexpr (requires { value[0]; }) {
        __builtin_memcpy(to, &value, sizeof value);
    } else {
        const T lane = static_cast<T>(value);   // int, where one lane of int16 was computed
        __builtin_memcpy(to, &lane, sizeof lane);
    }
}

// To bytes: all of the value.
template <class V>
VEK_INLINE void store(unsigned char* to, V value) {
    __builtin_memcpy(to, &value, sizeof value);
}

// An integer known to the compiler, and a loop of N steps that leaves none at run time.
template <int N>
struct Int {
    constexpr operator int() const { return N; }
};
template <int... I>
struct Ints {};
template <int N, int... I>
struct MakeInts : MakeInts<N - 1, N - 1, I...> {};
template <int... I>
struct MakeInts<0, I...> {
    typedef Ints<I...> type;
};
template <class F, int... I>
VEK_INLINE void unrollOver(Ints<I...>, [[maybe_unused]] F body) {
    (body(Int<I>{}), ...);
}
template <int N, class F>
VEK_INLINE void unroll(F body) {
    unrollOver(typename MakeInts<N>::type{}, body);
}

// The same value in every lane.
template <class V, class T, int... I>
VEK_INLINE V splatOver(T value, Ints<I...>) {
    return V{(static_cast<void>(I), value)...};
}
template <int W, class T>
VEK_INLINE Vec<T, W> splat(T value) {
    if constexpr (W == 1)
        return value;
    else
        return splatOver<Vec<T, W>>(value, typename MakeInts<W>::type{});
}

// a * b + c and c - a * b, fused where the level has the instruction.
#if defined(__FMA__)
#define VEK_FUSED(type, prefix, suffix)                                                      \
    VEK_INLINE type fma(type a, type b, type c) { return prefix##_fmadd_##suffix(a, b, c); } \
    VEK_INLINE type fnma(type a, type b, type c) { return prefix##_fnmadd_##suffix(a, b, c); }
VEK_FUSED(__m128, _mm, ps)
VEK_FUSED(__m128d, _mm, pd)
VEK_FUSED(__m256, _mm256, ps)
VEK_FUSED(__m256d, _mm256, pd)
#if defined(__AVX512F__)
VEK_FUSED(__m512, _mm512, ps)
VEK_FUSED(__m512d, _mm512, pd)
#endif
#undef VEK_FUSED
VEK_INLINE float fma(float a, float b, float c) { return __builtin_fmaf(a, b, c); }
VEK_INLINE float fnma(float a, float b, float c) { return __builtin_fmaf(-a, b, c); }
VEK_INLINE double fma(double a, double b, double c) { return __builtin_fma(a, b, c); }
VEK_INLINE double fnma(double a, double b, double c) { return __builtin_fma(-a, b, c); }
#else
template <class V>
VEK_INLINE V fma(V a, V b, V c) {
    return a * b + c;
}
template <class V>
VEK_INLINE V fnma(V a, V b, V c) {
    return c - a * b;
}
#endif

// Pairs (re, im) come apart, and go together again, within 16-byte lanes only: those shuffles are the cheap ones. The
// price is that W complex values stand in an order of their own, laneOf, which all arithmetic ignores.
template <class T>
constexpr int laneOf(int element, int width) {
    if (width <= 2) return element;
    if (sizeof(T) == 8) return element / (width / 2) + element % (width / 2) * 2;
    return (element & 1) + element / (width / 2) * 2 + (element % (width / 2)) / 2 * 4;
}
// The element that stands in a lane.
template <class T>
constexpr int elementOf(int lane, int width) {
    int element = 0;
    while (laneOf<T>(element, width) != lane) ++element;
    return element;
}

// In each lane of two or four T: the even elements of a, then those of b; and the odd ones.
template <class T, class V, int... I>
VEK_INLINE V pickEven(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I / n * n + I % (n / 2) * 2 + I % n / (n / 2) * w)...);
}
template <class T, class V, int... I>
VEK_INLINE V pickOdd(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I / n * n + I % (n / 2) * 2 + 1 + I % n / (n / 2) * w)...);
}
// In each lane: a0 b0 ... of its lower half; of its upper half.
template <class T, class V, int... I>
VEK_INLINE V unpackLow(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I / n * n + I % n / 2 + I % 2 * w)...);
}
template <class T, class V, int... I>
VEK_INLINE V unpackHigh(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I / n * n + n / 2 + I % n / 2 + I % 2 * w)...);
}
// Whole lanes: the even ones of a, then of b; the odd ones.
template <class T, class V, int... I>
VEK_INLINE V evenLanes(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I % (w / 2) / n * 2 * n + I % n + I / (w / 2) * w)...);
}
template <class T, class V, int... I>
VEK_INLINE V oddLanes(V a, V b, Ints<I...>) {
    constexpr int w = sizeof...(I);
    constexpr int n = 16 / sizeof(T);
    return __builtin_shufflevector(a, b, (I % (w / 2) / n * 2 * n + n + I % n + I / (w / 2) * w)...);
}
// From memory order to lane order and back.
template <class T, class V, int... I>
VEK_INLINE V toLanes(V a, Ints<I...>) {
    return __builtin_shufflevector(a, a, elementOf<T>(I, sizeof...(I))...);
}
template <class T, class V, int... I>
VEK_INLINE V fromLanes(V a, Ints<I...>) {
    return __builtin_shufflevector(a, a, laneOf<T>(I, sizeof...(I))...);
}
template <class V, int... I>
VEK_INLINE V reversed(V a, Ints<I...>) {
    constexpr int w = sizeof...(I);
    return __builtin_shufflevector(a, a, (w - 1 - I)...);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
