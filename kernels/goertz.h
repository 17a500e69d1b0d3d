// Kernels of the Goertzel filter.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "tables.h"

namespace vek::kernels {

// The recurrence over n samples X of `Parts` reals, which share the coefficient: s = x + cos2 * prev1 - prev2, computed
// in double and rounded to T. prev1 and prev2 hold `Parts` reals each.
template <class T, class X, int Parts>
struct GoertzOf {
    void (*run)(T cos2, const X* samples, size_t n, T* prev2, T* prev1);
};

struct GoertzTable : Tables<GoertzOf<float, float, 1>, GoertzOf<float, float, 2>, GoertzOf<double, double, 1>,
                            GoertzOf<double, double, 2>, GoertzOf<float, int16_t, 1>, GoertzOf<float, int16_t, 2>> {};

}   // namespace vek::kernels
