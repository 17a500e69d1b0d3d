#include "tests/support/rows.h"

namespace test {

VEK_ROWS(arith) {
    const Group arith{.module = "vekarith"};
    const auto withScalar = [&](const Functions& functions) {
        add(arith, "scalar val, inout dst[n], length n", "n<=0; dst==0", functions);
    };
    const auto inPlace = [&](const std::string& operand, const Functions& functions) {
        add(arith, "in " + operand + "[n], inout dst[n], length n", "n<=0; " + operand + "==0; dst==0", functions);
    };
    const auto apart = [&](const std::string& a, const std::string& b, const Functions& functions) {
        add(arith, "in " + a + "[n], in " + b + "[n], out dst[n], length n", "n<=0; " + a + "==0; " + b + "==0; dst==0",
            functions);
    };
    add(arith, "out dst[n], length n", "n<=0; dst==0", {SDCZ(bZero)});
    add(arith, "scalar val, out dst[n], length n", "n<=0; dst==0", {SDCZ(bSet)});
    add(arith, "in src[n], out dst[n], length n", "n<=0; src==0; dst==0", {SDCZ(bCopy)});
    withScalar({SDCZ(bAdd1), SDCZ(bSub1), SDCZ(bMpy1)});
    inPlace("src", {SDCZ(bAdd2), SDCZ(bMpy2)});
    inPlace("val", {SDCZ(bSub2)});
    apart("srcA", "srcB", {SDCZ(bAdd3), SDCZ(bMpy3)});
    apart("src", "val", {SDCZ(bSub3)});

    add(arith, "inout vec[n], length n", "n<=0; vec==0", {CZ(bConj1)});
    add(arith, "in src[n], out dst[n], length n", "n<=0; src==0; dst==0", {CZ(bConj2)});
    add(arith, "in src[n], apart dst[n], length n", "n<=0; src==0; dst==0", {CZ(bConjFlip2)});
    add(arith, "inout vec[max(n, 2*n-2)], length n", "n<=0; vec==0", {CZ(bConjExtend1)});
    add(arith, "in src[n], apart dst[max(n, 2*n-2)], length n", "n<=0; src==0; dst==0", {CZ(bConjExtend2)});

    add(arith, "scalar a, scalar b", "", {CZ(Add), CZ(Sub), CZ(Mpy)});
    add(arith, "scalar a, scalar b", "(b.re==0.0)&&(b.im==0.0)", {CZ(Div)});
    add(arith, "scalar a", "", {CZ(Conj)});
    add(arith, "scalar re, scalar im", "", {CZ(Set)});
}

}   // namespace test
