// Whom a problem is raced against.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "problem.h"

namespace bench {

struct Peer {
    std::string name;   // "512": only fair where the library, too, may use vectors of 512 bits
    std::function<void(std::size_t times)> loop;
};
using Peers = std::vector<Peer>;

// Each adds what it has for the problem. Planning may overwrite the problem's buffers.
void addPlainLoops(const Problem& problem, Peers& peers);
void addVolk(const Problem& problem, Peers& peers);
void addEigen256(const Problem& problem, Peers& peers);
void addEigen512(const Problem& problem, Peers& peers);
void addFftw(const Problem& problem, Peers& peers);
void addKissFft(const Problem& problem, Peers& peers);
void addTableLoops(const Problem& problem, Peers& peers);

// A peer that makes a call. The compiler must not see that the next call writes the same results again.
template <class Call>
Peer peerOf(const char* name, Call call) {
    return {name, [call](std::size_t times) {
                for (; times > 0; --times) {
                    call();
                    __asm__ volatile("" ::: "memory");
                }
            }};
}

}   // namespace bench
