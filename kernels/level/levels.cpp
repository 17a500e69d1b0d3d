#include "levels.h"

#include <cstring>

#include "cpu.h"

namespace vek {

// <level>::tables lists the tables that kernels/*.cpp define as vek::<level>::<object>.
#define VEK_DECLARE(object, Table) extern const kernels::Table object;
#define VEK_ADDRESS(object, Table) , &object
#define VEK_LEVEL_TABLES(name)                                                  \
    namespace name {                                                            \
    VEK_FAMILIES(VEK_DECLARE)                                                   \
    static constexpr level::Kernels tables = {#name VEK_FAMILIES(VEK_ADDRESS)}; \
    }

VEK_LEVEL_TABLES(portable)
#if VEK_HAVE_SSE2
VEK_LEVEL_TABLES(sse2)
#endif
#if VEK_HAVE_AVX2
VEK_LEVEL_TABLES(avx2)
#endif
#if VEK_HAVE_AVX512
VEK_LEVEL_TABLES(avx512)
#endif

namespace level {

namespace {

constexpr Kernels levels[levelCount] = {
    portable::tables,
#if VEK_HAVE_SSE2
    sse2::tables,
#else
    {},
#endif
#if VEK_HAVE_AVX2
    avx2::tables,
#else
    {},
#endif
#if VEK_HAVE_AVX512
    avx512::tables,
#else
    {},
#endif
};

}   // namespace

constinit Kernels current = portable::tables;

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
