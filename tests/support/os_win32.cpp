#ifdef _WIN32

#include "os.h"

#include <cstdlib>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace test {

std::size_t pageSize() { return 4096; }

void* mapBetweenGuards(std::size_t bytes) {
    const std::size_t page = pageSize();
    char* all = static_cast<char*>(VirtualAlloc(nullptr, bytes + 2 * page, MEM_RESERVE, PAGE_NOACCESS));
    if (all == nullptr || VirtualAlloc(all + page, bytes, MEM_COMMIT, PAGE_READWRITE) == nullptr) std::abort();
    return all + page;
}

void unmapBetweenGuards(void* first, std::size_t) {
    VirtualFree(static_cast<char*>(first) - pageSize(), 0, MEM_RELEASE);
}

// There are no terminals here: message boxes ask.
Ended runSelf(const std::vector<std::string>& arguments, Terminal, const std::string&) {
    std::string line = "\"" + selfPath + "\" --child";
    for (const std::string& argument : arguments) line += " \"" + argument + "\"";

    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherited, 1 << 16)) std::abort();
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = INVALID_HANDLE_VALUE;
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = writeEnd;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process))
        std::abort();
    CloseHandle(writeEnd);

    // The texts are far smaller than the pipe: the child never waits for a reader.
    Ended ended;
    ended.exited = WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0;
    if (!ended.exited) TerminateProcess(process.hProcess, 99);
    char buffer[4096];
    DWORD count = 0;
    // No read to the end of file: what the system started for the child's windows keeps the pipe open.
    DWORD waiting = 0;
    while (PeekNamedPipe(readEnd, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0 &&
           ReadFile(readEnd, buffer, sizeof buffer, &count, nullptr))
        ended.errors.append(buffer, count);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    ended.code = static_cast<int>(code);
    CloseHandle(readEnd);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    return ended;
}

}   // namespace test

#endif
