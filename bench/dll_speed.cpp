// Times a few operations of each family, without any other library, so that it runs against the shared library on both
// systems: "operation size nanoseconds" by line. Natively it takes level avx2, the best that the DLL has.
#include <algorithm>
#include <cstdio>

#include "problem.h"

#ifdef VEK_BENCH_NATIVE
#include "kernels/level/levels.h"
#endif

namespace {

const char* const vectors[] = {"veksbAdd3",  "vekcbMpy3",  "vekdbMpy3",    "vekcbConjFlip2",
                               "veksbSqrt2", "vekcbSqrt2", "veksbThresh2", "vekzbInvThresh2"};
const char* const transforms[] = {"vekcFft",        "vekcFftNip",    "vekzFft",        "vekzFftNip",
                                  "veksRealFftNip", "veksCcsFftNip", "vekdRealFftNip", "vekdCcsFftNip"};

void measure(const char* name, int size) {
    bench::Problem problem(test::row(name), size);
    const auto loop = [&problem](std::size_t times) { problem.call(times); };
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
    for (const char* name : vectors)
        for (const int n : {8, 64, 1024, 16384}) measure(name, n);
    for (const char* name : transforms)
        for (const int order : {4, 6, 8, 10, 12, 14, 16}) measure(name, order);
    return vekGetErrStatus() < 0;
}
