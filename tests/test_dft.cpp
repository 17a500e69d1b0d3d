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
    void SetUp() override { releaseTables(); }
    void TearDown() override {
        heap::failNone();
        vekSetErrStatus(VEK_StsOk);
        releaseTables();
    }
    // A call on data of its own.
    void transform(const std::string& type, int length, int flags) {
        const Row& tested = row("vek" + type + "Dft");
        Prepared prepared(tested, length);
        prepared.cells[static_cast<std::size_t>(tested.index("flags"))].set(flags);
        prepared.call();
    }
    Reports reports;
    const heap::Restore restore;
};

std::string full(const std::string& type) {
    return reportLine(VEK_StsNoMemory, "vek" + type + "GetDftTwdTbl", "Full Table", "vektwd");
}
std::string bad(const std::string& name, const std::string& message) {
    return reportLine(VEK_StsBadArg, name, message, "vekdft");
}

TEST_F(Dft, ThirtyThreeLengths) {
    for (const std::string type : {"c", "z", "v"}) {
        for (int length = 2; length < 34; ++length) transform(type, length, VEK_Init);
        EXPECT_EQ(reports.text(), "");
        for (const int flags : {VEK_Init | VEK_Forw, VEK_Forw | 0}) {
            transform(type, 34, flags);
            EXPECT_EQ(reports.text(),
                      full(type) + bad("vek" + type + "Dft", type == "v" ? "TwidleTbl==0" : "TwdTbl==0"));
            EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
            reports.clear();
        }
        transform(type, 33, VEK_Forw);
        EXPECT_EQ(reports.text(), "");
    }
}

TEST_F(Dft, TheFloatCoreNamesItself) {
    for (int length = 2; length < 34; ++length) transform("c", length, VEK_Init);
    transform("v", 100, VEK_Forw | VEK_DoFloatCore);
    EXPECT_EQ(reports.text(), full("c") + bad("vekcDft", "TwdTbl==0") +
                                  reportLine(VEK_StsBacktrace, "vekvDft", "vekvDft float core error", "vekdft"));
    reports.clear();
    transform("v", 100, VEK_Forw);
    EXPECT_EQ(reports.text(), "");
}

// Which core a call takes: only the one in float builds a table of complex floats when it computes.
TEST_F(Dft, CoresByFlagsAndLength) {
    const struct {
        int length, flags;
        bool shortTable, floatTable;
    } calls[] = {{128, 0, true, false},
                 {129, 0, false, true},
                 {128, VEK_DoFloatCore, true, true},
                 {129, VEK_DoIntCore, true, false},
                 {129, VEK_DoIntCore | VEK_DoFloatCore, true, false},
                 {300, VEK_DoFloatCore, false, true}};
    if (!heap::available()) GTEST_SKIP();
    for (const auto& call : calls) {
        releaseTables();
        transform("v", call.length, VEK_Forw | call.flags);
        for (const bool isShort : {true, false}) {
            const long before = heap::outstanding();
            if (isShort)
                vekvGetDftTwdTbl(call.length);
            else
                vekcGetDftTwdTbl(call.length);
            const bool stood = heap::outstanding() == before;
            EXPECT_EQ(stood, isShort ? call.shortTable : call.floatTable) << call.length << " " << call.flags;
        }
    }
    EXPECT_EQ(reports.text(), "");
}

TEST_F(Dft, FreeReleasesWhatItSays) {
    if (!heap::available()) GTEST_SKIP();
    const long none = heap::outstanding();
    for (const std::string type : {"c", "z"}) {
        transform(type, 50, VEK_Forw);
        EXPECT_EQ(heap::outstanding(), none + 2);
        vekSetErrStatus(VEK_StsNoConvergence);
        transform(type, 50, VEK_Free);   // all but the table
        EXPECT_EQ(heap::outstanding(), none + 1);
        vekSetErrStatus(VEK_StsOk);
        transform(type, 60, VEK_Free);   // which it makes
        EXPECT_EQ(heap::outstanding(), none + 2);
        vekzFreeTwdTbls();
        vekcFreeTwdTbls();
        EXPECT_EQ(heap::outstanding(), none);
    }
    transform("v", 200, VEK_Forw);
    transform("v", 100, VEK_Forw);
    vekSetErrStatus(VEK_StsNoConvergence);
    vekvDft(nullptr, nullptr, -1, VEK_Free | VEK_Init, 6, nullptr);
    EXPECT_EQ(heap::outstanding(), none);
    EXPECT_EQ(reports.text(), "");
}

// In float: a scratch area that cannot be had once is made good after all has been released.
TEST_F(Dft, FloatCoreShortOfMemory) {
    if (!heap::available()) GTEST_SKIP();
    const long none = heap::outstanding();
    const std::string backtrace = reportLine(VEK_StsBacktrace, "vekvDft", "vekvDft float core error", "vekdft");
    const struct {
        long request;
        bool onwards;
        std::string reports;
    } cases[] = {{0, false, bad("vekvDft", "TwidleTbl==0")},
                 {1, true, reportLine(VEK_StsNoMemory, "vekvDft", "No working memory", "vekdft")},
                 {1, false, ""},
                 {2, true, bad("vekcDft", "buff==0") + backtrace}};
    for (const auto& failing : cases) {
        heap::failAt(failing.request, failing.onwards);
        transform("v", 200, VEK_Forw);
        EXPECT_GT(heap::failures(), 0);
        heap::failNone();
        EXPECT_EQ(reports.text(), failing.reports) << failing.request;
        reports.clear();
        releaseTables();
        EXPECT_EQ(heap::outstanding(), none);
    }
}

// Data whose sums are large beside each term.
TEST_F(Dft, Constants) {
    for (const int length : {1021, 4096}) {
        std::vector<VekCplx> x(static_cast<std::size_t>(length), VekCplx{0.1F, -0.3F}), y(x.size());
        vekcDft(x.data(), y.data(), length, VEK_Forw);
        const double most = 4 * 0x1p-23 * std::sqrt(std::log2(length)) * std::hypot(0.1F, -0.3F) * length;
        EXPECT_NEAR(y[0].re, static_cast<double>(0.1F) * length, most);
        EXPECT_NEAR(y[0].im, static_cast<double>(-0.3F) * length, most);
        double rest = 0;
        for (std::size_t k = 1; k < y.size(); ++k) rest += std::pow(y[k].re, 2) + std::pow(y[k].im, 2);
        EXPECT_LE(std::sqrt(rest), most) << length;
    }
    EXPECT_EQ(reports.text(), "");
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
