// The transforms of both precisions: vekffts.cpp and vekfftd.cpp hold the exports over these operations.
//
// Every transform follows one order of steps: VEK_Free releases and returns; the order is checked; tables are built
// or found, with one retry after all tables of the precision were released; VEK_Init returns; pointers and flags are
// checked; then the transform runs. These steps are inlined into the exports: calls within calls would cost as much as
// a transform of sixteen points.
#pragma once

#include <bit>
#include <cstring>

#include "core/call.h"
#include "core/elements.h"
#include "core/roots.h"
#include "kernels/arith.h"
#include "kernels/fft.h"
#include "kernels/level/levels.h"
#include "kernels/misc.h"

namespace vek::fft {

using core::Call;
using kernels::FftData;

// As reports name the module.
template <class T>
inline constexpr const char* moduleOf = sizeof(T) == sizeof(float) ? "vekffts" : "vekfftd";

inline constexpr int forwInverse = VEK_Forw | VEK_Inv;

template <class T>
const kernels::FftOf<T>& kernelsOf() {
    return oneOf<kernels::FftOf<T>>(kernelsNow().fft_s, kernelsNow().fft_d);
}
template <class T, class Cache>
auto& cacheOf(Cache& all) {
    if constexpr (sizeof(T) == sizeof(float))
        return all.transformC;
    else
        return all.transformZ;
}

// ---- Tables -------------------------------------------------------------------------------------------------------

template <class T>
struct Tables {
    const T* working = nullptr;
    T* scratch = nullptr;
    const T* split = nullptr;
    const std::int32_t* swaps = nullptr;
};

enum Extra {
    none = 0,
    realSplit = 1,
    swapList = 2
};

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

template <class T>
VEK_STEPS bool areReady(const core::TableCache& all, int order, int extras) {
    const auto& cache = cacheOf<T>(all);
    return cache.owner == &kernelsOf<T>() && cache.scratch.ordersServed > order &&
           cache.working.slot[order] != nullptr &&
           ((extras & realSplit) == 0 || cache.realSplit.slot[order] != nullptr) &&
           ((extras & swapList) == 0 || all.swapList.slot[order] != nullptr);
}

// Builds what is missing. The scratch area comes first: where memory is short it fails before any table is computed.
template <class T>
bool build(core::TableCache& all, int order, int extras) {
    const auto& kernels = kernelsOf<T>();
    auto& cache = cacheOf<T>(all);
    if (cache.owner != &kernels) cache.releaseAll();
    cache.owner = &kernels;
    if (cache.scratch.ordersServed <= order) {
        if (cache.scratch.get(kernels.scratchLength(order) * sizeof(T) + line) == nullptr) return false;
        cache.scratch.ordersServed = order + 1;
    }
    const T* working = lineTable<T>(cache.working, order, kernels.tableLength(order),
                                    [&](T* table) { kernels.fillTable(order, table, rootOf); });
    if (working == nullptr) return false;
    if ((extras & swapList) != 0 && all.swapListOf(order) == nullptr) return false;
    return (extras & realSplit) == 0 || lineTable<T>(cache.realSplit, order, kernels.splitLength(order), [&](T* table) {
                                            kernels.fillSplit(order, table, rootOf);
                                        }) != nullptr;
}

template <class T>
[[gnu::cold, gnu::noinline]] bool buildOrRetry(core::TableCache& all, int order, int extras) {
    if (build<T>(all, order, extras)) return true;
    cacheOf<T>(all).releaseAll();
    all.swapList.releaseAll();
    return build<T>(all, order, extras);
}

template <class T>
VEK_STEPS bool noTables(Call& call, Tables<T>& tables, int order, int extras, int line = __builtin_LINE()) {
    core::TableCache& all = call.thread.tables;
    // One condition within the other: joined, the compiler would take all that follows for unlikely.
    if (!areReady<T>(all, order, extras)) [[unlikely]] {
        if (call.noMemory(!buildOrRetry<T>(all, order, extras), "No working Twd memory", line)) return true;
    }
    const auto& cache = cacheOf<T>(all);
    tables.scratch = onLine(static_cast<T*>(cache.scratch.buffer));
    tables.working = onLine(static_cast<const T*>(cache.working.slot[order]));
    if ((extras & realSplit) != 0) tables.split = onLine(static_cast<const T*>(cache.realSplit.slot[order]));
    if ((extras & swapList) != 0) tables.swaps = static_cast<const std::int32_t*>(all.swapList.slot[order]);
    return false;
}

// For those who can do without: false where memory is short.
template <class T>
bool findTables(core::TableCache& all, Tables<T>& tables, int order, int extras) {
    if (!areReady<T>(all, order, extras) && !buildOrRetry<T>(all, order, extras)) return false;
    const auto& cache = cacheOf<T>(all);
    tables.scratch = onLine(static_cast<T*>(cache.scratch.buffer));
    tables.working = onLine(static_cast<const T*>(cache.working.slot[order]));
    if ((extras & realSplit) != 0) tables.split = onLine(static_cast<const T*>(cache.realSplit.slot[order]));
    return true;
}

template <class T>
[[gnu::cold, gnu::noinline]] void freeTables(core::TableCache& all, int order) {
    if (!core::isOrder(order)) return;
    auto& cache = cacheOf<T>(all);
    cache.working.release(order);
    cache.realSplit.release(order);
    cache.scratch.release();
    all.swapList.release(order);
}

// ---- Checks -------------------------------------------------------------------------------------------------------

VEK_STEPS bool badDirection(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & forwInverse) == forwInverse, "(flags & 1) && (flags & 2)", line) ||
           call.bad((flags & forwInverse) == 0, "(flags & 1)==0 && (flags & 2)==0", line);
}

VEK_STEPS bool badBitOrder(Call& call, int flags, int line = __builtin_LINE()) {
    return call.bad((flags & 64) && (flags & 128), "(flags & 64) && (flags & 128)", line) ||
           call.bad((flags & 64) && (flags & 32), "(flags & 64) && (flags & 32)", line) ||
           call.bad((flags & 32) && (flags & 128), "(flags & 32) && (flags & 128)", line);
}

VEK_STEPS bool badOutPacking(Call& call, int flags) {
    return call.bad((flags & 256) && (flags & 512), "(flags & 256) && (flags & 512)") ||
           call.bad(!(flags & 256) && !(flags & 512), "(flags & 256)==0 && (flags & 512)==0");
}

VEK_STEPS bool badInPacking(Call& call, int flags) {
    return call.bad((flags & 1024) && (flags & 4096), "(flags & 1024) && (flags & 4096)") ||
           call.bad(!(flags & 1024) && !(flags & 4096), "(flags & 1024)==0 && (flags & 4096)==0");
}

// 1/N where the transform scales: a power of two, made from its exponent.
template <class T>
VEK_STEPS T scaleOf(int order, int flags) {
    const bool scales = (flags & (VEK_Inv | VEK_NoScale)) == VEK_Inv;
    return std::bit_cast<float>((127 - (scales ? order : 0)) << 23);
}

// ---- Complex transforms -------------------------------------------------------------------------------------------

// Both forms of permutation over both forms of complex data; in may be out.
template <class T>
[[gnu::noinline]] void permute(FftData<const T> in, FftData<T> out, int order, const std::int32_t* swaps) {
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
void copyPoint(FftData<const T> in, FftData<T> out) {
    out.re[0] = in.re[0];
    if (in.im != nullptr)
        out.im[0] = in.im[0];
    else
        out.re[1] = in.re[1];
}

template <class T>
VEK_STEPS void transform(FftData<const T> in, FftData<T> out, int order, int flags, const Tables<T>& tables) {
    const auto& kernels = kernelsOf<T>();
    const bool inverse = (flags & VEK_Inv) != 0;
    const T scale = scaleOf<T>(order, flags);
    if (in.im == nullptr)
        kernels.transform(in.re, out.re, order, inverse, scale, tables.working, tables.scratch);
    else
        kernels.transformParts(in, out, order, inverse, scale, tables.working, tables.scratch);
}

template <class T>
[[gnu::noinline]] void transformPermuted(FftData<const T> in, FftData<T> out, int order, int flags, Tables<T> tables) {
    if ((flags & VEK_InBitRev) != 0) {
        permute(in, out, order, tables.swaps);
        in = {out.re, out.im};
    }
    transform(in, out, order, flags, tables);
    if ((flags & VEK_OutBitRev) != 0) permute<T>({out.re, out.im}, out, order, tables.swaps);
}

// badPointer(call) checks the member's own arguments.
template <class T, class BadPointer>
VEK_STEPS void complexFft(const char* name, FftData<const T> in, FftData<T> out, int order, int flags,
                          BadPointer badPointer) {
    Call call{moduleOf<T>, name};
    if ((flags & VEK_Free) != 0) return freeTables<T>(call.thread.tables, order);
    if (badOrder(call, order)) return;
    Tables<T> tables;
    const bool permutes = (flags & (VEK_InBitRev | VEK_OutBitRev)) != 0;
    if (noTables(call, tables, order, permutes ? swapList : none)) return;
    if ((flags & VEK_Init) != 0) return;
    if (badPointer(call)) return;
    if (badDirection(call, flags)) return;
    if (badBitOrder(call, flags)) return;
    if (call.stopped()) return;
    if (order == 0) return copyPoint(in, out);
    if (permutes) return transformPermuted(in, out, order, flags, tables);
    transform(in, out, order, flags, tables);
}

// A complex vector as pairs of reals.
template <class C>
FftData<const core::Real<C>> pairs(const C* samps) {
    return {core::reals(samps), nullptr};
}
template <class C>
FftData<core::Real<C>> pairs(C* samps) {
    return {core::reals(samps), nullptr};
}

template <class C>
VEK_STEPS void interleaved(const char* name, C* samps, int order, int flags) {
    complexFft(name, pairs(static_cast<const C*>(samps)), pairs(samps), order, flags,
               [=](Call& call) { return call.bad(samps == nullptr, "samps==0"); });
}

template <class C>
VEK_STEPS void interleavedNip(const char* name, const C* inSamps, C* outSamps, int order, int flags) {
    complexFft(name, pairs(inSamps), pairs(outSamps), order, flags, [=](Call& call) {
        return call.bad(inSamps == nullptr, "inSamps==0") || call.bad(outSamps == nullptr, "outSamps==0");
    });
}

template <class T>
VEK_STEPS void split(const char* name, T* reSamps, T* imSamps, int order, int flags) {
    complexFft<T>(name, {reSamps, imSamps}, {reSamps, imSamps}, order, flags, [=](Call& call) {
        return call.bad(reSamps == nullptr, "reSamps==0") || call.bad(imSamps == nullptr, "imSamps==0");
    });
}

template <class T>
VEK_STEPS void splitNip(const char* name, const T* reInSamps, const T* imInSamps, T* reOutSamps, T* imOutSamps,
                        int order, int flags) {
    complexFft<T>(name, {reInSamps, imInSamps}, {reOutSamps, imOutSamps}, order, flags, [=](Call& call) {
        return call.bad(reInSamps == nullptr, "reInSamps==0") || call.bad(imInSamps == nullptr, "imInSamps==0") ||
               call.bad(reOutSamps == nullptr, "reOutSamps==0") || call.bad(imOutSamps == nullptr, "imOutSamps==0");
    });
}

// ---- Real transforms ----------------------------------------------------------------------------------------------

enum class Layout {
    ccs,
    rcPack,
    rcPerm
};

VEK_STEPS Layout outLayout(int flags) { return (flags & VEK_OutRCPack) != 0 ? Layout::rcPack : Layout::rcPerm; }
VEK_STEPS Layout inLayout(int flags) { return (flags & VEK_InRCPack) != 0 ? Layout::rcPack : Layout::rcPerm; }

// (X0, XM, bin 1, bin 2, ...) becomes the layout.
template <class T>
VEK_STEPS void placeEnds(T* samps, std::size_t n, Layout layout) {
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
VEK_STEPS void realToSpectrum(const T* in, T* out, int order, int flags, Layout layout, const Tables<T>& tables) {
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
        kernelsOf<T>().realForward(in, out, order - 1, (flags & VEK_Inv) != 0, scale, tables.working, tables.split,
                                   tables.scratch);
    }
    placeEnds(out, n, layout);
}

template <class T>
VEK_STEPS void spectrumToReal(const T* in, T* out, int order, int flags, Layout layout, const Tables<T>& tables) {
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
    kernelsOf<T>().realInverse(first, last, bins, out, order - 1, (flags & VEK_Inv) != 0, scale, tables.working,
                               tables.split, tables.scratch);
}

// A real transform, from either side: `Forward` takes samples to a spectrum. badPointer checks the member's own
// arguments, badPacking its choice of layout.
template <bool Forward, class T, class BadPointer, class BadPacking>
VEK_STEPS void realSteps(const char* name, const T* in, T* out, int order, int flags, Layout layout,
                         BadPointer badPointer, BadPacking badPacking) {
    Call call{moduleOf<T>, name};
    Tables<T> tables;
    if ((flags & VEK_Free) != 0) {
        if (core::isOrder(order)) freeTables<T>(call.thread.tables, order - 1);
        return;
    }
    if (badOrder(call, order)) return;
    if (order >= 2 && noTables(call, tables, order - 1, realSplit)) return;
    if ((flags & VEK_Init) != 0) return;
    if (badPointer(call)) return;
    if (badDirection(call, flags)) return;
    if (badPacking(call, flags)) return;
    if (call.stopped()) return;
    if constexpr (Forward)
        realToSpectrum(in, out, order, flags, layout, tables);
    else
        spectrumToReal(in, out, order, flags, layout, tables);
}

// In place, or from one array to another, in the CCS layout or in one that the flags choose.
template <bool Forward, class T, class BadPacking>
VEK_STEPS void realInPlace(const char* name, T* samps, int order, int flags, Layout layout, BadPacking badPacking) {
    realSteps<Forward, T>(
        name, samps, samps, order, flags, layout, [=](Call& call) { return call.bad(samps == nullptr, "samps==0"); },
        badPacking);
}

template <bool Forward, class T, class BadPacking>
VEK_STEPS void realNip(const char* name, const T* inSamps, T* outSamps, int order, int flags, Layout layout,
                       BadPacking badPacking) {
    realSteps<Forward, T>(
        name, inSamps, outSamps, order, flags, layout,
        [=](Call& call) {
            return call.bad(inSamps == nullptr, "inSamps==0") || call.bad(outSamps == nullptr, "outSamps==0");
        },
        badPacking);
}

VEK_STEPS bool noPacking(Call&, int) { return false; }

template <class T>
VEK_STEPS void realFft(const char* name, T* samps, int order, int flags) {
    realInPlace<true>(name, samps, order, flags, Layout::ccs, noPacking);
}

template <class T>
VEK_STEPS void realFftNip(const char* name, const T* inSamps, T* outSamps, int order, int flags) {
    realNip<true>(name, inSamps, outSamps, order, flags, Layout::ccs, noPacking);
}

template <class T>
VEK_STEPS void realFftl(const char* name, T* samps, int order, int flags) {
    realInPlace<true>(name, samps, order, flags, outLayout(flags), badOutPacking);
}

template <class T>
VEK_STEPS void realFftlNip(const char* name, const T* inSamps, T* outSamps, int order, int flags) {
    realNip<true>(name, inSamps, outSamps, order, flags, outLayout(flags), badOutPacking);
}

template <class T>
VEK_STEPS void ccsFft(const char* name, T* samps, int order, int flags) {
    realInPlace<false>(name, samps, order, flags, Layout::ccs, noPacking);
}

template <class T>
VEK_STEPS void ccsFftNip(const char* name, const T* inSamps, T* outSamps, int order, int flags) {
    realNip<false>(name, inSamps, outSamps, order, flags, Layout::ccs, noPacking);
}

template <class T>
VEK_STEPS void ccsFftl(const char* name, T* samps, int order, int flags) {
    realInPlace<false>(name, samps, order, flags, inLayout(flags), badInPacking);
}

template <class T>
VEK_STEPS void ccsFftlNip(const char* name, const T* inSamps, T* outSamps, int order, int flags) {
    realNip<false>(name, inSamps, outSamps, order, flags, inLayout(flags), badInPacking);
}

// The one-signal member on each of two signals; once where it only builds or releases the tables they share.
template <class T, class First, class Second>
VekStatus twice(const char* name, const char* message, int flags, First first, Second second) {
    Call call{moduleOf<T>, name};
    first();
    if ((flags & (VEK_Init | VEK_Free)) == 0) second();
    return call.backtrace(message) ? call.result : call.thread.status;
}

// ---- Products of packed spectra -----------------------------------------------------------------------------------

// dst may equal a source.
template <class T>
void product(const char* name, const T* srcA, const char* nullA, const T* srcB, const char* nullB, T* dst, int order,
             Layout layout) {
    Call call{moduleOf<T>, name};
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
    if (order >= 2)
        oneOf<kernels::ArithOf<T>>(kernelsNow().arith).complexMpy3(srcA + bins, srcB + bins, dst + bins, n / 2 - 1);
}

template <class T>
void mpy2(const char* name, const T* src, T* dst, int order, Layout layout) {
    product<T>(name, src, "src==0", dst, nullptr, dst, order, layout);
}

template <class T>
void mpy3(const char* name, const T* srcA, const T* srcB, T* dst, int order, Layout layout) {
    product(name, srcA, "srcA==0", srcB, "srcB==0", dst, order, layout);
}

}   // namespace vek::fft
