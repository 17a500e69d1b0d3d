// Kernels of the complex and real transforms. A level lays out its own working tables; callers keep them by order.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace vek::kernels {

// exp(-2 pi i k / n), 0 <= k < n.
using RootFunction = void (*)(uint64_t k, uint64_t n, double* re, double* im);

// Where complex data lie: interleaved pairs from `re` when `im` is null, else two arrays.
template <class T>
struct FftData {
    T* re;
    T* im;
};

template <class T>
struct FftOf {
    // Sizes in elements of T. Tables and scratch want 64-byte alignment.
    uint64_t (*tableLength)(int order);
    void (*fillTable)(int order, T* table, RootFunction root);
    uint64_t (*scratchLength)(int order);

    // out = forward transform of in; when inverse, the opposite sign of the exponent, times scale. In place or not.
    void (*transform)(const FftData<const T>& in, const FftData<T>& out, int order, bool inverse, T scale,
                      const T* table, T* scratch);

    // Real signals of 2m samples, m >= 2, through the transform of their m complex pairs. The split table serves
    // both ways.
    uint64_t (*splitLength)(int order);   // order: log2 of m
    void (*fillSplit)(int order, T* table, RootFunction root);
    // From that transform, in place, to the half spectrum: X0 and Xm in z[0] and z[1], bin k in z[2k], z[2k + 1];
    // conjugated when inverse, times scale.
    void (*realSplit)(T* z, size_t m, bool inverse, T scale, const T* split);
    // From the half spectrum x0, xm and the bins 1 ... m - 1 in bins[0], bins[1] ... to what a transform of m points
    // of the inverse direction turns into the signal. bins may be z + 2.
    void (*realMerge)(T x0, T xm, const T* bins, T* z, size_t m, bool inverse, const T* split);
};

struct FftTable {
    FftOf<float> f;
    FftOf<double> d;
};

}   // namespace vek::kernels
