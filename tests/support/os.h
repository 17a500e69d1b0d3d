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

// A child process that runs this program again as runChild(arguments) and what became of it.
struct Ended {
    bool exited = false;   // by itself, not by a signal or the deadline
    int code = -1;
    std::string errors;   // its standard error stream, byte for byte
};
enum class Terminal {
    none,
    answering
};

// typed: what the user at the child's terminal types, when it has one.
Ended runSelf(const std::vector<std::string>& arguments, Terminal terminal = Terminal::none,
              const std::string& typed = "");

// The children: a name and what it does. Returning from it ends the child with that code.
using Child = int (*)(const std::vector<std::string>& arguments);
struct RegisterChild {
    RegisterChild(const char* name, Child child);
};
int runChild(const std::vector<std::string>& arguments);

extern std::string selfPath;   // set by main

}   // namespace test
