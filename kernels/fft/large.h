// Large orders: the four-step transform (Gentleman and Sande 1966; Bailey 1990).
//
// N = N1 N2 points are taken for N1 rows of N2. Transforms of the N2 columns, two cache lines of columns at a time;
// each tile times its twiddles and transposed; then transforms of the N1 columns of that. What a tile needs stays in
// the caches, so that memory is read and written twice in all.
#pragma once

#include "selfsorting.h"

namespace vek::VEK_LEVEL {
namespace {

// Transforms of `tileColumns` columns of 2^order values: all passes but the last, which the caller runs from the
// buffer returned.
template <class T, class In>
VEK_INLINE T* columnsButLast(const Plan& plan, int order, const In& in, size_t inRow, const Stages<T>& stages) {
    constexpr int w = lanes<T>;
    size_t s = tileColumns<T>;
    int left = order - plan.logRadix[0];
    runColumns<T, w>(plan.logRadix[0], in, inRow, stages.first, size_t{1} << left, s, stages.table);
    const T* table = stages.table + ((2 * ((size_t{1} << plan.logRadix[0]) - 1)) << left);
    s <<= plan.logRadix[0];
    T* from = stages.first;
    T* to = stages.second;
    for (int i = 1; i + 1 < plan.passes; ++i) {
        const int logRadix = plan.logRadix[i];
        left -= logRadix;
        runColumns<T, w>(logRadix, Blocks<const T>{from}, s, to, size_t{1} << left, s, table);
        table += (2 * ((size_t{1} << logRadix) - 1)) << left;
        s <<= logRadix;
        T* written = to;
        to = from;
        from = written;
    }
    return from;
}

template <class T, class Out>
VEK_INLINE void runLastColumns(int logRadix, const T* x, const Out& out, size_t outRow, size_t rows) {
    constexpr int w = lanes<T>;
    switch (logRadix) {
        case 2: return lastColumnPass<T, w, 4>(x, out, outRow, rows, tileColumns<T>);
        case 3: return lastColumnPass<T, w, 8>(x, out, outRow, rows, tileColumns<T>);
        case 4:
            if constexpr (maxLogRadix >= 4) lastColumnPass<T, w, 16>(x, out, outRow, rows, tileColumns<T>);
            return;
        default: return lastColumnPass<T, w, 2>(x, out, outRow, rows, tileColumns<T>);
    }
}

// Rows k of the tile times exp(-2 pi i k (base + c) / N), transposed: column c becomes row base + c of `to`.
template <class T>
VEK_INLINE void twistAndTranspose(const T* tile, T* to, size_t rows, size_t base, const T* baseTwiddles,
                                  const T* stepTwiddles) {
    constexpr int w = lanes<T>;
    constexpr int columns = tileColumns<T>;
    for (size_t k = 0; k < rows; k += w) {
        for (int c = 0; c < columns; c += w) {
            Cx<Vec<T, w>> x[w];
            unroll<w>([&](auto i) {
                const Cx<Vec<T, w>> b = {splat<w>(baseTwiddles[2 * (k + i)]), splat<w>(baseTwiddles[2 * (k + i) + 1])};
                const size_t e = (k + i) * columns + c;
                x[i] =
                    Blocks<const T>{tile}.template read<w>(e) * (Blocks<const T>{stepTwiddles}.template read<w>(e) * b);
            });
            transpose<T, w>(x);
            unroll<w>([&](auto i) { Blocks<T>{to}.template write<w>((base + c + i) * rows + k, x[i]); });
        }
    }
}

// In and Out shifted by some elements.
template <class Data>
VEK_INLINE Data shifted(Data data, size_t elements) {
    if constexpr (requires { data.im; }) {
        data.re += elements;
        data.im += elements;
    } else {
        data.at += 2 * elements;
    }
    return data;
}

template <class T, class In, class Out>
void fourSteps(const In& in, const Out& out, int order, const T* table, T* scratch) {
    constexpr size_t columns = tileColumns<T>;
    const FourStep<T> form(order);
    const size_t n1 = size_t{1} << form.order1;
    const size_t n2 = size_t{1} << form.order2;
    T* middle = scratch;
    T* tile1 = scratch + (size_t{2} << order);
    T* tile2 = tile1 + 2 * n2 * columns;

    for (size_t base = 0; base < n2; base += columns) {
        T* x = columnsButLast<T>(form.plan1, form.order1, shifted(in, base), n2, {table, tile1, tile2});
        const int logRadix = form.plan1.logRadix[form.plan1.passes - 1];
        runLastColumns<T>(logRadix, x, Blocks<T>{x}, columns, n1 >> logRadix);
        twistAndTranspose(x, middle, n1, base, table + form.base + 2 * n1 * (base / columns), table + form.step);
    }
    for (size_t base = 0; base < n1; base += columns) {
        T* x = columnsButLast<T>(form.plan2, form.order2, Blocks<const T>{middle + 2 * base}, n1,
                                 {table + form.twiddles2, tile1, tile2});
        const int logRadix = form.plan2.logRadix[form.plan2.passes - 1];
        runLastColumns<T>(logRadix, x, shifted(out, base), n1, n2 >> logRadix);
    }
}

}   // namespace
}   // namespace vek::VEK_LEVEL
