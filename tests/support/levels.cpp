#include "levels.h"

#ifndef VEK_TEST_DLL
#include "kernels/level/levels.h"
#endif

namespace test {

#ifdef VEK_TEST_DLL

std::vector<std::string> levelNames() { return {"auto"}; }
bool forceLevel(const std::string& name) { return name == "auto"; }

#else

std::vector<std::string> levelNames() {
    std::vector<std::string> names;
    for (int i = 0; i < vek::level::levelCount; ++i)
        if (const auto* level = vek::level::at(i)) names.push_back(level->name);
    return names;
}
bool forceLevel(const std::string& name) { return vek::level::force(name.c_str()) && name == vek::level::active(); }

#endif

}   // namespace test
