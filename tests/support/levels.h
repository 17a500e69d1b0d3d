// Runs a suite at every kernel level that the build and the processor have. Through the shared library only its own
// choice can run: "auto".
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#ifndef VEK_TEST_DLL
#include "kernels/level/levels.h"
#endif

namespace test {

inline std::vector<std::string> levelNames() {
#ifdef VEK_TEST_DLL
    return {"auto"};
#else
    std::vector<std::string> names;
    for (int i = 0; i < vek::level::levelCount; ++i)
        if (const auto* level = vek::level::at(i)) names.push_back(level->name);
    return names;
#endif
}

// False when the level did not come to run.
inline bool forceLevel(const std::string& name) {
#ifdef VEK_TEST_DLL
    return name == "auto";
#else
    return vek::level::force(name.c_str()) && name == vek::level::active();
#endif
}

// The parameter is the level's name; it runs for the whole test, then the best one again.
class AtLevel : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { ASSERT_TRUE(forceLevel(GetParam())) << GetParam(); }
    void TearDown() override { forceLevel(levelNames().back()); }
};

}   // namespace test

#define VEK_AT_ALL_LEVELS(suite)                                                  \
    INSTANTIATE_TEST_SUITE_P(Level, suite, testing::ValuesIn(test::levelNames()), \
                             [](const testing::TestParamInfo<std::string>& info) { return info.param; })
