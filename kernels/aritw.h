// Kernels of the arithmetic of int16 vectors, and of what brings int32 to int16.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "common/scaling.h"

namespace vek::kernels {

struct Complex16 {
    int16_t re, im;
};

// `n` counts reals in all of them; complex vectors come as their reals. dst may equal a source.

// An operation on a vector and a second one, or a scalar.
template <class Operand>
struct ScaledOf {
    void (*run[fitCount])(const int16_t* a, Operand b, int16_t* dst, size_t n, int places);
    int (*places)(const int16_t* a, Operand b,
                  size_t n);   // the least that makes all results fit; 0: none
};
using ScaledVectors = ScaledOf<const int16_t*>;
using ScaledReal = ScaledOf<int16_t>;
using ScaledComplex = ScaledOf<Complex16>;

struct LeastAndMost {
    int32_t least, most;
};

struct AritwTable {
    void (*set)(int16_t value, int16_t* dst, size_t n);
    void (*complexSet)(Complex16 value, int16_t* dst, size_t n);
    void (*copy)(const int16_t* src, int16_t* dst, size_t n);
    void (*conj2)(const int16_t* src, int16_t* dst, size_t n);
    void (*conjFlip2)(const int16_t* src, int16_t* dst, size_t n);   // dst must not overlap src
    ScaledReal add1, sub1, mpy1;                                     // a + b, a - b, a * b
    ScaledComplex complexAdd1, complexSub1, complexMpy1;
    ScaledVectors add3, sub3, mpy3, complexMpy3;
    void (*left[2])(int16_t* dst, size_t n, int places);   // in place, by fitWraps or fitSaturates; 0 ... 16 places
    void (*narrow[fitCount])(const int32_t* src, int16_t* dst, size_t n, int places);   // no overlap
    LeastAndMost (*range)(const int32_t* src, size_t n);                                // n >= 1
};

}   // namespace vek::kernels
