// Floating-point exceptions: no operation raises overflow, invalid or division by zero that its results do not show.
#include <algorithm>
#include <cfenv>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/data.h"
#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

// Ordinary values with one special element among them.
template <class T>
struct Special {
    T re, im;
};
template <class T>
std::vector<Special<T>> specials(const std::string& name) {
    using Limits = std::numeric_limits<T>;
    constexpr T inf = Limits::infinity();
    constexpr T nan = Limits::quiet_NaN();
    constexpr T max = Limits::max();
    constexpr T large = sizeof(T) == 4 ? T(3e19) : T(2e154);   // its square is beyond the range
    constexpr T small = 1 / large;
    constexpr T least = Limits::denorm_min();
    std::vector<Special<T>> all = {{T(0.5), 1},
                                   {0, 0},
                                   {-1, 0},
                                   {0, -T(0)},
                                   {large, 1},
                                   {1, -large},
                                   {max, max},
                                   {-max, 0},
                                   {small, 0},
                                   {least, 0},
                                   {Limits::min(), least},
                                   {nan, 1},
                                   {1, nan},
                                   {nan, nan},
                                   {inf, 0},
                                   {-inf, 1},
                                   {1, inf},
                                   {-inf, inf}};
    // Products of these would be finite in no part.
    if (name.find("Thresh") != std::string::npos || name.find("Sqrt") != std::string::npos)
        all.insert(all.end(), {{max, nan}, {nan, large}, {inf, nan}, {nan, least}, {max, least}});
    return all;
}

struct Met {
    bool nan = false;
    bool inf = false;

    template <class T>
    void look(const T* values, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            nan |= values[i] != values[i];
            inf |= std::numeric_limits<T>::max() < (values[i] < 0 ? -values[i] : values[i]);
        }
    }
};

template <class T>
void checkRow(const Row& tested, bool isComplex, int size, bool nans) {
    const std::size_t parts = isComplex ? 2 : 1;
    const std::size_t count = parts * (tested.takesOrder() ? std::size_t{1} << size : static_cast<std::size_t>(size));
    const std::vector<Special<T>> values = specials<T>(tested.name());
    bool hasScalar = false;
    for (const Argument& argument : tested.arguments) hasScalar |= argument.role == Role::scalar;
    Reports reports;
    Data data(count);
    for (const Special<T>& value : values) {
        for (const Special<T>& scalar : hasScalar ? values : std::vector<Special<T>>{{T(0.5), 1}}) {
            Prepared prepared(tested, size);
            Met given, shown;
            const std::uint64_t place = data.bits();
            const auto realsOf = [&](const Argument& argument) {
                return tested.elements(argument, prepared.cells) * (argument.type.bytes / sizeof(T));
            };
            for (std::size_t i = 0; i < tested.arguments.size(); ++i) {
                const Argument& argument = tested.arguments[i];
                const T both[] = {argument.role == Role::scalar ? scalar.re : value.re,
                                  argument.role == Role::scalar ? scalar.im : value.im};
                const std::size_t width = std::min(argument.type.bytes / sizeof(T), std::size_t{2});
                if (argument.role == Role::scalar) {
                    std::memcpy(prepared.cells[i].bytes, both, width * sizeof(T));
                } else if (argument.isBuffer() && argument.isRead()) {
                    const std::size_t elements = tested.elements(argument, prepared.cells);
                    std::memcpy(prepared.cells[i].get<T*>() + place % elements * width, both, width * sizeof(T));
                } else {
                    continue;
                }
                given.look(both, width);
            }
            if (given.nan && !nans) continue;
            std::feclearexcept(FE_ALL_EXCEPT);
            const Cell result = prepared.call();
            const int raised = std::fetestexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO);
            for (std::size_t i = 0; i < tested.arguments.size(); ++i)
                if (tested.arguments[i].isBuffer() && tested.arguments[i].role != Role::in)
                    shown.look(prepared.cells[i].get<T*>(), realsOf(tested.arguments[i]));
            if (!tested.hasBuffers()) shown.look(reinterpret_cast<const T*>(result.bytes), parts);
            int earned = shown.inf ? FE_OVERFLOW | FE_DIVBYZERO : 0;
            // A product may make NaNs of infinities beside those that were given.
            const bool isProduct =
                tested.name().find("Mpy") != std::string::npos || tested.name().find("Conv") != std::string::npos;
            if (shown.nan && (!given.nan || (given.inf && isProduct))) earned |= FE_INVALID | FE_OVERFLOW;
            reports.clear();
            ASSERT_EQ(raised & ~earned, 0)
                << tested.name() << " size " << size << " of " << value.re << ", " << value.im << " at " << place
                << ", scalar " << scalar.re << ", " << scalar.im << "; overflow " << FE_OVERFLOW << " invalid "
                << FE_INVALID << " division " << FE_DIVBYZERO;
        }
    }
}

class Exceptions : public AtLevel {};

TEST_P(Exceptions, AreEarned) {
    vekcFreeTwdTbls();   // building tables raises nothing either
    vekzFreeTwdTbls();
    int checked = 0;
    for (const Row& tested : rows()) {
        const char letter = tested.name()[3];
        const bool isComplex = letter == 'c' || letter == 'z';
        bool hasElements = tested.hasBuffers();
        for (const Argument& argument : tested.arguments) hasElements |= argument.role == Role::scalar;
        // Where the portable loops are vectors of the compiler's own making, these lose their quiet comparisons.
        const bool nans =
            GetParam() != "portable" || tested.name().find("bInvThresh") == std::string::npos || isComplex;
        if (tested.name() == "vekzDiv") continue;   // its reciprocal may leave the range, as the header says
        if (!hasElements || std::string("sdcz").find(letter) == std::string::npos) continue;
        for (const int size :
             tested.takesOrder() ? std::vector<int>{0, 1, 3, 6, 11} : std::vector<int>{1, 2, 7, 40, 150}) {
            if (letter == 's' || letter == 'c')
                checkRow<float>(tested, isComplex, size, nans);
            else
                checkRow<double>(tested, isComplex, size, nans);
            ++checked;
        }
    }
    EXPECT_GT(checked, 500);
}

VEK_AT_ALL_LEVELS(Exceptions);

}   // namespace
