#include "tables.h"

#include "common/tiles.h"
#include "roots.h"

namespace vek::core {

void OrderSlots::release(int order) {
    if (!isOrder(order)) return;
    core::release(slot[order]);
    slot[order] = nullptr;
}

void OrderSlots::releaseAll() {
    for (int order = 0; order < orderCount; ++order) release(order);
}

void* DftList::find(int length) const {
    for (int i = 0; i < count; ++i)
        if (lengths[i] == length) return tables[i];
    return nullptr;
}

void DftList::append(int length, void* table) {
    lengths[count] = length;
    tables[count] = table;
    ++count;
}

void DftList::releaseAll() {
    for (int i = 0; i < count; ++i) core::release(tables[i]);
    count = 0;
}

void* Scratch::get(std::uint64_t wanted) {
    if (bytes >= wanted && buffer != nullptr) return buffer;
    release();
    buffer = allocateArray(wanted, 1);
    bytes = buffer != nullptr ? wanted : 0;
    return buffer;
}

void Scratch::release() {
    core::release(buffer);
    buffer = nullptr;
    bytes = 0;
    ordersServed = 0;
}

void TwiddleTables::releaseAll() {
    dft.releaseAll();
    fft.releaseAll();
}

void TransformTables::releaseAll() {
    working.releaseAll();
    realSplit.releaseAll();
    scratch.release();
    dft.release();
}

void TableCache::releaseC() {
    twiddleC.releaseAll();
    transformC.releaseAll();
    swapList.releaseAll();
    shortDft.release();
}

void TableCache::releaseZ() {
    twiddleZ.releaseAll();
    transformZ.releaseAll();
}

void TableCache::releaseV() {
    twiddleV.releaseAll();
    swapList.releaseAll();
    shortDft.release();
}

void TableCache::releaseBitRev() {
    bitRevIndex.releaseAll();
    swapList.releaseAll();
}

void TableCache::releaseAll() {
    releaseC();
    releaseZ();
    releaseV();
    releaseBitRev();
}

namespace {

// Counts in bit-reversed order: the carry runs from the top bit down.
class ReversedCounter {
public:
    explicit ReversedCounter(std::uint32_t length) : top(length / 2) {}

    std::uint32_t next() {
        std::uint32_t bit = top;
        while (bit != 0 && value >= bit) {
            value -= bit;
            bit /= 2;
        }
        return value += bit;
    }

private:
    std::uint32_t top;
    std::uint32_t value = 0;
};

int middleBits(int order) { return order - 2 * tileBits(order); }

// As common/tiles.h lays it out.
void fillSwapList(std::int32_t* list, int order) {
    const std::uint32_t tiles = std::uint32_t{1} << middleBits(order);
    const auto start = [order](std::uint32_t tile) { return static_cast<std::int32_t>(tile << tileBits(order)); };
    std::uint32_t pairEnd = 0;
    std::uint32_t selfStart = tiles;
    ReversedCounter counter(tiles);
    list[tiles] = 0;
    for (std::uint32_t a = 1; a < tiles; ++a) {
        const std::uint32_t b = counter.next();
        if (a < b) {
            list[pairEnd++] = start(a);
            list[pairEnd++] = start(b);
        } else if (a == b) {
            list[--selfStart] = start(a);
        }
    }
    list[pairEnd] = 0;
}

template <class T>
void fillFloatTwiddles(T* table, std::uint64_t length) {
    using Real = decltype(table->re);
    forUnitRoots(length, [table](std::uint64_t k, Root root) {
        table[k] = {static_cast<Real>(root.re), static_cast<Real>(root.im)};
    });
}

}   // namespace

const std::int32_t* TableCache::swapListOf(int order) {
    const std::uint64_t entries = (std::uint64_t{1} << middleBits(order)) + 1;
    return swapList.get<std::int32_t>(order, entries, [order](std::int32_t* list) { fillSwapList(list, order); });
}

void fillBitRevIndex(std::int32_t* table, int order) {
    const std::uint32_t length = std::uint32_t{1} << order;
    ReversedCounter counter(length);
    table[0] = 0;
    for (std::uint32_t i = 1; i < length; ++i) table[i] = static_cast<std::int32_t>(counter.next());
}

void fillTwiddles(VekCplx* table, std::uint64_t length) { fillFloatTwiddles(table, length); }

void fillTwiddles(VekDCplx* table, std::uint64_t length) { fillFloatTwiddles(table, length); }

void fillTwiddles(VekWCplx* table, std::uint64_t length) {
    constexpr double q14 = 16384.0;
    forUnitRoots(length, [table](std::uint64_t k, Root root) {
        table[k] = {static_cast<std::int16_t>(root.re * q14), static_cast<std::int16_t>(root.im * q14)};
    });
}

}   // namespace vek::core
