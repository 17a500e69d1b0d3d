// Every export that builds tables, with requests for memory failing at each point, once and from then on; and every
// export, once its tables stand, without any request.
#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

bool buildsTables(const Row& row) { return !row.group.noMemory.empty(); }

std::string noMemoryReports(const Row& of, std::size_t request) {
    if (of.inner.name.empty()) return of.noMemoryReports(request);
    // Each of both signals asks for its tables.
    const std::string one = noMemoryReports(row(of.inner.name), request);
    return one + one + reportLine(VEK_StsBacktrace, of.name(), of.inner.message, of.group.module);
}

class Memory : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        if (!heap::available()) GTEST_SKIP() << "requests for memory cannot be watched here";
    }
    void TearDown() override {
        heap::failNone();
        releaseTables();
    }
    const Row& tested = row(GetParam());
    Reports reports;
    heap::Restore restore;
};

TEST_P(Memory, FailingAtEachRequest) {
    long requestsSeen = 0;
    for (const int size : {1, 2, 3, 5, 10, 13}) {
        releaseTables();
        const long before = heap::outstanding();
        const Prepared whole(tested, size);
        heap::failNone();
        whole.call();
        const long requests = heap::requests();
        const std::vector<unsigned char> wanted = whole.outputs();
        releaseTables();
        ASSERT_EQ(heap::outstanding(), before) << "size " << size;
        requestsSeen += requests;

        for (long n = 0; n < requests; ++n) {
            for (const bool onwards : {false, true}) {
                const std::string what = "size " + std::to_string(size) + ", request " + std::to_string(n) +
                                         (onwards ? " and on" : "") + " fails";
                reports.clear();
                const Prepared prepared(tested, size);
                heap::failAt(n, onwards);
                const Cell result = prepared.call();
                EXPECT_GT(heap::failures(), 0) << what;
                heap::failNone();
                const bool madeGood = tested.group.retriesMemory && !onwards;
                if (madeGood) {
                    EXPECT_EQ(reports.text(), "") << what;
                    EXPECT_TRUE(prepared.outputs() == wanted) << what;
                } else {
                    EXPECT_EQ(reports.text(), noMemoryReports(tested, static_cast<std::size_t>(n))) << what;
                    EXPECT_EQ(vekGetErrStatus(), tested.group.noMemoryStatus) << what;
                    EXPECT_TRUE(prepared.untouched()) << what << ": outputs touched";
                    const Cell failure = tested.expectedFailure(VEK_StsNoMemory);
                    EXPECT_EQ(std::memcmp(result.bytes, failure.bytes, sizeof result.bytes), 0) << what;
                }
                EXPECT_EQ(prepared.damage(), "") << what;

                reports.clear();
                const Prepared next(tested, size);
                next.call();
                EXPECT_EQ(reports.text(), "") << what << ": next call";
                EXPECT_TRUE(next.outputs() == wanted) << what << ": next call";
                releaseTables();
                EXPECT_EQ(heap::outstanding(), before) << what << ": blocks leaked";
            }
        }
    }
    EXPECT_GT(requestsSeen, 0);
}

// Without memory for the largest sizes, or addresses for it, there is a report, and the thread goes on.
TEST_P(Memory, LargestSizes) {
    if (tested.sizeArgument() < 0) return;
    constexpr std::size_t available = 8 << 20;
    const std::vector<int> orders = {28, 29, 30, 31}, lengths = {1 << 28, 1 << 30, 0x7fffffff};
    for (const int size : tested.takesOrder() ? orders : lengths) {
        releaseTables();
        reports.clear();
        const long before = heap::outstanding();
        Prepared prepared(tested, 3);
        prepared.cells[static_cast<std::size_t>(tested.sizeArgument())].set(size);
        for (std::size_t i = 0; i < tested.arguments.size(); ++i)
            if (tested.arguments[i].role == Role::flags) prepared.cells[i].set(prepared.cells[i].get<int>() | VEK_Init);
        heap::failAbove(available);
        const Cell result = prepared.call();
        heap::failNone();
        const Row& reporter = tested.inner.name.empty() ? tested : row(tested.inner.name);
        std::string wanted = reporter.noMemoryReports(0);
        if (!tested.inner.name.empty())   // initialises once
            wanted += reportLine(VEK_StsBacktrace, tested.name(), tested.inner.message, tested.group.module);
        EXPECT_EQ(reports.text(), wanted) << size;
        const Cell failure = tested.expectedFailure(VEK_StsNoMemory);
        EXPECT_EQ(std::memcmp(result.bytes, failure.bytes, sizeof result.bytes), 0) << size;
        releaseTables();
        EXPECT_EQ(heap::outstanding(), before) << size;

        reports.clear();
        Prepared(tested, 3).call();
        EXPECT_EQ(reports.text(), "") << size;
    }
}

INSTANTIATE_TEST_SUITE_P(Export, Memory, testing::ValuesIn(rowNames(buildsTables)),
                         [](const auto& info) { return info.param; });

TEST(Memory, NoRequestOnceTablesStand) {
    if (!heap::available()) GTEST_SKIP();
    const heap::Restore restore;
    Reports reports;
    int called = 0;
    for (const Row& tested : rows()) {
        if (tested.group.gate == Gate::always) continue;
        for (const int size : {1, 4, 11}) {
            const Prepared prepared(tested, size);
            prepared.call();
            heap::failNone();
            prepared.call();
            EXPECT_EQ(heap::requests(), 0) << tested.name() << " size " << size;
            ++called;
        }
    }
    EXPECT_GT(called, 0);
    EXPECT_EQ(reports.text(), "");
    releaseTables();
}

// Frees come before all checks and do not need a good status.
TEST(Memory, ReleasesUnderANegativeStatus) {
    if (!heap::available()) GTEST_SKIP();
    Reports reports;
    releaseTables();
    const long before = heap::outstanding();
    for (const Row& tested : rows())
        if (buildsTables(tested)) Prepared(tested, 5).call();
    EXPECT_GT(heap::outstanding(), before);
    vekSetErrStatus(VEK_StsBadArg);
    releaseTables();
    EXPECT_EQ(heap::outstanding(), before);
    EXPECT_EQ(reports.text(), "");
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
}

}   // namespace
