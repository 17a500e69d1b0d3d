#include "family.h"

namespace bench {

static const RegisterFamily dotp({
    .name = "dotp",
    .modules = {"vekdotp", "vekdotpw"},
    .sizes = {8, 64, 256, 1024, 2048, 16384, 65536},
    .quickSizes = {8, 1024, 16384},
    .variants =
        [](const test::Row& row) {
            if (row.index("scaleMode") < 0) return std::vector<Variant>(1);
            return std::vector<Variant>{{.label = "mode=1", .numbers = {{"scaleMode", 1}}}};
        },
    .cycles = true,
    .peak = Peak::loads,
    .peakWork =
        [](const Problem& problem) {
            double bytes = 0;
            for (const test::Argument& argument : problem.row.arguments)
                if (argument.role == test::Role::in)
                    bytes += static_cast<double>(argument.type.bytes) * elements(problem);
            return bytes;
        },
    .goal = goalOfVectors,
    .dllRows = {"veksDotProd", "vekcDotProd", "vekzdDotProd", "vekvDotProd"},
    .dllSizes = {8, 64, 1024, 16384},
});

}   // namespace bench
