// The aligned allocator, what the tables hold of it, and the layout of the public records.
#include <cstddef>
#include <cstring>
#include <tuple>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

TEST(Allocator, BlocksAndTheirRequests) {
    Reports reports;
    const heap::Restore restore{};
    vekFree(nullptr);
    vekSetErrStatus(VEK_StsBadArg);   // which does not matter
    for (const char* letter : {"", "s", "d", "c", "z", "w", "v", "i", "j"}) {
        const Row& of = row("vek" + std::string(letter) + "Malloc");
        const std::size_t width = *letter == 0 ? 1 : *letter == 'j' ? 8 : typeOfLetter(*letter).bytes;
        const auto allocate = [&of](std::uint32_t count) {
            Cells cells(1);
            cells[0].set(count);
            return of.function.call(cells).get<unsigned char*>();
        };
        SCOPED_TRACE(of.name());
        std::vector<unsigned char*> blocks;
        for (std::uint32_t count = 0; count < 200; ++count) {
            blocks.push_back(allocate(count));
            ASSERT_NE(blocks.back(), nullptr) << count;
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back()) % 32, 0u) << count;
            std::memset(blocks.back(), static_cast<int>(count), count * width);
            // The heap's own address stands before the block.
            std::uintptr_t raw = 0;
            std::memcpy(&raw, blocks.back() - sizeof raw, sizeof raw);
            const auto distance = reinterpret_cast<std::uintptr_t>(blocks.back()) - raw;
            EXPECT_TRUE(distance >= sizeof raw && distance <= 31 + sizeof raw) << count;
        }
        for (std::uint32_t count = 0; count < 200; ++count) {
            for (std::size_t i = 0; i < count * width; ++i) ASSERT_EQ(blocks[count][i], count) << i;
            vekFree(blocks[count]);
        }
        for (const std::uint32_t count : {0u, 1u, 1000u, 0x10000000u, 0xffffffffu}) {
            if (!heap::available()) break;
            const long before = heap::held();
            heap::failAt(0, true);
            EXPECT_EQ(allocate(count), nullptr) << count;
            EXPECT_EQ(heap::requests(), 1) << count;
            EXPECT_EQ(heap::held(), before) << count;
            // It wraps in a 32-bit process; a block smaller than its own bookkeeping could not be made.
            constexpr std::size_t overhead = 32 + sizeof(void*);
            EXPECT_EQ(heap::lastBytes(), std::max(count * width + overhead, overhead)) << count;
            heap::failNone();
        }
    }
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    EXPECT_EQ(reports.text(), "");
}

TEST(Version, Record) {
    const VekLibVersion& is = *vekGetLibVersion();
    EXPECT_EQ(std::make_tuple(is.major, is.minor, is.build), std::make_tuple(4, 1, 51));
    EXPECT_EQ(
        std::string(is.name) + "; " + is.version + "; " + is.internalVersion + "; " + is.buildDate + "; " + is.kind,
        "vekm6.dll; 4.1 FCS; [4.01.51, 01/15/99]; Jan 19 1999; DLL");
    EXPECT_EQ(vekGetLibVersion(), &is);
}

// ---- What tables hold -----------------------------------------------------------------------------------------------

// Bytes that a call leaves with the thread, of pointers to nothing and these numbers.
double held(const std::string& name, int size, int flags = 0) {
    const auto release = [] {
        for (const char* free : {"vekcFreeTwdTbls", "vekzFreeTwdTbls", "vekvFreeTwdTbls", "vekFreeBitRevTbls"})
            row(free).function.call({});
        return heap::heldBytes();
    };
    const long before = release();
    const Row& of = row(name);
    Cells cells = of.plain(size);
    if (flags != 0) cells[static_cast<std::size_t>(of.index("flags"))].set(flags);
    of.function.call(cells);
    const long after = heap::heldBytes();
    EXPECT_EQ(release(), before);
    return static_cast<double>(after - before);
}

// In units of the signal. Twiddle tables are their elements. A self-sorting transform has its twiddles and two buffers;
// the four-step form one buffer, and columns in place of twiddles. A real transform has what one of half the length
// has, and the roots of a quarter to split by.
class Bytes : public AtLevel {};
TEST_P(Bytes, AreTablesAndBuffers) {
    if (!heap::available()) GTEST_SKIP();
    constexpr int initOnly = VEK_Forw | VEK_Init;
    const struct {
        const char* name;
        int flags;
        double bytes, least, most;   // of the signal, for each of N; signals held
        int fourSteps = 32;          // the order from where on four steps take `mostThen` signals
        double mostThen = 0;
    } cases[] = {{"vekcGetFftTwdTbl", 0, 8, 1, 1},
                 {"vekzGetFftTwdTbl", 0, 16, 1, 1},
                 {"vekvGetFftTwdTbl", 0, 4, 1, 1},
                 {"vekcGetDftTwdTbl", 0, 8, 1, 1},
                 {"vekzGetDftTwdTbl", 0, 16, 1, 1},
                 {"vekvGetDftTwdTbl", 0, 4, 1, 1},
                 {"vekGetBitRevTbl", 0, 4, 1, 1},
                 {"vekcFft", initOnly, 8, 0, 3, 16, 1.3},
                 {"vekzFft", initOnly, 16, 0, 3, 15, 1.3},
                 {"veksRealFft", initOnly, 4, 0, 3.5, 17, 1.8},
                 {"vekdRealFft", initOnly, 8, 0, 3.5, 16, 1.8}};
    for (int order = 0; order <= 20; ++order) {
        for (const auto& of : cases) {
            const double signal = of.bytes * (1 << order);
            const double bytes = held(of.name, row(of.name).takesOrder() ? order : 1 << order, of.flags);
            EXPECT_GE(bytes, signal * of.least) << of.name << " " << order;
            // Alignment and the heap's rounding add a little.
            const double more = of.flags != 0 ? 400 : signal < 65536 ? 96 : 4200;
            EXPECT_LE(bytes, signal * (order < of.fourSteps ? of.most : of.mostThen) * 1.02 + more)
                << of.name << " " << order;
        }
        // The swap list of a permutation: places of tiles of 8 by 8.
        const double list = held("vekcFft", order, initOnly | VEK_InBitRev) - held("vekcFft", order, initOnly);
        EXPECT_LE(list, order < 6 ? 400 : (4 << order) / 64 * 1.02 + 100) << order;
    }
}
VEK_AT_ALL_LEVELS(Bytes);

// ---- Layouts, the same on both systems but for the width of pointers ------------------------------------------------

template <class Record, class Part>
constexpr bool isPair = sizeof(Record) == 2 * sizeof(Part) && offsetof(Record, re) == 0 &&
                        offsetof(Record, im) == sizeof(Part) && std::is_same_v<decltype(Record::im), Part>;
static_assert(isPair<VekCplx, float> && isPair<VekDCplx, double> && isPair<VekWCplx, std::int16_t> &&
              isPair<VekICplx, std::int32_t> && std::is_same_v<VekStatus, int>);
constexpr std::size_t pointer = sizeof(void*), texts = pointer == 4 ? 12 : 16;
static_assert(offsetof(VekLibVersion, major) == 0 && offsetof(VekLibVersion, minor) == 4 &&
              offsetof(VekLibVersion, build) == 8 && offsetof(VekLibVersion, name) == texts &&
              offsetof(VekLibVersion, version) == texts + pointer &&
              offsetof(VekLibVersion, internalVersion) == texts + 2 * pointer &&
              offsetof(VekLibVersion, buildDate) == texts + 3 * pointer &&
              offsetof(VekLibVersion, kind) == texts + 4 * pointer && sizeof(VekLibVersion) == texts + 5 * pointer);

}   // namespace
