// The one allocator: every buffer, table and scratch area of the library comes from here.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vek::core {

inline constexpr std::size_t blockAlignment = 32;

// At least `bytes` bytes, aligned to blockAlignment, or null. The raw heap address stands in the pointer-sized word
// before the block, where release() finds it.
void* allocate(std::size_t bytes);
void release(void* block);

// count elements of `width` bytes, or null, also where the product does not fit the address space.
void* allocateArray(std::uint64_t count, std::size_t width);

}   // namespace vek::core
