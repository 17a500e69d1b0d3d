// Every export's arrays flush against unreadable pages and at every offset within a cache line: nothing outside is
// read or written, and the results have the same bits wherever the arrays lie.
#include <gtest/gtest.h>

#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

std::vector<int> guardSizes(const Row& row) {
    if (row.takesOrder()) return {0, 1, 2, 3, 4, 5, 6, 7, 9, 10, 12, 15};
    std::vector<int> sizes;
    for (int n = 1; n <= 67; ++n) sizes.push_back(n);
    sizes.insert(sizes.end(), {127, 128, 129, 257, 1000, 4099});
    return sizes;
}
std::vector<int> offsetSizes(const Row& row) {
    if (row.takesOrder()) return {0, 1, 2, 3, 4, 5, 6, 8};
    return {1, 7, 16, 33, 67, 300};
}

class Placement : public AtLevel {
protected:
    Reports reports;
    int compared = 0;

    // The result of a call must be that of the same call on arrays that start on a cache line.
    void expectSame(const Row& tested, int size, const std::vector<Place>& places, const std::string& where) {
        const Cells plain = tested.plain(size, size % tested.choices());
        const Prepared roomy(tested, plain);
        roomy.call();
        const Prepared prepared(tested, plain, {.places = places});
        prepared.call();
        ++compared;
        ASSERT_EQ(prepared.damage(), "") << tested.name() << " " << where;
        ASSERT_TRUE(prepared.outputs() == roomy.outputs()) << tested.name() << " " << where;
        ASSERT_EQ(reports.text(), "") << tested.name() << " " << where;
    }
};

TEST_P(Placement, FlushAgainstUnreadablePages) {
    for (const Row& tested : rows()) {
        if (!tested.hasBuffers()) continue;
        for (const int size : guardSizes(tested)) {
            for (const auto edge : {Place::front, Place::back}) {
                const std::vector<Place> places(tested.arguments.size(), Place{edge, 0});
                expectSame(tested, size, places,
                           (edge == Place::front ? "front, size " : "back, size ") + std::to_string(size));
                if (HasFatalFailure()) return;
            }
        }
    }
    EXPECT_GT(compared, 5000);
}

TEST_P(Placement, AnyOffset) {
    for (const Row& tested : rows()) {
        if (!tested.hasBuffers()) continue;
        for (const int size : offsetSizes(tested)) {
            // Each array alone, then all of them; complex elements need the alignment of their parts only.
            for (std::size_t moved = 0; moved <= tested.arguments.size(); ++moved) {
                const bool all = moved == tested.arguments.size();
                if (!all && !tested.arguments[moved].isBuffer()) continue;
                for (std::size_t step = 1; step < 32; ++step) {
                    std::vector<Place> places(tested.arguments.size());
                    bool within = false;
                    for (std::size_t i = 0; i < places.size(); ++i) {
                        const std::size_t bytes = step * tested.arguments[i].type.realBytes();
                        if (!tested.arguments[i].isBuffer() || !(all || i == moved) || bytes >= 64) continue;
                        places[i].bytes = bytes;
                        within = true;
                    }
                    if (!within) continue;
                    expectSame(tested, size, places,
                               "array " + std::to_string(moved) + " step " + std::to_string(step) + " size " +
                                   std::to_string(size));
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
    EXPECT_GT(compared, 5000);
}

VEK_AT_ALL_LEVELS(Placement);

}   // namespace
