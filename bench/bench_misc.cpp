#include "runner.h"

int main(int argc, char** argv) {
    const bench::Family family = {
        [](const test::Row& row) {
            return row.name().find("BitRev1") + 7 == row.name().size() || row.name().back() == '2';
        },
        {"vekmisc"},
        {4, 6, 8, 10, 12, 14, 16, 18, 20},
        {6, 10, 14},
        {bench::addIndexLoop},
    };
    return bench::run(argc, argv, family);
}
