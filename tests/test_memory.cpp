// The aligned allocator, what the tables hold of it, and the layout of the public records.
#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/levels.h"
#include "support/reports.h"

namespace {

using namespace test;

// All members as one type.
template <auto Allocate>
void* allocate(uint32_t count) {
    return Allocate(count);
}
struct Allocator {
    const char* name;
    void* (*allocate)(uint32_t count);
    std::size_t width;
};
constexpr Allocator allocators[] = {
    {"vekMalloc", allocate<vekMalloc>, 1},   {"veksMalloc", allocate<veksMalloc>, 4},
    {"vekiMalloc", allocate<vekiMalloc>, 4}, {"vekvMalloc", allocate<vekvMalloc>, 4},
    {"vekdMalloc", allocate<vekdMalloc>, 8}, {"vekcMalloc", allocate<vekcMalloc>, 8},
    {"vekjMalloc", allocate<vekjMalloc>, 8}, {"vekzMalloc", allocate<vekzMalloc>, 16},
    {"vekwMalloc", allocate<vekwMalloc>, 2},
};

TEST(Allocator, BlocksAreAlignedWholeAndDistinct) {
    for (const Allocator& tested : allocators) {
        std::vector<unsigned char*> blocks;
        for (uint32_t count = 0; count < 200; ++count) {
            auto* block = static_cast<unsigned char*>(tested.allocate(count));
            ASSERT_NE(block, nullptr) << tested.name << " " << count;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 32, 0u) << tested.name << " " << count;
            std::memset(block, static_cast<int>(count), count * tested.width);
            blocks.push_back(block);
        }
        for (uint32_t count = 0; count < 200; ++count) {
            const std::vector<unsigned char> wanted(count * tested.width, static_cast<unsigned char>(count));
            EXPECT_TRUE(wanted.empty() || std::memcmp(blocks[count], wanted.data(), wanted.size()) == 0)
                << tested.name << " " << count;
            vekFree(blocks[count]);
        }
    }
}

TEST(Allocator, KeepsTheHeapAddressBeforeTheBlock) {
    void* block = vekMalloc(100);
    std::uintptr_t raw = 0;
    std::memcpy(&raw, static_cast<char*>(block) - sizeof raw, sizeof raw);
    const auto distance = reinterpret_cast<std::uintptr_t>(block) - raw;
    EXPECT_GE(distance, sizeof raw);
    EXPECT_LE(distance, 31 + sizeof raw);
    vekFree(block);
}

TEST(Allocator, FreeOfNullDoesNothing) { vekFree(nullptr); }

TEST(Allocator, NoMemoryGivesNullAndNoReport) {
    if (!heap::available()) GTEST_SKIP();
    const heap::Restore restore;
    Reports reports;
    for (const Allocator& tested : allocators) {
        const long before = heap::outstanding();
        heap::failAt(0, true);
        EXPECT_EQ(tested.allocate(3), nullptr) << tested.name;
        EXPECT_EQ(heap::requests(), 1) << tested.name;
        EXPECT_EQ(heap::outstanding(), before) << tested.name;
    }
    EXPECT_EQ(reports.text(), "");
    EXPECT_EQ(vekGetErrStatus(), VEK_StsOk);
}

TEST(Allocator, RequestsTheBytesOfItsElements) {
    if (!heap::available()) GTEST_SKIP();
    const heap::Restore restore;
    const std::size_t overhead = 32 + sizeof(void*);
    for (const Allocator& tested : allocators) {
        for (const uint32_t count : {0u, 1u, 1000u, 0x10000000u, 0xffffffffu}) {
            heap::failAt(0, true);
            tested.allocate(count);
            const std::size_t wanted = count * tested.width + overhead;   // wraps in a 32-bit process
            // A block smaller than its own bookkeeping could not be made.
            EXPECT_EQ(heap::lastBytes(), wanted < overhead ? overhead : wanted) << tested.name << " " << count;
        }
    }
}

TEST(Allocator, WorksUnderANegativeStatus) {
    Reports reports;
    vekSetErrStatus(VEK_StsBadArg);
    void* block = veksMalloc(10);
    EXPECT_NE(block, nullptr);
    vekFree(block);
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    EXPECT_EQ(reports.text(), "");
}

TEST(Version, Record) {
    const VekLibVersion* version = vekGetLibVersion();
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version->major, 4);
    EXPECT_EQ(version->minor, 1);
    EXPECT_EQ(version->build, 51);
    EXPECT_STREQ(version->name, "vekm6.dll");
    EXPECT_STREQ(version->version, "4.1 FCS");
    EXPECT_STREQ(version->internalVersion, "[4.01.51, 01/15/99]");
    EXPECT_STREQ(version->buildDate, "Jan 19 1999");
    EXPECT_STREQ(version->kind, "DLL");
    EXPECT_EQ(vekGetLibVersion(), version);
}

// ---- What tables hold -----------------------------------------------------------------------------------------------

void releaseTables() {
    vekcFreeTwdTbls();
    vekzFreeTwdTbls();
    vekvFreeTwdTbls();
    vekFreeBitRevTbls();
}

// Bytes that a call leaves with the thread.
template <class Call>
double held(Call call) {
    releaseTables();
    const long before = heap::outstandingBytes();
    call();
    const long after = heap::outstandingBytes();
    releaseTables();
    EXPECT_EQ(heap::outstandingBytes(), before);
    return static_cast<double>(after - before);
}
// Alignment and the heap's rounding add a little.
void expectHeld(const char* what, int size, double bytes, double wanted) {
    EXPECT_GE(bytes, wanted) << what << " " << size;
    EXPECT_LE(bytes, wanted * 1.02 + (wanted < 65536 ? 96 : 4200)) << what << " " << size;
}

TEST(TableBytes, AreTheElements) {
    if (!heap::available()) GTEST_SKIP();
    for (int order = 0; order <= 18; ++order) {
        const int n = 1 << order;
        expectHeld("BitRev", order, held([=] { vekGetBitRevTbl(order); }), 4.0 * n);
        expectHeld("c", order, held([=] { vekcGetFftTwdTbl(order); }), 8.0 * n);
        expectHeld("z", order, held([=] { vekzGetFftTwdTbl(order); }), 16.0 * n);
        expectHeld("v", order, held([=] { vekvGetFftTwdTbl(order); }), 4.0 * n);
    }
    for (const int length : {1, 7, 1000, 65537}) {
        expectHeld("c", length, held([=] { vekcGetDftTwdTbl(length); }), 8.0 * length);
        expectHeld("z", length, held([=] { vekzGetDftTwdTbl(length); }), 16.0 * length);
        expectHeld("v", length, held([=] { vekvGetDftTwdTbl(length); }), 4.0 * length);
    }
}

// In units of the signal: a self-sorting transform has its twiddles and two buffers; the four-step form one buffer, and
// columns in place of twiddles. A real transform has what one of half the length has, and the roots of a quarter to
// split by.
class TransformBytes : public AtLevel {};
TEST_P(TransformBytes, AreTablesAndBuffers) {
    if (!heap::available()) GTEST_SKIP();
    constexpr int initOnly = VEK_Forw | VEK_Init;
    const struct {
        const char* name;
        void (*prepare)(int order);
        double bytes;   // of the signal, for each of N
        double most;    // signals held up to `fourSteps`; from there on four steps take `mostThen`
        int fourSteps;
        double mostThen;
    } cases[] = {
        {"vekcFft", [](int order) { vekcFft(nullptr, order, initOnly); }, 8, 3, 16, 1.3},
        {"vekzFft", [](int order) { vekzFft(nullptr, order, initOnly); }, 16, 3, 15, 1.3},
        {"veksRealFft", [](int order) { veksRealFft(nullptr, order, initOnly); }, 4, 3.5, 17, 1.8},
        {"vekdRealFft", [](int order) { vekdRealFft(nullptr, order, initOnly); }, 8, 3.5, 16, 1.8},
    };
    for (const auto& of : cases)
        for (int order = 0; order <= 20; ++order) {
            const double signal = of.bytes * (1 << order);
            const double most = order < of.fourSteps ? of.most : of.mostThen;
            EXPECT_LE(held([&] { of.prepare(order); }), signal * most * 1.02 + 400) << of.name << " " << order;
        }
    // The swap list of a permutation: places of tiles of 8 by 8.
    for (int order = 6; order <= 20; ++order) {
        const double plain = held([=] { vekcFft(nullptr, order, initOnly); });
        const double sorted = held([=] { vekcFft(nullptr, order, initOnly | VEK_InBitRev); });
        EXPECT_LE(sorted - plain, (4 << order) / 64 * 1.02 + 100) << order;
    }
}
VEK_AT_ALL_LEVELS(TransformBytes);

// ---- Layouts, the same on both systems but for the width of pointers ------------------------------------------------

static_assert(sizeof(VekCplx) == 8 && offsetof(VekCplx, im) == 4);
static_assert(sizeof(VekDCplx) == 16 && offsetof(VekDCplx, im) == 8);
static_assert(sizeof(VekWCplx) == 4 && offsetof(VekWCplx, im) == 2);
static_assert(sizeof(VekICplx) == 8 && offsetof(VekICplx, im) == 4);
static_assert(sizeof(VekStatus) == 4);
constexpr std::size_t texts = sizeof(void*) == 4 ? 12 : 16;
static_assert(offsetof(VekLibVersion, major) == 0 && offsetof(VekLibVersion, minor) == 4 &&
              offsetof(VekLibVersion, build) == 8 && offsetof(VekLibVersion, name) == texts &&
              offsetof(VekLibVersion, version) == texts + sizeof(void*) &&
              offsetof(VekLibVersion, internalVersion) == texts + 2 * sizeof(void*) &&
              offsetof(VekLibVersion, buildDate) == texts + 3 * sizeof(void*) &&
              offsetof(VekLibVersion, kind) == texts + 4 * sizeof(void*) &&
              sizeof(VekLibVersion) == texts + 5 * sizeof(void*));

}   // namespace
