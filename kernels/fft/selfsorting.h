// The self-sorting transform: the passes of a plan from buffer to buffer, results in natural order without a
// permutation (Stockham's, see Cochran et al., "What is the fast Fourier transform?", 1967).
#pragma once

#include "passes.h"
#include "plans.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T>
struct Stages {
    const T* table;
    T* first;   // intermediate buffers, written in turns
    T* second;
};

template <class T, int W, class In>
VEK_INLINE void runFirst(int logRadix, const In& in, T* y, size_t m, const T* table) {
    if constexpr (W <= 4)
        if (logRadix == 2) return firstPass<T, W, 4>(in, y, m, table);
    if constexpr (W <= 8)
        if (logRadix == 3) return firstPass<T, W, 8>(in, y, m, table);
    if constexpr (maxLogRadix >= 4)
        if (logRadix == 4) return firstPass<T, W, 16>(in, y, m, table);
}

template <class T, int W, class In>
VEK_INLINE void runColumns(int logRadix, const In& in, size_t inRow, T* y, size_t m, size_t s, const T* table) {
    switch (logRadix) {
        case 2: return columnPass<T, W, 4>(in, inRow, y, m, s, table);
        case 3: return columnPass<T, W, 8>(in, inRow, y, m, s, table);
        case 4:
            if constexpr (maxLogRadix >= 4) columnPass<T, W, 16>(in, inRow, y, m, s, table);
            return;
        default: return columnPass<T, W, 2>(in, inRow, y, m, s, table);
    }
}

template <class T, int W, class In, class Out>
VEK_INLINE void runLast(int logRadix, const In& in, const Out& out, size_t s) {
    switch (logRadix) {
        case 2: return lastPass<T, W, 4>(in, out, s);
        case 3: return lastPass<T, W, 8>(in, out, s);
        case 4:
            if constexpr (maxLogRadix >= 4) lastPass<T, W, 16>(in, out, s);
            return;
        default: return lastPass<T, W, 2>(in, out, s);
    }
}

// Two passes or more.
template <class T, int W, class In, class Out>
void selfSorting(const Plan& plan, const In& in, const Out& out, int order, const Stages<T>& stages) {
    int left = order - plan.logRadix[0];
    runFirst<T, W>(plan.logRadix[0], in, stages.first, size_t{1} << left, stages.table);
    const T* table = stages.table + ((2 * ((size_t{1} << plan.logRadix[0]) - 1)) << left);
    T* from = stages.first;
    T* to = stages.second;
    for (int i = 1; i + 1 < plan.passes; ++i) {
        const int logRadix = plan.logRadix[i];
        const size_t s = size_t{1} << (order - left);
        left -= logRadix;
        runColumns<T, W>(logRadix, Blocks<const T>{from}, s, to, size_t{1} << left, s, table);
        table += (2 * ((size_t{1} << logRadix) - 1)) << left;
        T* written = to;
        to = from;
        from = written;
    }
    runLast<T, W>(plan.logRadix[plan.passes - 1], Blocks<const T>{from}, out, size_t{1} << (order - left));
}

template <class T, class In, class Out>
void chooseWidth(const Plan& plan, const In& in, const Out& out, int order, const Stages<T>& stages) {
    const auto general = [&](auto width) { selfSorting<T, decltype(width){}>(plan, in, out, order, stages); };
    constexpr int w = lanes<T>;
    constexpr int half = narrower<T, w>;
    constexpr int quarter = narrower<T, half>;
    if (plan.width == w) return general(Int<w>{});
    if constexpr (half != 1)
        if (plan.width == half) return general(Int<half>{});
    if constexpr (quarter != 1)
        if (plan.width == quarter) return general(Int<quarter>{});
    if constexpr (w > 1) return general(Int<1>{});
}

}   // namespace
}   // namespace vek::VEK_LEVEL
