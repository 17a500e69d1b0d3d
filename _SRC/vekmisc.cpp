// Bit reversal: values, index tables, permutations.
#include "vekm6/misc.h"

#include "core/call.h"
#include "kernels/level/levels.h"
#include "kernels/misc.h"

namespace {

using vek::core::badOrder;
using vek::core::Call;
using vek::core::context;

constexpr const char* module = "vekmisc";

// log2 of the element size over 2 bytes: the kernels' index.
template <class T>
constexpr int sizeIndex = sizeof(T) == 2   ? 0
                          : sizeof(T) == 4 ? 1
                          : sizeof(T) == 8 ? 2
                                           : 3;

// The orders below 3 permute without the list.
bool noSwapList(Call& call, int order, const std::int32_t*& swaps) {
    swaps = order < 3 ? nullptr : context().tables.swapListOf(order);
    return call.noMemory(order >= 3 && swaps == nullptr, "NULL Pointer");
}

template <class T>
void bitRev1(const char* name, T* vec, int order) {
    Call call{module, name};
    const std::int32_t* swaps = nullptr;
    if (call.bad(vec == nullptr, "vec==0")) return;
    if (badOrder(call, order)) return;
    if (call.stopped()) return;
    if (noSwapList(call, order, swaps)) return;
    vek::kernelsNow().misc->bitRev1[sizeIndex<T>](vec, order, swaps);
}

template <class T>
void bitRev2(const char* name, const T* src, T* dst, int order) {
    Call call{module, name};
    const std::int32_t* swaps = nullptr;
    if (call.bad(src == nullptr, "src==0")) return;
    if (call.bad(dst == nullptr, "dst==0")) return;
    if (badOrder(call, order)) return;
    if (call.stopped()) return;
    if (noSwapList(call, order, swaps)) return;
    vek::kernelsNow().misc->bitRev2[sizeIndex<T>](src, dst, order, swaps);
}

}   // namespace

extern "C" {

int32_t VEKAPI vekBitRev(int32_t value, int order) {
    Call call{module, "vekBitRev"};
    if (badOrder(call, order) || call.stopped()) return 0;
    const auto bits = static_cast<std::uint32_t>(value);
    std::uint32_t reversed = 0;
    for (int i = 0; i < order; ++i) reversed = (reversed << 1) | ((bits >> i) & 1);
    return static_cast<int32_t>(reversed);
}

void VEKAPI vekCalcBitRevTbl(int32_t* table, int order) {
    Call call{module, "vekCalcBitRevTbl"};
    if (call.bad(table == nullptr, "tbl==0")) return;
    if (badOrder(call, order)) return;
    if (call.stopped()) return;
    vek::core::fillBitRevIndex(table, order);
}

const int32_t* VEKAPI vekGetBitRevTbl(int order) {
    Call call{module, "vekGetBitRevTbl"};
    if (badOrder(call, order) || call.stopped()) return nullptr;
    const int32_t* table = context().tables.bitRevIndex.get<int32_t>(
        order, std::uint64_t{1} << order, [order](int32_t* fresh) { vek::core::fillBitRevIndex(fresh, order); });
    call.noMemory(table == nullptr, "NULL Pointer");
    return table;
}

void VEKAPI vekFreeBitRevTbls(void) { context().tables.releaseBitRev(); }

void VEKAPI veksbBitRev1(float* vec, int order) { bitRev1("veksbBitRev1", vec, order); }
void VEKAPI veksbBitRev2(const float* src, float* dst, int order) { bitRev2("veksbBitRev2", src, dst, order); }
void VEKAPI vekdbBitRev1(double* vec, int order) { bitRev1("vekdbBitRev1", vec, order); }
void VEKAPI vekdbBitRev2(const double* src, double* dst, int order) { bitRev2("vekdbBitRev2", src, dst, order); }
void VEKAPI vekcbBitRev1(VekCplx* vec, int order) { bitRev1("vekcbBitRev1", vec, order); }
void VEKAPI vekcbBitRev2(const VekCplx* src, VekCplx* dst, int order) { bitRev2("vekcbBitRev2", src, dst, order); }
void VEKAPI vekzbBitRev1(VekDCplx* vec, int order) { bitRev1("vekzbBitRev1", vec, order); }
void VEKAPI vekzbBitRev2(const VekDCplx* src, VekDCplx* dst, int order) { bitRev2("vekzbBitRev2", src, dst, order); }
void VEKAPI vekwbBitRev1(int16_t* vec, int order) { bitRev1("vekwbBitRev1", vec, order); }
void VEKAPI vekwbBitRev2(const int16_t* src, int16_t* dst, int order) { bitRev2("vekwbBitRev2", src, dst, order); }
void VEKAPI vekvbBitRev1(VekWCplx* vec, int order) { bitRev1("vekvbBitRev1", vec, order); }
void VEKAPI vekvbBitRev2(const VekWCplx* src, VekWCplx* dst, int order) { bitRev2("vekvbBitRev2", src, dst, order); }

}   // extern "C"
