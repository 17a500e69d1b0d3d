// int32 results brought to int16, which no export does by itself: at all levels, against the rules of each mode.
#include <climits>

#include <gtest/gtest.h>

#ifndef VEK_TEST_DLL   // no exports

#include "oracles/scaled.h"
#include "support/data.h"
#include "support/levels.h"
#include "vekscale.h"

namespace {

using namespace test;

// The factor of automatic scaling: by the highest bit of the largest magnitude, where one does not fit.
int automaticFactor(const std::vector<std::int32_t>& values) {
    Exact largest = 0;
    bool fits = true;
    for (const std::int32_t value : values) {
        fits = fits && fitsShort(value);
        if (magnitude(value) > largest) largest = magnitude(value);
    }
    int highest = 0;
    while (shifted(largest, highest + 1) > 0) ++highest;
    return fits ? 0 : highest - 14;
}

struct Mode {
    int mode;
    bool scales, saturates;
};
constexpr Mode modes[] = {{0, false, false}, {1, false, true},  {2, true, false},  {3, true, true},
                          {4, true, true},   {5, false, false}, {-1, false, false}};

class ScaleIntToShort : public AtLevel {
protected:
    void check(const std::vector<std::int32_t>& values) {
        const auto n = static_cast<int>(values.size());
        for (const Mode& of : modes) {
            for (const int given : {0, 1, 14, 15, 16, 17, 31, 32, INT_MAX, -1, -14, -15, -16, INT_MIN}) {
                for (const bool null : {true, false}) {
                    if (of.mode == 4 && null) continue;
                    int wanted = null || !of.scales ? 0 : given < -15 ? -15 : given > 31 ? 31 : given;
                    if (of.mode == 4) wanted = automaticFactor(values);
                    int factor = given;
                    std::vector<std::int16_t> got(values.size() + 1, 77);
                    vek::vekbScaleIntToShort(values.data(), got.data(), n, of.mode, null ? nullptr : &factor);
                    EXPECT_EQ(got.back(), 77);
                    EXPECT_EQ(factor, of.mode == 4 ? wanted : given);
                    for (std::size_t i = 0; i < values.size(); ++i) {
                        const Exact moved = shifted(values[i], wanted);
                        const auto expected =
                            static_cast<int>(of.saturates ? saturatedToShort(moved) : wrappedToShort(moved));
                        ASSERT_EQ(got[i], expected) << values[i] << " mode " << of.mode << " factor " << given;
                    }
                    factor = given;
                    if (n == 1) {
                        EXPECT_EQ(vek::vekScaleIntToShort(values[0], of.mode, null ? nullptr : &factor), got[0]);
                    }
                }
            }
        }
    }
};

TEST_P(ScaleIntToShort, EdgesAlone) {
    for (const std::int32_t value : {0, 1, -1, 16384, -16384, 32767, 32768, -32768, -32769, 65535, 65536, -65536,
                                     131072, INT_MAX, -INT_MAX, INT_MIN, 0x12345678})
        check({value});
}

TEST_P(ScaleIntToShort, Vectors) {
    check({-32768, 32768});
    check({-32769, 5, 7});
    check({INT_MIN, INT_MAX});
    Data data(3);
    for (const std::size_t n : {2, 3, 7, 8, 17, 33, 64, 65, 300}) {
        for (int quiet = 0; quiet < 32; quiet += 3) {
            std::vector<std::int32_t> values = data.ordinary<std::int32_t>(n);
            for (std::int32_t& value : values) value >>= quiet;
            check(values);
        }
    }
}

VEK_AT_ALL_LEVELS(ScaleIntToShort);

}   // namespace

#endif
