#include "levels.h"

#include <cstring>

#include "cpu.h"

namespace vek {

// One table per family and level, each defined in kernels/<family>.cpp.
#define VEK_DECLARE_LEVEL(level)            \
    namespace level {                       \
    extern const kernels::ArithTable arith; \
    extern const kernels::VecTable vec;     \
    extern const kernels::MiscTable misc;   \
    extern const kernels::FftTable fft;     \
    }
#define VEK_LEVEL_TABLES(level) \
    { #level, &level::arith, &level::vec, &level::misc, &level::fft }

VEK_DECLARE_LEVEL(portable)
#if VEK_HAVE_SSE2
VEK_DECLARE_LEVEL(sse2)
#endif
#if VEK_HAVE_AVX2
VEK_DECLARE_LEVEL(avx2)
#endif
#if VEK_HAVE_AVX512
VEK_DECLARE_LEVEL(avx512)
#endif

namespace level {

namespace {

constexpr Kernels levels[levelCount] = {
    VEK_LEVEL_TABLES(portable),
#if VEK_HAVE_SSE2
    VEK_LEVEL_TABLES(sse2),
#else
    {},
#endif
#if VEK_HAVE_AVX2
    VEK_LEVEL_TABLES(avx2),
#else
    {},
#endif
#if VEK_HAVE_AVX512
    VEK_LEVEL_TABLES(avx512),
#else
    {},
#endif
};

}   // namespace

constinit Kernels current = VEK_LEVEL_TABLES(portable);

const Kernels* at(int index) {
    if (index < 0 || index >= levelCount || levels[index].name == nullptr) return nullptr;
    const CpuFeatures features = detect();
    const bool runs[levelCount] = {true, features.sse2, features.avx2, features.avx512};
    return runs[index] ? &levels[index] : nullptr;
}

const char* active() { return current.name; }

bool force(const char* name) {
    for (int index = 0; index < levelCount; ++index) {
        const Kernels* candidate = at(index);
        if (candidate == nullptr || std::strcmp(candidate->name, name) != 0) continue;
        current = *candidate;
        return true;
    }
    return false;
}

namespace {

// Before the other constructors of the program that may call the library.
[[gnu::constructor(101)]] void selectBest() {
    for (int index = levelCount - 1; index >= 0; --index) {
        const Kernels* candidate = at(index);
        if (candidate == nullptr) continue;
        current = *candidate;
        return;
    }
}

}   // namespace

}   // namespace level

}   // namespace vek
