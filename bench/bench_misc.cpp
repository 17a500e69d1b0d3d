#include "runner.h"

int main(int argc, char** argv) {
    const bench::Family family = {
        [](const test::Row& row) {
            const std::string member = row.name().substr(4);
            return member == "bBitRev1" || member == "bBitRev2" || member == "CalcFftTwdTbl";
        },
        {"vekmisc", "vektwd"},
        {4, 6, 8, 10, 12, 14, 16, 18, 20},
        {6, 10, 14},
        {bench::addTableLoops},
    };
    return bench::run(argc, argv, family);
}
