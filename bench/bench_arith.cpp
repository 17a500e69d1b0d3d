#include "runner.h"

int main(int argc, char** argv) {
    const bench::Family family = {
        // The members in place run the loops of those with separate output, unless they take a scalar operand.
        [](const test::Row& row) {
            for (const test::Argument& argument : row.arguments)
                if (argument.role == test::Role::inOut && row.arguments[0].role != test::Role::scalar) return false;
            return true;
        },
        {"vekarith"},
        {8, 64, 256, 1024, 4096, 16384, 65536},
        {8, 1024, 16384},
        {bench::addPlainLoops, bench::addVolk, bench::addEigen256, bench::addEigen512},
    };
    return bench::run(argc, argv, family);
}
