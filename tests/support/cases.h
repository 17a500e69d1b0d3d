// One row per export: how to call it, what its arguments are, and its checks in the order of the contract. The generic
// tests run over all rows; a family joins them by adding its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "vekm6.h"

namespace test {

// One argument's or result's value.
struct Cell {
    alignas(8) unsigned char bytes[16] = {};

    template <class T>
    T get() const {
        T value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
    template <class T>
    void set(T value) {
        std::memcpy(bytes, &value, sizeof value);
    }
    bool isZero() const {
        for (const unsigned char byte : bytes)
            if (byte != 0) return false;
        return true;
    }
};
using Cells = std::vector<Cell>;

// ---- How to call
// -----------------------------------------------------------------------------------------------------

struct ArgumentType {
    bool pointer = false;
    bool constant = false;   // what it points to
    std::size_t bytes = 0;   // of an element, or of the value itself
    char real = 0;           // f float, d double, w int16, i int32; 0: none of them
};

template <class T>
constexpr ArgumentType typeOf() {
    if constexpr (std::is_pointer_v<T>) {
        using Element = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_void_v<Element> || std::is_function_v<Element>) {
            return {true, true, 0, 0};
        } else {
            ArgumentType type = typeOf<Element>();
            type.pointer = true;
            type.constant = std::is_const_v<std::remove_pointer_t<T>>;
            return type;
        }
    } else if constexpr (std::is_same_v<T, float> || std::is_same_v<T, VekCplx>) {
        return {false, false, sizeof(T), 'f'};
    } else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, VekDCplx>) {
        return {false, false, sizeof(T), 'd'};
    } else if constexpr (std::is_same_v<T, std::int16_t> || std::is_same_v<T, VekWCplx>) {
        return {false, false, sizeof(T), 'w'};
    } else {
        return {false, false, sizeof(T), sizeof(T) == 4 ? 'i' : '\0'};
    }
}

struct Function {
    const char* name;
    Cell (*invoke)(const Cells& cells);
    void (*repeat)(const Cells& cells, std::size_t times);   // for measurements: nothing between the calls
    std::vector<ArgumentType> arguments;
    bool returns;
    std::size_t resultBytes;
    void* address;
};

template <auto F>
struct Call;
template <class R, class... A, R(VEKAPI* F)(A...)>
struct Call<F> {
    template <std::size_t... I>
    static Cell spread(const Cells& cells, std::index_sequence<I...>) {
        Cell result;
        if constexpr (std::is_void_v<R>)
            F(cells[I].template get<A>()...);
        else
            result.set(F(cells[I].template get<A>()...));
        return result;
    }
    static Cell invoke([[maybe_unused]] const Cells& cells) { return spread(cells, std::index_sequence_for<A...>{}); }
    template <std::size_t... I>
    static void spreadRepeat(const Cells& cells, std::size_t times, std::index_sequence<I...>) {
        [[maybe_unused]] const std::tuple<A...> values(cells[I].template get<A>()...);
        for (; times > 0; --times) F(std::get<I>(values)...);
    }
    static void repeat([[maybe_unused]] const Cells& cells, std::size_t times) {
        spreadRepeat(cells, times, std::index_sequence_for<A...>{});
    }
    static Function describe(const char* name) {
        std::size_t bytes = 0;
        if constexpr (!std::is_void_v<R>) bytes = sizeof(R);
        return {name, invoke, repeat, {typeOf<A>()...}, !std::is_void_v<R>, bytes, reinterpret_cast<void*>(F)};
    }
};

// ---- What the arguments are
// ------------------------------------------------------------------------------------------

enum class Role {
    in,
    out,
    inOut,
    length,
    order,
    flags,
    scalar,
    other
};
enum class Count {
    size,
    sizePlusTwo,
    extended
};   // elements: N, N + 2, max(N, 2N - 2)

struct Argument {
    std::string name;
    Role role;
    ArgumentType type;
    Count count = Count::size;

    bool isBuffer() const { return role == Role::in || role == Role::out || role == Role::inOut; }
};

enum class Condition {
    null,
    notPositive,
    negative,
    above31,
    bothBits,
    neitherBit,
    negativeReal,
    zeroComplex
};

struct Check {
    std::string message;
    Condition condition;
    int argument;
    int first = 0;   // flags
    int second = 0;

    bool holds(const Argument& of, const Cell& cell) const;
    // Makes it hold; `variant` chooses among the ways, of which there are variants().
    void provoke(const Argument& of, Cell& cell, int variant = 0) const;
    int variants() const;
};

enum class Gate {
    computes,
    always
};   // what a negative status of the thread does: computes stands still

struct Row {
    Function function;
    std::string module;
    std::vector<Argument> arguments;
    std::vector<Check> checks;   // in the contract's order
    Gate gate = Gate::computes;
    bool returnsStatus = false;
    int flags = 0;                // of the valid call
    std::string noMemory;         // the message when its tables cannot be built; empty: it builds none
    bool retriesMemory = false;   // one failed request is made good
    // Two-signal members: the member that they call twice, and the argument of each call's first, second, ... one.
    std::string inner;
    std::vector<int> innerArguments[2];

    std::string name() const { return function.name; }
    int sizeArgument() const;   // the length or order; -1: none
    bool takesOrder() const;
    bool hasBuffers() const;
    // Elements of a buffer when the length argument, or the order, is `size`.
    std::size_t elements(const Argument& buffer, int size) const;
    // Everything but the buffers: a valid call of that size.
    Cells plainCells(int size) const;

    // What a call reports, as reportLine() lines, and the status that it leaves.
    std::string expectedReports(const Cells& cells, VekStatus& status) const;
    // Whether a call that is rejected has computed something before: the first half of a two-signal member.
    bool computesBeforeFailing(const Cells& cells) const;
    // What it returns after having reported, or at a negative status.
    Cell expectedFailure(VekStatus status) const;
};

const std::vector<Row>& rows();
const Row& row(const std::string& name);

// Used as TEST_P parameters.
std::vector<std::string> rowNames();
std::vector<std::string> rowNames(bool (*wanted)(const Row& row));

}   // namespace test
