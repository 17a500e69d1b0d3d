// Runs a suite at every kernel level that the build and the processor have. Through the shared library only its own
// choice can run: "auto".
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test {

std::vector<std::string> levelNames();
bool forceLevel(const std::string& name);   // false when the level did not come to run

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
