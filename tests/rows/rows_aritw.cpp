#include "tests/support/rows.h"

namespace test {

#define WV(operation) VEK_NAMES(operation, w, v)

VEK_ROWS(aritw) {
    const Group aritw{.module = "vekaritw"};
    const std::string scaling = ", mode scaleMode, factor scaleFactor";
    const std::string noFactor = "scalefactor==0: scaleMode==4 && scaleFactor==0";
    const auto withScalar = [&](const Functions& functions) {
        add(aritw, "scalar val, inout dst[n], length n" + scaling, "n<=0; dst==0; " + noFactor, functions);
    };
    const auto inPlace = [&](const std::string& operand, const Functions& functions) {
        add(aritw, "in " + operand + "[n], inout dst[n], length n" + scaling,
            "n<=0; " + operand + "==0; dst==0; " + noFactor, functions);
    };
    const auto apart = [&](const std::string& a, const std::string& b, const Functions& functions) {
        add(aritw, "in " + a + "[n], in " + b + "[n], out dst[n], length n" + scaling,
            "n<=0; " + a + "==0; " + b + "==0; dst==0; " + noFactor, functions);
    };
    add(aritw, "out dst[n], length n", "n<=0; dst==0", {WV(bZero)});
    add(aritw, "scalar val, out dst[n], length n", "n<=0; dst==0", {WV(bSet)});
    add(aritw, "in src[n], out dst[n], length n", "n<=0; src==0; dst==0", {WV(bCopy)});
    withScalar({WV(bAdd1), WV(bSub1), WV(bMpy1)});
    inPlace("src", {WV(bAdd2), WV(bMpy2)});
    inPlace("val", {WV(bSub2)});
    apart("srcA", "srcB", {WV(bAdd3), WV(bMpy3)});
    apart("src", "val", {WV(bSub3)});

    add(aritw, "inout vec[n], length n", "n<=0; vec==0", {VEK_NAMES(bConj1, v)});
    add(aritw, "in src[n], out dst[n], length n", "n<=0; src==0; dst==0", {VEK_NAMES(bConj2, v)});
    add(aritw, "in src[n], apart dst[n], length n", "n<=0; src==0; dst==0", {VEK_NAMES(bConjFlip2, v)});
    add(aritw, "inout vec[max(n, 2*n-2)], length n", "n<=0; vec==0", {VEK_NAMES(bConjExtend1, v)});
    add(aritw, "in src[n], apart dst[max(n, 2*n-2)], length n", "n<=0; src==0; dst==0", {VEK_NAMES(bConjExtend2, v)});

    // On one element each, of their own.
    const auto one = [&](const std::string& vector, const Functions& functions) {
        add(aritw, "scalar a, scalar b" + scaling, "", functions,
            {vector, "1 1 1 1 scaleMode scaleFactor", "", "", "(null)"});
    };
    one("vekvbAdd3", {VEK_NAMES(Add, v)});
    one("vekvbSub3", {VEK_NAMES(Sub, v)});
    one("vekvbMpy3", {VEK_NAMES(Mpy, v)});
    add(aritw, "scalar a, scalar b", "(b.re==0.0)&&(b.im==0.0)", {VEK_NAMES(Div, v)});
    add(aritw, "scalar a", "", {VEK_NAMES(Conj, v)});
    add(aritw, "scalar re, scalar im", "", {VEK_NAMES(Set, v)});
}

}   // namespace test
