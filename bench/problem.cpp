#include "problem.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

// Buffers lie 1088 bytes apart from the start of a page: aligned to a cache line, and with no two at the same place
// in their pages, where loads would have to wait for stores to the other buffer.
constexpr std::size_t page = 4096;
constexpr std::size_t step = 1088;
constexpr std::size_t slack = 256;   // peers' spectra may be longer

// "vekcbMpy3" is Mpy on c. A trailing 1 stays where it tells a scalar operand from a vector; the number of vectors
// does not matter to what is computed.
std::string operationOf(const test::Row& row) {
    std::string text = row.name().substr(4);
    if (text.size() > 1 && text[0] == 'b' && text[1] >= 'A' && text[1] <= 'Z') text.erase(0, 1);
    const char last = text.back();
    const bool scalar = !row.arguments.empty() && row.arguments[0].role == test::Role::scalar;
    if (last == '2' || last == '3' || (last == '1' && !scalar)) text.pop_back();
    return text;
}

}   // namespace

double now() {
    using namespace std::chrono;
    return static_cast<double>(duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count());
}

Problem::Problem(const test::Row& of, int atSize)
    : row(of),
      size(atSize),
      type(row.name()[3]),
      operation(operationOf(row)),
      inPlace(false),
      out(nullptr),
      cells(row.plainCells(size)) {
    n = row.takesOrder() ? std::size_t{1} << size : static_cast<std::size_t>(size);
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        const test::Argument& argument = row.arguments[i];
        // Peers do not scale their inverses.
        if (argument.role == test::Role::flags && (row.flags & VEK_Inv) != 0) cells[i].set(row.flags | VEK_NoScale);
        if (argument.role == test::Role::scalar && scalar.isZero()) scalar = cells[i];
        if (!argument.isBuffer()) continue;
        const std::size_t bytes = row.elements(argument, size) * argument.type.bytes;
        auto* block = static_cast<unsigned char*>(std::malloc(bytes + page + step * (buffers.size() + 1) + slack));
        if (block == nullptr) std::abort();
        unsigned char* at =
            block + (page - reinterpret_cast<std::uintptr_t>(block) % page) % page + step * buffers.size();
        buffers.push_back({block, at, bytes, argument.role != test::Role::in, argument.type.real});
        cells[i].set<void*>(at);
        if (argument.role == test::Role::inOut) {
            inPlace = true;
            in.insert(in.begin(), at);
        }
        if (argument.role == test::Role::in) in.push_back(at);
        if (argument.role != test::Role::in) out = at;
    }
    fill(wantsZeros());
}

Problem::~Problem() {
    for (const Buffer& buffer : buffers) std::free(buffer.block);
}

bool Problem::wantsZeros() const { return inPlace || operation.find("Ccs") == 0; }

void Problem::fill(bool zeros) {
    std::uint64_t state = 88172645463325252u;
    const auto next = [&state] {   // uniform in [-1, 1)
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<double>(state >> 11) * 0x1p-52 - 1;
    };
    const bool positive = operation == "Sqrt" && !isComplex();
    for (const Buffer& buffer : buffers) {
        std::memset(buffer.at, 0, buffer.bytes + slack);
        if (zeros) continue;
        const auto put = [&](auto one) {
            for (std::size_t i = 0; i < buffer.bytes / sizeof one; ++i) {
                const double value = next();
                one = static_cast<decltype(one)>(positive ? value + 1.5 : value);
                std::memcpy(buffer.at + i * sizeof one, &one, sizeof one);
            }
        };
        if (buffer.real == 'f') put(float{});
        if (buffer.real == 'd') put(double{});
    }
    // One element that a threshold on magnitudes must not divide by.
    if (!zeros && operation.find("Thresh") != std::string::npos) std::memset(in[0], 0, row.arguments[0].type.bytes);
    // The library does not read what the spectrum of a real signal has as zeros; peers do.
    if (!zeros && operation.find("CcsFft") == 0) {
        const std::size_t bytes = isDouble() ? 8 : 4;
        auto* spectrum = static_cast<unsigned char*>(in[0]);
        std::memset(spectrum + bytes, 0, bytes);
        std::memset(spectrum + (n + 1) * bytes, 0, bytes);
    }
}

double Problem::work() const {
    const double count = static_cast<double>(n);
    if (operation.find("Fft") == std::string::npos || operation.find("Calc") == 0) return count;
    return (isComplex() ? 5 : 2.5) * count * size;
}

std::vector<double> Problem::result() const {
    std::vector<double> values;
    for (const Buffer& buffer : buffers) {
        if (!buffer.written) continue;
        const auto get = [&](auto one) {
            for (std::size_t i = 0; i < buffer.bytes / sizeof one; ++i) {
                std::memcpy(&one, buffer.at + i * sizeof one, sizeof one);
                values.push_back(static_cast<double>(one));
            }
        };
        if (buffer.real == 'f') get(float{});
        if (buffer.real == 'd') get(double{});
        if (buffer.real == 'w') get(std::int16_t{});
    }
    return values;
}

}   // namespace bench
