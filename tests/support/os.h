// What the tests ask of the operating system. os_posix.cpp and os_win32.cpp implement it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace test {

std::size_t pageSize();

// `bytes` (whole pages) of memory between two pages that cannot be read or written.
void* mapBetweenGuards(std::size_t bytes);
void unmapBetweenGuards(void* first, std::size_t bytes);

// A child process that runs this program again as runChild(arguments), words without spaces, and what became of it.
struct Ended {
    int code = -1;        // of its exit; -1: it ended by a signal or the deadline
    std::string errors;   // its standard error stream, byte for byte
};
// typed: what the user at the child's terminal types; null: it has no terminal. There are none on Windows.
Ended runSelf(const std::vector<std::string>& arguments, const char* typed = nullptr);

// The children: a name and what it does. Returning from it ends the child with that code.
using Child = int (*)(const std::vector<std::string>& arguments);
struct RegisterChild {
    RegisterChild(const char* name, Child child);
};
int runChild(const std::vector<std::string>& arguments);

extern std::string selfPath;   // set by main

#ifdef _WIN32
// Routes an import of the library, of vekm6.dll or of the program that it is linked into, elsewhere, and tells where it
// led; false when it has no such import.
bool reroute(const char* name, void* to, void** before);
template <class Function>
bool reroute(const char* name, Function* to, Function** before) {
    return reroute(name, reinterpret_cast<void*>(to), reinterpret_cast<void**>(before));
}
#endif

}   // namespace test
