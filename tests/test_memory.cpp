// The aligned allocator and the version record.
#include <cstring>

#include <gtest/gtest.h>

#include "support/heap.h"
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

}   // namespace
