#include "family.h"

namespace bench {

namespace {

// Operations of the direct sum, whatever the method.
double operations(const Problem& problem) {
    const std::string& letters = problem.letters();
    const auto reals = [](char letter) { return letter == 'c' || letter == 'z' ? 2 : 1; };
    return 2 * elements(problem) * problem.number("hLen") * reals(letters.front()) * reals(letters.back());
}

}   // namespace

static const RegisterFamily conv({
    .name = "conv",
    .modules = {"vekconvs", "vekconvd", "vekconvw"},
    .sizes = {100, 4096, 65536, 1000000},
    .quickSizes = {100, 4096},
    .variants =
        [](const test::Row& row) {
            std::vector<Variant> lengths;
            for (const int hLen : {20, 64, 100, 1024, 4096}) {
                Variant variant{.label = "hLen=" + std::to_string(hLen), .numbers = {{"hLen", hLen}}};
                if (row.index("scaleMode") >= 0) variant.numbers.push_back({"scaleMode", 1});
                lengths.push_back(variant);
            }
            return lengths;
        },
    // Of int16 what is long goes through floats.
    .tolerance =
        [](const Problem& problem) { return problem.isDouble()         ? 1e-13
                                            : problem.letters() == "w" ? 1e-3
                                                                       : 1e-5; },
    .unit = "GFLOP/s",
    .work = operations,
    .peak = Peak::multiplyAdds,
    .peakWork = operations,
    .dllRows = {"veksConv", "vekcConv", "vekdConv", "vekwConv"},
    .dllSizes = {64, 1024},
});

}   // namespace bench
