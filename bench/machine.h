// What the processor does at best, measured in the same rounds as what is compared with it.
#pragma once

#include <functional>
#include <string>

namespace bench {

// A loop of known work: each turn takes so many cycles, operations or bytes.
struct Measure {
    std::function<void(std::size_t turns)> loop;
    double work;
};

Measure clockCycles();
Measure multiplyAdds(const std::string& level, bool isDouble);
Measure cacheLoads(const std::string& level);

}   // namespace bench
