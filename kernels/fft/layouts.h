// Where data lie: what a pass reads from and writes to.
//
// Each layout has read<W>(e) and write<W>(e, x) for the W complex values from element e on. The caller's are `Pairs`
// and `Arrays`. Between passes they are `Blocks`: no shuffles but in the first pass and in the last. Inverse transforms
// exchange real and imaginary parts on the way in and out, and scale on the way out.
#pragma once

#include "butterflies.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T>
struct BareOf {
    typedef T type;
};
template <class T>
struct BareOf<const T> {
    typedef T type;
};
template <class T>
using Bare = typename BareOf<T>::type;

// Pairs; Swap exchanges real and imaginary parts, and scales what it stores.
template <class T, bool Swap>
struct Pairs {
    T* at;
    T scale;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        Cx<V> x;
        if constexpr (W == 1) {
            x = {at[2 * e], at[2 * e + 1]};
        } else {
            const V a = load<W>(at + 2 * e);
            const V b = load<W>(at + 2 * e + W);
            using I = typename MakeInts<W>::type;
            x = {pickEven<Bare<T>>(a, b, I{}), pickOdd<Bare<T>>(a, b, I{})};
        }
        return Swap ? Cx<V>{x.im, x.re} : x;
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        if constexpr (Swap) {
            const auto factor = splat<W>(scale);
            x = {x.im * factor, x.re * factor};
        }
        if constexpr (W == 1) {
            at[2 * e] = x.re;
            at[2 * e + 1] = x.im;
        } else {
            using I = typename MakeInts<W>::type;
            store(at + 2 * e, unpackLow<T>(x.re, x.im, I{}));
            store(at + 2 * e + W, unpackHigh<T>(x.re, x.im, I{}));
        }
    }
};

// Two arrays; the caller exchanges them for the inverse direction.
template <class T>
struct Arrays {
    T* re;
    T* im;
    T scale;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        const Cx<V> x = {load<W>(re + e), load<W>(im + e)};
        if constexpr (W == 1) {
            return x;
        } else {
            using I = typename MakeInts<W>::type;
            return Cx<V>{toLanes<Bare<T>>(x.re, I{}), toLanes<Bare<T>>(x.im, I{})};
        }
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        const auto factor = splat<W>(scale);
        if constexpr (W > 1) {
            using I = typename MakeInts<W>::type;
            x = {fromLanes<T>(x.re, I{}), fromLanes<T>(x.im, I{})};
        }
        store(re + e, x.re * factor);
        store(im + e, x.im * factor);
    }
};

// Blocks of W real and W imaginary parts; e is a multiple of W.
template <class T>
struct Blocks {
    T* at;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        return Cx<V>{load<W>(at + 2 * e), load<W>(at + 2 * e + W)};
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        store(at + 2 * e, x.re);
        store(at + 2 * e + W, x.im);
    }
};

// How a pass takes its data: in registers where structures travel in them. On the 32-bit stack a copy would be read in
// wider pieces than it was written in, and each such read waits until the writes have reached the cache.
#if defined(__i386__)
template <class Data>
using Handed = const Data&;
#else
template <class Data>
using Handed = Data;
#endif

// Where instructions are ordered before registers are given out (cmake/levels.cmake), transforms in registers spill
// less in the order in which they are written.
#if defined(__i386__) && !defined(__clang__)
#define VEK_AS_WRITTEN [[gnu::optimize("no-schedule-insns")]]
#else
#define VEK_AS_WRITTEN
#endif

}   // namespace
}   // namespace vek::VEK_LEVEL
