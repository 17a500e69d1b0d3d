// Every export's arguments and records, wrong one at a time and two at a time, and what it does at a negative status.
#include <gtest/gtest.h>

#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

constexpr int size = 4;   // elements, or the order

std::string hex(const Cell& cell) {
    std::string text;
    for (const unsigned char byte : cell.bytes) text += " " + std::to_string(byte);
    return text;
}

class Arguments : public testing::TestWithParam<std::string> {
protected:
    const Row& tested = row(GetParam());
    Reports reports;

    // Calls at the thread's status `old` and compares everything that a caller can see with what the row says. False:
    // the row says that the call is in order; then it is not made.
    bool isRejected(const Prepared& prepared, const std::string& what, VekStatus old = VEK_StsOk) {
        VekStatus status = old;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        if (wanted.empty()) return false;
        reports.clear();
        vekSetErrStatus(old);
        const Cell result = prepared.call();
        EXPECT_EQ(reports.text(), wanted) << what;
        EXPECT_EQ(vekGetErrStatus(), status) << what;
        EXPECT_EQ(hex(result), hex(tested.expectedFailure(status))) << what;
        EXPECT_TRUE(tested.computesBeforeFailing(prepared.cells) || prepared.untouched()) << what << ": touched";
        EXPECT_EQ(prepared.damage(), "") << what;
        for (const Report& report : reports.seen()) EXPECT_GT(report.line, 0) << what;
        return true;
    }
};

TEST_P(Arguments, RightOnesReportNothing) {
    for (int choice = 0; choice < tested.choices(); ++choice) {
        const Prepared prepared(tested, tested.plain(size, choice));
        prepared.call();
        EXPECT_EQ(reports.text(), "") << choice;
        EXPECT_EQ(vekGetErrStatus(), VEK_StsOk) << choice;
    }
}

TEST_P(Arguments, WrongOnesAlone_InPairs_AndUnderAnOldStatus) {
    const std::size_t checks = wrongs(tested, Prepared(tested, size).cells).size();
    for (std::size_t first = 0; first < checks; ++first) {
        for (std::size_t second = 0; second <= checks; ++second) {
            for (std::size_t way = 0;; ++way) {
                Prepared prepared(tested, size);
                const std::vector<Wrong> all = wrongs(tested, prepared.cells);
                if (way == all[first].ways.size()) break;
                std::string what = all[first].message + " way " + std::to_string(way);
                if (second < checks) what += " and " + all[second].message;
                if (second < checks) prepared.spoil(all[second].ways[0]);
                prepared.spoil(all[first].ways[way]);
                for (const VekStatus old : {VEK_StsOk, VEK_StsNoConvergence})
                    EXPECT_TRUE(isRejected(prepared, what, old)) << what;
                if (HasFailure()) return;
                if (second < checks) break;
            }
        }
    }
}

TEST_P(Arguments, HostileSizesMeetNullPointers) {
    const int index = tested.sizeArgument();
    if (index < 0 || !tested.hasBuffers()) return;
    if (!tested.takesOrder() && !tested.group.noMemory.empty()) return;   // they meet their tables first
    for (const int hostile : {1 << 30, 0x7fffffff}) {
        Prepared prepared(tested, size);
        prepared.cells[static_cast<std::size_t>(index)].set(hostile);
        for (std::size_t i = 0; i < tested.arguments.size(); ++i)
            if (tested.arguments[i].isBuffer()) prepared.cells[i] = {};
        EXPECT_TRUE(isRejected(prepared, std::to_string(hostile)));
    }
}

// Records that nobody made ready: what the checks refuse must be refused, and not followed.
TEST_P(Arguments, HostileRecords) {
    for (std::size_t i = 0; i < tested.arguments.size(); ++i) {
        const Argument& argument = tested.arguments[i];
        if (argument.role != Role::record) continue;
        Data data(i);
        for (int kind = 0; kind < 8; ++kind) {
            Prepared prepared(tested, size);
            auto* record = prepared.cells[i].get<unsigned char*>();
            std::vector<unsigned char> bytes(record, record + argument.type.bytes);
            for (unsigned char& byte : bytes)
                byte = kind == 0 ? 0 : kind == 1 ? 0xff : kind == 2 ? byte : static_cast<unsigned char>(data.bits());
            prepared.cells[i].set<void*>(bytes.data());   // kind 2: a ready record that has moved
            isRejected(prepared, argument.name + " kind " + std::to_string(kind));
        }
        for (const Hostile& hostile : tested.group.hostile) {
            const Prepared prepared(tested, size, {.hostile = hostile.make});
            EXPECT_TRUE(isRejected(prepared, hostile.name)) << hostile.name;
        }
    }
}

// What is reported after the computation, for one element that asks for it, wherever it stands.
TEST_P(Arguments, LateReports) {
    for (const Check& check : tested.late) {
        const std::string name = check.condition.substr(check.condition.rfind('(') + 1);
        const int argument = tested.index(name.substr(0, name.size() - 1));
        const ArgumentType type = tested.arguments[static_cast<std::size_t>(argument)].type;
        int reported = 0;
        for (const int n : {1, 2, 3, 5, 17, 40, 300}) {
            for (int at = 0; at <= n; ++at) {
                for (int choice = 0; choice < tested.choices() && at * tested.choices() < 400; ++choice) {
                    Prepared prepared(tested, tested.plain(n, choice));
                    auto* elements = prepared.cells[static_cast<std::size_t>(argument)].get<unsigned char*>();
                    const bool negative = check.condition.find("Negative") != std::string::npos;
                    const float one = negative ? -1 : 0;
                    const double two = negative ? -1 : 0;
                    unsigned char bytes[16] = {};
                    std::memcpy(bytes, type.real() == 's' ? static_cast<const void*>(&one) : &two, type.realBytes());
                    if (at < n) std::memcpy(elements + static_cast<std::size_t>(at) * type.bytes, bytes, type.bytes);
                    VekStatus status = VEK_StsOk;
                    const std::string wanted = tested.lateReports(prepared.cells, status);
                    reports.clear();
                    EXPECT_TRUE(prepared.call() == (wanted.empty() ? Cell{} : tested.expectedFailure(status)));
                    EXPECT_EQ(reports.text(), wanted) << n << " at " << at << " choice " << choice;
                    EXPECT_EQ(vekGetErrStatus(), status) << n << " at " << at;
                    reported += wanted.empty() ? 0 : 1;
                }
            }
        }
        EXPECT_GT(reported, 0) << check.message;
    }
}

INSTANTIATE_TEST_SUITE_P(Export, Arguments, testing::ValuesIn(rowNames([](const Row& row) {
                             return !row.checks.empty() || !row.inner.name.empty();
                         })),
                         [](const auto& info) { return info.param; });

class Standstill : public testing::TestWithParam<std::string> {};

TEST_P(Standstill, NegativeStatusComputesNothing) {
    const Row& tested = row(GetParam());
    Reports reports;
    for (const VekStatus old : {VEK_StsBadArg, VEK_StsBadFreqRange}) {
        const Prepared prepared(tested, size);
        reports.clear();
        vekSetErrStatus(old);
        VekStatus status = old;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        const Cell result = prepared.call();
        EXPECT_EQ(reports.text(), wanted);
        EXPECT_EQ(vekGetErrStatus(), status);
        if (tested.group.gate == Gate::clears) continue;
        EXPECT_EQ(hex(result),
                  hex(tested.inner.name.empty() && !tested.group.leavesStatus ? Cell{} : tested.expectedFailure(old)));
        EXPECT_TRUE(prepared.untouched()) << "outputs touched";
        EXPECT_EQ(prepared.damage(), "");
    }
}

// A positive status is no error; and where a status is cleared first, no status is.
TEST_P(Standstill, OtherwiseItComputes) {
    const Row& tested = row(GetParam());
    Reports reports;
    const Prepared usual(tested, size);
    const Cell wanted = usual.call();
    const std::vector<unsigned char> wantedOutputs = usual.outputs();
    const bool clears = tested.group.gate == Gate::clears;
    const Prepared prepared(tested, size);
    vekSetErrStatus(clears ? VEK_StsBadArg : 1);
    const Cell result = prepared.call();
    EXPECT_EQ(reports.text(), "");
    // Two-signal members return the status; tables keep their address.
    Cell expected = wanted;
    if ((!tested.inner.name.empty() && tested.group.returnsStatus) || tested.group.leavesStatus)
        expected.set(clears ? 0 : 1);
    EXPECT_EQ(hex(result), hex(expected));
    EXPECT_TRUE(prepared.outputs() == wantedOutputs);
    EXPECT_EQ(vekGetErrStatus(), clears ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Export, Standstill,
                         testing::ValuesIn(rowNames([](const Row& row) { return row.group.gate != Gate::always; })),
                         [](const auto& info) { return info.param; });

}   // namespace
