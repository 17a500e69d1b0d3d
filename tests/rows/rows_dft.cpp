#include "tests/support/rows.h"

namespace test {

VEK_ROWS(dft) {
    const std::string direction = "VEK_Forw or VEK_Inv must be as a flag: (flags & 3)==0 || (flags & 3)==3";
    const std::string arrays = "in src[length], out dst[length], length length, flags flags=";
    // (65281: flags that nobody uses.)
    const Group floats{.module = "vekdft", .noMemory = "TwdTbl==0; buff==0", .noMemoryStatus = VEK_StsBadArg};
    add(floats, arrays + "1|2|17|18|65281", "length<=0; =flags & 4; =flags & 8; src==0; dst==0; " + direction,
        {CZ(Dft)});
    const Group shorts{
        .module = "vekdft", .noMemory = "TwidleTbl==0; buff==0", .noMemoryStatus = VEK_StsBadArg, .perLevel = true};
    add(shorts, arrays + "1|2|18|8193|8194|16385|16386|24577, mode scaleMode, factor scaleFactor",
        "=flags & 8; length<=0; =flags & 4; src==0; dst==0; " + direction +
            "; VEK_FIXED_SCALE and VEK_AUTO_SCALE: (scaleMode & 2) && (scaleMode & 4)"
            "; VEK_AUTO_SCALE and ScaleFactor==NULL: (scaleMode & 4) && scaleFactor==0",
        {VEK_NAMES(Dft, v)});
}

}   // namespace test
