// Kernel levels: what is detected from a processor's answers, that the forced level runs, and that the table of cases
// reaches every entry of the kernel tables.
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

#if defined(__x86_64__) && !defined(_WIN32)
#include <csignal>

#include <ucontext.h>
#endif

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

// A processor's words, each with the bits that allow everything.
constexpr int lastLeaf = 0, edx1 = 1, ecx1 = 2, ebx7 = 3, xcr0 = 4;
constexpr std::uint32_t full[] = {7, 1u << 26 /* SSE2 */, 1u << 12 | 1u << 27 | 1u << 28 /* FMA, OSXSAVE, AVX */,
                                  1u << 5 | 1u << 16 | 1u << 17 | 1u << 30 | 1u << 31 /* AVX2, F, DQ, BW, VL */, 0xe7};
std::uint32_t words[5];

TEST(Detection, OnlyWhatAllBitsAllow) {
    const vek::level::CpuSource source = {
        [](std::uint32_t leaf, std::uint32_t) -> CpuidAnswer {
            // Beyond the last leaf a processor answers with anything.
            if (leaf > words[lastLeaf]) return {~0u, ~0u, ~0u, ~0u};
            if (leaf == 0) return {words[lastLeaf], 0, 0, 0};
            return {0, leaf == 7 ? words[ebx7] : 0, leaf == 1 ? words[ecx1] : 0, leaf == 1 ? words[edx1] : 0};
        },
        [] {
            EXPECT_NE(words[ecx1] & 1u << 27, 0u) << "an illegal instruction";
            return std::uint64_t{words[xcr0]};
        }};
    const struct {
        int word;
        std::uint32_t flipped;
        int level;   // 0 none, 1 sse2, 2 avx2, 3 avx512
    } cases[] = {{lastLeaf, 0, 3},    {lastLeaf, 7 ^ 0, 0}, {lastLeaf, 7 ^ 6, 1}, {lastLeaf, 7 ^ 13, 3},
                 {edx1, 1u << 26, 0}, {ecx1, 1u << 12, 1},  {ecx1, 1u << 27, 1},  {ecx1, 1u << 28, 1},
                 {ebx7, 1u << 5, 1},  {ebx7, 1u << 16, 2},  {ebx7, 1u << 17, 2},  {ebx7, 1u << 30, 2},
                 {ebx7, 1u << 31, 2}, {xcr0, 0xe6, 1},      {xcr0, 0xe4, 1},      {xcr0, 0xe2, 1},
                 {xcr0, 0xe0, 2},     {xcr0, 0x20, 2},      {xcr0, 0x40, 2},      {xcr0, 0x80, 2},
                 {xcr0, 0x04, 1}};
    for (const auto& of : cases) {
        std::copy(full, full + 5, words);
        words[of.word] ^= of.flipped;
        const CpuFeatures found = vek::level::detect(source);
        EXPECT_TRUE(found.sse2 == (of.level >= 1) && found.avx2 == (of.level >= 2) && found.avx512 == (of.level >= 3))
            << "word " << of.word << " without " << of.flipped;
    }
}

#if defined(__x86_64__) && !defined(_WIN32)
TEST(Detection, AgreesWithTheCompilersRuntime) {
    __builtin_cpu_init();
    const CpuFeatures found = vek::level::detect();
    EXPECT_EQ(found.sse2, __builtin_cpu_supports("sse2") != 0);
    EXPECT_EQ(found.avx2, __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"));
    EXPECT_EQ(found.avx512, found.avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                                __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl"));
}
#endif

// The other tests leave it as they found it; unknown names change nothing.
TEST(Level, TheBestOneRunsFromTheStart) {
    EXPECT_FALSE(vek::level::force("avx3"));
    EXPECT_FALSE(vek::level::force(""));
    EXPECT_EQ(vek::level::active(), levelNames().back());
    EXPECT_EQ(vek::level::at(-1), nullptr);
    EXPECT_EQ(vek::level::at(vek::level::levelCount), nullptr);
}

class ForcedLevel : public AtLevel {};

// All of its tables are in force, and no two levels share one.
TEST_P(ForcedLevel, BringsItsOwnTables) {
    const auto& now = vek::kernelsNow();
    for (int i = 0; i < vek::level::levelCount; ++i) {
        const auto* level = vek::level::at(i);
        if (level == nullptr) continue;
#define VEK_OWN(object, Table) EXPECT_EQ(now.object == level->object, level->name == GetParam()) << level->name;
        VEK_FAMILIES(VEK_OWN)
    }
}

TEST_P(ForcedLevel, ComputesInVectorsAsInScalars) {
#define VEK_FAULT(level) {#level, vek::level::simdFault},
    const std::map<std::string, const char* (*)()> faults = {VEK_BUILT_LEVELS(VEK_FAULT)};
    EXPECT_EQ(faults.at(GetParam())(), nullptr);
}

#if defined(__x86_64__) && !defined(_WIN32)

// In force is a copy of the level's tables whose entries lead nowhere: the k-th to address k. The first call puts it
// right.
struct Tables {
#define VEK_TABLE(object, Table) vek::kernels::Table object;
    VEK_FAMILIES(VEK_TABLE)
};
constexpr std::size_t entries = sizeof(Tables) / sizeof(greg_t);
greg_t own[entries], now[entries];

void putRight(int, siginfo_t*, void* context) {
    greg_t& next = static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP];
    if (next >= greg_t{entries}) std::abort();
    next = now[next] = own[next];
}

TEST_P(ForcedLevel, CasesReachEveryKernel) {
#define VEK_COPY(object, Table) *vek::kernelsNow().object,
    const Tables tables = {VEK_FAMILIES(VEK_COPY)};
    std::memcpy(own, &tables, sizeof tables);
    for (std::size_t k = 0; k < entries; ++k) now[k] = static_cast<greg_t>(k);
#define VEK_ADDRESS(object, Table) , &reinterpret_cast<Tables*>(now)->object
    vek::level::current = {GetParam().c_str() VEK_FAMILIES(VEK_ADDRESS)};
    struct sigaction usual, action = {};
    action.sa_sigaction = putRight;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, &usual);

    Reports reports;
    for (const Row& tested : rows()) {
        if (tested.group.gate == Gate::always) continue;
        for (const int size : {1, 4, tested.takesOrder() ? 10 : 200})
            for (int choice = 0; choice < tested.choices(); ++choice)
                Prepared(tested, tested.plain(size, choice)).call();
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
    sigaction(SIGSEGV, &usual, nullptr);
    ASSERT_TRUE(forceLevel(GetParam()));
    vekcFreeTwdTbls();   // the tables of tables
    vekzFreeTwdTbls();
    for (std::size_t k = 0; k < entries; ++k) EXPECT_EQ(now[k], own[k]) << "entry " << k << " of all families' tables";
}

#endif

VEK_AT_ALL_LEVELS(ForcedLevel);

}   // namespace

#endif
