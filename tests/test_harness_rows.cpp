// The table of cases is complete: every export has one row, and every row is an export.
#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "support/rows.h"

namespace {

using namespace test;

#ifdef VEK_SOURCE_DIR
constexpr const char* exportsFile = VEK_SOURCE_DIR "/exports/vekm6.txt";
#else
constexpr const char* exportsFile = "exports/vekm6.txt";
#endif

TEST(Rows, OnePerExport) {
    std::ifstream list(exportsFile);
    ASSERT_TRUE(list) << exportsFile;
    std::set<std::string> exported;
    std::string line;
    while (std::getline(list, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line[0] != '#') exported.insert(line);
    }
    ASSERT_FALSE(exported.empty());
    std::set<std::string> named;
    for (const Row& row : rows()) {
        EXPECT_TRUE(named.insert(row.name()).second) << row.name() << " has two rows";
        EXPECT_EQ(exported.count(row.name()), 1u) << row.name() << " is no export";
    }
    for (const std::string& name : exported) EXPECT_EQ(named.count(name), 1u) << name << " has no row";
}

}   // namespace
