// How bit reversals cut a vector up, for those who list the swaps and those who make them.
//
// Headers of this folder stand on nothing else: core and the kernels may both include them. Functions are static, as
// any that the levels compile: the linker must not merge their copies.
#pragma once

namespace vek {

// The permutations of 2^order elements move square tiles of 2^tileBits rows, a row so many neighbouring elements: the
// top bits of an element's index are its row, the lowest its place in the row. The largest have rows as long as a cache
// line of 8-byte elements.
//
// A list of swaps, read from order 3 on, says by the bits between, m = order - 2 tileBits of them, which tiles change
// places: the pairs (a, b), a < b = a reversed; one 0; the self-reversed a from the last down to 0. Each is shifted
// left by tileBits: it is where the tile's first row begins.
static constexpr int tileBits(int order) { return order < 6 ? order / 2 : 3; }

}   // namespace vek
