// Bit reversal: values, index tables, permutations.
#include <gtest/gtest.h>

#include "support/data.h"
#include "support/heap.h"
#include "support/levels.h"
#include "support/oracle.h"
#include "support/reports.h"

namespace {

using namespace test;

TEST(BitRev, Values) {
    Reports reports;
    const struct {
        int32_t value;
        int order;
        int32_t wanted;
    } cases[] = {{0x12345678, 0, 0},  {-1, 0, 0},           {1, 1, 1}, {2, 1, 0},       {1, 31, 0x40000000},
                 {0x40000000, 31, 1}, {-1, 31, 0x7fffffff}, {6, 4, 6}, {0x13, 5, 0x19}, {0x113, 5, 0x19},
                 {-2, 8, 0x7f}};
    for (const auto& of : cases) EXPECT_EQ(vekBitRev(of.value, of.order), of.wanted) << of.value << " " << of.order;
    Data data;
    for (int i = 0; i < 1000; ++i) {
        const auto value = static_cast<int32_t>(data.bits());
        const int order = data.below(32);
        EXPECT_EQ(static_cast<std::size_t>(vekBitRev(value, order)),
                  reversedBits(static_cast<std::size_t>(static_cast<uint32_t>(value)), order));
    }
    EXPECT_EQ(reports.text(), "");
}

TEST(BitRev, Tables) {
    Reports reports;
    for (int order = 0; order <= 16; ++order) {
        const std::size_t n = std::size_t{1} << order;
        std::vector<int32_t> calculated(n, -1);
        vekCalcBitRevTbl(calculated.data(), order);
        const int32_t* kept = vekGetBitRevTbl(order);
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(vekGetBitRevTbl(order), kept);
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const auto wanted = static_cast<int32_t>(reversedBits(i, order));
            wrong += calculated[i] != wanted || kept[i] != wanted;
        }
        EXPECT_EQ(wrong, 0u) << order;
    }
    EXPECT_EQ(reports.text(), "");
    vekFreeBitRevTbls();
}

class Permutation : public AtLevel {
protected:
    template <class T, class Permute1, class Permute2>
    void check(Permute1 permute1, Permute2 permute2) {
        Reports reports;
        for (int order = 0; order <= 14; ++order) {
            const std::size_t n = std::size_t{1} << order;
            const auto source = Data(static_cast<std::uint64_t>(order)).mixed<T>(n);
            std::vector<T> wanted(n);
            for (std::size_t i = 0; i < n; ++i) wanted[i] = source[reversedBits(i, order)];
            const auto same = [n](const std::vector<T>& a, const std::vector<T>& b) {
                return std::memcmp(a.data(), b.data(), n * sizeof(T)) == 0;
            };
            std::vector<T> inPlace = source;
            permute1(inPlace.data(), order);
            EXPECT_TRUE(same(inPlace, wanted)) << order;
            permute1(inPlace.data(), order);
            EXPECT_TRUE(same(inPlace, source)) << order << ": twice";
            std::vector<T> outOfPlace(n);
            permute2(source.data(), outOfPlace.data(), order);
            EXPECT_TRUE(same(outOfPlace, wanted)) << order;
        }
        EXPECT_EQ(reports.text(), "");
    }
};

TEST_P(Permutation, OfEveryElement) {
    check<float>(veksbBitRev1, veksbBitRev2);
    check<double>(vekdbBitRev1, vekdbBitRev2);
    check<VekCplx>(vekcbBitRev1, vekcbBitRev2);
    check<VekDCplx>(vekzbBitRev1, vekzbBitRev2);
    check<int16_t>(vekwbBitRev1, vekwbBitRev2);
    check<VekWCplx>(vekvbBitRev1, vekvbBitRev2);
}

VEK_AT_ALL_LEVELS(Permutation);

}   // namespace
