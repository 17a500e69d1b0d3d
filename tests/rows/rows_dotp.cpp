#include "tests/support/rows.h"

namespace test {

VEK_ROWS(dotp) {
    const std::string vectors = "in a[len], in b[len], length len";
    const std::string checks = "Null buffer pointer: a==0 || b==0; Invalid value: len<0";
    // (Sums may cancel, down to what was rounded.)
    add({.module = "vekdotp", .perLevel = true}, vectors, checks, {VEK_NAMES(DotProd, s, c, d, z, sc, cs, dz, zd)});
    add({.module = "vekdotpw"}, vectors + ", mode scaleMode, factor scaleFactor",
        checks + "; Null scale factor pointer: scaleMode==4 && scaleFactor==0",
        {VEK_NAMES(DotProd, w, v, wv, vw), VEK_NAMES(DotProdExt, w, v, wv, vw)});
}

}   // namespace test
