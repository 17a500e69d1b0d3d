// The loop of the element-wise kernels, and the vector operations that only they need. Internal linkage
// throughout, for the reasons that simd.h gives.
#pragma once

#include "simd.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T>
struct UintOf;
template <>
struct UintOf<float> {
    typedef uint32_t type;
};
template <>
struct UintOf<double> {
    typedef uint64_t type;
};

template <class T, int W>
using IntVec = Vec<typename IntOf<T>::type, W>;

template <class T, int W>
using UintVec = Vec<typename UintOf<T>::type, W>;

template <class T>
inline constexpr
    typename IntOf<T>::type signBit = static_cast<typename IntOf<T>::type>(uint64_t{1} << (8 * sizeof(T) - 1));

// The same bits as another type of the same size; scalars as well as vectors.
template <class To, class From>
VEK_INLINE To bitsAs(From value) {
    static_assert(sizeof(To) == sizeof(From));
    To result;
    __builtin_memcpy(&result, &value, sizeof result);
    return result;
}

template <class T, int W>
VEK_INLINE Vec<T, W> magnitude(Vec<T, W> value) {
    return bitsAs<Vec<T, W>>(bitsAs<IntVec<T, W>>(value) & splat<W>(~signBit<T>));
}
template <class T, int W>
VEK_INLINE Vec<T, W> withSignOf(Vec<T, W> value, Vec<T, W> sign) {
    const IntVec<T, W> mask = splat<W>(signBit<T>);
    return bitsAs<Vec<T, W>>((bitsAs<IntVec<T, W>>(value) & ~mask) | (bitsAs<IntVec<T, W>>(sign) & mask));
}
template <class T, int W>
VEK_INLINE Vec<T, W> negated(Vec<T, W> value) {
    return bitsAs<Vec<T, W>>(bitsAs<IntVec<T, W>>(value) ^ splat<W>(signBit<T>));
}

// Whether a comparison held in any lane.
template <int W, class M>
VEK_INLINE bool any(M held) {
    if constexpr (W == 1) {
        return held != 0;
#if defined(__AVX512F__)
    } else if constexpr (sizeof(M) == 64) {
        const __m512i bits = bitsAs<__m512i>(held);
        return _mm512_test_epi32_mask(bits, bits) != 0;
#endif
#if defined(__AVX2__)
    } else if constexpr (sizeof(M) == 32) {
        return _mm256_movemask_epi8(bitsAs<__m256i>(held)) != 0;
#endif
#if defined(__SSE2__)
    } else if constexpr (sizeof(M) == 16) {
        return _mm_movemask_epi8(bitsAs<__m128i>(held)) != 0;
#endif
    }
}
// Whether it held in all of them.
template <int W, class M>
VEK_INLINE bool all(M held) {
    if constexpr (W == 1)
        return held != 0;
    else
        return !any<W>(~held);
}

// Whether a < b in any lane. The overloads keep comparisons in mask registers, where the compiler would make vectors of
// them for any() to turn back.
template <int W, class V>
VEK_INLINE bool anyBelow(V a, V b) {
    return any<W>(a < b);
}
#if defined(__AVX512F__)
template <>
VEK_INLINE bool anyBelow<16>(__m512 a, __m512 b) {
    return _mm512_cmp_ps_mask(a, b, _CMP_LT_OQ) != 0;
}
template <>
VEK_INLINE bool anyBelow<8>(__m512d a, __m512d b) {
    return _mm512_cmp_pd_mask(a, b, _CMP_LT_OQ) != 0;
}
template <>
VEK_INLINE bool anyBelow<16>(IntVec<float, 16> a, IntVec<float, 16> b) {
    return _mm512_cmplt_epi32_mask(bitsAs<__m512i>(a), bitsAs<__m512i>(b)) != 0;
}
#endif

// Correctly rounded. No negative lane may come in: it would raise the invalid-operation exception.
#if defined(__SSE2__)
VEK_INLINE float squareRoot(float a) { return _mm_cvtss_f32(_mm_sqrt_ss(_mm_set_ss(a))); }
VEK_INLINE double squareRoot(double a) { return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_setzero_pd(), _mm_set_sd(a))); }
VEK_INLINE __m128 squareRoot(__m128 a) { return _mm_sqrt_ps(a); }
VEK_INLINE __m128d squareRoot(__m128d a) { return _mm_sqrt_pd(a); }
#else
VEK_INLINE float squareRoot(float a) { return __builtin_sqrtf(a); }
VEK_INLINE double squareRoot(double a) { return __builtin_sqrt(a); }
#endif
#if defined(__AVX__)
VEK_INLINE __m256 squareRoot(__m256 a) { return _mm256_sqrt_ps(a); }
VEK_INLINE __m256d squareRoot(__m256d a) { return _mm256_sqrt_pd(a); }
#endif
#if defined(__AVX512F__)
VEK_INLINE __m512 squareRoot(__m512 a) { return _mm512_maskz_sqrt_ps(0xffff, a); }
VEK_INLINE __m512d squareRoot(__m512d a) { return _mm512_maskz_sqrt_pd(0xff, a); }
#endif

// Keeps a vector in a register that several instructions share; the compiler would load it once for each.
template <class V>
VEK_INLINE V held(V value) {
#if defined(__SSE2__)
    if constexpr (sizeof(V) >= 16) __asm__("" : "+v"(value));
#endif
    return value;
}

// W / 2 reals, each twice: beside pairs, of which each takes one real.
template <class V, class Half, int... I>
VEK_INLINE V twice(Half half, Ints<I...>) {
    return __builtin_shufflevector(half, half, (I / 2)...);
}
template <int W, class T>
VEK_INLINE Vec<T, W> loadTwice(const T* from) {
    using V = Vec<T, W>;
    if constexpr (W <= 2) return splat<W>(*from);
#if defined(__SSE2__)
    else if constexpr (sizeof(V) == 16)
        return twice<V>(bitsAs<V>(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from))),
                        typename MakeInts<W>::type{});
#endif
    else
        return twice<V>(load<W / 2>(from), typename MakeInts<W>::type{});
}

// What a loop waits for, which decides how it is unrolled.
enum class Bound {
    byArithmetic,   // divisions and roots
    byMemory,       // sources and results
    byStores,       // results alone: no source, or dst itself
};

// What one step of a loop covers when it works at a width of W reals: so many elements, of so many reals each.
template <Bound B>
struct RealStep {   // one vector of reals
    static constexpr Bound bound = B;
    static constexpr size_t reals = 1;
    static constexpr size_t elements(int width) { return static_cast<size_t>(width); }
};
template <Bound B>
struct PairStep {   // one vector of (re, im) pairs; at width 1 one pair
    static constexpr Bound bound = B;
    static constexpr size_t reals = 2;
    static constexpr size_t elements(int width) { return width == 1 ? 1 : static_cast<size_t>(width) / 2; }
};
template <Bound B>
struct PlanarStep {   // one vector of real parts and one of imaginary parts
    static constexpr Bound bound = B;
    static constexpr size_t reals = 2;
    static constexpr size_t elements(int width) { return static_cast<size_t>(width); }
};

// Results of so many bytes are taken to stay, with their sources, in the first-level cache.
constexpr size_t firstLevelBytes = 16384;

// Fewer than Limit elements: one step of the widest width that fits, and one more for the rest.
template <class T, int W, size_t Limit, class Step, class Compute, class Put>
VEK_INLINE void few(size_t n, Compute compute, Put put) {
    if constexpr (W == 1) {
        unroll<Limit - 1>([&](auto k) {
            const size_t i = k;
            if (i < n) put(i, compute(Int<1>{}, i));
        });
    } else {
        constexpr size_t step = Step::elements(W);
        if constexpr (step > 1)
            if (n < step) return few<T, narrower<T, W>, step, Step>(n, compute, put);
        const auto first = compute(Int<W>{}, 0);
        if (n > step) put(n - step, compute(Int<W>{}, n - step));
        put(0, first);
    }
}

// Eight registers are too few for long runs and short ones in one function.
#if defined(__i386__)
#define VEK_LONG_RUN [[gnu::noinline]]
#else
#define VEK_LONG_RUN VEK_INLINE
#endif

// More than 16 steps that are bound by memory.
//
// They begin with one that is not aligned and go on where stores are aligned to the vector: a store that straddles
// cache lines costs as much as two. Eight steps at a time make the speed independent of where the loop comes to lie in
// memory; beyond the first-level cache the processor fetches ahead better for one at a time.
template <class T, class Step, class D, class Compute, class Put>
VEK_LONG_RUN void many(const D* dst, size_t n, Compute compute, Put put) {
    constexpr int w = lanes<T>;
    constexpr size_t step = Step::elements(w);
    constexpr size_t unrolled = 8;
    constexpr size_t elementBytes = Step::reals * sizeof(D);
    const size_t misaligned = reinterpret_cast<uintptr_t>(dst) % (w * sizeof(D));
    size_t i = misaligned % elementBytes == 0 ? (w * sizeof(D) - misaligned) / elementBytes : step;
    const auto last = compute(Int<w>{}, n - step);
    const auto first = compute(Int<w>{}, 0);
    const auto second = compute(Int<w>{}, i);
    put(0, first);
    put(i, second);
    i += step;
    if (Step::bound == Bound::byStores || n <= firstLevelBytes / elementBytes)
        for (const size_t stop = n - unrolled * step; i < stop; i += unrolled * step)
            unroll<unrolled>([&](auto k) VEK_INLINE_LAMBDA { put(i + k * step, compute(Int<w>{}, i + k * step)); });
#pragma GCC unroll 1
    for (; i < n - step; i += step) put(i, compute(Int<w>{}, i));
    put(n - step, last);
}

// Runs compute(Int<W>, i), which reads the sources of one step that begins at element i and returns its
// results, and put(i, results), which stores them, over n elements; `dst` is where put(0, ...) begins.
//
// The last step ends at element n and may overlap the one before it. So that dst may equal a source, results of steps
// that overlap are all computed before one of them is stored.
//
// T is the widest type of the step: its lanes are the step's width. Results may be of another type, D: a step that
// reads int16 and writes int32 goes by the lanes of int32, and so does one that reads int32 and writes int16.
template <class T, class Step, class D, class Compute, class Put>
VEK_INLINE void forAll(const D* dst, size_t n, Compute compute, Put put) {
    constexpr int w = lanes<T>;
    constexpr size_t step = Step::elements(w);
    if constexpr (w == 1) {
        for (size_t i = 0; i < n; ++i) put(i, compute(Int<1>{}, i));
    } else {
        if constexpr (step > 1)
            if (n < step) return few<T, narrower<T, w>, step, Step>(n, compute, put);
        if constexpr (Step::bound == Bound::byArithmetic) {
            const auto last = compute(Int<w>{}, n - step);
#pragma GCC unroll 1
            for (size_t i = 0; i < n - step; i += step) put(i, compute(Int<w>{}, i));
            put(n - step, last);
        } else if (n <= 16 * step) {
            const auto last = compute(Int<w>{}, n - step);
#pragma GCC unroll 16
            for (size_t i = 0; i < n - step; i += step) put(i, compute(Int<w>{}, i));
            put(n - step, last);
        } else {
            many<T, Step>(dst, n, compute, put);
        }
    }
}

// dst[i ...] = compute(Int<W>, i), a vector of W reals.
template <Bound B = Bound::byMemory, class T, class Compute>
VEK_INLINE void mapReals(T* dst, size_t n, Compute compute) {
    forAll<T, RealStep<B>>(dst, n, compute, [=](size_t i, auto value) VEK_INLINE_LAMBDA { store(dst + i, value); });
}

// Bytes from which the C library's copy is faster: where source and destination outgrow the first-level
// cache, it moves whole cache lines. `script/bench arith` shows both sides of the limit.
inline constexpr size_t longCopy = 24 * 1024;

template <class T>
VEK_INLINE void copyReals(const T* src, T* dst, size_t n) {
    if (n * sizeof(T) >= longCopy) {
        __builtin_memmove(dst, src, n * sizeof(T));
        return;
    }
    mapReals(dst, n, [=](auto w, size_t i) { return load<w>(src + i); });
}

// ---- Reductions -----------------------------------------------------------------------------------------------------

// Several chains, so that each addition need not wait for the one before it.
#if defined(__i386__)
inline constexpr int chains = 2;
#else
inline constexpr int chains = 4;
#endif

// All lanes of a vector joined by `join`, which takes two vectors: halves first, in an order that only the width sets.
template <class T, int W, int Apart, class Join, int... I>
VEK_INLINE T joinLanes(Vec<T, W> v, Join join, Ints<I...> indices) {
    if constexpr (W == 1) {
        return v;
    } else {
        const Vec<T, W> joined = join(v, Vec<T, W>(__builtin_shufflevector(v, v, (I + Apart) % W...)));
        if constexpr (Apart == 1)
            return joined[0];
        else
            return joinLanes<T, W, Apart / 2>(joined, join, indices);
    }
}
template <class T, int W, class Join>
VEK_INLINE T joinLanes(Vec<T, W> v, Join join) {
    return joinLanes<T, W, W / 2>(v, join, typename MakeInts<W>::type{});
}

template <class T, int W, class Step, int Chains, class Start, class Include, class Join, class Fold>
VEK_INLINE auto reduceAt(size_t i, size_t n, Start start, Include include, Join join, Fold fold) {
    constexpr size_t step = Step::elements(W);
    auto first = start(Int<W>{});
    if constexpr (W == lanes<T>) {
        decltype(first) chain[Chains];
        unroll<Chains>([&](auto k) VEK_INLINE_LAMBDA { chain[k] = first; });
        for (; n - i >= Chains * step; i += Chains * step)
            unroll<Chains>([&](auto k) VEK_INLINE_LAMBDA { chain[k] = include(Int<W>{}, i + k * step, chain[k]); });
        first = chain[0];
        unroll<Chains - 1>([&](auto k) VEK_INLINE_LAMBDA { first = join(first, chain[k + 1]); });
    }
    for (; n - i >= step; i += step) first = include(Int<W>{}, i, first);
    const auto result = fold(Int<W>{}, first);
    if constexpr (step == 1)
        return result;
    else
        return join(result, reduceAt<T, narrower<T, W>, Step, Chains>(i, n, start, include, join, fold));
}

// One result of n elements, in an order of operations that only n and the level set, wherever the data lie.
//
// start(Int<W>) is what an accumulator at a width of W lanes of T begins as; include(Int<W>, i, accumulator) the
// accumulator with the step that begins at element i; join(a, b) two accumulators, or results, in one; fold(Int<W>,
// accumulator) its lanes as one result. T is the widest type of the step.
template <class T, class Step, int Chains = chains, class Start, class Include, class Join, class Fold>
VEK_INLINE auto reduce(size_t n, Start start, Include include, Join join, Fold fold) {
    return reduceAt<T, lanes<T>, Step, Chains>(0, n, start, include, join, fold);
}

// The same over elements i ... n - 1, by halves down to blocks of so many steps of each chain: the rounding errors of a
// sum grow with the logarithm of n.
inline constexpr size_t pairwiseSteps = 64;
template <class T, class Step, class Start, class Include, class Join, class Fold>
[[gnu::noinline]] auto reducePairwise(size_t i, size_t n, Start start, Include include, Join join, Fold fold) {
    constexpr size_t block = pairwiseSteps * chains * Step::elements(lanes<T>);
    if (n - i <= block) return reduceAt<T, lanes<T>, Step, chains>(i, n, start, include, join, fold);
    const size_t middle = i + (n - i + block - 1) / block / 2 * block;
    const auto left = reducePairwise<T, Step>(i, middle, start, include, join, fold);
    return join(left, reducePairwise<T, Step>(middle, n, start, include, join, fold));
}

// The sum over vectors of T: include(Int<W>, i, sum) is the sum with the W values from i on.
template <class T, class Include>
VEK_INLINE T sumOf(size_t n, Include include) {
    const auto join = [](auto a, auto b) VEK_INLINE_LAMBDA { return a + b; };
    return reduce<T, RealStep<Bound::byMemory>>(
        n, [](auto w) VEK_INLINE_LAMBDA { return Vec<T, w>{}; }, include, join,
        [=](auto w, auto sum) VEK_INLINE_LAMBDA { return joinLanes<T, w>(sum, join); });
}

}   // namespace
}   // namespace vek::VEK_LEVEL
