// Twiddle tables: their values, and the life of those that the library keeps.
#include <cmath>

#include <gtest/gtest.h>

#include "support/data.h"
#include "support/heap.h"
#include "support/oracle.h"
#include "support/reports.h"

namespace {

using namespace test;

// How far a part of an entry may be from the true value: computed in double, then rounded to the element.
void expectRoot(const VekCplx& got, Wide wanted, const std::string& what) {
    const auto part = [&](float value, long double exact) {
        EXPECT_LE(std::fabs(value - exact), 0.5000001L * std::numeric_limits<float>::epsilon() / 2) << what;
    };
    part(got.re, wanted.re);
    part(got.im, wanted.im);
}
void expectRoot(const VekDCplx& got, Wide wanted, const std::string& what) {
    // Two roundings of an angle below pi/4, one of the result.
    constexpr long double bound = 1.5L * std::numeric_limits<double>::epsilon() / 2;
    EXPECT_LE(std::fabs(got.re - wanted.re), bound) << what;
    EXPECT_LE(std::fabs(got.im - wanted.im), bound) << what;
}
// Q14, truncated toward zero. Where the true product is a whole number, double precision may stay just below it.
void expectRoot(const VekWCplx& got, Wide wanted, const std::string& what) {
    const auto part = [&](int value, long double exact) {
        const long double product = exact * 16384;
        const bool whole = std::fabs(product - std::round(product)) < 1e-10L;
        const int truncated = static_cast<int>(whole ? std::round(product) : std::trunc(product));
        EXPECT_EQ(value, truncated) << what;
    };
    part(got.re, wanted.re);
    part(got.im, wanted.im);
}

template <class C>
struct Members {
    const char* type;
    void(VEKAPI* calcDft)(C*, int);
    void(VEKAPI* calcFft)(C*, int);
    const C*(VEKAPI* getDft)(int);
    const C*(VEKAPI* getFft)(int);
    void(VEKAPI* freeAll)();
};
const Members<VekCplx> membersC = {
    "c", vekcCalcDftTwdTbl, vekcCalcFftTwdTbl, vekcGetDftTwdTbl, vekcGetFftTwdTbl, vekcFreeTwdTbls};
const Members<VekDCplx> membersZ = {
    "z", vekzCalcDftTwdTbl, vekzCalcFftTwdTbl, vekzGetDftTwdTbl, vekzGetFftTwdTbl, vekzFreeTwdTbls};
const Members<VekWCplx> membersV = {
    "v", vekvCalcDftTwdTbl, vekvCalcFftTwdTbl, vekvGetDftTwdTbl, vekvGetFftTwdTbl, vekvFreeTwdTbls};

template <class Check>
void forAllTypes(Check check) {
    check(membersC);
    check(membersZ);
    check(membersV);
}

template <class C>
void expectTables(const C* calculated, const C* kept, std::size_t n, const std::string& what) {
    ASSERT_NE(kept, nullptr) << what;
    EXPECT_EQ(std::memcmp(calculated, kept, n * sizeof(C)), 0) << what;
    for (std::size_t k = 0; k < n; ++k)
        expectRoot(calculated[k], root(k, n), what + " entry " + std::to_string(k) + " of " + std::to_string(n));
}

TEST(Twiddles, Values) {
    Reports reports;
    forAllTypes([](const auto& of) {
        using C = std::remove_cv_t<std::remove_pointer_t<decltype(of.getFft(0))>>;
        for (const int length : {1, 2, 3, 4, 5, 6, 7, 8, 9, 12, 24, 30, 100, 127, 1000, 4099}) {
            std::vector<C> table(static_cast<std::size_t>(length));
            of.calcDft(table.data(), length);
            expectTables(table.data(), of.getDft(length), table.size(), std::string(of.type) + "Dft");
        }
        for (int order = 0; order <= 14; ++order) {
            std::vector<C> table(std::size_t{1} << order);
            of.calcFft(table.data(), order);
            expectTables(table.data(), of.getFft(order), table.size(), std::string(of.type) + "Fft");
        }
        of.freeAll();
    });
    EXPECT_EQ(reports.text(), "");
}

TEST(Twiddles, Int16OfOrder2) {
    VekWCplx table[4];
    vekvCalcFftTwdTbl(table, 2);
    const int wanted[][2] = {{16384, 0}, {0, -16384}, {-16384, 0}, {0, 16384}};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(table[k].re, wanted[k][0]) << k;
        EXPECT_EQ(table[k].im, wanted[k][1]) << k;
    }
}

TEST(Twiddles, LiveUntilTheirTypesFree) {
    Reports reports;
    forAllTypes([](const auto& of) {
        of.freeAll();
        const long before = heap::outstanding();
        const auto* dft = of.getDft(60);
        const auto* fft = of.getFft(5);
        EXPECT_EQ(of.getDft(60), dft) << of.type;
        EXPECT_EQ(of.getFft(5), fft) << of.type;
        EXPECT_NE(of.getDft(61), dft) << of.type;
        EXPECT_NE(of.getFft(6), fft) << of.type;
        if (heap::available()) {
            const long held = heap::outstanding();
            EXPECT_EQ(held, before + 4) << of.type;
            vekFreeBitRevTbls();   // another family's
            if (of.freeAll != membersC.freeAll) vekcFreeTwdTbls();
            if (of.freeAll != membersZ.freeAll) vekzFreeTwdTbls();
            if (of.freeAll != membersV.freeAll) vekvFreeTwdTbls();
            EXPECT_EQ(heap::outstanding(), held) << of.type;
        }
        of.freeAll();
        EXPECT_EQ(heap::outstanding(), before) << of.type;
        of.freeAll();   // nothing left
        EXPECT_EQ(heap::outstanding(), before) << of.type;
    });
    EXPECT_EQ(reports.text(), "");
}

TEST(Twiddles, ThirtyTwoLengthsOfATypeFit) {
    Reports reports;
    forAllTypes([&](const auto& of) {
        of.freeAll();
        reports.clear();
        const void* kept[32];
        for (int i = 0; i < 32; ++i) kept[i] = of.getDft(10 + i);
        EXPECT_EQ(reports.text(), "");
        EXPECT_EQ(of.getDft(9), nullptr);
        const std::string name = std::string("vek") + of.type + "GetDftTwdTbl";
        EXPECT_EQ(reports.text(), reportLine(VEK_StsNoMemory, name, "Full Table", "vektwd"));
        EXPECT_EQ(of.getDft(10), nullptr) << "a negative status stands";
        reports.clear();
        for (int i = 0; i < 32; ++i) EXPECT_EQ(of.getDft(10 + i), kept[i]) << i;
        EXPECT_EQ(reports.text(), "");
        of.freeAll();
        EXPECT_NE(of.getDft(9), nullptr);
        EXPECT_EQ(reports.text(), "");
        of.freeAll();
    });
}

}   // namespace
