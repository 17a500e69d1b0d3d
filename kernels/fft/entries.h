// The transforms of one precision: what fft_s.cpp and fft_d.cpp put into their tables. Room by room:
//
//     butterflies.h   transforms of 2, 4, 8 and 16 values in registers
//     layouts.h       where data lie: pairs, two arrays, blocks of vectors
//     passes.h        one sweep over all data
//     plans.h         which passes an order takes; an example
//     selfsorting.h   the passes of a plan, from buffer to buffer: orders that fit the second-level cache
//     registers.h     the smallest orders
//     large.h         the largest orders, in four steps
//     tables.h        twiddles, and room for intermediate data
//     complex.h       the choice between these
//     real.h          real transforms, over complex ones
//
// With internal linkage throughout, for the reasons that simd.h gives.
#pragma once

#include "real.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T>
constexpr kernels::FftOf<T> entries = {tableLength<T>, fillTable<T>, scratchLength<T>, transform<T>,  transformParts<T>,
                                       splitLength<T>, fillSplit<T>, realForward<T>,   realInverse<T>};

}   // namespace

}   // namespace vek::VEK_LEVEL
