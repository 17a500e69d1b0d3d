#include "tests/support/rows.h"

namespace test {

VEK_ROWS(corr) {
    const auto both = [](const char* module, const Functions& ofOne, const Functions& ofTwo) {
        // (Few terms of a long sum: what transforms round weighs more than in the whole.)
        add({.module = module, .doesWithout = true, .perLevel = true},
            "in src[len], length len, apart dst[nLags], plain nLags=(len+1)/2|len|1, plain type=0|1|2",
            "Null SRC buffer pointer: src==0; Null DST buffer pointer: dst==0; Invalid SRC buffer length: len<1; "
            "Invalid LAG value: nLags<1 || nLags>len; Invalid auto-corr type: type<0 || type>2",
            ofOne);
        add({.module = module, .doesWithout = true, .perLevel = true},
            "in srcA[lenA], length lenA, in srcB[lenB], length lenB=(lenA+1)/2|2*lenA+3|1, apart dst[hiLag-loLag+1], "
            "plain loLag=-2|-lenA|-2*lenA-3|lenB+2, plain hiLag=loLag+lenA|loLag|loLag+3*lenA+lenB",
            "Null SRC buffer pointer: srcA==0; Null SRC buffer pointer: srcB==0; Null DST buffer pointer: dst==0; "
            "Invalid SRC buffer length: lenA<1; Invalid SRC buffer length: lenB<1; Invalid LAG value: loLag>hiLag",
            ofTwo);
    };
    both("vekcorr", {VEK_NAMES(AutoCorr, s, c, d, z)}, {VEK_NAMES(CrossCorr, s, c, d, z, sc, cs, dz, zd)});
    both("vekcorrw", {VEK_NAMES(AutoCorr, w, v)}, {VEK_NAMES(CrossCorr, w, v, wv, vw)});
}

}   // namespace test
