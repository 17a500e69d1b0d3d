// What the programs have in common: one Google Benchmark per operation and size, whose iterations are rounds. In each
// round the library, at every level, and all peers are timed one after the other on the same buffers, so that a
// ratio never compares times from different minutes. The least over the rounds is the benchmark's counter;
// runner.py makes the tables.
#pragma once

#include <vector>

#include "peers.h"

namespace bench {

struct Family {
    bool (*wanted)(const test::Row& row);   // rows that are always measured; --all adds the rest
    std::vector<const char*> modules;       // whose rows they are
    std::vector<int> sizes;                 // lengths or orders
    std::vector<int> quickSizes;            // with --quick
    std::vector<void (*)(const Problem& problem, Peers& peers)> peers;
};

int run(int argc, char** argv, const Family& family);

// The family of a module of element-wise operations.
int runElementwise(int argc, char** argv, const char* module);

}   // namespace bench
