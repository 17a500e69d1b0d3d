// Whom a row is raced against. Files of peers register themselves, each peer under the name of the export:
//
//     static const RegisterPeers mine([] { addPeer("mine", "veksbAdd3", add3<float>); });
#pragma once

#include <functional>
#include <map>

#include "problem.h"

namespace bench {

using Loop = std::function<void(std::size_t times)>;

struct Peer {
    std::string name;          // "512": only fair where the library, too, may use vectors of 512 bits
    test::Function function;   // with the export's own arguments; or else
    std::function<Loop(const Problem& problem)> plan;   // a loop of calls for that problem, none where it has none
};

inline std::multimap<std::string, Peer>& peers() {
    static std::multimap<std::string, Peer> byExport;
    return byExport;
}
struct RegisterPeers {
    explicit RegisterPeers(void (*addPeers)()) { addPeers(); }
};

// A function takes what the export takes, type by type: the race refuses any other. It need not return anything.
template <class R, class... A>
void addPeer(const char* name, const std::string& of, R (*function)(A...)) {
    peers().insert({of, {name, test::functionOf("", "", function), nullptr}});
}

// A plan may overwrite the problem's arrays. The compiler must not see that the next call writes the same results
// again.
template <class Plan>
requires std::is_invocable_v<Plan, const Problem&>
void addPeer(const char* name, const std::string& of, Plan plan) {
    peers().insert({of, {name, {}, [plan](const Problem& problem) {
                             return Loop([call = plan(problem)](std::size_t times) {
                                 for (; times > 0; --times) {
                                     call();
                                     __asm__ volatile("" ::: "memory");
                                 }
                             });
                         }}});
}

// "vekcbAdd3" for VekCplx and "bAdd3".
template <class T>
std::string nameOf(const char* operation) {
    return std::string("vek") + test::letterOf<T>() + operation;
}

}   // namespace bench
