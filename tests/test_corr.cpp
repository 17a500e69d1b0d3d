// What the rows do not ask of dot products and correlations: no elements at all, the growth of rounding errors, and
// which way a correlation goes, with memory and without.
#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/levels.h"
#include "support/oracle.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

TEST(DotProducts, OfNothing) {
    Reports reports;
    const VekCplx c = {1, 2};
    const std::int16_t w = 3;
    int factor = 5;
    EXPECT_EQ(veksDotProd(&c.re, &c.im, 0), 0);
    EXPECT_EQ(vekcDotProd(&c, &c, 0).im, 0);
    EXPECT_EQ(vekwDotProdExt(&w, &w, 0, VEK_AUTO_SCALE, &factor), 0);
    EXPECT_EQ(factor, 0);
    EXPECT_EQ(reports.text(), "");
}

// A million terms of one sign: adding them up one by one would be off by thousands of eps.
TEST(DotProducts, ErrorsGrowWithTheLogarithm) {
    Data data(3);
    constexpr int n = 1 << 20;
    std::vector<float> a(n), b(n);
    long double sum = 0;
    for (std::size_t i = 0; i < n; ++i) {
        a[i] = static_cast<float>(data.uniform(0.5, 1));
        b[i] = static_cast<float>(data.uniform(0.5, 1));
        sum += static_cast<long double>(a[i]) * b[i];
    }
    for (const std::string& level : levelNames()) {
        forceLevel(level);
        EXPECT_NEAR(veksDotProd(a.data(), b.data(), n), static_cast<double>(sum),
                    45 * 0x1p-23 * static_cast<double>(sum))
            << level;
    }
    forceLevel(levelNames().back());
}

struct Correlating {
    const char* name;
    std::vector<std::pair<const char*, int>> arguments;   // the first is the size
    bool transforms;
};
// The first four stand on either side of the rule's limits; of the others the way is obvious.
const Correlating cases[] = {
    {"veksAutoCorr", {{"len", 4096}, {"nLags", 24}, {"type", 1}}, false},
    {"veksAutoCorr", {{"len", 4096}, {"nLags", 25}, {"type", 0}}, true},
    {"vekdAutoCorr", {{"len", 128}, {"nLags", 64}, {"type", 1}}, true},
    {"vekdAutoCorr", {{"len", 128}, {"nLags", 65}, {"type", 2}}, false},
    {"veksAutoCorr", {{"len", 3000}, {"nLags", 700}, {"type", 0}}, true},
    {"vekdAutoCorr", {{"len", 3000}, {"nLags", 3000}, {"type", 2}}, true},
    {"vekcAutoCorr", {{"len", 3000}, {"nLags", 129}, {"type", 1}}, true},
    {"vekzAutoCorr", {{"len", 900}, {"nLags", 900}, {"type", 2}}, true},
    {"veksCrossCorr", {{"lenA", 3000}, {"lenB", 2500}, {"loLag", -400}, {"hiLag", 500}}, true},
    {"vekdCrossCorr", {{"lenA", 300}, {"lenB", 9000}, {"loLag", -350}, {"hiLag", 9100}}, true},
    {"vekcCrossCorr", {{"lenA", 2000}, {"lenB", 2000}, {"loLag", -1999}, {"hiLag", 1999}}, true},
    {"vekscCrossCorr", {{"lenA", 9000}, {"lenB", 300}, {"loLag", -9100}, {"hiLag", 350}}, true},
    {"vekzdCrossCorr", {{"lenA", 2500}, {"lenB", 3000}, {"loLag", 100}, {"hiLag", 1500}}, true},
    {"vekdzCrossCorr", {{"lenA", 4000}, {"lenB", 4000}, {"loLag", 0}, {"hiLag", 7}}, false},
};

class Correlations : public testing::TestWithParam<Correlating> {
protected:
    void TearDown() override {
        heap::failNone();
        forceLevel(levelNames().back());
        vekcFreeTwdTbls();
        vekzFreeTwdTbls();
    }

    void isTheOracles(const Prepared& prepared, const std::string& what) {
        prepared.call();
        heap::failNone();
        ASSERT_EQ(prepared.damage(), "") << what;
        const std::vector<unsigned char> bytes = prepared.now(dst);
        const ArgumentType& type = tested.arguments[static_cast<std::size_t>(dst)].type;
        for (std::size_t i = 0; i < wanted.size(); ++i)
            ASSERT_EQ(differs(type, &bytes[i * type.bytes], wanted[i]), "") << what << "[" << i << "]";
    }

    const Row& tested = row(GetParam().name);
    const int dst = tested.index("dst");
    std::vector<Expected> wanted;
};

TEST_P(Correlations, GoTheShorterWayThatMemoryAllows) {
    Reports reports;
    const heap::Restore restore{};
    Cells plain = tested.plain(GetParam().arguments[0].second);
    for (const auto& [name, value] : GetParam().arguments)
        plain[static_cast<std::size_t>(tested.index(name))].set(value);
    const SceneOptions options = {.filling = Filling::ordinary, .salt = 5};
    {
        const Prepared first(tested, plain, options);
        Sight sight(tested, first.cells, [&](int argument) { return first.initial(argument); });
        oracleOf(tested)->tell(sight);
        wanted = sight.wanted["dst"].elements;
    }
    for (const std::string& level : levelNames()) {
        forceLevel(level);
        heap::failNone();
        isTheOracles(Prepared(tested, plain, options), level);
        if (!heap::available()) continue;
        const long before = heap::outstanding();
        const Prepared counted(tested, plain, options);
        heap::failNone();
        counted.call();
        const long requests = heap::requests();
        EXPECT_EQ(requests > 0, GetParam().transforms) << level;
        for (long n = 0; n < requests; ++n) {
            const Prepared short1(tested, plain, options);
            heap::failAt(n, true);
            isTheOracles(short1, level + ", request " + std::to_string(n) + " and on fails");
        }
        EXPECT_EQ(heap::outstanding(), before) << level;
    }
    EXPECT_EQ(reports.text(), "");
}

INSTANTIATE_TEST_SUITE_P(Case, Correlations, testing::ValuesIn(cases));

}   // namespace
