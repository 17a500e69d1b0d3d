// Kernels of the arithmetic of int16 vectors.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace vek::kernels {

// `n` counts int16. dst may equal a source.
struct AritwTable {
    void (*set)(int16_t value, int16_t* dst, size_t n);
    void (*copy)(const int16_t* src, int16_t* dst, size_t n);
};

}   // namespace vek::kernels
