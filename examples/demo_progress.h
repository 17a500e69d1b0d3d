// Progress of long work on the standard error stream.
#pragma once

#include <chrono>
#include <cstdio>

namespace demo {

// Silent for the first seconds; after them a percentage, four times a second.
class Progress {
public:
    explicit Progress(const char* task) : task(task), next(Clock::now() + std::chrono::seconds(2)) {}
    ~Progress() {
        if (shown) std::fputc('\n', stderr);
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void at(double fraction) {
        const Clock::time_point now = Clock::now();
        if (now < next) return;
        next = now + std::chrono::milliseconds(250);
        shown = true;
        std::fprintf(stderr, "\r%s %3.0f %%", task, 100 * (fraction < 1 ? fraction : 1));
        std::fflush(stderr);
    }

private:
    using Clock = std::chrono::steady_clock;

    const char* task;
    Clock::time_point next;
    bool shown = false;
};

}   // namespace demo
