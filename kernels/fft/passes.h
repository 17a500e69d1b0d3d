// Passes: one sweep over all data, a butterfly for every R of them.
//
// With n the length that is left and s the number of interleaved transforms (n s = N), a pass of radix r reads
// x[q + s(p + m j)], m = n / r, and writes y[q + s(r p + k)] = w^(p k) DFT_r(x)[k], w = exp(-2 pi i / n). Vectors run
// along q once s has reached their width; the first pass runs along p and transposes in registers.
#pragma once

#include "layouts.h"

namespace vek::VEK_LEVEL {
namespace {

// Transposes W vectors of W in lane order: element e of vector i becomes element i of vector e.
template <class T, int W>
VEK_INLINE void transpose(Vec<T, W>* v) {
    if constexpr (W > 1) {
        using V = Vec<T, W>;
        using I = typename MakeInts<W>::type;
        constexpr int logW = W == 2 ? 1 : W == 4 ? 2 : W == 8 ? 3 : 4;
        constexpr int top = logW - 1;   // the element bit that tells the two source vectors of a lane apart
        // Each stage exchanges a bit of the vector's index with one of the lane's position.
        const auto stage = [&](auto bit, auto low, auto high) {
            constexpr int step = 1 << decltype(bit){};
            unroll<W>([&](auto i) {
                if constexpr ((decltype(i){} & step) == 0) {
                    const V a = v[i];
                    const V b = v[i + step];
                    v[i] = low(a, b);
                    v[i + step] = high(a, b);
                }
            });
        };
        const auto unpack = [&](auto bit) {
            stage(
                bit, [](V a, V b) { return unpackLow<T>(a, b, I{}); },
                [](V a, V b) { return unpackHigh<T>(a, b, I{}); });
        };
        const auto lanesApart = [&](auto bit) {
            stage(
                bit, [](V a, V b) { return evenLanes<T>(a, b, I{}); }, [](V a, V b) { return oddLanes<T>(a, b, I{}); });
        };
        unpack(Int<top>{});
        if constexpr (sizeof(T) == 4) unpack(Int<0>{});
        constexpr int firstLaneBit = sizeof(T) == 4 ? 1 : 0;
        if constexpr (firstLaneBit < top) lanesApart(Int<firstLaneBit>{});
        if constexpr (firstLaneBit + 1 < top) lanesApart(Int<firstLaneBit + 1>{});
    }
}

template <class T, int W>
VEK_INLINE void transpose(Cx<Vec<T, W>>* a) {
    Vec<T, W> re[W];
    Vec<T, W> im[W];
    unroll<W>([&](auto i) {
        re[i] = a[i].re;
        im[i] = a[i].im;
    });
    transpose<T, W>(re);
    transpose<T, W>(im);
    unroll<W>([&](auto i) { a[i] = {re[i], im[i]}; });
}

// s = 1, m a multiple of W, R at least W. Twiddles stand per block of W values of p: R - 1 vectors of each part.
template <class T, int W, int R, class In>
[[gnu::noinline]] void firstPass(Handed<In> from, T* y, size_t m, const T* twiddles) {
    const In in = from;
    for (size_t p = 0; p < m; p += W) {
        Cx<Vec<T, W>> a[R];
        unroll<R>([&](auto j) { a[j] = in.template read<W>(p + m * j); });
        dft<T, W, R>(a);
        unroll<R - 1>([&](auto k) { a[k + 1] = a[k + 1] * Blocks<const T>{twiddles}.template read<W>(W * k); });
        twiddles += 2 * W * (R - 1);
        unroll<R / W>([&](auto group) {
            Cx<Vec<T, W>>* const square = a + group * W;
            transpose<T, W>(square);
            unroll<W>([&](auto i) { Blocks<T>{y}.template write<W>(R * (p + i) + W * group, square[i]); });
        });
    }
}

// One pass over s columns; row r of the input starts at element r * inRow. Twiddles stand per p: R - 1 pairs.
template <class T, int W, int R, class In>
[[gnu::noinline]] void columnPass(Handed<In> from, size_t inRow, T* y, size_t m, size_t s, const T* twiddles) {
    const In in = from;
    for (size_t p = 0; p < m; ++p) {
        for (size_t q = 0; q < s; q += W) {
            Cx<Vec<T, W>> a[R];
            unroll<R>([&](auto j) { a[j] = in.template read<W>(q + inRow * (p + m * j)); });
            dft<T, W, R>(a);
            Blocks<T>{y}.template write<W>(q + s * (R * p), a[0]);
            unroll<R - 1>([&](auto k) {
                const Cx<Vec<T, W>> w = {splat<W>(twiddles[2 * k]), splat<W>(twiddles[2 * k + 1])};
                Blocks<T>{y}.template write<W>(q + s * (R * p + k + 1), a[k + 1] * w);
            });
        }
        twiddles += 2 * (R - 1);
    }
}

// The pass that needs no twiddles, s columns of R values left. Works in place.
template <class T, int W, int R, class In, class Out>
[[gnu::noinline]] void lastPass(Handed<In> from, Handed<Out> to, size_t s) {
    const In in = from;
    const Out out = to;
    for (size_t q = 0; q < s; q += W) {
        Cx<Vec<T, W>> a[R];
        unroll<R>([&](auto j) { a[j] = in.template read<W>(q + s * j); });
        dft<T, W, R>(a);
        unroll<R>([&](auto k) { out.template write<W>(q + s * k, a[k]); });
    }
}

// The same for `columns` columns side by side, written to rows of the output that are outRow apart.
template <class T, int W, int R, class Out>
[[gnu::noinline]] void lastColumnPass(const T* x, Handed<Out> to, size_t outRow, size_t rows, size_t columns) {
    const Out out = to;
    const size_t s = rows * columns;
    for (size_t row = 0; row < rows; ++row) {
        for (size_t c = 0; c < columns; c += W) {
            Cx<Vec<T, W>> a[R];
            unroll<R>([&](auto j) { a[j] = Blocks<const T>{x}.template read<W>(row * columns + c + s * j); });
            dft<T, W, R>(a);
            unroll<R>([&](auto k) { out.template write<W>(c + outRow * (row + rows * k), a[k]); });
        }
    }
}

}   // namespace
}   // namespace vek::VEK_LEVEL
