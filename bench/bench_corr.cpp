#include "family.h"

namespace bench {

static const RegisterFamily corr({
    .name = "corr",
    .modules = {"vekcorr", "vekcorrw"},
    .sizes = {64, 1024, 16384, 65536},
    .quickSizes = {1024, 65536},
    // 16 lags are summed directly, 1024 go over transforms.
    .variants =
        [](const test::Row& row) {
            std::vector<Variant> all;
            for (const int lags : {16, 1024}) {
                const std::string label = "lags=" + std::to_string(lags);
                if (row.index("nLags") >= 0)
                    all.push_back({.label = label, .numbers = {{"nLags", lags}}});
                else
                    all.push_back({.label = label, .choice = 0, .numbers = {{"loLag", 0}, {"hiLag", lags - 1}}});
            }
            return all;
        },
    .tolerance =
        [](const Problem& problem) {
            return problem.isDouble() ? 1e-12 : problem.letters()[0] == 's' || problem.letters()[0] == 'c' ? 1e-5 : 0;
        },
    .unit = "Gterm/s",
    .work =
        [](const Problem& problem) {
            const int lags = problem.row.index("nLags");
            const char* const last = lags >= 0 ? "nLags" : "hiLag";
            return elements(problem) * problem.cells[static_cast<std::size_t>(problem.row.index(last))].get<int>();
        },
    .goal = [](int size) { return size < 64 ? 0.0 : 1.0; },
    .dllRows = {"veksAutoCorr", "vekzAutoCorr", "vekwAutoCorr"},
    .dllSizes = {1024, 16384},
});

}   // namespace bench
