#include "family.h"

namespace bench {

// Operations with a scale mode in each of them, by one place to the right where the factor is given.
static const RegisterFamily aritw({
    .name = "aritw",
    .modules = {"vekaritw"},
    .measured = [](const test::Row& row) { return row.hasBuffers() && isApartOrScalar(row); },
    .sizes = {8, 64, 256, 1024, 4096, 16384, 65536},
    .quickSizes = {8, 1024, 16384},
    .variants =
        [](const test::Row& row) {
            if (row.index("scaleMode") < 0) return std::vector<Variant>(1);
            std::vector<Variant> modes;
            for (const int mode : {0, 1, 2, 3, 4})
                modes.push_back({.label = "mode=" + std::to_string(mode), .numbers = {{"scaleMode", mode}}});
            return modes;
        },
    .cycles = true,
    .goal = goalOfVectors,
    .dllRows = {"vekwbAdd3", "vekwbMpy3", "vekvbMpy3", "vekvbConj2"},
    .dllSizes = {8, 64, 1024, 16384},
});

}   // namespace bench
