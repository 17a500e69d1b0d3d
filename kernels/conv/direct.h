// Direct convolution: every product is taken. Internal linkage throughout, for the reasons that simd.h gives.
//
// A tile of results stays in registers while all taps go by; each tap is spread over a vector and multiplies the signal
// from as many elements further back. A load of the signal that is not aligned costs as much as two multiply-adds, so
// taps a vector's length apart go together: they need the same vectors, one place further on.
//
// Where the signal ends inside a vector, it is read from copies of its ends with zeros beyond, and the tap is zero in
// the same lanes: an infinite tap must not meet a zero that is not the caller's.
#pragma once

#include "kernels/conv.h"
#include "kernels/pairs.h"

namespace vek::VEK_LEVEL {
namespace {

// Vectors of a tile with so many sums each, and chains of additions where there is one vector: as many as registers
// hold beside a few operands.
#if defined(__AVX512F__)
template <int Parts>
inline constexpr int tileVectors = 12 / Parts;
#elif defined(__i386__)
template <int Parts>
inline constexpr int tileVectors = 4 / Parts;
#else
template <int Parts>
inline constexpr int tileVectors = Parts == 1 ? 10 : 4;
#endif
// Taps that go together at most.
#if defined(__AVX512F__)
template <int Parts>
inline constexpr int mostTaps = 4 / Parts;
#elif defined(__i386__)
template <int Parts>
inline constexpr int mostTaps = 2 / Parts;
#else
template <int Parts>
inline constexpr int mostTaps = 2;
#endif

constexpr size_t lesserSize(size_t a, size_t b) { return a < b ? a : b; }
constexpr size_t difference(size_t a, size_t b) { return a > b ? a - b : 0; }   // not below zero

// Both ends of the signal, W reals each: before the first one zeros, after the last one zeros. The masks have all bits
// where the signal is.
template <class T, int W>
struct Ends {
    using Mask = typename IntOf<T>::type;
    T first[2 * W], last[2 * W];
    Mask inFirst[2 * W], inLast[2 * W];

    VEK_INLINE Ends(const T* signal, size_t reals) {
        for (int i = 0; i < 2; ++i) {
            store(first + i * W, splat<W>(T{0}));
            store(last + i * W, splat<W>(T{0}));
            store(inFirst + i * W, splat<W>(Mask{0}));
            store(inLast + i * W, splat<W>(Mask{0}));
        }
        if (reals >= W) {
            store(first + W, load<W>(signal));
            store(last, load<W>(signal + reals - W));
            store(inFirst + W, splat<W>(Mask{-1}));
            store(inLast, splat<W>(Mask{-1}));
            return;
        }
        for (size_t i = 0; i < reals; ++i) {
            first[W + i] = signal[i];
            last[W - reals + i] = signal[i];
            inFirst[W + i] = inLast[W - reals + i] = -1;
        }
    }
};

// SignalReals and TapReals are the reals of an element: 1 or 2. A complex tap makes two sums, by its real part and by
// its imaginary one; only where they are stored they become complex results.
template <class T, int SignalReals, int TapReals, int W>
struct Direct {
    static constexpr int elements = W / SignalReals;   // of results in a vector
    static constexpr int resultReals = SignalReals > TapReals ? SignalReals : TapReals;
    static constexpr int chainCount = chains / TapReals;
    using V = Vec<T, W>;
    using Sums = V[TapReals];

    const T* signal;
    size_t length;
    const T* taps;
    size_t tapCount;
    T* y;

    VEK_INLINE V tap(size_t k, int part) const { return splat<W>(taps[TapReals * k + part]); }
    VEK_INLINE static void include(Sums& sums, V value, const Sums& tap) {
        unroll<TapReals>([&](auto part) VEK_INLINE_LAMBDA { sums[part] = fma(value, tap[part], sums[part]); });
    }
    VEK_INLINE void spread(Sums& to, size_t k) const {
        unroll<TapReals>([&](auto part) VEK_INLINE_LAMBDA { to[part] = tap(k, part); });
    }

    VEK_INLINE void put(size_t n, const Sums& sums) const {
        T* to = y + resultReals * n;
        if constexpr (TapReals == 1)
            store(to, sums[0]);
        else if constexpr (SignalReals == 2)
            store(to, V(sums[0] + alternating<W>(T{-1}, T{1}) * exchanged(sums[1], typename MakeInts<W>::type{})));
        else
            putParts(to, sums[0], sums[1], typename MakeInts<W>::type{});
    }
    template <int... I>
    VEK_INLINE static void putParts(T* to, V re, V im, Ints<I...>) {
        store(to, V(__builtin_shufflevector(re, im, (I / 2 + I % 2 * W)...)));
        store(to + W, V(__builtin_shufflevector(re, im, (W / 2 + I / 2 + I % 2 * W)...)));
    }

    // The taps from k on, as many together as there are: what one makes of a vector of the signal for one vector of
    // results, the tap a vector's length further on makes of it for the next one.
    template <int Taps, int Vectors>
    VEK_INLINE void together(Sums (&sums)[Vectors], const T* from, size_t k) const {
        constexpr size_t steps = Taps > 1 ? elements : 1;
        for (; tapCount - k >= steps * Taps; k += (Taps - 1) * steps) {
#pragma GCC unroll 2
            for (size_t i = 0; i < steps; ++i, ++k) {
                const T* at = from - SignalReals * k;
                Sums each[Taps];
                unroll<Taps>([&](auto t) VEK_INLINE_LAMBDA { spread(each[t], k + t * elements); });
                unroll<Vectors + Taps - 1>([&](auto s) VEK_INLINE_LAMBDA {
                    constexpr int v = s + 1 - Taps;
                    const V value = held(load<W>(at + v * W));
                    unroll<Taps>([&](auto t) VEK_INLINE_LAMBDA {
                        if constexpr (v + t >= 0 && v + t < Vectors) include(sums[v + t], value, each[t]);
                    });
                });
            }
        }
        if constexpr (Taps > 1) together<Taps / 2>(sums, from, k);
    }

    // The tile of results from n on, to which every tap contributes everywhere.
    VEK_INLINE void tile(size_t n) const {
        constexpr int vectors = tileVectors<TapReals>;
        Sums sums[vectors] = {};
        together<mostTaps<TapReals>>(sums, signal + SignalReals * n, 0);
        unroll<vectors>([&](auto v) VEK_INLINE_LAMBDA { put(n + v * elements, sums[v]); });
    }

    // add(chain, k) for first <= k < last; neighbours in different chains.
    template <class Add>
    VEK_INLINE static void eachTap(size_t first, size_t last, Add add) {
        size_t k = first;
        for (; k + chainCount <= last; k += chainCount)
            unroll<chainCount>([&](auto chain) VEK_INLINE_LAMBDA { add(chain, k + chain); });
        for (; k < last; ++k) add(Int<0>{}, k);
    }

    // One vector of results anywhere.
    void vector(size_t n, const Ends<T, W>& ends) const {
        Sums sums[chainCount] = {};
        const size_t whole = difference(n + elements, length);   // the first tap with all of its lanes in the signal
        const size_t stop = lesserSize(tapCount, n + 1);         // after the last one
        const auto addPartly = [&](auto chain, size_t k, const T* values, const typename Ends<T, W>::Mask* mask)
                                   VEK_INLINE_LAMBDA {
                                       Sums one;
                                       spread(one, k);
                                       unroll<TapReals>([&](auto part) VEK_INLINE_LAMBDA {
                                           one[part] = bitsAs<V>(bitsAs<IntVec<T, W>>(one[part]) & load<W>(mask));
                                       });
                                       include(sums[chain], load<W>(values), one);
                                   };
        eachTap(whole, stop, [&](auto chain, size_t k) VEK_INLINE_LAMBDA {
            Sums one;
            spread(one, k);
            include(sums[chain], load<W>(signal + SignalReals * (n - k)), one);
        });
        eachTap(n + 1, lesserSize(tapCount, n + elements), [&](auto chain, size_t k) VEK_INLINE_LAMBDA {
            const size_t at = W - SignalReals * (k - n);
            addPartly(chain, k, ends.first + at, ends.inFirst + at);
        });
        eachTap(difference(n + 1, length), lesserSize(stop, whole), [&](auto chain, size_t k) VEK_INLINE_LAMBDA {
            const size_t at = SignalReals * (n - k) + W - SignalReals * length;
            addPartly(chain, k, ends.last + at, ends.inLast + at);
        });
        unroll<chainCount - 1>([&](auto chain) VEK_INLINE_LAMBDA {
            unroll<TapReals>([&](auto part) VEK_INLINE_LAMBDA { sums[0][part] += sums[chain + 1][part]; });
        });
        put(n, sums[0]);
    }

    // From the element `first` on to `last`; vectors may go over, and the last one goes back, to the end of y.
    void vectors(size_t first, size_t last, const Ends<T, W>& ends) const {
        const size_t count = length + tapCount - 1;
        for (size_t n = first; n < last; n += elements) vector(lesserSize(n, count - elements), ends);
    }

    // count >= elements.
    void run() const {
        constexpr size_t tileElements = tileVectors<TapReals> * elements;
        const Ends<T, W> ends(signal, SignalReals * length);
        const size_t count = length + tapCount - 1;
        size_t n = tapCount - 1;
        if (length < tileElements + n) return vectors(0, count, ends);
        vectors(0, n, ends);
        for (; n + tileElements <= length; n += tileElements) tile(n);
        if (n < length) tile(length - tileElements);
        vectors(length, count, ends);
    }
};

// Without vectors: the sum of the products of one part of the signal with one of the taps, and the results of these.
template <class T, int SignalReals, int TapReals>
T sumAt(const T* signal, size_t length, const T* taps, size_t tapCount, size_t n) {
    T sum = 0;
    for (size_t k = difference(n + 1, length); k < lesserSize(tapCount, n + 1); ++k)
        sum = fma(signal[SignalReals * (n - k)], taps[TapReals * k], sum);
    return sum;
}
template <class T, int SignalReals, int TapReals>
void oneByOne(const T* signal, size_t length, const T* taps, size_t tapCount, T* y) {
    for (size_t n = 0; n < length + tapCount - 1; ++n) {
        const auto sum = [=](int part, int tapPart) {
            return sumAt<T, SignalReals, TapReals>(signal + part, length, taps + tapPart, tapCount, n);
        };
        if constexpr (SignalReals == 1 && TapReals == 1) {
            y[n] = sum(0, 0);
        } else {
            y[2 * n] = SignalReals == TapReals ? sum(0, 0) - sum(1, 1) : sum(0, 0);
            y[2 * n + 1] = SignalReals == TapReals ? sum(0, 1) + sum(1, 0) : SignalReals == 2 ? sum(1, 0) : sum(0, 1);
        }
    }
}

template <class T, int SignalReals, int TapReals, int W = lanes<T>>
void convolve(const T* signal, size_t length, const T* taps, size_t tapCount, T* y) {
    if constexpr (W == 1) {
        oneByOne<T, SignalReals, TapReals>(signal, length, taps, tapCount, y);
    } else {
        if (length + tapCount - 1 < W / SignalReals)
            return convolve<T, SignalReals, TapReals, narrower<T, W>>(signal, length, taps, tapCount, y);
        Direct<T, SignalReals, TapReals, W>{signal, length, taps, tapCount, y}.run();
    }
}

template <class T>
constexpr kernels::ConvOf<T> directSums = {
    {{convolve<T, 1, 1>, convolve<T, 1, 2>}, {convolve<T, 2, 1>, convolve<T, 2, 2>}}};

}   // namespace
}   // namespace vek::VEK_LEVEL
