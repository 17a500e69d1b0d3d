#include "tests/support/rows.h"

namespace test {

VEK_ROWS(twd) {
    const Group releasing{.module = "", .gate = Gate::always, .testedBy = "test_tables"};
    const Group plain{.module = "vektwd"};
    const Group keeping{.module = "vektwd", .noMemory = "NULL Pointer", .testedBy = "test_tables"};
    add(plain, "out tbl[length], length length", "tbl==0; length<=0", {VEK_NAMES(CalcDftTwdTbl, c, z, v)});
    add(plain, "out tbl[2^order], order order", "tbl==0; order<0; order>31", {VEK_NAMES(CalcFftTwdTbl, c, z, v)});
    add(keeping, "length length", "length<=0", {VEK_NAMES(GetDftTwdTbl, c, z, v)});
    add(keeping, "order order", "order<0; order>31", {VEK_NAMES(GetFftTwdTbl, c, z, v)});
    add(releasing, "", "", {VEK_NAMES(FreeTwdTbls, c, z, v)});
}

}   // namespace test
