#include "tests/support/rows.h"

namespace test {

VEK_ROWS(vec) {
    const auto both = [](const std::string& more, const std::string& checks, const std::string& late,
                         const Functions& inPlace, const Functions& apart) {
        const std::string then = checks.empty() ? "" : "; " + checks;
        Group vec{.module = "vekvec", .returnsStatus = true, .late = late};
        add(vec, "inout vec[len], length len" + more, "len<=0; vec==0" + then, inPlace);
        add(vec, "in src[len], out dst[len], length len" + more, "len<=0; src==0; dst==0" + then, apart);
    };
    both("", "", "", {SDCZ(bSqr1), CZ(bSqrt1), SD(bAbs1)}, {SDCZ(bSqr2), CZ(bSqrt2), SD(bAbs2)});
    const auto negative = [](const char* vector) {
        return "Element of input vector is negative: anyNegative(" + std::string(vector) + ")";
    };
    both("", "", negative("vec"), {SD(bSqrt1)}, {});
    both("", "", negative("src"), {}, {SD(bSqrt2)});

    const auto limit = [](const char* values) {
        return std::string(", scalar thresh=") + values + ", plain relOp=0|1|-7";
    };
    both(limit("0.5|0|-0|-0.5|1e-45|-1e38|INFINITY|NAN|-NAN"), "", "", {SD(bThresh1)}, {SD(bThresh2)});
    const std::string complexLimit = limit("0.5|0|-0|2|1e-40|1e-45|1e38|INFINITY");
    both(complexLimit, "thresh<0.0f", "", {VEK_NAMES(bThresh1, c)}, {VEK_NAMES(bThresh2, c)});
    both(complexLimit, "thresh<0.0", "", {VEK_NAMES(bThresh1, z)}, {VEK_NAMES(bThresh2, z)});
    const std::string inverse = ", scalar thresh=0.5|0|-0|2|1e-40|1e-45|1e38|INFINITY";
    const auto zero = [](const char* vector) {
        return "zero element and zero thresh: thresh==0 && anyZero(" + std::string(vector) + ")";
    };
    both(inverse, "thresh<0.0f", zero("vec"), {VEK_NAMES(bInvThresh1, s, c)}, {});
    both(inverse, "thresh<0.0f", zero("src"), {}, {VEK_NAMES(bInvThresh2, s, c, z)});
    both(inverse, "thresh<0.0", zero("vec"), {VEK_NAMES(bInvThresh1, d, z)}, {});
    both(inverse, "thresh<0.0", zero("src"), {}, {VEK_NAMES(bInvThresh2, d)});
}

}   // namespace test
