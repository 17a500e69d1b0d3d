// What the processor and the operating system together can run.
#pragma once

#include <cstdint>

namespace vek::level {

struct CpuidAnswer {
    std::uint32_t eax, ebx, ecx, edx;
};

// Where the answers come from: the processor, or a table in a test.
struct CpuSource {
    CpuidAnswer (*cpuid)(std::uint32_t leaf, std::uint32_t subleaf);
    std::uint64_t (*xcr0)();   // asked only when OSXSAVE is set
};

struct CpuFeatures {
    bool sse2, avx2, avx512;   // all that a level's compiler flags may use, with the register state enabled
};

CpuFeatures detect(const CpuSource& source);
CpuFeatures detect();

}   // namespace vek::level
