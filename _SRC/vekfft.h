// The transforms of both precisions: vekffts.cpp and vekfftd.cpp hold the exports over these operations.
//
// Every transform follows one order of steps: VEK_Free releases and returns; the order is checked; tables are built
// or found, with one retry after all tables of the precision were released; VEK_Init returns; pointers and flags are
// checked; then the transform runs.
#pragma once

#include <cstring>

#include "core/call.h"
#include "core/roots.h"
#include "kernels/level/levels.h"

namespace vek::fft {

using core::Call;
using core::context;
using kernels::FftData;

inline constexpr int forwInverse = VEK_Forw | VEK_Inv;

inline const kernels::FftOf<float>& kernelsOf(const float*) { return kernelsNow().fft->f; }
inline const kernels::FftOf<double>& kernelsOf(const double*) { return kernelsNow().fft->d; }
inline const kernels::ArithOf<float>& arithOf(const float*) { return kernelsNow().arith->f; }
inline const kernels::ArithOf<double>& arithOf(const double*) { return kernelsNow().arith->d; }
inline core::TransformTables& cacheOf(const float*) { return context().tables.transformC; }
inline core::TransformTables& cacheOf(const double*) { return context().tables.transformZ; }

// ---- Tables -------------------------------------------------------------------------------------------------------

template <class T>
struct Tables {
    const T* working = nullptr;
    T* scratch = nullptr;
    const T* split = nullptr;
    const std::int32_t* swaps = nullptr;
};

enum Extra { none = 0, realSplit = 1, swapList = 2 };

inline void rootOf(std::uint64_t k, std::uint64_t n, double* re, double* im) {
    const core::Root root = core::unitRoot(k, n);
    *re = root.re;
    *im = root.im;
}

// Kernels want cache lines; blocks come with less, so tables are asked for with one line to spare.
inline constexpr std::size_t line = 64;
template <class T>
T* onLine(T* block) {
    return reinterpret_cast<T*>((reinterpret_cast<std::uintptr_t>(block) + line - 1) / line * line);
}

template <class T, class Fill>
T* lineTable(core::OrderSlots& slots, int order, std::uint64_t length, Fill fill) {
    return slots.get<T>(order, length + line / sizeof(T), [&](T* block) { fill(onLine(block)); });
}

// The scratch area comes first: where memory is short it fails before any table is computed.
template <class T>
bool obtain(Tables<T>& tables, int order, int extras) {
    const auto& kernels = kernelsOf(tables.working);
    auto& cache = cacheOf(tables.working);
    if (cache.owner != &kernels) [[unlikely]] {
        cache.releaseAll();
        cache.owner = &kernels;
    }
    void* scratch = cache.scratch.get((kernels.scratchLength(order) * sizeof(T)) + line);
    if (scratch == nullptr) return false;
    T* working = lineTable<T>(cache.working, order, kernels.tableLength(order),
                              [&](T* table) { kernels.fillTable(order, table, rootOf); });
    if (working == nullptr) return false;
    if ((extras & realSplit) != 0) {
        T* split = lineTable<T>(cache.realSplit, order, kernels.splitLength(order),
                                [&](T* table) { kernels.fillSplit(order, table, rootOf); });
        if (split == nullptr) return false;
        tables.split = onLine(split);
    }
    if ((extras & swapList) != 0) {
        tables.swaps = context().tables.swapListOf(order);
        if (tables.swaps == nullptr) return false;
    }
    tables.scratch = onLine(static_cast<T*>(scratch));
    tables.working = onLine(working);
    return true;
}

template <class T>
[[gnu::cold, gnu::noinline]] bool obtainAgain(Tables<T>& tables, int order, int extras) {
    cacheOf(tables.working).releaseAll();
    context().tables.swapList.releaseAll();
    return obtain(tables, order, extras);
}

template <class T>
bool noTables(Call& call, Tables<T>& tables, int order, int extras, int line = __builtin_LINE()) {
    if (obtain(tables, order, extras)) [[likely]]
        return false;
    return call.noMemory(!obtainAgain(tables, order, extras), "No working Twd memory", line);
}

template <class T>
void freeTables(const T* kind, int order) {
    if (!core::isOrder(order)) return;
    auto& cache = cacheOf(kind);
    cache.working.release(order);
    cache.realSplit.release(order);
    cache.scratch.release();
    context().tables.swapList.release(order);
}

// ---- Checks -------------------------------------------------------------------------------------------------------

struct Pointer {
    const void* value;
    const char* message;
};

template <int N>
bool anyNull(Call& call, const Pointer (&pointers)[N], int line = __builtin_LINE()) {
    for (const Pointer& pointer : pointers)
        if (call.bad(pointer.value == nullptr, pointer.message, line)) return true;
    return false;
}

inline bool badDirection(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & forwInverse) == forwInverse, "(flags & 1) && (flags & 2)", line) ||
           call.bad((flags & forwInverse) == 0, "(flags & 1)==0 && (flags & 2)==0", line);
}

inline bool badBitOrder(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & 64) && (flags & 128), "(flags & 64) && (flags & 128)", line) ||
           call.bad((flags & 64) && (flags & 32), "(flags & 64) && (flags & 32)", line) ||
           call.bad((flags & 32) && (flags & 128), "(flags & 32) && (flags & 128)", line);
}

inline bool badOutPacking(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & 256) && (flags & 512), "(flags & 256) && (flags & 512)", line) ||
           call.bad(!(flags & 256) && !(flags & 512), "(flags & 256)==0 && (flags & 512)==0", line);
}

inline bool badInPacking(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & 1024) && (flags & 4096), "(flags & 1024) && (flags & 4096)", line) ||
           call.bad(!(flags & 1024) && !(flags & 4096), "(flags & 1024)==0 && (flags & 4096)==0", line);
}

// 1/N where the transform scales.
template <class T>
T scaleOf(int order, int flags) {
    const bool scales = (flags & (VEK_Inv | VEK_NoScale)) == VEK_Inv;
    return scales ? static_cast<T>(1.0 / static_cast<double>(std::uint64_t{1} << order)) : static_cast<T>(1);
}

// ---- Complex transforms -------------------------------------------------------------------------------------------

// Both forms of permutation over both forms of complex data; in may be out.
template <class T>
void permute(const FftData<const T>& in, const FftData<T>& out, int order, const std::int32_t* swaps) {
    const auto& kernels = *kernelsNow().misc;
    const int size = (sizeof(T) == 4 ? 1 : 2) + (in.im == nullptr ? 1 : 0);
    const auto one = [&](const T* from, T* to) {
        if (from == to)
            kernels.bitRev1[size](to, order, swaps);
        else
            kernels.bitRev2[size](from, to, order, swaps);
    };
    one(in.re, out.re);
    if (in.im != nullptr) one(in.im, out.im);
}

template <class T>
void copyPoint(const FftData<const T>& in, const FftData<T>& out) {
    out.re[0] = in.re[0];
    if (in.im != nullptr)
        out.im[0] = in.im[0];
    else
        out.re[1] = in.re[1];
}

template <class T, int N>
void complexFft(Call call, FftData<const T> in, const FftData<T>& out, int order, int flags,
                const Pointer (&pointers)[N]) {
    if ((flags & VEK_Free) != 0) return freeTables(in.re, order);
    if (badOrder(call, order)) return;
    Tables<T> tables;
    const bool permutes = (flags & (VEK_InBitRev | VEK_OutBitRev)) != 0;
    if (noTables(call, tables, order, permutes ? swapList : none)) return;
    if ((flags & VEK_Init) != 0) return;
    if (anyNull(call, pointers)) return;
    if (badDirection(call, flags)) return;
    if (badBitOrder(call, flags)) return;
    if (call.stopped()) return;
    if (order == 0) return copyPoint(in, out);
    if ((flags & VEK_InBitRev) != 0) {
        permute(in, out, order, tables.swaps);
        in = {out.re, out.im};
    }
    kernelsOf(out.re).transform(in, out, order, (flags & VEK_Inv) != 0, scaleOf<T>(order, flags), tables.working,
                                tables.scratch);
    if ((flags & VEK_OutBitRev) != 0) permute<T>({out.re, out.im}, out, order, tables.swaps);
}

template <class C>
struct RealOf;
template <>
struct RealOf<VekCplx> {
    using type = float;
};
template <>
struct RealOf<VekDCplx> {
    using type = double;
};

// A complex vector as pairs of reals.
template <class C>
FftData<const typename RealOf<C>::type> pairs(const C* samps) {
    return {reinterpret_cast<const typename RealOf<C>::type*>(samps), nullptr};
}
template <class C>
FftData<typename RealOf<C>::type> pairs(C* samps) {
    return {reinterpret_cast<typename RealOf<C>::type*>(samps), nullptr};
}

template <class C>
void interleaved(Call call, C* samps, int order, int flags) {
    complexFft(call, pairs(static_cast<const C*>(samps)), pairs(samps), order, flags, {{samps, "samps==0"}});
}

template <class C>
void interleavedNip(Call call, const C* inSamps, C* outSamps, int order, int flags) {
    complexFft(call, pairs(inSamps), pairs(outSamps), order, flags,
               {{inSamps, "inSamps==0"}, {outSamps, "outSamps==0"}});
}

template <class T>
void split(Call call, T* reSamps, T* imSamps, int order, int flags) {
    complexFft<T>(call, {reSamps, imSamps}, {reSamps, imSamps}, order, flags,
                  {{reSamps, "reSamps==0"}, {imSamps, "imSamps==0"}});
}

template <class T>
void splitNip(Call call, const T* reInSamps, const T* imInSamps, T* reOutSamps, T* imOutSamps, int order, int flags) {
    complexFft<T>(call, {reInSamps, imInSamps}, {reOutSamps, imOutSamps}, order, flags,
                  {{reInSamps, "reInSamps==0"},
                   {imInSamps, "imInSamps==0"},
                   {reOutSamps, "reOutSamps==0"},
                   {imOutSamps, "imOutSamps==0"}});
}

// ---- Real transforms ----------------------------------------------------------------------------------------------

enum class Layout { ccs, rcPack, rcPerm };

inline Layout outLayout(int flags) { return (flags & VEK_OutRCPack) != 0 ? Layout::rcPack : Layout::rcPerm; }
inline Layout inLayout(int flags) { return (flags & VEK_InRCPack) != 0 ? Layout::rcPack : Layout::rcPerm; }

// (X0, XM, bin 1, bin 2, ...) becomes the layout.
template <class T>
void placeEnds(T* samps, std::size_t n, Layout layout) {
    const T last = samps[1];
    if (layout == Layout::ccs) {
        samps[1] = 0;
        samps[n] = last;
        samps[n + 1] = 0;
    } else if (layout == Layout::rcPack) {
        std::memmove(samps + 1, samps + 2, (n - 2) * sizeof(T));
        samps[n - 1] = last;
    }
}

template <class T>
void realToSpectrum(const T* in, T* out, int order, int flags, Layout layout, const Tables<T>& tables) {
    const std::size_t n = std::size_t{1} << order;
    const T scale = scaleOf<T>(order, flags);
    if (order == 0) {
        out[0] = in[0];
        if (layout == Layout::ccs) out[1] = 0;
        return;
    }
    if (order == 1) {
        const T sum = (in[0] + in[1]) * scale;
        out[1] = (in[0] - in[1]) * scale;
        out[0] = sum;
    } else {
        const auto& kernels = kernelsOf(out);
        kernels.transform({in, nullptr}, {out, nullptr}, order - 1, false, 1, tables.working, tables.scratch);
        kernels.realSplit(out, n / 2, (flags & VEK_Inv) != 0, scale, tables.split);
    }
    placeEnds(out, n, layout);
}

template <class T>
void spectrumToReal(const T* in, T* out, int order, int flags, Layout layout, const Tables<T>& tables) {
    const std::size_t n = std::size_t{1} << order;
    const T scale = scaleOf<T>(order, flags);
    const T first = in[0];
    if (order == 0) {
        out[0] = first;
        return;
    }
    const T last = in[layout == Layout::ccs ? n : layout == Layout::rcPack ? n - 1 : 1];
    if (order == 1) {
        out[0] = (first + last) * scale;
        out[1] = (first - last) * scale;
        return;
    }
    const T* bins = in + (layout == Layout::rcPack ? 1 : 2);
    if (layout == Layout::rcPack && in == out) {
        std::memmove(out + 2, out + 1, (n - 2) * sizeof(T));
        bins = out + 2;
    }
    const auto& kernels = kernelsOf(out);
    kernels.realMerge(first, last, bins, out, n / 2, (flags & VEK_Inv) != 0, tables.split);
    kernels.transform({out, nullptr}, {out, nullptr}, order - 1, true, scale, tables.working, tables.scratch);
}

// The steps that all real members share; true: the transform itself is left to do.
template <class T, int N>
bool realSteps(Call& call, Tables<T>& tables, int order, int flags, const Pointer (&pointers)[N],
               bool (*badPacking)(Call&, int, int), int line = __builtin_LINE()) {
    if ((flags & VEK_Free) != 0) {
        if (core::isOrder(order)) freeTables(tables.working, order - 1);
        return false;
    }
    if (badOrder(call, order, line)) return false;
    if (order >= 2 && noTables(call, tables, order - 1, realSplit, line)) return false;
    if ((flags & VEK_Init) != 0) return false;
    if (anyNull(call, pointers, line)) return false;
    if (badDirection(call, flags, line)) return false;
    if (badPacking != nullptr && badPacking(call, flags, line)) return false;
    return !call.stopped();
}

template <class T>
void realFft(Call call, T* samps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{samps, "samps==0"}}, nullptr))
        realToSpectrum<T>(samps, samps, order, flags, Layout::ccs, tables);
}

template <class T>
void realFftNip(Call call, const T* inSamps, T* outSamps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{inSamps, "inSamps==0"}, {outSamps, "outSamps==0"}}, nullptr))
        realToSpectrum(inSamps, outSamps, order, flags, Layout::ccs, tables);
}

template <class T>
void realFftl(Call call, T* samps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{samps, "samps==0"}}, badOutPacking))
        realToSpectrum<T>(samps, samps, order, flags, outLayout(flags), tables);
}

template <class T>
void realFftlNip(Call call, const T* inSamps, T* outSamps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{inSamps, "inSamps==0"}, {outSamps, "outSamps==0"}}, badOutPacking))
        realToSpectrum(inSamps, outSamps, order, flags, outLayout(flags), tables);
}

template <class T>
void ccsFft(Call call, T* samps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{samps, "samps==0"}}, nullptr))
        spectrumToReal<T>(samps, samps, order, flags, Layout::ccs, tables);
}

template <class T>
void ccsFftNip(Call call, const T* inSamps, T* outSamps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{inSamps, "inSamps==0"}, {outSamps, "outSamps==0"}}, nullptr))
        spectrumToReal(inSamps, outSamps, order, flags, Layout::ccs, tables);
}

template <class T>
void ccsFftl(Call call, T* samps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{samps, "samps==0"}}, badInPacking))
        spectrumToReal<T>(samps, samps, order, flags, inLayout(flags), tables);
}

template <class T>
void ccsFftlNip(Call call, const T* inSamps, T* outSamps, int order, int flags) {
    Tables<T> tables;
    if (realSteps(call, tables, order, flags, {{inSamps, "inSamps==0"}, {outSamps, "outSamps==0"}}, badInPacking))
        spectrumToReal(inSamps, outSamps, order, flags, inLayout(flags), tables);
}

// The one-signal member on each of two signals; once where it only builds or releases the tables they share.
template <class First, class Second>
VekStatus twice(Call call, const char* message, int flags, First first, Second second, int line = __builtin_LINE()) {
    first();
    if ((flags & (VEK_Init | VEK_Free)) == 0) second();
    return call.backtrace(message, line) ? call.result : context().status;
}

// ---- Products of packed spectra -----------------------------------------------------------------------------------

// dst may equal a source.
template <class T>
void product(Call call, const T* srcA, const char* nullA, const T* srcB, const char* nullB, T* dst, int order,
             Layout layout) {
    if (badOrder(call, order)) return;
    if (call.bad(srcA == nullptr, nullA)) return;
    if (nullB != nullptr && call.bad(srcB == nullptr, nullB)) return;
    if (call.bad(dst == nullptr, "dst==0")) return;
    if (call.stopped()) return;
    const std::size_t n = std::size_t{1} << order;
    const std::size_t last = layout == Layout::rcPack ? n - 1 : 1;
    const std::size_t bins = layout == Layout::rcPack ? 1 : 2;
    dst[0] = srcA[0] * srcB[0];
    if (order >= 1) dst[last] = srcA[last] * srcB[last];
    if (order >= 2) arithOf(dst).complexMpy3(srcA + bins, srcB + bins, dst + bins, n / 2 - 1);
}

template <class T>
void mpy2(const Call& call, const T* src, T* dst, int order, Layout layout) {
    product<T>(call, src, "src==0", dst, nullptr, dst, order, layout);
}

template <class T>
void mpy3(const Call& call, const T* srcA, const T* srcB, T* dst, int order, Layout layout) {
    product(call, srcA, "srcA==0", srcB, "srcB==0", dst, order, layout);
}

}   // namespace vek::fft
