// The table of cases is complete: every export has one row, and every row is an export.
#include <cstdio>
#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "support/cases.h"

namespace {

using namespace test;

std::string exportsFile() {
#ifdef VEK_EXPORTS_FILE
    return VEK_EXPORTS_FILE;
#else
    const std::string here = __FILE__;
    return here.substr(0, here.find_last_of("/\\")) + "/../exports/vekm6.txt";
#endif
}

TEST(Rows, OnePerExport) {
    std::ifstream list(exportsFile());
    ASSERT_TRUE(list) << exportsFile();
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
