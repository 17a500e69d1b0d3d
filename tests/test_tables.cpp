// The life of the tables that the library keeps: what hands them out, builds them ahead and releases them.
#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

constexpr const char* releasing[] = {"vekFreeBitRevTbls", "vekcFreeTwdTbls", "vekzFreeTwdTbls", "vekvFreeTwdTbls"};
void release(const std::string& name) { row(name).function.call({}); }
void releaseAll() {
    for (const char* name : releasing) release(name);
}

class Tables : public testing::Test {
protected:
    void SetUp() override { releaseAll(); }
    void TearDown() override {
        releaseAll();
        EXPECT_EQ(reports.text(), "");
    }
    Reports reports;
    const heap::Restore restore;

    static bool handsOut(const Row& of) {
        return of.function.operation.compare(0, 3, "Get") == 0 && of.sizeArgument() >= 0;
    }
    static const unsigned char* get(const Row& of, int size) {
        return of.function.call(of.plain(size)).get<unsigned char*>();
    }
};

TEST_F(Tables, GetHandsOutWhatCalcFills) {
    int compared = 0;
    for (const Row& getting : rows()) {
        if (!handsOut(getting)) continue;
        const Row& filling = row("vek" + getting.function.letters + "Calc" + getting.function.operation.substr(3));
        for (const int size : {1, 2, 5, 10, 12}) {
            const Prepared calculated(filling, size);
            calculated.call();
            const unsigned char* kept = get(getting, size);
            ASSERT_NE(kept, nullptr) << getting.name();
            const std::vector<unsigned char> wanted = calculated.now(0);
            EXPECT_EQ(std::memcmp(kept, wanted.data(), wanted.size()), 0) << getting.name() << " " << size;
            EXPECT_EQ(get(getting, size), kept) << getting.name() << " " << size;
            EXPECT_NE(get(getting, size + 1), kept) << getting.name() << " " << size;
            ++compared;
        }
    }
    EXPECT_GT(compared, 0);
}

TEST_F(Tables, LiveUntilTheirTypesAreFreed) {
    if (!heap::available()) GTEST_SKIP();
    for (const Row& getting : rows()) {
        if (!handsOut(getting)) continue;
        const long before = heap::outstanding();
        get(getting, 7);
        const long held = heap::outstanding();
        EXPECT_EQ(held, before + 1) << getting.name();
        const std::string own =
            getting.function.letters.empty() ? releasing[0] : "vek" + getting.function.letters + "FreeTwdTbls";
        for (const char* name : releasing)
            if (name != own) release(name);
        EXPECT_EQ(heap::outstanding(), held) << getting.name();
        for (int times = 0; times < 2; ++times) {   // nothing is left for the second
            release(own);
            EXPECT_EQ(heap::outstanding(), before) << getting.name();
        }
    }
}

TEST_F(Tables, ThirtyTwoLengthsOfATypeFit) {
    for (const char* type : {"c", "z", "v"}) {
        const Row& getting = row(std::string("vek") + type + "GetDftTwdTbl");
        const unsigned char* kept[32];
        for (int i = 0; i < 32; ++i) kept[i] = get(getting, 10 + i);
        EXPECT_EQ(reports.text(), "");
        EXPECT_EQ(get(getting, 9), nullptr);
        EXPECT_EQ(reports.text(), reportLine(VEK_StsNoMemory, getting.name(), "Full Table", "vektwd"));
        EXPECT_EQ(get(getting, 10), nullptr) << "a negative status stands";
        reports.clear();
        for (int i = 0; i < 32; ++i) EXPECT_EQ(get(getting, 10 + i), kept[i]) << i;
        release(std::string("vek") + type + "FreeTwdTbls");
        EXPECT_NE(get(getting, 9), nullptr);
    }
}

// ---- Transforms -----------------------------------------------------------------------------------------------------

bool isTransform(const Row& of) { return of.index("flags") >= 0 && of.group.retriesMemory; }

// A call with other flags and, but for those of data, null pointers.
VekStatus callWith(const Row& of, int order, int flags) {
    Cells cells = of.plain(order);
    cells[static_cast<std::size_t>(of.index("flags"))].set(flags);
    return of.function.call(cells).get<VekStatus>();
}

// Init builds all that the transform needs, without looking at data; Free with the same order and flags releases it.
TEST_F(Tables, InitAndFree) {
    if (!heap::available()) GTEST_SKIP();
    constexpr int order = 6;
    for (const Row& tested : rows()) {
        if (!isTransform(tested)) continue;
        for (int choice = 0; choice < tested.choices(); ++choice) {
            const Prepared prepared(tested, tested.plain(order, choice));
            const int flags = prepared.number("flags");
            const std::string what = tested.name() + " " + std::to_string(flags);
            if ((flags & (VEK_Init | VEK_Free)) != 0) continue;
            const long before = heap::outstanding();
            callWith(tested, order, flags | VEK_Init);
            EXPECT_GT(heap::outstanding(), before) << what;
            heap::failAt(0, true);
            prepared.call();
            EXPECT_EQ(heap::requests(), 0) << what;
            heap::failNone();
            callWith(tested, 40, flags | VEK_Free);
            callWith(tested, -1, flags | VEK_Free);
            EXPECT_GT(heap::outstanding(), before) << what;
            callWith(tested, order, flags | VEK_Free | VEK_Init);
            EXPECT_EQ(heap::outstanding(), before) << what;
        }
    }
}

// The two-signal members still tell of the status.
TEST_F(Tables, FreeUnderANegativeStatus) {
    for (const Row& tested : rows()) {
        if (!isTransform(tested)) continue;
        Cells cells = tested.plain(4);
        cells[static_cast<std::size_t>(tested.index("flags"))].set<int>(VEK_Free);
        VekStatus status = VEK_StsBadArg;
        const std::string wanted = tested.expectedReports(cells, status);
        vekSetErrStatus(VEK_StsBadArg);
        EXPECT_TRUE(tested.function.call(cells) == (wanted.empty() ? Cell{} : tested.expectedFailure(status)));
        EXPECT_EQ(reports.text(), wanted) << tested.name();
        EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg) << tested.name();
        reports.clear();
    }
}

// What is kept grows with the order; nothing of the smaller remains when all is released.
TEST_F(Tables, GrowingLeavesNothing) {
    if (!heap::available()) GTEST_SKIP();
    const long none = heap::outstanding();
    for (const Row& tested : rows()) {
        if (tested.group.noMemory.empty() || !tested.takesOrder()) continue;
        for (int order = 1; order <= 15; order += 2)
            for (int choice = 0; choice < tested.choices(); ++choice)
                Prepared(tested, tested.plain(order, choice)).call();
        releaseAll();
        EXPECT_EQ(heap::outstanding(), none) << tested.name();
    }
}

// Each precision's Free leaves the other's transforms ready.
TEST_F(Tables, OfOneTypeOnly) {
    if (!heap::available()) GTEST_SKIP();
    const long none = heap::outstanding();
    vekcFft(nullptr, 7, VEK_Init);
    vekdRealFft(nullptr, 7, VEK_Init);
    vekcFreeTwdTbls();
    std::vector<double> data(130);
    heap::failAt(0, true);
    vekdRealFft(data.data(), 7, VEK_Forw);
    EXPECT_EQ(heap::requests(), 0);
    heap::failNone();
    vekzFreeTwdTbls();
    EXPECT_EQ(heap::outstanding(), none);
}

}   // namespace
