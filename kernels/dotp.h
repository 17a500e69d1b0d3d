// Kernels of the dot products: sums of products of two vectors.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "tables.h"

namespace vek::kernels {

template <class T>
struct DotPair {
    T re, im;
};

// Of n elements each; n may be 0. Nothing is conjugated.
template <class T>
struct DotpOf {
    T (*real)(const T* a, const T* b, size_t n);
    DotPair<T> (*complex)(const T* a, const T* b, size_t n);
    DotPair<T> (*mixed)(const T* reals, const T* pairs, size_t n);
};

// The sums of int16 are exact. In `conjugated` a is.
template <>
struct DotpOf<int16_t> {
    int64_t (*real)(const int16_t* a, const int16_t* b, size_t n);
    DotPair<int64_t> (*complex)(const int16_t* a, const int16_t* b, size_t n);
    DotPair<int64_t> (*conjugated)(const int16_t* a, const int16_t* b, size_t n);
    DotPair<int64_t> (*mixed)(const int16_t* reals, const int16_t* pairs, size_t n);
};

struct DotpTable : Tables<DotpOf<float>, DotpOf<double>, DotpOf<int16_t>> {};

}   // namespace vek::kernels
