#include "tests/support/rows.h"

namespace test {

VEK_ROWS(frame) {
    const Group frame{.module = "", .gate = Gate::always, .testedBy = "test_frame"};
    add(frame, "plain status, pointer name, pointer message, pointer file, plain line", "",
        {VEK_NAMES(Error, ), VEK_NAMES(StdErrReport, ), VEK_NAMES(NulDevReport, ), VEK_NAMES(GuiBoxReport, )});
    add(frame, "plain status", "", {VEK_NAMES(ErrorStr, ), VEK_NAMES(SetErrStatus, )});
    add(frame, "plain mode", "", {VEK_NAMES(SetErrMode, )});
    add(frame, "pointer handler", "", {VEK_NAMES(RedirectError, )});
    add(frame, "", "", {VEK_NAMES(GetErrStatus, ), VEK_NAMES(GetErrMode, )});
}

VEK_ROWS(memory) {
    const Group memory{.module = "", .gate = Gate::always, .testedBy = "test_memory"};
    add(memory, "plain count", "", {VEK_NAMES(Malloc, , s, d, c, z, w, v, i, j)});
    add(memory, "pointer block", "", {VEK_NAMES(Free, )});
    add(memory, "", "", {VEK_NAMES(GetLibVersion, )});
}

}   // namespace test
