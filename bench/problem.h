// One case of a measurement: a row of the tests' table at one size, with its arrays and records.
#pragma once

#include <utility>

#include "tests/support/scene.h"

namespace bench {

struct Family;

// How a row is called beyond its size: variant `choice` of the row's values, and numbers that take their place.
struct Variant {
    std::string label = {};   // "tapsLen=64"
    int choice = 0;
    std::vector<std::pair<const char*, int>> numbers = {};
};

class Problem : public test::Scene {
public:
    Problem(const Family& family, const test::Row& row, int size, const Variant& variant);
    ~Problem() override;

    void* array(char letter, std::size_t count) override;

    const Family& family;
    const int size;   // length, or order
    std::size_t n() const { return row.takesOrder() ? std::size_t{1} << size : static_cast<std::size_t>(size); }
    const std::string& letters() const { return row.function.letters; }
    bool isComplex() const { return letters()[0] == 'c' || letters()[0] == 'z' || letters()[0] == 'v'; }
    bool isDouble() const { return letters()[0] == 'd' || letters()[0] == 'z'; }
    bool inPlace() const;

    // The array that is read first, and the one that is written last; in place they are one.
    template <class T>
    T* source() const {
        return static_cast<T*>(buffers[first].at);
    }
    template <class T>
    T* target() const {
        return static_cast<T*>(buffers[last].at);
    }

    // Arrays as before a call, and records ready for one. What is computed in place over and over, and what a peer may
    // destroy, is zero, so that nothing grows or decays into denormals; all else is random.
    void fill(bool zeros);
    // What a call wrote, with the value that it returned, as reals; and a sum of what it must not write.
    std::vector<double> result(const test::Cell& returned) const;
    std::uint64_t inputs() const;

private:
    struct Buffer {
        unsigned char* block;
        void* at;
        std::size_t bytes;
        char real;
        bool input;
    };
    std::vector<Buffer> buffers;
    std::size_t arguments = 0, used = 0;   // buffers of the arguments, and of them and the set-up
    std::size_t first = 0, last = 0;

    void* place(std::size_t bytes, char real, bool input);
    void randomise(const Buffer& buffer, std::uint64_t seed) const;
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
