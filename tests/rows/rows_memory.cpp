#include "tests/support/rows.h"

namespace test {

VEK_ROWS(memory) {
    const Group memory{.module = "", .gate = Gate::always, .testedBy = "test_memory"};
    add(memory, "plain count", "", {VEK_NAMES(Malloc, , s, d, c, z, w, v, i, j)});
    add(memory, "pointer block", "", {VEK_NAMES(Free, )});
    add(memory, "", "", {VEK_NAMES(GetLibVersion, )});
}

}   // namespace test
