// The transform of any length and the thread's tables: a list that is full, memory that runs out, what flags build and
// release.
#include <cmath>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/levels.h"
#include "support/oracle.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

class Dft : public testing::Test {
protected:
    void TearDown() override {
        heap::failNone();
        releaseTables();
        EXPECT_EQ(reports.text(), "");
    }
    // A call on data of its own; whether it left them as they were.
    static bool transform(const std::string& type, int length, int flags) {
        const Row& tested = row("vek" + type + "Dft");
        Prepared prepared(tested, length);
        prepared.cells[static_cast<std::size_t>(tested.index("flags"))].set(flags);
        prepared.call();
        return prepared.untouched();
    }
    static std::string bad(const std::string& type, const std::string& message) {
        return reportLine(VEK_StsBadArg, "vek" + type + "Dft", message, "vekdft");
    }
    static std::string full(const std::string& type, const std::string& message) {
        return reportLine(VEK_StsNoMemory, "vek" + type + "GetDftTwdTbl", "Full Table", "vektwd") + bad(type, message);
    }
    Reports reports;
    const heap::Restore restore{};
    const int released = (releaseTables(), 0);
};

// A list of tables that is full, or requests for memory that fail.
TEST_F(Dft, ShortOfTablesOrMemory) {
    const std::string inFloat = reportLine(VEK_StsBacktrace, "vekvDft", "vekvDft float core error", "vekdft");
    const std::string noMemory = reportLine(VEK_StsNoMemory, "vekvDft", "No working memory", "vekdft");
    const struct {
        std::string full;
        long request;
        bool onwards;
        std::string type;
        int length, flags;
        std::string wanted;
    } cases[] = {{"c", -1, false, "c", 34, VEK_Forw, full("c", "TwdTbl==0")},
                 {"z", -1, false, "z", 34, VEK_Init, full("z", "TwdTbl==0")},
                 {"v", -1, false, "v", 34, VEK_Init, full("v", "TwidleTbl==0")},
                 {"z", -1, false, "z", 33, VEK_Forw, ""},
                 {"c", -1, false, "v", 100, VEK_Forw | VEK_DoFloatCore, full("c", "TwdTbl==0") + inFloat},
                 {"c", -1, false, "v", 100, VEK_Forw, ""},
                 {"c", 1, false, "v", 100, VEK_Forw | VEK_DoFloatCore, ""},   // made good after all has been released
                 {"", 0, false, "v", 200, VEK_Forw, bad("v", "TwidleTbl==0")},
                 {"", 1, true, "v", 200, VEK_Forw, noMemory},
                 {"", 2, true, "v", 200, VEK_Forw, bad("c", "buff==0") + inFloat}};
    const long none = heap::held();
    for (const auto& of : cases) {
        if (of.request >= 0 && !heap::available()) continue;
        for (int length = 2; length < 34 && !of.full.empty(); ++length) transform(of.full, length, VEK_Init);
        heap::failAt(of.request, of.onwards);
        const bool untouched = transform(of.type, of.length, of.flags);
        EXPECT_EQ(untouched, !of.wanted.empty());
        EXPECT_EQ(heap::failures() > 0, of.request >= 0);
        heap::failNone();
        EXPECT_EQ(reports.text(), of.wanted) << of.type << " " << of.length << " request " << of.request;
        reports.clear();
        releaseTables();
        EXPECT_EQ(heap::held(), none);
    }
}

// Blocks that stand after each call in turn, tables and the scratch areas of the cores that computed: a core in float
// has both of its own, and int16's Free releases c's too. It works at a negative status all the same.
TEST_F(Dft, BlocksByFlagsAndLength) {
    if (!heap::available()) GTEST_SKIP();
    constexpr VekStatus ok = VEK_StsOk, failed = VEK_StsNoConvergence;
    const struct {
        const char* type;
        int length, flags;
        VekStatus status;
        long blocks;
    } calls[] = {{"z", 50, VEK_Forw, ok, 2},
                 {"z", 50, VEK_Free, failed, 1},
                 {"z", 60, VEK_Free, ok, 2},   // makes the table
                 {"c", 50, VEK_Forw, ok, 4},
                 {"c", 50, VEK_Free, failed, 3},
                 {"v", 128, VEK_Forw, ok, 4},
                 {"v", 129, VEK_Forw, ok, 5},
                 {"v", 128, VEK_Forw | VEK_DoFloatCore, ok, 6},
                 {"v", 129, VEK_Forw | VEK_DoIntCore, ok, 4},
                 {"v", 129, VEK_Forw | VEK_DoIntCore | VEK_DoFloatCore, ok, 4},
                 {"v", 300, VEK_Forw | VEK_DoFloatCore, ok, 5},
                 {"v", 50, VEK_Free | VEK_Init, failed, 2}};
    const long none = heap::held();
    for (const auto& call : calls) {
        if (*call.type == 'v') transform("v", 50, VEK_Free);
        vekSetErrStatus(call.status);
        transform(call.type, call.length, call.flags);
        EXPECT_EQ(heap::held(), none + call.blocks) << call.type << " " << call.length << " " << call.flags;
    }
}

// Data whose sums are large beside each term.
TEST_F(Dft, Constants) {
    for (const int length : {1021, 4096}) {
        const VekCplx value = {0.1F, -0.3F};
        std::vector<VekCplx> x(static_cast<std::size_t>(length), value), y(x.size());
        vekcDft(x.data(), y.data(), length, VEK_Forw);
        const double re = static_cast<double>(value.re) * length, im = static_cast<double>(value.im) * length;
        double error = std::pow(y[0].re - re, 2) + std::pow(y[0].im - im, 2);
        for (std::size_t k = 1; k < y.size(); ++k) error += std::pow(y[k].re, 2) + std::pow(y[k].im, 2);
        EXPECT_LE(std::sqrt(error), 4 * 0x1p-23 * std::sqrt(std::log2(length)) * std::hypot(re, im)) << length;
    }
}

// Relative L2 errors in eps, beside what the header promises.
TEST_F(Dft, Accuracy) {
    for (const char* name : {"vekcDft", "vekzDft"}) {
        const Row& tested = row(name);
        for (const int length : {1021, 4096}) {
            const SceneOptions options = {.filling = Filling::ordinary};
            const Prepared first(tested, length, options);
            Sight sight(tested, first.cells, [&](int argument) { return first.initial(argument); });
            oracleOf(tested)->tell(sight);
            const Wanted& wanted = sight.wanted["dst"];
            const auto eps = static_cast<double>(sight.real.epsilon);
            std::printf("  %s %d, at most %.2f:", name, length, wanted.bound / eps);
            for (const std::string& level : levelNames()) {
                forceLevel(level);
                const Prepared prepared(tested, length, options);
                prepared.call();
                ErrorSum sum;
                sum.add(numbers(tested.arguments[1].type, prepared.now(1)), wanted);
                std::printf("  %s %.2f", level.c_str(), sum.relative() / eps);
                EXPECT_LE(sum.relative(), wanted.bound) << name << " " << length << " " << level;
            }
            std::printf("\n");
        }
    }
    forceLevel(levelNames().back());
    EXPECT_EQ(reports.text(), "");
}

}   // namespace
