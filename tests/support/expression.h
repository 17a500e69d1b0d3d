// Conditions and sizes as texts over a call's arguments, in C's notation: "n<=0", "(flags & 1)==0", "xLen+hLen-1",
// "state.self!=state". Beyond C: a^b is a power, / drops the remainder, max(a, b). Pointers count as their addresses.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace test {

// The value of a name, with its field after a dot; and of a function of a buffer's name, such as anyZero(src).
using Names = std::function<long double(const std::string& name, const std::string& function)>;

long double evaluate(const std::string& text, const Names& names);

// The names, and the integers, that stand in a text.
std::vector<std::string> namesIn(const std::string& text);
std::vector<int> constantsIn(const std::string& text);

// The parts of a text between separators that stand in no brackets, without spaces around them.
std::vector<std::string> split(const std::string& text, char separator);

}   // namespace test
