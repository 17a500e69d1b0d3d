#include "problem.h"

#include <chrono>
#include <cstdlib>

#include "family.h"

namespace bench {

namespace {

// Buffers lie 1088 bytes apart from the start of a page: aligned to a cache line, and with no two at the same place
// in their pages, where loads would have to wait for stores to the other buffer.
constexpr std::size_t page = 4096;
constexpr std::size_t step = 1088;

template <class Use>
void withReal(char real, Use use) {
    switch (real) {
        case 's': return use(float{});
        case 'd': return use(double{});
        case 'w': return use(std::int16_t{});
        case 'i': return use(std::int32_t{});
        case 'b': return use(static_cast<unsigned char>(0));
        default: return;   // records
    }
}

template <class Sink>
void eachReal(char real, const void* at, std::size_t bytes, Sink sink) {
    withReal(real, [&](auto one) {
        for (std::size_t i = 0; i < bytes / sizeof one; ++i) {
            std::memcpy(&one, static_cast<const unsigned char*>(at) + i * sizeof one, sizeof one);
            sink(static_cast<double>(one));
        }
    });
}

}   // namespace

double now() {
    using namespace std::chrono;
    return static_cast<double>(duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count());
}

Problem::Problem(const Family& of, const test::Row& called, int atSize, const Variant& variant)
    : Scene(called, called.plain(atSize, variant.choice)), family(of), size(atSize) {
    for (const auto& [name, value] : variant.numbers) cells[static_cast<std::size_t>(row.index(name))].set(value);
    bool reads = false;
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        const test::Argument& argument = row.arguments[i];
        if (argument.role == test::Role::record) cells[i].set(place(argument.type.bytes, 'r', false));
        if (!argument.isBuffer()) continue;
        if (argument.isRead() && (!reads || argument.role == test::Role::inout)) first = buffers.size();
        if (argument.isWritten() && argument.role != test::Role::factor) last = buffers.size();
        reads = reads || argument.isRead();
        cells[i].set(
            place(row.elements(argument, cells) * argument.type.bytes, argument.type.real(), !argument.isWritten()));
    }
    arguments = used = buffers.size();
    setUp();
    fill(inPlace());
}

Problem::~Problem() {
    tearDown();
    for (const Buffer& buffer : buffers) std::free(buffer.block);
}

bool Problem::inPlace() const {
    for (const test::Argument& argument : row.arguments)
        if (argument.role == test::Role::inout) return true;
    return false;
}

void* Problem::place(std::size_t bytes, char real, bool input) {
    const std::size_t beyond = step * buffers.size();
    auto* block = static_cast<unsigned char*>(std::calloc(bytes + page + beyond, 1));
    if (block == nullptr) std::abort();
    unsigned char* at = block + (page - reinterpret_cast<std::uintptr_t>(block) % page) % page + beyond;
    buffers.push_back({block, at, bytes, real, input});
    return at;
}

// The set-up asks for the same arrays each time.
void* Problem::array(char letter, std::size_t count) {
    if (used == buffers.size()) {
        const test::ArgumentType type = test::typeOfLetter(letter);
        place(count * type.bytes, type.real(), false);
    }
    randomise(buffers[used], used);
    return buffers[used++].at;
}

void Problem::randomise(const Buffer& buffer, std::uint64_t seed) const {
    std::uint64_t state = 88172645463325252u + seed * 0x9e3779b97f4a7c15u;
    withReal(buffer.real, [&](auto one) {
        using Real = decltype(one);
        for (std::size_t i = 0; i < buffer.bytes / sizeof one; ++i) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            if constexpr (std::is_integral_v<Real>)
                one = static_cast<Real>(state >> 24);
            else
                one = static_cast<Real>(static_cast<double>(state >> 11) * 0x1p-52 - 1);   // uniform in [-1, 1)
            std::memcpy(static_cast<unsigned char*>(buffer.at) + i * sizeof one, &one, sizeof one);
        }
    });
}

void Problem::fill(bool zeros) {
    tearDown();
    used = arguments;
    for (std::size_t i = 0; i < arguments; ++i) {
        std::memset(buffers[i].at, 0, buffers[i].bytes);
        if (!zeros) randomise(buffers[i], i);
    }
    for (std::size_t i = 0; i < row.arguments.size(); ++i)
        if (row.arguments[i].role == test::Role::factor) *cells[i].get<int*>() = 1;
    if (!zeros) family.prepare(*this);
    setUp();
}

std::vector<double> Problem::result(const test::Cell& returned) const {
    std::vector<double> values;
    const auto put = [&values](double value) { values.push_back(value); };
    if (!row.group.returnsStatus) eachReal(row.function.result.real(), returned.bytes, row.function.result.bytes, put);
    for (std::size_t i = 0; i < arguments; ++i)
        if (!buffers[i].input) eachReal(buffers[i].real, buffers[i].at, buffers[i].bytes, put);
    return values;
}

std::uint64_t Problem::inputs() const {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < arguments; ++i)
        for (std::size_t k = 0; buffers[i].input && k < buffers[i].bytes; ++k)
            sum = sum * 31 + static_cast<unsigned char*>(buffers[i].at)[k];
    return sum;
}

}   // namespace bench
