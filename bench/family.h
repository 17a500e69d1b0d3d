// What is measured. A family joins by a file of its own, bench/bench_<family>.cpp:
//
//     static const RegisterFamily arith({.name = "arith", .modules = {"vekarith"}, .sizes = {8, 1024}});
//
// Rows come from the tests' table, peers by the names of the exports that they race (peers.h).
#pragma once

#include "problem.h"

namespace bench {

// What a time is compared with, beside peers: a loop of fused multiplications and additions in registers, or one that
// adds up 16 kB of the first-level cache; at the level's width, for the row's precision.
enum class Peak {
    none,
    multiplyAdds,   // work: operations, two per multiplication and addition
    loads           // work: bytes
};

inline double elements(const Problem& problem) { return static_cast<double>(problem.n()); }

struct Family {
    const char* name;
    std::vector<const char*> modules;                                                 // whose rows they are
    bool (*measured)(const test::Row& row) = [](const test::Row&) { return true; };   // --all adds the others
    std::vector<int> sizes, quickSizes;                                               // lengths or orders; with --quick
    std::vector<Variant> (*variants)(const test::Row& row) = [](const test::Row&) { return std::vector<Variant>(1); };

    // Corrects random data, where some would make the race unfair.
    void (*prepare)(const Problem& problem) = [](const Problem&) {};
    // How far (relative L2 distance) a peer's result may be from the library's.
    double (*tolerance)(const Problem& problem) = [](const Problem& problem) {
        return problem.isDouble() ? 1e-13 : problem.letters()[0] == 's' || problem.letters()[0] == 'c' ? 1e-5 : 0;
    };

    const char* unit = "Gelem/s";   // of work per nanosecond
    double (*work)(const Problem& problem) = elements;
    bool cycles = false;   // a column of cycles per element
    Peak peak = Peak::none;
    double (*peakWork)(const Problem& problem) = elements;

    double (*goal)(int size) = [](int) { return 0.0; };   // the ratio to reach, 0 for none,
    const char* against = "";                             // and whose: the best peer's, or that peer's
    bool shortCalls = false;                              // calls on 8 elements are compared with bare loops

    std::vector<const char*> dllRows = {};   // for the race of the DLL
    std::vector<int> dllSizes = {};
};

inline std::vector<Family>& families() {
    static std::vector<Family> all;
    return all;
}
struct RegisterFamily {
    explicit RegisterFamily(const Family& family) { families().push_back(family); }
};

// ---- What families of vectors have in common ------------------------------------------------------------------------

// Members in place run the loops of those with separate output, unless they take a scalar operand.
inline bool isApartOrScalar(const test::Row& row) {
    for (const test::Argument& argument : row.arguments)
        if (argument.role == test::Role::inout) return row.arguments[0].role == test::Role::scalar;
    return true;
}
inline double goalOfVectors(int size) { return size < 64 ? 0 : size == 1024 ? 1 : 0.95; }

}   // namespace bench
