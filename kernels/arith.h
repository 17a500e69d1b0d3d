// Kernels of the element-wise arithmetic: pointers to the active level's loops.
#pragma once

#include <stddef.h>

#include "tables.h"

namespace vek::kernels {

// T is float or double. `n` counts reals; complex vectors whose parts are treated alike come as 2 n of them.
// `count` counts complex elements, pairs of reals; re + i im is a complex scalar. dst may equal a source.
template <class T>
struct ArithOf {
    void (*set)(T value, T* dst, size_t n);
    void (*copy)(const T* src, T* dst, size_t n);
    void (*add1)(T value, T* dst, size_t n);
    void (*mpy1)(T value, T* dst, size_t n);
    void (*add3)(const T* srcA, const T* srcB, T* dst, size_t n);
    void (*sub3)(const T* src, const T* val, T* dst, size_t n);
    void (*mpy3)(const T* srcA, const T* srcB, T* dst, size_t n);
    void (*complexSet)(T re, T im, T* dst, size_t count);
    void (*complexAdd1)(T re, T im, T* dst, size_t count);
    void (*complexMpy1)(T re, T im, T* dst, size_t count);
    void (*complexMpy3)(const T* srcA, const T* srcB, T* dst, size_t count);
    void (*conj2)(const T* src, T* dst, size_t count);
    void (*conjFlip2)(const T* src, T* dst, size_t count);   // dst must not overlap src
};

struct ArithTable : Tables<ArithOf<float>, ArithOf<double>> {};

}   // namespace vek::kernels
