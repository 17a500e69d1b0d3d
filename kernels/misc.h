// Kernels of the bit-reversal permutations.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace vek::kernels {

// Permutations of 2^order elements of 2, 4, 8 or 16 bytes; `swaps` is laid out as common/tiles.h says.
struct MiscTable {
    // index k is for elements of 2 << k bytes
    void (*bitRev1[4])(void* vec, int order, const int32_t* swaps);
    void (*bitRev2[4])(const void* src, void* dst, int order, const int32_t* swaps);   // no overlap
};

}   // namespace vek::kernels
