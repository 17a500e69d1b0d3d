// The tables that the passes read, laid out as the plans say, and the room that they need between them.
#pragma once

#include "kernels/fft.h"
#include "plans.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::RootFunction;

template <class T>
constexpr bool usesFourSteps(int order) {
    return order >= fourStepOrder<T>;
}

template <class T>
uint64_t tableLength(int order) {
    if (usesFourSteps<T>(order)) return FourStep<T>(order).length;
    return alignedLength<T>(columnTableLength(plans<T>.of[order], order));
}

template <class T>
uint64_t scratchLength(int order) {
    const uint64_t whole = uint64_t{2} << order;
    if (usesFourSteps<T>(order)) return whole + 4 * tileColumns<T> * (uint64_t{1} << FourStep<T>(order).order2);
    return 2 * alignedLength<T>(whole);
}

template <class T>
void putRoot(T* re, T* im, uint64_t k, uint64_t n, RootFunction root) {
    double c = 0;
    double s = 0;
    root(k, n, &c, &s);
    *re = static_cast<T>(c);
    *im = static_cast<T>(s);
}

// The twiddles of the passes of one transform; those of the first stand in blocks of firstWidth.
template <class T>
void fillPasses(const Plan& plan, int order, int firstWidth, T* table, RootFunction root) {
    int left = order;
    for (int i = 0; i + 1 < plan.passes; ++i) {
        const uint64_t n = uint64_t{1} << left;
        const uint64_t radix = uint64_t{1} << plan.logRadix[i];
        const uint64_t width = i == 0 ? firstWidth : 1;
        left -= plan.logRadix[i];
        for (uint64_t p = 0; p < n / radix; ++p)
            for (uint64_t k = 1; k < radix; ++k) {
                T* block = table + 2 * width * ((p / width) * (radix - 1) + k - 1) + laneOf<T>(p % width, width);
                putRoot(block, block + width, p * k, n, root);
            }
        table += 2 * (radix - 1) * (n / radix);
    }
}

template <class T>
void fillTable(int order, T* table, RootFunction root) {
    if (!usesFourSteps<T>(order)) {
        const Plan& plan = plans<T>.of[order];
        return fillPasses(plan, order, plan.width, table, root);
    }
    constexpr uint64_t columns = tileColumns<T>;
    constexpr uint64_t w = lanes<T>;
    const FourStep<T> form(order);
    const uint64_t n1 = uint64_t{1} << form.order1;
    const uint64_t n2 = uint64_t{1} << form.order2;
    fillPasses(form.plan1, form.order1, 1, table, root);
    fillPasses(form.plan2, form.order2, 1, table + form.twiddles2, root);
    T* base = table + form.base;
    for (uint64_t tile = 0; tile < n2 / columns; ++tile)
        for (uint64_t k = 0; k < n1; ++k, base += 2) putRoot(base, base + 1, k * tile, n1 * n2 / columns, root);
    for (uint64_t k = 0; k < n1; ++k)
        for (uint64_t c = 0; c < columns; ++c) {
            T* block = table + form.step + 2 * (k * columns + c / w * w) + laneOf<T>(c % w, w);
            putRoot(block, block + w, k * c, n1 * n2, root);
        }
}

}   // namespace
}   // namespace vek::VEK_LEVEL
