// One case of a measurement: an operation at one size, with its buffers. The operations are the rows of the tests'
// case table, so that a new row shows up here by itself.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/cases.h"

namespace bench {

class Problem {
public:
    Problem(const test::Row& row, int size);
    ~Problem();
    Problem(const Problem&) = delete;
    Problem& operator=(const Problem&) = delete;

    const test::Row& row;
    int size;                // length, or order
    char type;               // the letter in the name: s d c z w v
    std::string operation;   // what follows the type: "Add", "Add1" (with a scalar), "Sqrt", "FftNip", "RealFft"
    bool inPlace;
    std::size_t n;   // elements
    // In the order of computation: what is read (in place: the vector itself first), and what is written last.
    std::vector<void*> in;
    void* out;
    test::Cell scalar;

    bool isDouble() const { return type == 'd' || type == 'z'; }
    bool isComplex() const { return type == 'c' || type == 'z'; }
    double work() const;   // floating-point operations of a transform by the usual count, else elements

    // Buffers as the measurement needs them. What is computed in place over and over, and what a peer may destroy,
    // is zero, so that nothing grows or decays into denormals; all else is random.
    void fill(bool zeros);
    bool wantsZeros() const;

    void call(std::size_t times) const { row.function.repeat(cells, times); }

    std::vector<double> result() const;   // what is in the output, as reals

private:
    struct Buffer {
        unsigned char* block;
        unsigned char* at;
        std::size_t bytes;
        bool written;
        char real;
    };
    std::vector<Buffer> buffers;
    test::Cells cells;
};

// Nanoseconds on a monotonic clock.
double now();

// How often `loop(times)` has to go round for a measurement of about `nanoseconds`.
template <class Loop>
std::size_t timesFor(const Loop& loop, double nanoseconds) {
    for (std::size_t times = 1;; times *= 2) {
        const double start = now();
        loop(times);
        const double taken = now() - start;
        if (taken >= nanoseconds / 4 || times >= (std::size_t{1} << 30))
            return 1 + static_cast<std::size_t>(static_cast<double>(times) * nanoseconds / (taken + 1));
    }
}

}   // namespace bench
