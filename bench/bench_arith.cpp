#include "family.h"

namespace bench {

static const RegisterFamily arith({
    .name = "arith",
    .modules = {"vekarith"},
    .measured = isApartOrScalar,
    .sizes = {8, 64, 256, 1024, 4096, 16384, 65536},
    .quickSizes = {8, 1024, 16384},
    .cycles = true,
    .goal = goalOfVectors,
    .shortCalls = true,
    .dllRows = {"veksbAdd3", "vekcbMpy3", "vekdbMpy3", "vekcbConjFlip2"},
    .dllSizes = {8, 64, 1024, 16384},
});

}   // namespace bench
