#include "machine.h"

#include <cstdint>

namespace bench {

namespace {

template <class T, int bytes>
struct VectorOf {
    typedef T type __attribute__((vector_size(bytes)));
};

constexpr int inner = 64;   // steps of one turn, so that counting the turns costs nothing

// Twelve sums hide the latency of two units; values hold still near 2.
template <class T, int bytes>
[[gnu::always_inline]] inline void runMultiplyAdds(std::size_t turns) {
    using V = typename VectorOf<T, bytes>::type;
    V sums[12] = {};
    V factor = V{} + T(0.5);
    V addend = V{} + T(1);
    __asm__ volatile("" : "+v"(factor), "+v"(addend));
    for (std::size_t left = turns * inner; left > 0; --left) {
#pragma GCC unroll 12
        for (V& sum : sums) {
            sum = sum * factor + addend;
            __asm__ volatile("" : "+v"(sum));
        }
    }
}

alignas(64) std::int32_t cached[4096];   // 16 kB

template <int bytes>
[[gnu::always_inline]] inline void runLoads(std::size_t turns) {
    using V = typename VectorOf<std::int32_t, bytes>::type;
    V sums[8] = {};
    const V* const end = reinterpret_cast<const V*>(cached + 4096);
    for (; turns > 0; --turns) {
        for (const V* at = reinterpret_cast<const V*>(cached); at < end; at += 8) {
#pragma GCC unroll 8
            for (int i = 0; i < 8; ++i) sums[i] += at[i];
        }
#pragma GCC unroll 8
        for (V& sum : sums) __asm__ volatile("" : "+v"(sum));
    }
}

using Run = void (*)(std::size_t turns);
struct Machine {
    int bytes;   // of a vector
    Run floats, doubles, loads;
};
#define MACHINE(bytes, target)                                                         \
    {                                                                                  \
        bytes, [](std::size_t turns) target { runMultiplyAdds<float, bytes>(turns); }, \
            [](std::size_t turns) target { runMultiplyAdds<double, bytes>(turns); },   \
            [](std::size_t turns) target { runLoads<bytes>(turns); }                   \
    }

const Machine& machineOf(const std::string& level) {
    static const Machine narrow = MACHINE(16, );
    static const Machine avx2 = MACHINE(32, __attribute__((target("avx2,fma"))));
    static const Machine avx512 = MACHINE(64, __attribute__((target("avx512f"))));
    return level == "avx512" ? avx512 : level == "avx2" ? avx2 : narrow;
}

}   // namespace

// Each of the products waits three cycles for the one before, on every processor with these levels.
Measure clockCycles() {
    return {[](std::size_t turns) {
                std::uint64_t value = 3;
                for (; turns > 0; --turns) {
#pragma GCC unroll 64
                    for (int i = 0; i < inner; ++i) __asm__ volatile("imul %0, %0" : "+r"(value));
                }
            },
            3 * inner};
}

Measure multiplyAdds(const std::string& level, bool isDouble) {
    const Machine& machine = machineOf(level);
    return {isDouble ? machine.doubles : machine.floats, 2.0 * 12 * inner * machine.bytes / (isDouble ? 8 : 4)};
}

Measure cacheLoads(const std::string& level) { return {machineOf(level).loads, sizeof cached}; }

}   // namespace bench
