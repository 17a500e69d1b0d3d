#include "tests/support/rows.h"

namespace test {

VEK_ROWS(misc) {
    const Group releasing{.module = "", .gate = Gate::always, .testedBy = "test_tables"};
    const Group plain{.module = "vekmisc"};
    const Group keeping{.module = "vekmisc", .noMemory = "NULL Pointer", .testedBy = "test_tables"};
    add(plain, "plain value=305419896|-1|19|1073741824|-2, order order", "order<0; order>31", {VEK_NAMES(BitRev, )});
    add(plain, "out tbl[2^order], order order", "tbl==0; order<0; order>31", {VEK_NAMES(CalcBitRevTbl, )});
    add(keeping, "order order", "order<0; order>31", {VEK_NAMES(GetBitRevTbl, )});
    add(keeping, "inout vec[2^order], order order", "vec==0; order<0; order>31",
        {VEK_NAMES(bBitRev1, s, d, c, z, w, v)});
    add(keeping, "in src[2^order], apart dst[2^order], order order", "src==0; dst==0; order<0; order>31",
        {VEK_NAMES(bBitRev2, s, d, c, z, w, v)});
    add(releasing, "", "", {VEK_NAMES(FreeBitRevTbls, )});
}

}   // namespace test
