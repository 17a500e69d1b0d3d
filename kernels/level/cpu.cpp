#include "cpu.h"

#if defined(__i386__) || defined(__x86_64__)
#include <cpuid.h>
#endif

namespace vek::level {

namespace {

constexpr bool all(std::uint64_t word, std::uint64_t bits) { return (word & bits) == bits; }

// Leaf 1
constexpr std::uint32_t edxSse2 = 1u << 26;
constexpr std::uint32_t ecxFma = 1u << 12;
constexpr std::uint32_t ecxOsxsave = 1u << 27;
constexpr std::uint32_t ecxAvx = 1u << 28;
// Leaf 7
constexpr std::uint32_t ebxAvx2 = 1u << 5;
constexpr std::uint32_t ebxAvx512 = (1u << 16) | (1u << 17) | (1u << 30) | (1u << 31);   // F, DQ, BW, VL
// XCR0: SSE and YMM state; opmask and both halves of the ZMM state
constexpr std::uint64_t ymmState = 0x6;
constexpr std::uint64_t zmmState = 0xe6;

}   // namespace

CpuFeatures detect(const CpuSource& source) {
    CpuFeatures found{};
    const std::uint32_t lastLeaf = source.cpuid(0, 0).eax;
    if (lastLeaf < 1) return found;
    const CpuidAnswer one = source.cpuid(1, 0);
    found.sse2 = all(one.edx, edxSse2);
    if (!found.sse2 || lastLeaf < 7 || !all(one.ecx, ecxOsxsave | ecxAvx | ecxFma)) return found;
    const std::uint64_t state = source.xcr0();
    const std::uint32_t seven = source.cpuid(7, 0).ebx;
    found.avx2 = all(state, ymmState) && all(seven, ebxAvx2);
    found.avx512 = found.avx2 && all(state, zmmState) && all(seven, ebxAvx512);
    return found;
}

#if defined(__i386__) || defined(__x86_64__)

CpuFeatures detect() {
    static constexpr CpuSource processor = {
        [](std::uint32_t leaf, std::uint32_t subleaf) {
            CpuidAnswer answer{};
            __cpuid_count(leaf, subleaf, answer.eax, answer.ebx, answer.ecx, answer.edx);
            return answer;
        },
        []() {
            std::uint32_t low = 0;
            std::uint32_t high = 0;
            __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
            return (std::uint64_t{high} << 32) | low;
        },
    };
    return detect(processor);
}

#else

CpuFeatures detect() { return {}; }

#endif

}   // namespace vek::level
