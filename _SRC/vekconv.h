// Convolution in both precisions: vekconvs.cpp and vekconvd.cpp hold the exports over these operations.
//
// An export checks its arguments, chooses a method and calls its routine, which checks once more in its own name: each
// routine can be called by itself. What fails inside is reported from the inside out, by the transform or the
// allocation, the routine and the export.
#pragma once

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "core/call.h"
#include "core/elements.h"
#include "core/memory.h"
#include "kernels/arith.h"
#include "kernels/conv.h"
#include "kernels/level/levels.h"
#include "vekconvtables.h"
#include "vekm6/arith.h"
#include "vekm6/fft.h"

namespace vek::conv {

using core::Call;
using core::isComplex;
using core::Real;

template <class X, class H>
using Result = std::conditional_t<isComplex<X>, X, H>;

// As reports name the module and the routines.
template <class T>
inline constexpr const char* moduleOf = sizeof(Real<T>) == sizeof(float) ? "vekconvs" : "vekconvd";

struct Names {
    const char* direct;
    const char* single;
    const char* sectioned;
};
template <class X, class H>
inline constexpr Names namesOf = {};
template <>
inline constexpr Names namesOf<float, float> = {"veksConv0", "veksConv1", "veksConvm"};
template <>
inline constexpr Names namesOf<VekCplx, VekCplx> = {"vekcConv0", "vekcConv1", "vekcConvm"};
template <>
inline constexpr Names namesOf<VekCplx, float> = {"vekcsConv0", "vekcsConv1", "vekcsConvm"};
template <>
inline constexpr Names namesOf<float, VekCplx> = {"vekscConv0", "vekscConv1", "vekscConvm"};
template <>
inline constexpr Names namesOf<double, double> = {"vekdConv0", "vekdConv1", "vekdConvm"};
template <>
inline constexpr Names namesOf<VekDCplx, VekDCplx> = {"vekzConv0", "vekzConv1", "vekzConvm"};
template <>
inline constexpr Names namesOf<VekDCplx, double> = {"vekzdConv0", "vekzdConv1", "vekzdConvm"};
template <>
inline constexpr Names namesOf<double, VekDCplx> = {"vekdzConv0", "vekdzConv1", "vekdzConvm"};

template <class X, class H, class Y>
bool badArguments(Call& call, const X* x, int xLen, const H* h, int hLen, const Y* y) {
    return call.bad(x == nullptr, "x==0") || call.bad(xLen <= 0, "xLen<=0") || call.bad(h == nullptr, "h==0") ||
           call.bad(hLen <= 0, "hLen<=0") || call.bad(y == nullptr, "y==0");
}

inline int bitLength(std::uint64_t value) { return static_cast<int>(std::bit_width(value)); }

// ---- The choice -----------------------------------------------------------------------------------------------------

enum class Method {
    direct,
    single,
    section1,   // sectioned, with the method number 1, 2 or 3
    section2,
    section3
};

// Operands of one type commute: the shorter one counts as short, of equal ones h. Of two types h always does.
template <class X, class H>
Method choose(int xLen, int hLen) {
    using Y = Result<X, H>;
    using Rule = Crossover<X, H>;
    const bool swaps = std::is_same_v<X, H> && xLen < hLen;
    const std::int64_t shorter = swaps ? xLen : hLen;
    const std::int64_t longer = swaps ? hLen : xLen;
    if (shorter < Rule::limit && (shorter < Rule::always || longer < Rule::longBelow[shorter - Rule::always]))
        return Method::direct;

    const std::int64_t count = std::int64_t{xLen} + hLen - 1;
    // Of sections of 2^order, each of which yields `fold` times what it holds beside the short operand.
    const auto sectioned = [&](int order, int fold) {
        if (order >= costOrders) return std::numeric_limits<double>::infinity();
        const std::int64_t yield = fold * ((std::int64_t{1} << order) - shorter + 1);
        const std::int64_t sections = (count + yield - 1) / yield;
        return (double{Cost<X>::forward[order]} + Cost<Y>::productAndInverse[order]) * static_cast<double>(sections) +
               Cost<H>::forward[order];
    };
    const int order = 1 + bitLength(static_cast<std::uint64_t>(shorter));
    const bool isLong = longer > 32 * shorter;
    Method best = isLong ? Method::section3 : Method::section1;
    double least = isLong ? sectioned(order + 2, isComplex<X> ? 1 : 2) : sectioned(order, 1);
    if (const double cost = sectioned(order + 1, 1); cost < least) {
        best = Method::section2;
        least = cost;
    }
    const int whole = std::min(bitLength(static_cast<std::uint64_t>(count)), costOrders - 1);
    const double wholeCost =
        double{Cost<X>::forward[whole]} + Cost<H>::forward[whole] + Cost<Y>::productAndInverse[whole];
    return wholeCost > least ? best : Method::single;
}

// ---- Transforms of work buffers -------------------------------------------------------------------------------------

// prepare builds the tables or reports why not; the others work in place. Packed spectra stay in the library, so they
// are in the layout that costs nothing to bring about.
template <class Y>
struct Spectrum;
#define VEK_SPECTRUM(Y, forwardFft, forwardFlags, inverseFft, inverseFlags, multiplyBy)                      \
    template <>                                                                                              \
    struct Spectrum<Y> {                                                                                     \
        static void prepare(int order) { forwardFft(nullptr, order, VEK_Forw | (forwardFlags) | VEK_Init); } \
        static void forward(Y* samps, int order) { forwardFft(samps, order, VEK_Forw | (forwardFlags)); }    \
        static void inverse(Y* samps, int order) { inverseFft(samps, order, VEK_Inv | (inverseFlags)); }     \
        static void multiply(const Y* by, Y* bins, [[maybe_unused]] int order) { multiplyBy; }               \
    }
VEK_SPECTRUM(float, veksRealFftl, VEK_OutRCPerm, veksCcsFftl, VEK_InRCPerm, veksMpyRCPerm2(by, bins, order));
VEK_SPECTRUM(double, vekdRealFftl, VEK_OutRCPerm, vekdCcsFftl, VEK_InRCPerm, vekdMpyRCPerm2(by, bins, order));
VEK_SPECTRUM(VekCplx, vekcFft, 0, vekcFft, 0,
             oneOf<kernels::ArithOf<float>>(kernelsNow().arith)
                 .complexMpy3(core::reals(by), core::reals(bins), core::reals(bins), std::size_t{1} << order));
VEK_SPECTRUM(VekDCplx, vekzFft, 0, vekzFft, 0,
             oneOf<kernels::ArithOf<double>>(kernelsNow().arith)
                 .complexMpy3(core::reals(by), core::reals(bins), core::reals(bins), std::size_t{1} << order));
#undef VEK_SPECTRUM

// Two buffers of 2^order elements, which go with the scope.
template <class Y>
struct WorkBuffers {
    Y* first = nullptr;
    Y* second = nullptr;

    WorkBuffers() = default;
    WorkBuffers(const WorkBuffers&) = delete;
    WorkBuffers& operator=(const WorkBuffers&) = delete;
    ~WorkBuffers() {
        core::release(second);
        core::release(first);
    }

    // Tables first, then the buffers; false after a report in the name of `call`.
    bool obtain(Call& call, int order) {
        Spectrum<Y>::prepare(order);
        if (call.backtrace()) return false;
        for (Y** buffer : {&first, &second}) {
            *buffer = static_cast<Y*>(core::allocateArray(std::uint64_t{1} << order, sizeof(Y)));
            if (call.noMemory(*buffer == nullptr, "NULL Pointer")) return false;
        }
        return true;
    }
};

// `size` elements: `count` of the operand's, as the result's type, and zeros.
template <class Y, class X>
void fill(Y* buffer, std::size_t size, const X* from, std::size_t count) {
    if constexpr (std::is_same_v<X, Y>)
        std::copy_n(from, count, buffer);
    else
        std::transform(from, from + count, buffer, [](X real) { return Y{real, 0}; });
    std::fill(buffer + count, buffer + size, Y{});
}

// ---- The methods ----------------------------------------------------------------------------------------------------

// Every product, in the operands' precision.
template <class X, class H>
VekStatus direct(const X* x, int xLen, const H* h, int hLen, Result<X, H>* y) {
    Call call{moduleOf<X>, namesOf<X, H>.direct};
    if (badArguments(call, x, xLen, h, hLen, y) || call.stopped()) return call.result;
    using T = Real<X>;
    const auto& convolve = oneOf<kernels::ConvOf<T>>(kernelsNow().conv_s, kernelsNow().conv_d).direct;
    const auto xCount = static_cast<std::size_t>(xLen), hCount = static_cast<std::size_t>(hLen);
    if (xCount < hCount)
        convolve[isComplex<H>][isComplex<X>](core::reals(h), hCount, core::reals(x), xCount, core::reals(y));
    else
        convolve[isComplex<X>][isComplex<H>](core::reals(x), xCount, core::reals(h), hCount, core::reals(y));
    return call.result;
}

// One transform of each operand, as long as the result.
template <class X, class H>
VekStatus single(const X* x, int xLen, const H* h, int hLen, Result<X, H>* y) {
    Call call{moduleOf<X>, namesOf<X, H>.single};
    if (badArguments(call, x, xLen, h, hLen, y) || call.stopped()) return call.result;
    using Y = Result<X, H>;
    const auto xCount = static_cast<std::size_t>(xLen), hCount = static_cast<std::size_t>(hLen);
    const std::uint64_t count = std::uint64_t{xCount} + hCount - 1;
    const int order = bitLength(count - 1);
    WorkBuffers<Y> work;
    if (!work.obtain(call, order)) return call.result;
    const std::size_t size = std::size_t{1} << order;
    fill(work.first, size, x, xCount);
    fill(work.second, size, h, hCount);
    Spectrum<Y>::forward(work.first, order);
    Spectrum<Y>::forward(work.second, order);
    Spectrum<Y>::multiply(work.first, work.second, order);
    Spectrum<Y>::inverse(work.second, order);
    std::copy_n(work.second, static_cast<std::size_t>(count), y);
    return call.result;
}

// Overlap-save: the longer operand in sections, each beside as much of its past as the shorter one reaches.
template <class X, class H>
void inSections(Call& call, const X* x, std::size_t xCount, const H* h, std::size_t hCount, int method,
                Result<X, H>* y) {
    using Y = Result<X, H>;
    const std::uint64_t count = std::uint64_t{xCount} + hCount - 1;
    int order = bitLength(hCount);   // above the shorter operand
    for (int doublings = method >= 2 ? 2 : 1; doublings > 0 && std::uint64_t{1} << order < count; --doublings) ++order;
    WorkBuffers<Y> work;
    if (!work.obtain(call, order)) return;
    Y* const spectrum = work.first;
    Y* const section = work.second;
    const std::size_t size = std::size_t{1} << order;
    const std::size_t past = hCount - 1;
    const std::size_t step = size - past;
    const auto convolved = [&] {
        Spectrum<Y>::forward(section, order);
        Spectrum<Y>::multiply(spectrum, section, order);
        Spectrum<Y>::inverse(section, order);
    };
    fill(spectrum, size, h, hCount);
    Spectrum<Y>::forward(spectrum, order);
    fill(section, size, x, std::min(step, xCount));
    convolved();
    // Where everything fits into one section nothing has come round in it.
    std::copy_n(section, count <= size ? static_cast<std::size_t>(count) : step, y);
    if (count <= size) return;
    for (std::uint64_t next = step; next < count; next += step) {
        const auto at = static_cast<std::size_t>(next);
        const std::size_t from = at - past;   // before xCount, as y[at] is one of the results
        fill(section, size, x + from, std::min(size, xCount - from));
        convolved();
        std::copy_n(section + past, static_cast<std::size_t>(std::min<std::uint64_t>(step, count - at)), y + at);
    }
}

// method: 1 for the smallest sections, 2 or 3 for larger ones.
template <class X, class H>
VekStatus sectioned(const X* x, int xLen, const H* h, int hLen, Result<X, H>* y, int method) {
    Call call{moduleOf<X>, namesOf<X, H>.sectioned};
    if (badArguments(call, x, xLen, h, hLen, y) || call.stopped()) return call.result;
    const auto xCount = static_cast<std::size_t>(xLen), hCount = static_cast<std::size_t>(hLen);
    if (hCount > xCount)
        inSections(call, h, hCount, x, xCount, method, y);
    else
        inSections(call, x, xCount, h, hCount, method, y);
    return call.result;
}

// What an entry does; it returns the status that it leaves.
template <class X, class H>
VekStatus convolve(const char* name, const X* x, int xLen, const H* h, int hLen, Result<X, H>* y) {
    Call call{moduleOf<X>, name};
    if (badArguments(call, x, xLen, h, hLen, y) || call.stopped()) return call.thread.status;
    switch (choose<X, H>(xLen, hLen)) {
        case Method::direct: direct(x, xLen, h, hLen, y); break;
        case Method::single: single(x, xLen, h, hLen, y); break;
        case Method::section1: sectioned(x, xLen, h, hLen, y, 1); break;
        case Method::section2: sectioned(x, xLen, h, hLen, y, 2); break;
        case Method::section3: sectioned(x, xLen, h, hLen, y, 3); break;
    }
    call.backtrace();
    return call.thread.status;
}

}   // namespace vek::conv
