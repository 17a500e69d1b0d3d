// Every export's arguments, wrong one at a time and two at a time, and the standstill at a negative status.
#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

bool hasChecks(const Row& row) { return !row.checks.empty(); }
bool standsStill(const Row& row) { return row.gate == Gate::computes; }

std::string hex(const Cell& cell) {
    std::string text;
    for (const unsigned char byte : cell.bytes) text += " " + std::to_string(byte);
    return text;
}

class Arguments : public testing::TestWithParam<std::string> {
protected:
    const Row& tested = row(GetParam());
    Reports reports;
    static constexpr int size = 4;   // elements, or the order

    // Calls and compares everything that a caller can see with what the row's checks say.
    void expectRejected(const Prepared& prepared, const std::string& what) {
        reports.clear();
        VekStatus status = VEK_StsOk;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        ASSERT_LT(status, 0) << what;
        const Cell result = prepared.call();
        EXPECT_EQ(reports.text(), wanted) << what;
        EXPECT_EQ(vekGetErrStatus(), status) << what;
        EXPECT_EQ(hex(result), hex(tested.expectedFailure(status))) << what;
        const bool untouched = tested.computesBeforeFailing(prepared.cells) || prepared.outputs() == prepared.before();
        EXPECT_TRUE(untouched) << what << ": outputs touched";
        EXPECT_EQ(prepared.damage(), "") << what;
        for (const Report& report : reports.seen()) EXPECT_GT(report.line, 0) << what;
    }

    void provoke(Prepared& prepared, const Check& check, int variant) const {
        const auto index = static_cast<std::size_t>(check.argument);
        check.provoke(tested.arguments[index], prepared.cells[index], variant);
    }
};

// A two-signal member's checks are those of the member that it calls, for the arguments of either call.
std::vector<Check> allChecks(const Row& of) {
    if (of.inner.empty()) return of.checks;
    std::vector<Check> checks;
    for (const std::vector<int>& indices : of.innerArguments) {
        for (Check check : row(of.inner).checks) {
            check.argument = indices[static_cast<std::size_t>(check.argument)];
            checks.push_back(check);
        }
    }
    return checks;
}

TEST_P(Arguments, RightOnesReportNothing) {
    const Prepared prepared(tested, size);
    prepared.call();
    EXPECT_EQ(reports.text(), "");
    EXPECT_EQ(vekGetErrStatus(), VEK_StsOk);
}

TEST_P(Arguments, WrongOneAtATime) {
    for (const Check& check : allChecks(tested)) {
        for (int variant = 0; variant < check.variants(); ++variant) {
            Prepared prepared(tested, size);
            provoke(prepared, check, variant);
            expectRejected(prepared, check.message + " variant " + std::to_string(variant));
        }
    }
}

TEST_P(Arguments, WrongTwoAtATime) {
    const std::vector<Check> checks = allChecks(tested);
    for (const Check& first : checks) {
        for (const Check& second : checks) {
            Prepared prepared(tested, size);
            provoke(prepared, second, 0);
            provoke(prepared, first, 0);
            expectRejected(prepared, first.message + " and " + second.message);
        }
    }
}

TEST_P(Arguments, HostileSizesMeetNullPointers) {
    const int index = tested.sizeArgument();
    if (index < 0 || tested.takesOrder() || !tested.hasBuffers()) return;
    for (const int hostile : {1 << 30, 0x7fffffff}) {
        Prepared prepared(tested, size);
        prepared.cells[static_cast<std::size_t>(index)].set(hostile);
        for (std::size_t i = 0; i < tested.arguments.size(); ++i)
            if (tested.arguments[i].isBuffer()) prepared.cells[i].set<void*>(nullptr);
        expectRejected(prepared, std::to_string(hostile));
    }
}

TEST_P(Arguments, ChecksComeBeforeAnOldStatus) {
    for (const Check& check : tested.checks) {
        Prepared prepared(tested, size);
        provoke(prepared, check, 0);
        reports.clear();
        vekSetErrStatus(VEK_StsNoConvergence);
        VekStatus status = VEK_StsNoConvergence;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        prepared.call();
        EXPECT_EQ(reports.text(), wanted) << check.message;
        EXPECT_EQ(vekGetErrStatus(), status) << check.message;
    }
}

INSTANTIATE_TEST_SUITE_P(Export, Arguments, testing::ValuesIn(rowNames([](const Row& row) {
                             return hasChecks(row) || !row.inner.empty();
                         })),
                         [](const auto& info) { return info.param; });

class Standstill : public testing::TestWithParam<std::string> {};

TEST_P(Standstill, NegativeStatusComputesNothing) {
    const Row& tested = row(GetParam());
    Reports reports;
    for (const VekStatus old : {VEK_StsBadArg, VEK_StsBadFreqRange}) {
        const Prepared prepared(tested, 4);
        reports.clear();
        vekSetErrStatus(old);
        VekStatus status = old;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        const Cell result = prepared.call();
        EXPECT_EQ(reports.text(), wanted);
        EXPECT_EQ(vekGetErrStatus(), old);
        EXPECT_EQ(hex(result), hex(tested.inner.empty() ? Cell{} : tested.expectedFailure(old)));
        EXPECT_TRUE(prepared.outputs() == prepared.before()) << "outputs touched";
        EXPECT_EQ(prepared.damage(), "");
    }
}

// A positive status is no error.
TEST_P(Standstill, PositiveStatusComputes) {
    const Row& tested = row(GetParam());
    Reports reports;
    const Prepared usual(tested, 4);
    const Cell wanted = usual.call();
    const std::vector<unsigned char> wantedOutputs = usual.outputs();
    const Prepared prepared(tested, 4);
    vekSetErrStatus(1);
    const Cell result = prepared.call();
    EXPECT_EQ(reports.text(), "");
    // Two-signal members return the status; tables keep their address.
    Cell expected = wanted;
    if (!tested.inner.empty()) expected.set(1);
    EXPECT_EQ(hex(result), hex(expected));
    EXPECT_TRUE(prepared.outputs() == wantedOutputs);
    EXPECT_EQ(vekGetErrStatus(), 1);
}

INSTANTIATE_TEST_SUITE_P(Export, Standstill, testing::ValuesIn(rowNames(standsStill)),
                         [](const auto& info) { return info.param; });

}   // namespace
