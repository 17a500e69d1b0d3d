// Kernels of the discrete Fourier transform of any length.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "tables.h"

namespace vek::kernels {

// Complex data and roots lie as pairs; `table` holds exp(-2 pi i m / length), 0 <= m < length.
template <class T>
struct DftOf {
    uint64_t (*scratchLength)(int length);   // in elements of T

    // dst[k] = scale * sum over n of src[n] exp(-2 pi i n k / length); when inverse, the opposite sign of the exponent.
    // dst may overlap src in any way.
    void (*transform)(const T* src, T* dst, int length, bool inverse, T scale, const T* table, T* scratch);
};

// The same sums of int16 with roots in Q14, exact while they stay below 2^53: up to eight million points.
struct DftIntegers {
    uint64_t (*scratchLength)(int length);   // in doubles
    void (*transform)(const int16_t* src, double* dst, int length, bool inverse, const int16_t* table, double* scratch);
};

struct DftTable : Tables<DftOf<float>, DftOf<double>, DftIntegers> {};

}   // namespace vek::kernels
