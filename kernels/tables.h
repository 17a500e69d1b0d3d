// What the tables of the families are made of.
#pragma once

namespace vek::kernels {

// One member for each type, or pair of types, that the loops take: Tables<ArithOf<float>, ArithOf<double>>,
// Tables<FirOf<float, float>, FirOf<int16_t, float>>. Callers name the member that they want by its whole type
// (vek::oneOf, kernels/level/levels.h), so that there is no second-best one to fall back on.
template <class... Of>
struct Tables : Of... {};

}   // namespace vek::kernels
