#include "family.h"

namespace bench {

namespace {

double operations(const Problem& problem) {   // the usual count
    return (problem.isComplex() ? 5 : 2.5) * elements(problem) * problem.size;
}
bool isInverse(const Problem& problem) { return problem.row.function.operation.find("Ccs") == 0; }

template <class T>
void clearEnds(const Problem& problem) {
    problem.source<T>()[1] = problem.source<T>()[problem.n() + 1] = 0;
}

}   // namespace

static const RegisterFamily fft({
    .name = "fft",
    .modules = {"vekffts", "vekfftd"},
    // One packed layout and separate parts cost about what CCS and pairs do.
    .measured =
        [](const test::Row& row) {
            for (const char* name : {"Fft", "FftNip", "RealFft", "RealFftNip", "CcsFft", "CcsFftNip"})
                if (row.function.operation == name) return true;
            return false;
        },
    .sizes = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20},
    .quickSizes = {4, 6, 8, 10, 12, 14, 16},
    // Without a scale, as the peers do it.
    .variants = [](const test::Row&) { return std::vector<Variant>{{.choice = 1}}; },
    // The library does not read what the spectrum of a real signal has as zeros; peers do.
    .prepare =
        [](const Problem& problem) {
            const std::string& operation = problem.row.function.operation;
            if (operation != "CcsFft" && operation != "CcsFftNip") return;
            problem.isDouble() ? clearEnds<double>(problem) : clearEnds<float>(problem);
        },
    // In place, spectra are longer than signals: what lies beyond is nobody's.
    .tolerance =
        [](const Problem& problem) {
            return problem.inPlace() && isInverse(problem) ? 1e300 : Family{}.tolerance(problem);
        },
    .unit = "GFLOP/s",
    .work = operations,
    .cycles = true,
    .peak = Peak::multiplyAdds,
    .peakWork = operations,
    .goal = [](int order) { return order < 4 ? 0 : 0.8; },
    .against = "FFTW measure",
    .dllRows = {"vekcFft", "vekcFftNip", "vekzFft", "vekzFftNip", "veksRealFftNip", "veksCcsFftNip", "vekdRealFftNip",
                "vekdCcsFftNip"},
    .dllSizes = {4, 6, 8, 10, 12, 14, 16},
});

}   // namespace bench
