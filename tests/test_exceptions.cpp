// Floating-point exceptions: no operation raises overflow, invalid or division by zero that its results do not show.
#include <algorithm>
#include <cfenv>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

// Pairs: elements, or the first part of each, to stand alone among ordinary values.
template <class T>
std::vector<T> specials(const std::string& name) {
    using Limits = std::numeric_limits<T>;
    constexpr T inf = Limits::infinity(), nan = Limits::quiet_NaN(), max = Limits::max(), least = Limits::denorm_min();
    constexpr T large = sizeof(T) == 4 ? T(3e19) : T(2e154);   // its square is beyond the range
    std::vector<T> all = {T(0.5), 1,    0,   0,         -1,   0,     0, -T(0),         large, 1,   1, -large, max,
                          max,    -max, 0,   1 / large, 0,    least, 0, Limits::min(), least, nan, 1, 1,      nan,
                          nan,    nan,  inf, 0,         -inf, 1,     1, inf,           -inf,  inf};
    // Products of these would be finite in no part.
    if (name.find("Thresh") != std::string::npos || name.find("Sqrt") != std::string::npos)
        all.insert(all.end(), {max, nan, nan, large, inf, nan, nan, least, max, least});
    return all;
}

constexpr int aNan = 1, anInfinity = 2;
template <class T>
int met(const void* start, std::size_t bytes) {
    int all = 0;
    for (const double value : realsAt(start, bytes, sizeof(T) == 4 ? 's' : 'd'))
        all |= std::isnan(value) ? aNan : std::isinf(value) ? anInfinity : 0;
    return all;
}

template <class T>
void checkRow(const Row& tested, int size, bool nans) {
    const auto isReal = [](const ArgumentType& type) { return type.real() == (sizeof(T) == 4 ? 's' : 'd'); };
    bool concerned = false, hasScalar = false;
    for (const Argument& argument : tested.arguments) {
        concerned |= isReal(argument.type);
        hasScalar |= isReal(argument.type) && argument.role == Role::scalar;
    }
    if (!concerned) return;
    const std::vector<T> values = specials<T>(tested.name());
    const std::size_t n = tested.takesOrder() ? std::size_t{1} << size : static_cast<std::size_t>(size);
    Reports reports;
    Data data(n);
    for (std::size_t element = 0; element < values.size(); element += 2) {
        for (std::size_t scalar = 0; scalar < (hasScalar ? values.size() : 2); scalar += 2) {
            Prepared prepared(tested, size);
            int given = 0, shown = 0;
            const std::size_t at = data.bits() % n;
            for (std::size_t i = 0; i < tested.arguments.size(); ++i) {
                const auto& [role, type] = std::tie(tested.arguments[i].role, tested.arguments[i].type);
                const bool isScalar = role == Role::scalar;
                if (!isReal(type) || !(isScalar || tested.arguments[i].isRead())) continue;
                auto& cell = prepared.cells[i];
                const T* special = &values[isScalar ? scalar : element];
                const std::size_t place = isScalar ? 0 : at % tested.elements(tested.arguments[i], prepared.cells);
                std::memcpy(isScalar ? cell.bytes : cell.get<unsigned char*>() + place * type.bytes, special,
                            type.bytes);
                given |= met<T>(special, type.bytes);
            }
            if ((given & aNan) != 0 && !nans) continue;
            std::feclearexcept(FE_ALL_EXCEPT);
            const Cell result = prepared.call();
            const int raised = std::fetestexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO);
            if (isReal(tested.function.result)) shown = met<T>(result.bytes, tested.function.result.bytes);
            for (std::size_t i = 0; i < tested.arguments.size(); ++i) {
                if (!tested.arguments[i].isWritten() || !isReal(tested.arguments[i].type)) continue;
                const std::vector<unsigned char> now = prepared.now(static_cast<int>(i));
                shown |= met<T>(now.data(), now.size());
            }
            int earned = (shown & anInfinity) != 0 ? FE_OVERFLOW | FE_DIVBYZERO : 0;
            // A product may make NaNs of infinities beside those that were given.
            const std::string& operation = tested.function.operation;
            const bool isProduct = operation.find("Mpy") + 1 != 0 || operation.find("Corr") + 1 != 0 ||
                                   operation.find("Dot") + 1 != 0 || operation.find("Conv") + 1 != 0;
            if ((shown & aNan) != 0 && ((given & aNan) == 0 || ((given & anInfinity) != 0 && isProduct)))
                earned |= FE_INVALID | FE_OVERFLOW;
            reports.clear();
            ASSERT_EQ(raised & ~earned, 0)
                << tested.name() << " size " << size << " of " << values[element] << ", " << values[element + 1]
                << " at " << at << ", scalar " << values[scalar] << ", " << values[scalar + 1] << "; overflow "
                << FE_OVERFLOW << " invalid " << FE_INVALID << " division " << FE_DIVBYZERO;
        }
    }
}

class Exceptions : public AtLevel {};

TEST_P(Exceptions, AreEarned) {
    vekcFreeTwdTbls();   // building tables raises nothing either
    vekzFreeTwdTbls();
    for (const Row& tested : rows()) {
        if (tested.name() == "vekzDiv") continue;   // its reciprocal may leave the range, as the header says
        // Where the portable loops are vectors of the compiler's own making, these lose their quiet comparisons.
        const bool nans = GetParam() != "portable" || (tested.name().compare(3, 11, "sbInvThresh") != 0 &&
                                                       tested.name().compare(3, 11, "dbInvThresh") != 0);
        for (const int size :
             tested.takesOrder() ? std::vector<int>{0, 1, 3, 6, 11} : std::vector<int>{1, 2, 7, 40, 150}) {
            checkRow<float>(tested, size, nans);
            checkRow<double>(tested, size, nans);
        }
    }
}

VEK_AT_ALL_LEVELS(Exceptions);

}   // namespace
