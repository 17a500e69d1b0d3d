#include "memory.h"

#include <cstdlib>

namespace vek::core {

namespace {

// Room for the raw address before the block and for moving up to the next multiple of the alignment.
constexpr std::size_t overhead = blockAlignment + sizeof(void*);

}   // namespace

void* allocate(std::size_t bytes) {
    // A size near the top of the address space wraps to a small block, which still holds its own bookkeeping.
    const std::size_t total = bytes + overhead;
    void* raw = std::malloc(total < overhead ? overhead : total);
    if (raw == nullptr) return nullptr;
    const auto address = reinterpret_cast<std::uintptr_t>(raw);
    const auto aligned = (address + overhead - 1) & ~static_cast<std::uintptr_t>(blockAlignment - 1);
    void** block = reinterpret_cast<void**>(aligned);
    block[-1] = raw;
    return block;
}

void release(void* block) {
    if (block == nullptr) return;
    std::free(static_cast<void**>(block)[-1]);
}

void* allocateArray(std::uint64_t count, std::size_t width) {
    const std::uint64_t limit = (SIZE_MAX / 2 - overhead) / width;
    return count > limit ? nullptr : allocate(static_cast<std::size_t>(count) * width);
}

}   // namespace vek::core
