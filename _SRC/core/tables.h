// The transforms' tables of one thread: built on first request, kept until a Free operation, a release under memory
// pressure, or the thread's end. Nothing here reports: a null pointer means that memory ran out, and nothing changed.
#pragma once

#include <cstddef>
#include <cstdint>

#include "memory.h"
#include "vekm6/types.h"

namespace vek::core {

inline constexpr int orderCount = 32;
inline constexpr int dftListCapacity = 32;

constexpr bool isOrder(int order) { return order >= 0 && order < orderCount; }

// One table per order.
struct OrderSlots {
    void* slot[orderCount];

    void release(int order);
    void releaseAll();

    // The order's table of `count` elements, filled by fill(table) when this is its first request.
    template <class T, class Fill>
    T* get(int order, std::uint64_t count, Fill fill) {
        if (slot[order] == nullptr) {
            void* table = allocateArray(count, sizeof(T));
            if (table == nullptr) return nullptr;
            fill(static_cast<T*>(table));
            slot[order] = table;
        }
        return static_cast<T*>(slot[order]);
    }
};

// Tables of any length, in order of request.
struct DftList {
    int count;
    int lengths[dftListCapacity];
    void* tables[dftListCapacity];

    void* find(int length) const;
    bool full() const { return count == dftListCapacity; }
    void append(int length, void* table);
    void releaseAll();
};

// A buffer that only grows.
struct Scratch {
    void* buffer;
    std::uint64_t bytes;
    int ordersServed;   // it is large enough for transforms of the orders below

    void* get(std::uint64_t wanted);
    void release();
};

// Twiddle tables of one element type, as the Get operations hand them out.
struct TwiddleTables {
    OrderSlots fft;
    DftList dft;

    void releaseAll();
};

// What the transforms of one precision work with. The layout of the working tables is that of the kernels `owner`.
struct TransformTables {
    const void* owner;
    OrderSlots working;
    OrderSlots realSplit;   // keyed by the order of the half-length transform
    Scratch scratch;        // one transform's intermediate data
    Scratch dft;            // the same of transforms of any length

    void releaseAll();
};

struct TableCache {
    OrderSlots bitRevIndex;
    OrderSlots swapList;
    TwiddleTables twiddleC, twiddleZ, twiddleV;
    TransformTables transformC, transformZ;
    Scratch shortDft;   // wide values of the int16 transform of any length

    const std::int32_t* swapListOf(int order);

    // Groups that the Free operations of one type release.
    void releaseC();
    void releaseZ();
    void releaseV();
    void releaseBitRev();
    void releaseAll();
};

// Element i holds i with its low `order` bits reversed, 0 <= i < 2^order.
void fillBitRevIndex(std::int32_t* table, int order);

// Element k holds exp(-2 pi i k / length); the int16 form in Q14, truncated toward zero.
void fillTwiddles(VekCplx* table, std::uint64_t length);
void fillTwiddles(VekDCplx* table, std::uint64_t length);
void fillTwiddles(VekWCplx* table, std::uint64_t length);

}   // namespace vek::core
