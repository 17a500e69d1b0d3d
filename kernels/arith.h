// Kernels of the element-wise arithmetic: pointers to the active level's loops.
#pragma once

#include <stddef.h>

#include "vekm6/types.h"

namespace vek::kernels {

// T is float or double; lengths count reals unless the name says complex. A scalar operand comes as a pair, which a
// complex vector reads as (re, im) and a real one as the same value twice. dst may equal a source.
template <class T>
struct ArithOf {
    void (*set)(const T (&pair)[2], T* dst, size_t n);
    void (*copy)(const T* src, T* dst, size_t n);
    void (*add1)(const T (&pair)[2], T* dst, size_t n);   // dst[i] + pair[i & 1]
    void (*sub1)(const T (&pair)[2], T* dst, size_t n);
    void (*mpy1)(T value, T* dst, size_t n);
    void (*add3)(const T* srcA, const T* srcB, T* dst, size_t n);
    void (*sub3)(const T* src, const T* val, T* dst, size_t n);
    void (*mpy3)(const T* srcA, const T* srcB, T* dst, size_t n);
    void (*complexMpy1)(const T (&pair)[2], T* dst, size_t count);
    void (*complexMpy3)(const T* srcA, const T* srcB, T* dst, size_t count);
    void (*conj2)(const T* src, T* dst, size_t count);
    void (*conjFlip2)(const T* src, T* dst, size_t count);   // dst must not overlap src
};

struct ArithTable {
    ArithOf<float> f;
    ArithOf<double> d;
};

}   // namespace vek::kernels
