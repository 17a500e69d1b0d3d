// Kernels of squares, square roots, absolute values and thresholds.
#pragma once

#include <stddef.h>

namespace vek::kernels {

// T is float or double; `count` complex elements where the name says complex, reals elsewhere. dst may equal
// src.
template <class T>
struct VecOf {
    void (*sqr2)(const T* src, T* dst, size_t n);
    bool (*sqrt2)(const T* src, T* dst, size_t n);   // true: a negative element was met, its dst was kept
    void (*abs2)(const T* src, T* dst, size_t n);
    void (*threshBelow2)(const T* src, T* dst, size_t n, T thresh);   // elements below become thresh
    void (*threshAbove2)(const T* src, T* dst, size_t n, T thresh);
    bool (*invThresh2)(const T* src, T* dst, size_t n, T thresh);   // true: thresh is 0 and a zero was met
    void (*complexSqr2)(const T* src, T* dst, size_t count);
    void (*complexSqrt2)(const T* src, T* dst, size_t count);
    void (*complexThreshBelow2)(const T* src, T* dst, size_t count, T thresh);
    void (*complexThreshAbove2)(const T* src, T* dst, size_t count, T thresh);
    bool (*complexInvThresh2)(const T* src, T* dst, size_t count, T thresh);
};

struct VecTable {
    VecOf<float> f;
    VecOf<double> d;
};

}   // namespace vek::kernels
