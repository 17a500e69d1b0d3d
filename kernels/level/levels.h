// The table of tables: which kernels run.
#pragma once

#include "kernels/arith.h"
#include "kernels/fft.h"
#include "kernels/misc.h"
#include "kernels/vec.h"

namespace vek::level {

struct Kernels {
    const char* name;
    const kernels::ArithTable* arith;
    const kernels::VecTable* vec;
    const kernels::MiscTable* misc;
    const kernels::FftTable* fft;
};

extern Kernels current;   // portable until the library is loaded; set once, from the processor alone

// For tests, which link the objects statically: the levels of this build, from portable up; the one that runs; and
// forcing one, which fails when the processor lacks it. Tables that a thread has cached follow the change.
inline constexpr int levelCount = 4;
const Kernels* at(int index);   // null: not in this build, or not on this processor
const char* active();
bool force(const char* name);

}   // namespace vek::level

namespace vek {

inline const level::Kernels& kernelsNow() { return level::current; }

// Of a family's kernels those for float, or those for double.
template <class Real, class Table>
inline const auto& halfOf(const Table* table) {
    if constexpr (sizeof(Real) == sizeof(float))
        return table->f;
    else
        return table->d;
}

}   // namespace vek
