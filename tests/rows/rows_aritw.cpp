#include "tests/support/rows.h"

namespace test {

VEK_ROWS(aritw) {
    const Group aritw{.module = "vekaritw"};
    add(aritw, "out dst[n], length n", "n<=0; dst==0", {VEK_NAMES(bZero, w)});
    add(aritw, "scalar val, out dst[n], length n", "n<=0; dst==0", {VEK_NAMES(bSet, w)});
    add(aritw, "in src[n], out dst[n], length n", "n<=0; src==0; dst==0", {VEK_NAMES(bCopy, w)});
}

}   // namespace test
