#ifndef _WIN32

#include "os.h"

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
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

Ended runSelf(const std::vector<std::string>& arguments, Terminal terminal, const std::string& typed) {
    std::vector<std::string> words = {selfPath, "--child"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    int master = -1;
    std::string slaveName;
    if (terminal == Terminal::answering) {
        master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) abort();
        slaveName = ptsname(master);
        // Waits in the line discipline until the child asks.
        if (write(master, typed.data(), typed.size()) != static_cast<ssize_t>(typed.size())) abort();
    }
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) abort();
    const pid_t child = fork();
    if (child == 0) {
        setsid();   // no controlling terminal, but for the one that is opened next
        if (terminal == Terminal::answering && open(slaveName.c_str(), O_RDWR) < 0) _exit(127);
        dup2(ends[1], 2);
        execv(argv[0], argv.data());
        _exit(127);
    }
    close(ends[1]);

    Ended ended;
    char buffer[4096];
    bool late = false;
    for (;;) {
        pollfd readable = {ends[0], POLLIN, 0};
        if (poll(&readable, 1, 60000) <= 0) {
            kill(child, SIGKILL);
            late = true;
            break;
        }
        const ssize_t count = read(ends[0], buffer, sizeof buffer);
        if (count <= 0) break;
        ended.errors.append(buffer, static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (master >= 0) close(master);
    ended.exited = !late && WIFEXITED(status);
    ended.code = ended.exited ? WEXITSTATUS(status) : -1;
    return ended;
}

}   // namespace test

#endif
