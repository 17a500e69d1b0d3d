// The test program's entry: child processes, the seed, then the fuzzer or GoogleTest.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include <gtest/gtest.h>

#include "data.h"
#include "os.h"

namespace test {

std::string selfPath;
std::uint64_t seed = 20240817;
int fuzz(double seconds, bool seeded);   // fuzz.cpp: the program's exit code
extern bool writesGolden;                // test_golden.cpp

namespace {

std::map<std::string, Child>& children() {
    static std::map<std::string, Child> known;
    return known;
}

}   // namespace

RegisterChild::RegisterChild(const char* name, Child child) { children()[name] = child; }

int runChild(const std::vector<std::string>& arguments) {
    const auto found = arguments.empty() ? children().end() : children().find(arguments[0]);
    return found == children().end() ? 126 : found->second(arguments);
}

}   // namespace test

int main(int argc, char** argv) {
    test::selfPath = argv[0];
    if (argc > 1 && std::strcmp(argv[1], "--child") == 0)
        return test::runChild(std::vector<std::string>(argv + 2, argv + argc));
    testing::InitGoogleTest(&argc, argv);
    double seconds = 0;
    bool seeded = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--fuzz=", 7) == 0) seconds = std::strtod(argv[i] + 7, nullptr);
        if (std::strcmp(argv[i], "--golden") == 0) {
            test::writesGolden = true;
            testing::GTEST_FLAG(filter) = "Golden.*";
        }
        if (std::strncmp(argv[i], "--seed=", 7) != 0) continue;
        test::seed = std::strtoull(argv[i] + 7, nullptr, 10);
        seeded = true;
    }
    if (seconds > 0) return test::fuzz(seconds, seeded);
    std::printf("Test data: --seed=%llu\n", static_cast<unsigned long long>(test::seed));
    return RUN_ALL_TESTS();
}
