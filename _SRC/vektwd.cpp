// Twiddle tables: powers of a root of unity, kept by order or by length.
#include "vekm6/twd.h"

#include "core/dfttables.h"

namespace {

using vek::core::badOrder;
using vek::core::Call;
using vek::core::context;
using vek::core::fillTwiddles;
using vek::core::twiddlesOf;

constexpr const char* module = "vektwd";

template <class T>
const T* getDft(const char* name, int length) {
    Call call{module, name};
    if (call.bad(length <= 0, "length<=0") || call.stopped()) return nullptr;
    const T* table = vek::core::dftTable<T>(call, length);
    if (!call.stopped()) call.noMemory(table == nullptr, "NULL Pointer");
    return table;
}

template <class T>
const T* getFft(const char* name, int order) {
    Call call{module, name};
    if (badOrder(call, order) || call.stopped()) return nullptr;
    const std::uint64_t count = std::uint64_t{1} << order;
    const T* table = twiddlesOf<T>(context().tables).fft.template get<T>(order, count, [count](T* fresh) {
        fillTwiddles(fresh, count);
    });
    call.noMemory(table == nullptr, "NULL Pointer");
    return table;
}

template <class T>
void calcDft(const char* name, T* table, int length) {
    Call call{module, name};
    if (call.bad(table == nullptr, "tbl==0")) return;
    if (call.bad(length <= 0, "length<=0")) return;
    if (call.stopped()) return;
    fillTwiddles(table, static_cast<std::uint64_t>(length));
}

template <class T>
void calcFft(const char* name, T* table, int order) {
    Call call{module, name};
    if (call.bad(table == nullptr, "tbl==0")) return;
    if (badOrder(call, order)) return;
    if (call.stopped()) return;
    fillTwiddles(table, std::uint64_t{1} << order);
}

}   // namespace

extern "C" {

const VekCplx* VEKAPI vekcGetDftTwdTbl(int length) { return getDft<VekCplx>("vekcGetDftTwdTbl", length); }
const VekCplx* VEKAPI vekcGetFftTwdTbl(int order) { return getFft<VekCplx>("vekcGetFftTwdTbl", order); }
void VEKAPI vekcCalcDftTwdTbl(VekCplx* table, int length) { calcDft("vekcCalcDftTwdTbl", table, length); }
void VEKAPI vekcCalcFftTwdTbl(VekCplx* table, int order) { calcFft("vekcCalcFftTwdTbl", table, order); }
const VekDCplx* VEKAPI vekzGetDftTwdTbl(int length) { return getDft<VekDCplx>("vekzGetDftTwdTbl", length); }
const VekDCplx* VEKAPI vekzGetFftTwdTbl(int order) { return getFft<VekDCplx>("vekzGetFftTwdTbl", order); }
void VEKAPI vekzCalcDftTwdTbl(VekDCplx* table, int length) { calcDft("vekzCalcDftTwdTbl", table, length); }
void VEKAPI vekzCalcFftTwdTbl(VekDCplx* table, int order) { calcFft("vekzCalcFftTwdTbl", table, order); }
const VekWCplx* VEKAPI vekvGetDftTwdTbl(int length) { return getDft<VekWCplx>("vekvGetDftTwdTbl", length); }
const VekWCplx* VEKAPI vekvGetFftTwdTbl(int order) { return getFft<VekWCplx>("vekvGetFftTwdTbl", order); }
void VEKAPI vekvCalcDftTwdTbl(VekWCplx* table, int length) { calcDft("vekvCalcDftTwdTbl", table, length); }
void VEKAPI vekvCalcFftTwdTbl(VekWCplx* table, int order) { calcFft("vekvCalcFftTwdTbl", table, order); }
void VEKAPI vekcFreeTwdTbls(void) { context().tables.releaseC(); }
void VEKAPI vekzFreeTwdTbls(void) { context().tables.releaseZ(); }
void VEKAPI vekvFreeTwdTbls(void) { context().tables.releaseV(); }

}   // extern "C"
