// The discrete Fourier transform of any length.
#include "vekm6/dft.h"

#include <cmath>

#include "core/dfttables.h"
#include "core/elements.h"
#include "core/shorts.h"
#include "kernels/dft.h"
#include "kernels/level/levels.h"

namespace {

using vek::core::Call;
using vek::core::Real;
using vek::core::reals;
using vek::core::TableCache;

constexpr const char* module = "vekdft";

// ---- Steps of all members -------------------------------------------------------------------------------------------

template <class T>
const T* tableOf(const char* getter, int length) {
    Call call{"vektwd", getter};
    return vek::core::dftTable<T>(call, length);
}

bool badDirection(Call& call, int flags, int line = __builtin_LINE()) {
    const int direction = flags & (VEK_Forw | VEK_Inv);
    return call.bad(direction != VEK_Forw && direction != VEK_Inv, "VEK_Forw or VEK_Inv must be as a flag", line);
}

bool isInverse(int flags) { return (flags & VEK_Inv) != 0; }
int divisorOf(int length, int flags) { return (flags & (VEK_Inv | VEK_NoScale)) == VEK_Inv ? length : 1; }

// ---- Floating point -------------------------------------------------------------------------------------------------

template <class C>
vek::core::Scratch& scratchOf(TableCache& cache) {
    if constexpr (sizeof(C) == sizeof(VekCplx))
        return cache.transformC.dft;
    else
        return cache.transformZ.dft;
}

// The table and the scratch area come before the checks of all but the length, so that VEK_Init finds them made.
template <class C>
void dft(const char* name, const char* getter, const C* src, C* dst, int length, int flags) {
    using T = Real<C>;
    Call call{module, name};
    if (call.bad(length <= 0, "length<=0")) return;
    const C* table = tableOf<C>(getter, length);
    if (call.bad(table == nullptr, "TwdTbl==0")) return;
    const auto& kernels = vek::oneOf<vek::kernels::DftOf<T>>(vek::kernelsNow().dft);
    auto& area = scratchOf<C>(call.thread.tables);
    auto* scratch = static_cast<T*>(area.get(kernels.scratchLength(length) * sizeof(T)));
    if (call.bad(scratch == nullptr, "buff==0")) return;
    if ((flags & VEK_Init) != 0) return;
    if ((flags & VEK_Free) != 0) return area.release();
    if (call.bad(src == nullptr, "src==0")) return;
    if (call.bad(dst == nullptr, "dst==0")) return;
    if (badDirection(call, flags)) return;
    if (call.stopped()) return;
    if (length == 1) {
        *dst = *src;
        return;
    }
    const auto scale = static_cast<T>(1.0 / divisorOf(length, flags));
    kernels.transform(reals(src), reals(dst), length, isInverse(flags), scale, reals(table), scratch);
}

// ---- int16 ----------------------------------------------------------------------------------------------------------

constexpr int fewestForFloat = 129;

// Results before they become int16, one for each real.
using Wide = std::int64_t;

std::uint64_t realsOf(int length) { return 2 * static_cast<std::uint64_t>(length); }

std::uint64_t integerBytes(int length) {
    const auto& kernels = vek::oneOf<vek::kernels::DftIntegers>(vek::kernelsNow().dft);
    return realsOf(length) * (sizeof(Wide) + sizeof(double)) + kernels.scratchLength(length) * sizeof(double);
}
void integerCore(const VekWCplx* src, Wide* results, int length, int flags, const VekWCplx* table) {
    const auto& kernels = vek::oneOf<vek::kernels::DftIntegers>(vek::kernelsNow().dft);
    const std::uint64_t n = realsOf(length);
    auto* sums = reinterpret_cast<double*>(results + n);
    kernels.transform(reals(src), sums, length, isInverse(flags), reals(table), sums + n);
    const Wide divisor = Wide{16384} * divisorOf(length, flags);
    for (std::uint64_t i = 0; i < n; ++i) results[i] = vek::core::nearestQuotient(static_cast<Wide>(sums[i]), divisor);
}

std::uint64_t floatBytes(int length) { return realsOf(length) * (sizeof(Wide) + sizeof(float)); }
bool floatCore(Call& call, const VekWCplx* src, Wide* results, int length, int flags) {
    const std::uint64_t n = realsOf(length);
    auto* values = reinterpret_cast<float*>(results + n);
    for (std::uint64_t i = 0; i < n; ++i) values[i] = reals(src)[i];
    auto* pairs = reinterpret_cast<VekCplx*>(values);
    vekcDft(pairs, pairs, length, flags);
    if (call.backtrace("vekvDft float core error")) return false;
    for (std::uint64_t i = 0; i < n; ++i) results[i] = std::llrint(values[i]);
    return true;
}

void releaseTables(TableCache& cache) {
    cache.releaseC();
    cache.releaseV();
}

void shortDft(const VekWCplx* src, VekWCplx* dst, int length, int flags, int scaleMode, int* scaleFactor) {
    Call call{module, "vekvDft"};
    TableCache& cache = call.thread.tables;
    if ((flags & VEK_Free) != 0) return releaseTables(cache);
    if (call.bad(length <= 0, "length<=0")) return;
    const bool asked = (flags & VEK_DoIntCore) != 0;
    const bool isShort = length < fewestForFloat;
    const bool integer = asked || (isShort && (flags & VEK_DoFloatCore) == 0);
    const VekWCplx* table = nullptr;
    if (asked || isShort) {
        table = tableOf<VekWCplx>("vekvGetDftTwdTbl", length);
        if (call.bad(table == nullptr, "TwidleTbl==0")) return;
    } else if (call.bad(tableOf<VekCplx>("vekcGetDftTwdTbl", length) == nullptr, "TwidleTbl==0")) {
        return;
    }
    const std::uint64_t bytes = integer ? integerBytes(length) : floatBytes(length);
    void* results = cache.shortDft.get(bytes);
    if (integer) {
        if (call.bad(results == nullptr, "buff==0")) return;
    } else if (results == nullptr) {
        releaseTables(cache);
        results = cache.shortDft.get(bytes);
        if (call.noMemory(results == nullptr, "No working memory")) return;
    }
    if ((flags & VEK_Init) != 0) return;
    if (call.bad(src == nullptr, "src==0")) return;
    if (call.bad(dst == nullptr, "dst==0")) return;
    if (badDirection(call, flags)) return;
    const bool chosen = (scaleMode & VEK_AUTO_SCALE) != 0;
    if (call.bad(chosen && (scaleMode & VEK_FIXED_SCALE) != 0, "VEK_FIXED_SCALE and VEK_AUTO_SCALE")) return;
    if (call.bad(chosen && scaleFactor == nullptr, "VEK_AUTO_SCALE and ScaleFactor==NULL")) return;
    if (call.stopped()) return;
    if (length == 1) {
        *dst = *src;
        if (chosen) *scaleFactor = 0;
        return;
    }
    auto* wide = static_cast<Wide*>(results);
    if (integer)
        integerCore(src, wide, length, flags, table);
    else if (!floatCore(call, src, wide, length, flags))
        return;
    vek::core::toShorts(wide, realsOf(length), reals(dst), scaleMode, scaleFactor);
}

}   // namespace

extern "C" {

void VEKAPI vekcDft(const VekCplx* src, VekCplx* dst, int length, int flags) {
    dft("vekcDft", "vekcGetDftTwdTbl", src, dst, length, flags);
}
void VEKAPI vekzDft(const VekDCplx* src, VekDCplx* dst, int length, int flags) {
    dft("vekzDft", "vekzGetDftTwdTbl", src, dst, length, flags);
}
void VEKAPI vekvDft(const VekWCplx* src, VekWCplx* dst, int length, int flags, int scaleMode, int* scaleFactor) {
    shortDft(src, dst, length, flags, scaleMode, scaleFactor);
}

}   // extern "C"
