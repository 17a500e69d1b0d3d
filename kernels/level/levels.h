// The table of tables: which kernels run. Those who use a family's include its own interface beside this.
#pragma once

#include "kernels/families.h"

namespace vek::kernels {

#define VEK_DECLARE(object, Table) struct Table;
VEK_FAMILIES(VEK_DECLARE)
#undef VEK_DECLARE

}   // namespace vek::kernels

namespace vek::level {

struct Kernels {
    const char* name;
#define VEK_MEMBER(object, Table) const kernels::Table* object;
    VEK_FAMILIES(VEK_MEMBER)
#undef VEK_MEMBER
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

// oneOf<kernels::ArithOf<float>>(kernelsNow().arith): of a family's tables the member of exactly this type. Where none
// has it, this does not compile.
template <class Of, class Table, class... Others>
inline const Of& oneOf(const Table* table, [[maybe_unused]] const Others*... others) {
    if constexpr (__is_base_of(Of, Table))
        return *table;
    else
        return oneOf<Of>(others...);
}

}   // namespace vek
