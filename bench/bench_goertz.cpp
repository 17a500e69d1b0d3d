#include "family.h"

namespace bench {

static const RegisterFamily goertz({
    .name = "goertz",
    .modules = {"vekgrtzl", "vekgrtzw"},
    .measured = [](const test::Row& row) { return row.function.operation == "bGoertz"; },
    .sizes = {8, 64, 1024, 16384},
    .quickSizes = {64, 1024},
    // Roundings add up along the recurrence.
    .tolerance = [](const Problem& problem) { return problem.isDouble() ? 1e-10 : 1e-2; },
    .cycles = true,
    .goal = [](int length) { return length < 64 ? 0.0 : 4.0; },
    .against = "single samples",
    .dllRows = {"vekcbGoertz", "vekzbGoertz"},
    .dllSizes = {64, 1024},
});

}   // namespace bench
