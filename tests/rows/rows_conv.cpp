#include "tests/support/rows.h"

namespace test {

VEK_ROWS(conv) {
    // Of equal lengths 1, of few taps, and up to where transforms take over.
    const std::string arguments =
        "in x[xLen], length xLen, in h[hLen], length hLen=xLen/2+1|1|7|3*xLen, apart y[xLen+hLen-1]";
    const std::string checks = "x==0; xLen<=0; h==0; hLen<=0; y==0";
    add({.module = "vekconvs", .leavesStatus = true}, arguments, checks, {VEK_NAMES(Conv, s, c, cs, sc)});
    add({.module = "vekconvd", .leavesStatus = true}, arguments, checks, {VEK_NAMES(Conv, d, z, zd, dz)});
    // Long ones go through float, whose last bits become whole numbers.
    add({.module = "vekconvw", .perLevel = true}, arguments + ", mode scaleMode, factor scaleFactor",
        checks + "; scalefactor==0: scaleMode==4 && scaleFactor==0", {VEK_NAMES(Conv, w)});
}

}   // namespace test
