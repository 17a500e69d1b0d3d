// Kernels of squares, square roots, absolute values and thresholds.
#pragma once

#include <stddef.h>

#include "tables.h"

namespace vek::kernels {

// What loops that cannot fail return to exports that return a status: VEK_StsOk, so that a call is handed on as it is.
using Success = int;

// T is float or double; `count` complex elements where the name says complex, reals elsewhere. dst may equal
// src.
template <class T>
struct VecOf {
    Success (*sqr2)(const T* src, T* dst, size_t n);
    bool (*sqrt2)(const T* src, T* dst, size_t n);   // true: a negative element was met, its dst was kept
    Success (*abs2)(const T* src, T* dst, size_t n);
    Success (*threshBelow2)(const T* src, T* dst, size_t n, T thresh);   // elements below become thresh
    Success (*threshAbove2)(const T* src, T* dst, size_t n, T thresh);
    bool (*invThresh2)(const T* src, T* dst, size_t n, T thresh);   // true: thresh is 0 and a zero was met
    Success (*complexSqr2)(const T* src, T* dst, size_t count);
    Success (*complexSqrt2)(const T* src, T* dst, size_t count);
    Success (*complexThreshBelow2)(const T* src, T* dst, size_t count, T thresh);
    Success (*complexThreshAbove2)(const T* src, T* dst, size_t count, T thresh);
    bool (*complexInvThresh2)(const T* src, T* dst, size_t count, T thresh);
};

struct VecTable : Tables<VecOf<float>, VecOf<double>> {};

}   // namespace vek::kernels
