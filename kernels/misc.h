// Kernels of the bit-reversal permutations.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace vek::kernels {

// The permutations move square tiles of 2^tileBits rows, a row so many neighbouring elements: the top bits of an
// element's index are its row, the lowest its place in the row. The largest have rows as long as a cache line of 8-byte
// elements. Static, as any function that the levels compile: the linker must not merge their copies.
static constexpr int tileBits(int order) { return order < 6 ? order / 2 : 3; }

// Permutations of 2^order elements of 2, 4, 8 or 16 bytes.
//
// swaps, read from order 3 on, says by the bits between, m = order - 2 tileBits of them, which tiles change places: the
// pairs (a, b), a < b = a reversed; one 0; the self-reversed a from the last down to 0. Each is shifted left by
// tileBits: it is where the tile's first row begins.
struct MiscTable {
    // index k is for elements of 2 << k bytes
    void (*bitRev1[4])(void* vec, int order, const int32_t* swaps);
    void (*bitRev2[4])(const void* src, void* dst, int order, const int32_t* swaps);   // no overlap
};

}   // namespace vek::kernels
