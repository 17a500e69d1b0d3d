// An exported function without its type: called with values from cells.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
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
    bool operator==(const Cell& other) const { return std::memcmp(bytes, other.bytes, sizeof bytes) == 0; }
};
using Cells = std::vector<Cell>;

// Elements by their letters; k pairs of int32, b bytes, r records, x what nobody looks into.
struct ArgumentType {
    char letter = 'x';
    bool pointer = false;
    bool constant = false;          // what it points to
    std::size_t bytes = 0;          // of an element, or of the value itself
    const void* record = nullptr;   // the same for pointers to the same kind of record

    bool isComplex() const { return letter == 'c' || letter == 'z' || letter == 'v' || letter == 'k'; }
    // The reals that it is made of.
    char real() const {
        switch (letter) {
            case 'c': return 's';
            case 'z': return 'd';
            case 'v': return 'w';
            case 'k': return 'i';
            default: return letter;
        }
    }
    std::size_t realBytes() const { return isComplex() ? bytes / 2 : bytes; }
};

inline ArgumentType typeOfLetter(char letter) {
    ArgumentType type;
    type.letter = letter;
    const char real = type.real();
    type.bytes = (real == 'd' ? 8u : real == 'w' ? 2u : real == 'b' ? 1u : 4u) * (type.isComplex() ? 2 : 1);
    return type;
}

template <class T>
constexpr char letterOf() {
    using std::is_same_v;
    if constexpr (is_same_v<T, float>) return 's';
    if constexpr (is_same_v<T, double>) return 'd';
    if constexpr (is_same_v<T, VekCplx>) return 'c';
    if constexpr (is_same_v<T, VekDCplx>) return 'z';
    if constexpr (is_same_v<T, std::int16_t>) return 'w';
    if constexpr (is_same_v<T, VekWCplx>) return 'v';
    if constexpr (is_same_v<T, std::int32_t> || is_same_v<T, std::uint32_t>) return 'i';
    if constexpr (is_same_v<T, VekICplx>) return 'k';
    if constexpr (is_same_v<T, unsigned char>) return 'b';
    return std::is_class_v<T> ? 'r' : 'x';
}
template <class T>
inline constexpr char recordTag = 0;   // one in the whole program
template <class T>
constexpr ArgumentType typeOf() {
    using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
    if constexpr (!std::is_pointer_v<T>)
        return {letterOf<T>(), false, false, sizeof(T)};
    else if constexpr (std::is_void_v<Target> || std::is_function_v<Target>)
        return {'x', true, true, 0};
    else
        return {letterOf<Target>(), true, std::is_const_v<std::remove_pointer_t<T>>, sizeof(Target),
                &recordTag<Target>};
}

// How a value travels when the caller leaves garbage in the part of its register or stack slot that it does not fill.
template <class T>
using Roomy = std::conditional_t<std::is_integral_v<T> || std::is_same_v<T, VekWCplx>, std::uintptr_t,
                                 std::conditional_t<std::is_same_v<T, float> && sizeof(void*) == 8, double, T>>;
template <class T>
Roomy<T> roomy(const Cell& cell) {
    Roomy<T> value;
    std::memset(&value, 0xd5, sizeof value);
    std::memcpy(&value, cell.bytes, sizeof(T) < sizeof value ? sizeof(T) : sizeof value);
    return value;
}

using Address = void (*)();

// Instantiated once for each signature, not for each function.
template <class R, class... A>
struct Signature {
    using Indices = std::index_sequence_for<A...>;
    template <class Function, class... Values>
    static Cell result(Function function, Values... values) {
        Cell cell;
        if constexpr (std::is_void_v<R>)
            function(values...);
        else
            cell.set(function(values...));
        return cell;
    }
    template <std::size_t... I>
    static Cell call(Address function, [[maybe_unused]] const Cells& cells, std::index_sequence<I...>) {
        return result(reinterpret_cast<R(VEKAPI*)(A...)>(function), cells[I].template get<A>()...);
    }
    static Cell call(Address function, const Cells& cells) { return call(function, cells, Indices{}); }
    template <std::size_t... I>
    static Cell callRoomy(Address function, [[maybe_unused]] const Cells& cells, std::index_sequence<I...>) {
        return result(reinterpret_cast<R(VEKAPI*)(Roomy<A>...)>(function), roomy<A>(cells[I])...);
    }
    static Cell callRoomy(Address function, const Cells& cells) { return callRoomy(function, cells, Indices{}); }
    template <std::size_t... I>
    static void repeat(Address function, [[maybe_unused]] const Cells& cells, std::size_t times,
                       std::index_sequence<I...>) {
        const auto loop = [=](A... values) {
            const auto typed = reinterpret_cast<R(VEKAPI*)(A...)>(function);
            for (std::size_t left = times; left > 0; --left) typed(values...);
        };
        loop(cells[I].template get<A>()...);
    }
    static void repeat(Address function, const Cells& cells, std::size_t times) {
        repeat(function, cells, times, Indices{});
    }
    static std::vector<ArgumentType> arguments() { return {typeOf<A>()...}; }
};

struct Function {
    std::string name;        // veksbAdd3
    std::string letters;     // s: of the types that it works on
    std::string operation;   // bAdd3
    Address address;
    std::vector<ArgumentType> arguments;
    ArgumentType result;   // of no bytes: none

    Cell call(const Cells& cells) const { return caller(address, cells); }
    Cell callRoomy(const Cells& cells) const { return roomyCaller(address, cells); }
    // For measurements: nothing between the calls.
    void repeat(const Cells& cells, std::size_t times) const { repeater(address, cells, times); }

    Cell (*caller)(Address, const Cells&);
    Cell (*roomyCaller)(Address, const Cells&);
    void (*repeater)(Address, const Cells&, std::size_t);
};

template <class R, class... A>
Function functionOf(const char* letters, const char* operation, R(VEKAPI* function)(A...)) {
    using S = Signature<R, A...>;
    ArgumentType result = {'x', false, false, 0};
    if constexpr (!std::is_void_v<R>) result = typeOf<R>();
    if (result.pointer) result.bytes = sizeof(void*);
    return {std::string("vek") + letters + operation,
            letters,
            operation,
            reinterpret_cast<Address>(function),
            S::arguments(),
            result,
            S::call,
            S::callRoomy,
            S::repeat};
}

}   // namespace test
