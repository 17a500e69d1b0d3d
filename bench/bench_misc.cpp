// Permutations and the tables of transforms.
#include "family.h"

namespace bench {

static const RegisterFamily misc({
    .name = "misc",
    .modules = {"vekmisc", "vektwd"},
    .measured =
        [](const test::Row& row) {
            const std::string& operation = row.function.operation;
            return operation == "bBitRev1" || operation == "bBitRev2" || operation == "CalcFftTwdTbl";
        },
    .sizes = {4, 6, 8, 10, 12, 14, 16, 18, 20},
    .quickSizes = {6, 10, 14},
});

}   // namespace bench
