// Times the operations that families name for it, without any other library, so that it runs against the shared library
// on both systems: "operation size nanoseconds" by line. Natively it takes level avx2, the best that the DLL has.
#include <algorithm>
#include <cstdio>

#include "family.h"

#ifdef VEK_BENCH_NATIVE
#include "kernels/level/levels.h"
#endif

namespace {

void measure(const bench::Family& family, const char* name, int size) {
    const test::Row& row = test::row(name);
    const bench::Problem problem(family, row, size, family.variants(row)[0]);
    const auto loop = [&problem](std::size_t times) { problem.row.function.repeat(problem.cells, times); };
    loop(1);
    const std::size_t times = bench::timesFor(loop, 5e5);
    double least = 1e300;
    for (int round = 0; round < 7; ++round) {
        const double start = bench::now();
        loop(times);
        least = std::min(least, (bench::now() - start) / static_cast<double>(times));
    }
    std::printf("%s %d %.2f\n", name, size, least);
}

}   // namespace

int main() {
#ifdef VEK_BENCH_NATIVE
    if (!vek::level::force("avx2")) return 1;
#endif
    vekRedirectError(vekNulDevReport);
    for (const bench::Family& family : bench::families())
        for (const char* name : family.dllRows)
            for (const int size : family.dllSizes) measure(family, name, size);
    return vekGetErrStatus() < 0;
}
