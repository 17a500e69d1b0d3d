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

}   // namespace test
