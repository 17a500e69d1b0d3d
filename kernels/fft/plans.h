// Plans: which passes an order takes, at what width, and where its tables stand. All known to the compiler.
//
// An example: 1024 points, order 10, in single precision at avx2, where a vector has 8 lanes and a radix is at most 8.
//
//     spread(10, 8, 3): radices 8, 8, 4, 4, vectors of 8 throughout
//
//     pass                reads                    writes         n     s    twiddles, floats from .. of the table
//     firstPass<8, 8>     the caller's pairs       first buffer   1024  1    0, 7 for each of 128 p, in blocks of 8 p
//     columnPass<8, 8>    first buffer             second         128   8    1792, 7 for each of 16 p, in pairs
//     columnPass<8, 4>    second                   first          16    64   2016, 3 for each of 4 p, in pairs
//     lastPass<8, 4>      first                    the caller's   4     256  none
//
// The first pass transposes squares of 8 by 8 in registers, so that from then on vectors run along q. Its twiddles
// stand as the vectors want them, 8 real parts and 8 imaginary ones; later passes need the same twiddle in all lanes.
// The first buffer is the scratch area; the second, where data are pairs, is the caller's output, which the last pass
// then overwrites. 2040 floats of twiddles are rounded up to cache lines: 2048. The assertion below holds this to the
// code.
#pragma once

#include "kernels/simd.h"

namespace vek::VEK_LEVEL {
namespace {

inline constexpr int maxPasses = 16;

// Which radices, from the first pass to the last, and the vector width.
struct Plan {
    int width;
    int passes;
    int logRadix[maxPasses];
};

// AVX-512 has registers for sixteen complex values at once, 32-bit processors for four.
#if defined(__i386__)
inline constexpr int maxLogRadix = 2;
#else
inline constexpr int maxLogRadix = vectorBytes == 64 ? 4 : 3;
#endif
// Where the rest then fits one vector, a larger first radix is worth its spills.
inline constexpr int maxLogRadixShort = maxLogRadix < 3 ? 3 : maxLogRadix;

constexpr int log2Of(int power) {
    int log = 0;
    while ((1 << log) < power) ++log;
    return log;
}

// Spreads `order` over passes of nearly equal radix, larger ones first; the first at least as asked.
constexpr Plan spread(int order, int width, int firstAtLeast) {
    Plan plan{width, 0, {}};
    const int most = order <= maxLogRadixShort + log2Of(width) ? maxLogRadixShort : maxLogRadix;
    int left = order;
    while (left > 0) {
        const int passesLeft = (left + most - 1) / most;
        int logRadix = (left + passesLeft - 1) / passesLeft;
        if (plan.passes == 0 && logRadix < firstAtLeast) logRadix = firstAtLeast;
        // Vectors need room on both sides of the transposition: never a single pass.
        if (width > 1 && logRadix == order) logRadix = order - order / 2;
        plan.logRadix[plan.passes++] = logRadix;
        left -= logRadix;
    }
    return plan;
}

// The self-sorting form: the first radix and the rest both hold at least one vector.
template <class T>
constexpr Plan planOf(int order) {
    if (order == 3 && sizeof(T) == 8 && lanes<T> != 1) return spread(order, 2, 1);
    if (order <= 3 || lanes<T> == 1) return spread(order, 1, 1);
    int width = lanes<T>;
    while (2 * log2Of(width) > order) width /= 2;
    return spread(order, width, log2Of(width));
}

template <class T>
struct Plans {
    Plan of[32];
};
template <class T>
constexpr Plans<T> makePlans() {
    Plans<T> plans{};
    for (int order = 0; order < 32; ++order) plans.of[order] = planOf<T>(order);
    return plans;
}
template <class T>
constexpr Plans<T> plans = makePlans<T>();

// Columns side by side in the four-step form: two cache lines.
template <class T>
inline constexpr int tileColumns = 128 / (2 * sizeof(T));

// The four-step form begins where data, scratch and tables of the self-sorting form outgrow the second-level cache.
// Measured with script/bench fft: orders around the crossing, both forms.
template <class T>
inline constexpr int fourStepOrder = sizeof(T) == 4 ? 16 : 15;

constexpr size_t columnTableLength(const Plan& plan, int order) {
    size_t length = 0;
    int left = order;
    for (int i = 0; i + 1 < plan.passes; ++i) {
        const size_t radix = size_t{1} << plan.logRadix[i];
        left -= plan.logRadix[i];
        length += 2 * (radix - 1) << left;
    }
    return length;
}

template <class T>
constexpr size_t alignedLength(size_t length) {
    return (length + 64 / sizeof(T) - 1) / (64 / sizeof(T)) * (64 / sizeof(T));
}

// How an order of the four-step form splits, and where its tables stand.
template <class T>
struct FourStep {
    int order1, order2;   // column lengths N1 <= N2
    Plan plan1, plan2;
    size_t twiddles2, base, step, length;   // offsets into the table, and its length

    constexpr explicit FourStep(int order)
        : order1(order / 2),
          order2(order - order / 2),
          plan1(spread(order1, lanes<T>, 1)),
          plan2(spread(order2, lanes<T>, 1)),
          twiddles2(alignedLength<T>(columnTableLength(plan1, order1))),
          base(twiddles2 + alignedLength<T>(columnTableLength(plan2, order2))),
          step(base + (size_t{2} << order1) * ((size_t{1} << order2) / tileColumns<T>)),
          length(step + (size_t{2} << order1) * tileColumns<T>) {}
};

// The example above.
constexpr bool isExample(const Plan& plan) {
    return plan.width == 8 && plan.passes == 4 && plan.logRadix[0] == 3 && plan.logRadix[1] == 3 &&
           plan.logRadix[2] == 2 && plan.logRadix[3] == 2 && columnTableLength(plan, 10) == 2040;
}
static_assert(vectorBytes != 32 || maxLogRadix != 3 || isExample(plans<float>.of[10]));

}   // namespace
}   // namespace vek::VEK_LEVEL
