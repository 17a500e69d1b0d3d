// Twiddle tables of any length, from the list of the calling thread.
#pragma once

#include <type_traits>

#include "call.h"

namespace vek::core {

template <class T>
TwiddleTables& twiddlesOf(TableCache& cache) {
    if constexpr (std::is_same_v<T, VekCplx>)
        return cache.twiddleC;
    else if constexpr (std::is_same_v<T, VekDCplx>)
        return cache.twiddleZ;
    else
        return cache.twiddleV;
}

// Null when memory runs out, and when the list has no place for another length: that is reported by `getter`, the
// operation that hands out tables of this type.
template <class T>
const T* dftTable(Call& getter, int length) {
    DftList& list = twiddlesOf<T>(getter.thread.tables).dft;
    if (const void* known = list.find(length)) return static_cast<const T*>(known);
    if (getter.noMemory(list.full(), "Full Table")) return nullptr;
    const auto count = static_cast<std::uint64_t>(length);
    T* table = static_cast<T*>(allocateArray(count, sizeof(T)));
    if (table == nullptr) return nullptr;
    fillTwiddles(table, count);
    list.append(length, table);
    return table;
}

}   // namespace vek::core
