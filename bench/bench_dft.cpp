#include "family.h"

namespace bench {

namespace {

double products(const Problem& problem) { return elements(problem) * elements(problem); }
double operations(const Problem& problem) { return 8 * products(problem); }   // of the plain sum

}   // namespace

static const RegisterFamily dft({
    .name = "dft",
    .modules = {"vekdft"},
    .sizes = {3, 8, 16, 32, 55, 56, 64, 100, 128, 129, 256, 509, 1021, 4096},
    .quickSizes = {16, 100, 1021},
    // Integers race ones that round ties up.
    .tolerance = [](const Problem& problem) { return problem.letters() == "v" ? 1e-3 : Family{}.tolerance(problem); },
    .unit = "plain GFLOP/s",
    .work = operations,
    .cycles = true,
    .goal = [](int length) { return length < 8 ? 0.0 : 1.0; },
    .dllRows = {"vekcDft", "vekzDft", "vekvDft"},
    .dllSizes = {16, 128, 509},
});

}   // namespace bench
