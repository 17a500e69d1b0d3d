// The life of the tables that the library keeps: what hands them out, builds them ahead and releases them; and of every
// export that builds some, requests for memory failing at each point, once and from then on.
#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

bool buildsTables(const Row& of) { return !of.group.noMemory.empty(); }
bool isTransform(const Row& of) { return of.index("flags") >= 0 && of.group.retriesMemory; }
bool handsOut(const Row& of) { return of.function.operation.compare(0, 3, "Get") == 0 && of.sizeArgument() >= 0; }

class Tables : public testing::Test {
protected:
    static constexpr const char* releasing[] = {"vekFreeBitRevTbls", "vekcFreeTwdTbls", "vekzFreeTwdTbls",
                                                "vekvFreeTwdTbls"};
    static void release(const std::string& name) { row(name).function.call({}); }
    static long releaseAll() {
        for (const char* name : releasing) release(name);
        return heap::held();
    }
    static const unsigned char* get(const Row& of, int size) {
        return of.function.call(of.plain(size)).get<unsigned char*>();
    }
    // A call of null pointers with other flags.
    static Cell callWith(const Row& of, int order, int flags) {
        Cells cells = of.plain(order);
        cells[static_cast<std::size_t>(of.index("flags"))].set(flags);
        return of.function.call(cells);
    }

    void TearDown() override {
        heap::failNone();
        releaseAll();
        EXPECT_EQ(reports.text(), "");
    }
    Reports reports;
    const heap::Restore restore{};
    const long before = releaseAll();
};

TEST_F(Tables, GetHandsOutWhatCalcFills) {
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
        }
    }
}

// Also at a negative status.
TEST_F(Tables, LiveUntilTheirTypesAreFreed) {
    if (!heap::available()) GTEST_SKIP();
    for (const Row& of : rows()) {
        if (!handsOut(of) && !isTransform(of)) continue;
        Prepared(of, 7).call();
        const long held = heap::held();
        EXPECT_TRUE(handsOut(of) ? held == before + 1 : held > before) << of.name();
        vekSetErrStatus(VEK_StsBadArg);
        const std::string& letters = of.function.letters;
        const char* own = releasing[letters.empty() ? 0 : 1 + std::string("cszdv").find(letters[0]) / 2];
        for (const char* name : releasing)
            if (name != own) release(name);
        EXPECT_EQ(heap::held(), held) << of.name();
        for (int times = 0; times < 2; ++times) {   // nothing is left for the second
            release(own);
            EXPECT_EQ(heap::held(), before) << of.name();
        }
        EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
        vekSetErrStatus(VEK_StsOk);
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

// Init builds all that the transform needs, without looking at data; Free with the same order and flags releases it, at
// any status, of which the two-signal members still tell.
TEST_F(Tables, InitAndFree) {
    if (!heap::available()) GTEST_SKIP();
    constexpr int order = 6;
    for (const Row& tested : rows()) {
        if (!isTransform(tested)) continue;
        for (int choice = 0; choice < tested.choices(); ++choice) {
            const Prepared prepared(tested, tested.plain(order, choice));
            const int flags = prepared.number("flags");
            SCOPED_TRACE(tested.name() + " " + std::to_string(flags));
            if ((flags & (VEK_Init | VEK_Free)) != 0) continue;
            callWith(tested, order, flags | VEK_Init);
            EXPECT_GT(heap::held(), before);
            heap::failAt(0, true);
            prepared.call();
            EXPECT_EQ(heap::requests(), 0);
            heap::failNone();
            callWith(tested, 40, flags | VEK_Free);
            callWith(tested, -1, flags | VEK_Free);
            EXPECT_GT(heap::held(), before);
            callWith(tested, order, flags | VEK_Free | VEK_Init);
            EXPECT_EQ(heap::held(), before);

            callWith(tested, order, flags | VEK_Init);
            Cells cells = tested.plain(order);
            cells[static_cast<std::size_t>(tested.index("flags"))].set<int>(VEK_Free | flags);
            VekStatus status = VEK_StsBadArg;
            const std::string wanted = tested.expectedReports(cells, status);
            vekSetErrStatus(VEK_StsBadArg);
            EXPECT_TRUE(tested.function.call(cells) == (wanted.empty() ? Cell{} : tested.expectedFailure(status)));
            EXPECT_EQ(heap::held(), before);
            EXPECT_EQ(reports.text(), wanted);
            EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
            reports.clear();
        }
    }
}

// What is kept grows with the order; nothing of the smaller remains when all is released.
TEST_F(Tables, GrowingLeavesNothing) {
    if (!heap::available()) GTEST_SKIP();
    for (const Row& tested : rows()) {
        if (!buildsTables(tested) || !tested.takesOrder()) continue;
        for (int order = 1; order <= 15; order += 2)
            for (int choice = 0; choice < tested.choices(); ++choice)
                Prepared(tested, tested.plain(order, choice)).call();
        EXPECT_EQ(releaseAll(), before) << tested.name();
    }
}

TEST_F(Tables, NoRequestOnceTheyStand) {
    if (!heap::available()) GTEST_SKIP();
    for (const Row& tested : rows()) {
        if (tested.group.gate == Gate::always) continue;
        for (const int size : {1, 4, 11}) {
            const Prepared prepared(tested, size);
            prepared.call();
            heap::failNone();
            prepared.call();
            EXPECT_EQ(heap::requests(), 0) << tested.name() << " size " << size;
        }
    }
}

// ---- Memory that fails ----------------------------------------------------------------------------------------------

class Memory : public Tables, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        if (!heap::available()) GTEST_SKIP() << "requests for memory cannot be watched here";
    }
    const Row& tested = row(GetParam());

    // That the call has failed for lack of memory at its n-th request; each of `signals` asked for its tables.
    void expectFailed(const Prepared& prepared, const Cell& result, std::size_t request, int signals) {
        const bool outer = !tested.inner.name.empty();
        const Row& asking = outer ? row(tested.inner.name) : tested;
        std::string wanted;
        for (int i = 0; i < (outer ? signals : 1); ++i) wanted += asking.noMemoryReports(request);
        if (outer) wanted += reportLine(VEK_StsBacktrace, tested.name(), tested.inner.message, tested.group.module);
        EXPECT_EQ(reports.text(), wanted);
        EXPECT_EQ(vekGetErrStatus(), tested.group.noMemoryStatus);
        EXPECT_TRUE(result == tested.expectedFailure(tested.group.noMemoryStatus));
        EXPECT_TRUE(prepared.untouched());
        reports.clear();
    }
    void expectGood(const Prepared& prepared, const std::vector<unsigned char>& outputs) {
        EXPECT_EQ(reports.text(), "");
        EXPECT_TRUE(prepared.outputs() == outputs);
        EXPECT_EQ(prepared.damage(), "");
    }
};

TEST_P(Memory, FailingAtEachRequest) {
    long requestsSeen = 0;
    for (const int size : {1, 2, 3, 5, 10, 13}) {
        const Prepared whole(tested, size);
        heap::failNone();
        whole.call();
        const long requests = heap::requests();
        requestsSeen += requests;
        ASSERT_EQ(releaseAll(), before) << "size " << size;

        for (long n = 0; n < 2 * requests; ++n) {
            const bool onwards = n % 2 != 0;
            SCOPED_TRACE("size " + std::to_string(size) + ", request " + std::to_string(n / 2) +
                         (onwards ? " and on" : "") + " fails");
            const Prepared prepared(tested, size);
            heap::failAt(n / 2, onwards);
            const Cell result = prepared.call();
            EXPECT_GT(heap::failures(), 0);
            if (tested.group.retriesMemory && !onwards)
                expectGood(prepared, whole.outputs());
            else
                expectFailed(prepared, result, static_cast<std::size_t>(n / 2), 2);
            EXPECT_EQ(prepared.damage(), "");
            heap::failNone();
            const Prepared next(tested, size);
            next.call();
            expectGood(next, whole.outputs());
            EXPECT_EQ(releaseAll(), before) << "blocks leaked";
        }
    }
    EXPECT_GT(requestsSeen, 0);
}

// Without memory for the largest sizes, or addresses for it, there is a report, and the thread goes on.
TEST_P(Memory, LargestSizes) {
    if (tested.sizeArgument() < 0) return;
    const std::vector<int> orders = {28, 29, 30, 31}, lengths = {1 << 28, 1 << 30, 0x7fffffff};
    for (const int size : tested.takesOrder() ? orders : lengths) {
        SCOPED_TRACE(size);
        Prepared prepared(tested, 3);
        prepared.cells[static_cast<std::size_t>(tested.sizeArgument())].set(size);
        for (std::size_t i = 0; i < tested.arguments.size(); ++i)
            if (tested.arguments[i].role == Role::flags) prepared.cells[i].set(prepared.cells[i].get<int>() | VEK_Init);
        heap::failAbove(8 << 20);
        expectFailed(prepared, prepared.call(), 0, 1);   // initialises once
        heap::failNone();
        EXPECT_EQ(releaseAll(), before);
        Prepared(tested, 3).call();
        EXPECT_EQ(reports.text(), "");
        releaseAll();
    }
}

INSTANTIATE_TEST_SUITE_P(Export, Memory, testing::ValuesIn(rowNames(buildsTables)),
                         [](const auto& info) { return info.param; });

}   // namespace
