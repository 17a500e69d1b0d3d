// Orders that fit the registers: two passes with nothing stored between them.
#pragma once

#include "passes.h"
#include "plans.h"

namespace vek::VEK_LEVEL {
namespace {

// Two passes with nothing stored between them: N = R W, R at least W, as the plan of the order says.
template <class T, int W, int R, class In, class Out>
VEK_AS_WRITTEN [[gnu::noinline]] void inRegisters(Handed<In> from, Handed<Out> to, const T* twiddles) {
    const In in = from;
    const Out out = to;
    Cx<Vec<T, W>> a[R];
    unroll<R>([&](auto j) { a[j] = in.template read<W>(W * j); });
    dft<T, W, R>(a);
    unroll<R - 1>([&](auto k) { a[k + 1] = a[k + 1] * Blocks<const T>{twiddles}.template read<W>(W * k); });
    unroll<R / W>([&](auto group) {
        Cx<Vec<T, W>>* const square = a + group * W;
        transpose<T, W>(square);
        dft<T, W, W>(square);
        unroll<W>([&](auto k) { out.template write<W>(W * group + R * k, square[k]); });
    });
}

template <class T>
constexpr bool fitsRegisters(int order) {
    const Plan plan = planOf<T>(order);
    return plan.passes == 2 && plan.width > 1 && plan.logRadix[1] == log2Of(plan.width);
}

// True: done. One pass and no tables for 2, 4 and, where vectors would not pay, 8 points.
template <class T, class In, class Out>
VEK_INLINE bool runInRegisters(const In& in, const Out& out, int order, const T* table) {
    const auto attempt = [&](auto candidate) {
        constexpr int o = decltype(candidate){};
        constexpr Plan plan = planOf<T>(o);
        if constexpr (fitsRegisters<T>(o)) {
            inRegisters<T, plan.width, 1 << plan.logRadix[0]>(in, out, table);
        } else if constexpr (plan.passes == 1) {
            lastPass<T, 1, 1 << o>(in, out, 1);
        }
        return fitsRegisters<T>(o) || plan.passes == 1;
    };
    switch (order) {
        case 1: return attempt(Int<1>{});
        case 2: return attempt(Int<2>{});
        case 3: return attempt(Int<3>{});
        case 4: return attempt(Int<4>{});
        case 5: return attempt(Int<5>{});
        case 6: return attempt(Int<6>{});
        case 7: return attempt(Int<7>{});
        case 8: return attempt(Int<8>{});
        default: return false;
    }
}

}   // namespace
}   // namespace vek::VEK_LEVEL
