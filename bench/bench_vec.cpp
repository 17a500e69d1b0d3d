#include "family.h"

namespace bench {

static const RegisterFamily vec({
    .name = "vec",
    .modules = {"vekvec"},
    .measured = isApartOrScalar,
    .sizes = {8, 64, 256, 1024, 4096, 16384, 65536},
    .quickSizes = {8, 1024, 16384},
    .prepare =
        [](const Problem& problem) {
            const std::string& operation = problem.row.function.operation;
            // One element that a threshold on magnitudes must not divide by.
            if (operation.find("Thresh") != std::string::npos)
                std::memset(problem.source<char>(), 0, problem.row.arguments[0].type.bytes);
            if (operation.find("bSqrt") == 0 && problem.letters() == "s")
                for (std::size_t i = 0; i < problem.n(); ++i) problem.source<float>()[i] += 1.5f;
            if (operation.find("bSqrt") == 0 && problem.letters() == "d")
                for (std::size_t i = 0; i < problem.n(); ++i) problem.source<double>()[i] += 1.5;
        },
    // Real square roots agree to the last bit.
    .tolerance =
        [](const Problem& problem) {
            const bool root = problem.row.function.operation.find("bSqrt") == 0 && !problem.isComplex();
            return root ? 0 : Family{}.tolerance(problem);
        },
    .cycles = true,
    .goal = goalOfVectors,
    .shortCalls = true,
    .dllRows = {"veksbSqrt2", "vekcbSqrt2", "veksbThresh2", "vekzbInvThresh2"},
    .dllSizes = {8, 64, 1024, 16384},
});

}   // namespace bench
