#include "scaled.h"

namespace test {

namespace {

const Argument* withRole(const Row& row, Role role) {
    for (const Argument& argument : row.arguments)
        if (argument.role == role) return &argument;
    return nullptr;
}

}   // namespace

Exact shifted(Exact value, long long factor) {
    auto whole = static_cast<long long>(value);
    // After 16 doublings the low 16 bits are zero, and what is not zero has left 16 bits.
    for (int doubled = 0; factor < 0 && doubled < 16; ++factor, ++doubled) whole *= 2;
    for (; factor > 0 && whole != 0 && whole != -1; --factor) whole = (whole - (whole % 2 != 0 && whole < 0)) / 2;
    return static_cast<Exact>(whole);
}

bool fitsShort(Exact value) { return value >= -32768 && value <= 32767; }

Exact wrappedToShort(Exact value) {
    const auto rest = static_cast<int>((static_cast<long long>(value) % 65536 + 65536) % 65536);
    return rest < 32768 ? rest : rest - 65536;
}

Exact saturatedToShort(Exact value) { return value < -32768 ? Exact{-32768} : value > 32767 ? Exact{32767} : value; }

void scaled(Sight& call, const std::vector<Number>& exact) {
    const std::string factorName = withRole(call.row, Role::factor)->name;
    const int mode = call.number(withRole(call.row, Role::mode)->name.c_str());
    const Exact given = call.array(factorName.c_str())[0].re;
    Exact factor = call.isNull(factorName.c_str()) ? Exact{0} : given;
    if (mode == 0 || mode == 1) factor = 0;
    if (mode == 4) {
        int least = 0;
        for (const Number& one : exact)
            while (!fitsShort(shifted(one.re, least)) || !fitsShort(shifted(one.im, least))) ++least;
        factor = least;
    }
    const auto part = [&](Exact value) {
        const Exact moved = shifted(value, static_cast<long long>(factor));
        return mode == 1 || mode == 3 ? saturatedToShort(moved) : wrappedToShort(moved);
    };
    std::vector<Expected>& elements = call.wanted[call.results.empty() ? "" : call.results[0]].elements;
    for (const Number& one : exact) elements.push_back(exactly({part(one.re), part(one.im)}));
    call.wanted[factorName].elements = {exactly({mode == 4 ? factor : given})};
}

}   // namespace test
