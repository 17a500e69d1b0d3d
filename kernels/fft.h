// Kernels of the complex and real transforms. A level lays out its own working tables; callers keep them by order.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "tables.h"

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
    // Of interleaved pairs, and of two arrays; order at least 1.
    void (*transform)(const T* in, T* out, int order, bool inverse, T scale, const T* table, T* scratch);
    void (*transformParts)(FftData<const T> in, FftData<T> out, int order, bool inverse, T scale, const T* table,
                           T* scratch);

    // Real signals of 2m samples, m = 2^order >= 2. The split table serves both ways.
    uint64_t (*splitLength)(int order);
    void (*fillSplit)(int order, T* table, RootFunction root);
    // To the half spectrum: X0 and Xm in out[0] and out[1], bin k in out[2k], out[2k + 1]; conjugated and times scale
    // when inverse. In place or not.
    void (*realForward)(const T* in, T* out, int order, bool inverse, T scale, const T* table, const T* split,
                        T* scratch);
    // From the half spectrum x0, xm and the bins 1 ... m - 1 in bins[0], bins[1] ... to the signal times scale; of the
    // conjugated spectrum unless inverse. bins may be out + 2, or lie elsewhere.
    void (*realInverse)(T x0, T xm, const T* bins, T* out, int order, bool inverse, T scale, const T* table,
                        const T* split, T* scratch);
};

struct FftFloats : Tables<FftOf<float>> {};
struct FftDoubles : Tables<FftOf<double>> {};

}   // namespace vek::kernels
