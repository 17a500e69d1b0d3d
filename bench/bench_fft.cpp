#include "runner.h"

int main(int argc, char** argv) {
    const bench::Family family = {
        // One packed layout and separate parts cost about what CCS and pairs do.
        [](const test::Row& row) {
            const std::string what = row.name().substr(4);
            return what == "Fft" || what == "FftNip" || what == "RealFft" || what == "RealFftNip" || what == "CcsFft" ||
                   what == "CcsFftNip";
        },
        {"vekffts", "vekfftd"},
        {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20},
        {4, 6, 8, 10, 12, 14, 16},
        {bench::addPlainLoops, bench::addFftw, bench::addKissFft},
    };
    return bench::run(argc, argv, family);
}
