#ifndef _WIN32

#include "os.h"

#include <cstdio>
#include <cstdlib>

#include <pty.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace test {

std::size_t pageSize() { return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)); }

void* mapBetweenGuards(std::size_t bytes) {
    const std::size_t page = pageSize();
    void* all = mmap(nullptr, bytes + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) abort();
    char* first = static_cast<char*>(all) + page;
    if (mprotect(first, bytes, PROT_READ | PROT_WRITE) != 0) abort();
    return first;
}

void unmapBetweenGuards(void* first, std::size_t bytes) {
    munmap(static_cast<char*>(first) - pageSize(), bytes + 2 * pageSize());
}

Ended runSelf(const std::vector<std::string>& arguments, const char* typed) {
    std::vector<const char*> argv = {selfPath.c_str(), "--child"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    std::FILE* errors = std::tmpfile();
    int terminal = -1;
    const pid_t child = typed != nullptr ? forkpty(&terminal, nullptr, nullptr, nullptr) : fork();
    if (child == 0) {
        if (typed == nullptr) setsid();   // leaves this program's terminal
        alarm(60);
        dup2(fileno(errors), 2);
        execv(argv[0], const_cast<char**>(argv.data()));
        _exit(127);
    }
    // Waits in the line discipline until the child asks.
    if (typed != nullptr) dprintf(terminal, "%s", typed);
    int status = 0;
    waitpid(child, &status, 0);
    if (terminal >= 0) close(terminal);

    Ended ended;
    if (WIFEXITED(status)) ended.code = WEXITSTATUS(status);
    std::rewind(errors);
    for (int next; (next = std::fgetc(errors)) != EOF;) ended.errors += static_cast<char>(next);
    std::fclose(errors);
    return ended;
}

}   // namespace test

#endif
