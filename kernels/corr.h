// Kernels of the correlations: the direct sums, and the products of spectra.
#pragma once

#include <stddef.h>

#include "tables.h"

namespace vek::kernels {

// dst[j] = the sum of conj(a[n]) b[n + lo + j] over all n with both in range, for the lags lo ... hi, each of which has
// a term: -lenA < lo, hi < lenB. dst overlaps neither.
template <class T>
using Correlate = void (*)(const T* a, ptrdiff_t lenA, const T* b, ptrdiff_t lenB, T* dst, ptrdiff_t lo, ptrdiff_t hi);

template <class T>
struct CorrOf {
    Correlate<T> correlate[2][2];   // [whether a is complex][whether b is]

    // Of `count` pairs each, on top of what sum holds: conj(a) b; and conj(a) (a + b).
    void (*addProducts)(const T* a, const T* b, T* sum, size_t count);
    void (*addOwnProducts)(const T* a, const T* b, T* sum, size_t count);
};

struct CorrTable : Tables<CorrOf<float>, CorrOf<double>> {};

}   // namespace vek::kernels
