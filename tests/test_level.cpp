// Kernel levels: what is detected from a processor's answers, that the forced level runs, and that the table of cases
// reaches every entry of the kernel tables.
#include <array>
#include <map>

#include <gtest/gtest.h>

#ifndef VEK_TEST_DLL   // levels are no exports

#include "kernel_tables.h"
#include "kernels/level/cpu.h"
#include "kernels/level/levels.h"
#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"
#include "vekscale.h"

// tests/simd_lanes.cpp, which is compiled for each level.
#define VEK_SIMD(level)      \
    namespace vek::level {   \
    const char* simdFault(); \
    }
VEK_BUILT_LEVELS(VEK_SIMD)

namespace {

using namespace test;
using vek::level::CpuFeatures;
using vek::level::CpuidAnswer;

// A processor from a table.
struct Processor {
    std::uint32_t lastLeaf = 7;
    std::uint32_t edx1 = 1u << 26;                                                        // SSE2
    std::uint32_t ecx1 = (1u << 12) | (1u << 27) | (1u << 28);                            // FMA, OSXSAVE, AVX
    std::uint32_t ebx7 = (1u << 5) | (1u << 16) | (1u << 17) | (1u << 30) | (1u << 31);   // AVX2, F, DQ, BW, VL
    std::uint64_t xcr0 = 0xe7;
};

Processor current;
bool xcr0WasRead = false;

CpuFeatures detectOn(const Processor& processor) {
    current = processor;
    xcr0WasRead = false;
    return vek::level::detect({
        [](std::uint32_t leaf, std::uint32_t) -> CpuidAnswer {
            // Beyond the last leaf a processor answers with anything.
            if (leaf > current.lastLeaf) return {~0u, ~0u, ~0u, ~0u};
            if (leaf == 0) return {current.lastLeaf, 0, 0, 0};
            if (leaf == 1) return {0, 0, current.ecx1, current.edx1};
            if (leaf == 7) return {0, current.ebx7, 0, 0};
            return {0, 0, 0, 0};
        },
        [] {
            xcr0WasRead = true;
            return current.xcr0;
        },
    });
}

TEST(Detection, OnlyWhatAllBitsAllow) {
    const Processor full;
    const auto without = [&](std::uint32_t Processor::*word, int bit) {
        Processor lacking = full;
        lacking.*word &= ~(1u << bit);
        return lacking;
    };
    const auto withState = [&](std::uint64_t xcr0) {
        Processor limited = full;
        limited.xcr0 = xcr0;
        return limited;
    };
    const auto withLeaves = [&](std::uint32_t last) {
        Processor old = full;
        old.lastLeaf = last;
        return old;
    };
    const struct {
        const char* name;
        Processor processor;
        int level;   // 0 none, 1 sse2, 2 avx2, 3 avx512
    } cases[] = {
        {"all", full, 3},
        {"no leaf 1", withLeaves(0), 0},
        {"no leaf 7", withLeaves(6), 1},
        {"leaf 13", withLeaves(13), 3},
        {"no SSE2", without(&Processor::edx1, 26), 0},
        {"no FMA", without(&Processor::ecx1, 12), 1},
        {"no OSXSAVE", without(&Processor::ecx1, 27), 1},
        {"no AVX", without(&Processor::ecx1, 28), 1},
        {"no AVX2", without(&Processor::ebx7, 5), 1},
        {"no AVX512F", without(&Processor::ebx7, 16), 2},
        {"no AVX512DQ", without(&Processor::ebx7, 17), 2},
        {"no AVX512BW", without(&Processor::ebx7, 30), 2},
        {"no AVX512VL", without(&Processor::ebx7, 31), 2},
        {"no register state", withState(0x1), 1},
        {"SSE state", withState(0x3), 1},
        {"YMM state without SSE state", withState(0x5), 1},
        {"YMM state", withState(0x7), 2},
        {"no opmask state", withState(0xc7), 2},
        {"no state of the upper halves", withState(0xa7), 2},
        {"no state of the upper registers", withState(0x67), 2},
        {"ZMM state without YMM state", withState(0xe3), 1},
    };
    for (const auto& of : cases) {
        const CpuFeatures found = detectOn(of.processor);
        EXPECT_EQ(found.sse2, of.level >= 1) << of.name;
        EXPECT_EQ(found.avx2, of.level >= 2) << of.name;
        EXPECT_EQ(found.avx512, of.level >= 3) << of.name;
    }
    // Reading XCR0 without OSXSAVE is an illegal instruction.
    detectOn(without(&Processor::ecx1, 27));
    EXPECT_FALSE(xcr0WasRead);
}

#if defined(__x86_64__) && !defined(_WIN32)
TEST(Detection, AgreesWithTheCompilersRuntime) {
    __builtin_cpu_init();
    const CpuFeatures found = vek::level::detect();
    EXPECT_EQ(found.sse2, __builtin_cpu_supports("sse2") != 0);
    EXPECT_EQ(found.avx2, __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"));
    EXPECT_EQ(found.avx512, __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                                __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                                __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"));
}
#endif

TEST(Level, TheBestOneRunsFromTheStart) {
    // The other tests leave it as they found it.
    EXPECT_EQ(std::string(vek::level::active()), levelNames().back());
}

TEST(Level, UnknownNamesChangeNothing) {
    const std::string before = vek::level::active();
    EXPECT_FALSE(vek::level::force("avx3"));
    EXPECT_FALSE(vek::level::force(""));
    EXPECT_EQ(before, vek::level::active());
    EXPECT_EQ(vek::level::at(-1), nullptr);
    EXPECT_EQ(vek::level::at(vek::level::levelCount), nullptr);
}

class ForcedLevel : public AtLevel {};

// All of its tables are in force, and no two levels share one.
TEST_P(ForcedLevel, BringsItsOwnTables) {
    const auto& now = vek::kernelsNow();
    EXPECT_EQ(now.name, GetParam());
    for (int i = 0; i < vek::level::levelCount; ++i) {
        const auto* level = vek::level::at(i);
        if (level == nullptr) continue;
        const bool own = level->name == GetParam();
#define VEK_OWN(object, Table) EXPECT_EQ(now.object == level->object, own) << level->name << " " #object;
        VEK_FAMILIES(VEK_OWN)
    }
}

TEST_P(ForcedLevel, ComputesInVectorsAsInScalars) {
#define VEK_FAULT(level) {#level, vek::level::simdFault},
    const std::map<std::string, const char* (*)()> faults = {VEK_BUILT_LEVELS(VEK_FAULT)};
    EXPECT_EQ(faults.at(GetParam())(), nullptr);
}

#if defined(__x86_64__) && !defined(_WIN32)

// ---- Every entry is reached ----------------------------------------------------------------------------------------

// The active tables are replaced by copies whose entries count and go on to the level's own.

constexpr int hopCapacity = 512;

}   // namespace

extern "C" {
std::uint32_t testHopCount[hopCapacity];
void* testHopTarget[hopCapacity];
}

namespace {

template <int K>
[[gnu::naked]] void hop() {
    asm volatile("lock incl testHopCount+%c0(%%rip)\n\tjmp *testHopTarget+%c1(%%rip)" : : "i"(4 * K), "i"(8 * K));
}
template <int... K>
std::array<void*, sizeof...(K)> hopsOf(std::integer_sequence<int, K...>) {
    return {reinterpret_cast<void*>(hop<K>)...};
}

struct HopTables {
#define VEK_TABLE(object, Table) vek::kernels::Table object;
    VEK_FAMILIES(VEK_TABLE)
};
constexpr std::size_t entries = sizeof(HopTables) / sizeof(void*);
static_assert(entries <= hopCapacity);

TEST_P(ForcedLevel, CasesReachEveryKernel) {
#define VEK_COPY(object, Table) *vek::kernelsNow().object,
    HopTables tables = {VEK_FAMILIES(VEK_COPY)};
    const auto hops = hopsOf(std::make_integer_sequence<int, hopCapacity>{});
    std::memcpy(testHopTarget, &tables, sizeof tables);
    std::memcpy(static_cast<void*>(&tables), hops.data(), sizeof tables);
    std::memset(testHopCount, 0, sizeof testHopCount);
#define VEK_ADDRESS(object, Table) , &tables.object
    vek::level::current = {GetParam().c_str() VEK_FAMILIES(VEK_ADDRESS)};

    Reports reports;
    for (const Row& tested : rows()) {
        if (tested.group.gate == Gate::always) continue;
        for (const int size : {1, 4, 10}) {
            for (int choice = 0; choice < tested.choices(); ++choice)
                Prepared(tested, tested.plain(size, choice)).call();
        }
    }
    const std::vector<std::int16_t> x(256, 100);
    std::vector<std::int16_t> y(511);
    for (int mode : {0, 1, 2, 3, 4}) {   // what other families' exports call, and these of long vectors
        int factor = 1;
        vek::vekScaleIntToShort(1 << 20, mode, &factor);
        factor = 1;
        vekwConv(x.data(), 256, x.data(), 256, y.data(), mode, &factor);
    }
    EXPECT_EQ(reports.text(), "");
    ASSERT_TRUE(forceLevel(GetParam()));   // before the copies go
    vekcFreeTwdTbls();
    vekzFreeTwdTbls();

    // Entries by table: a number here leads to the member of its header.
    const std::uint32_t* count = testHopCount;
#define VEK_REACHED(object, Table)                                          \
    for (std::size_t i = 0; i < sizeof(tables.object) / sizeof(void*); ++i) \
        EXPECT_GT(*count++, 0u) << #object " entry " << i;
    VEK_FAMILIES(VEK_REACHED)
}

#endif

VEK_AT_ALL_LEVELS(ForcedLevel);

}   // namespace

#endif
