// Watches the library's requests for memory and makes them fail. In the statically linked program the linker routes
// malloc, calloc and free through here (--wrap); in the Windows one the DLL's import table does.
#pragma once

#include <cstddef>

namespace test::heap {

// False where requests cannot be watched (the static twin on Windows): tests that need it skip.
bool available();

// Of the calling thread's requests from now on, counted from 0, the n-th fails, and those that follow it when
// `onwards`; or all of more than `bytes` bytes.
void failAt(long n, bool onwards);
void failAbove(std::size_t bytes);
void failNone();
long requests();   // since the last of the calls above, by the calling thread
long failures();
std::size_t lastBytes();   // of the last request

// Every request of every thread fails, from now on or no more.
void failEverywhere(bool fail);

// Blocks that the whole process holds, or the calling thread and the bytes in them, from arbitrary origins. The heap
// may round bytes up. On Windows the system may start threads at any time, and each gets its context.
long outstanding();
long held();
long heldBytes();

// Requests never fail once it is gone.
struct Restore {
    ~Restore() { failNone(); }
};

}   // namespace test::heap
