// Every export's results against its operation's oracle: all values of its arguments, lengths or orders, aliasings,
// special values and levels, with arrays flush against unreadable pages and at any offset; wherever they lie, the
// results have the same bits. And the transforms' accuracy by order.
#include <algorithm>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/levels.h"
#include "support/oracle.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

// The largest relative L2 error over many points; a few may have it twice.
double bound(const RealType& real, int order) {
    return static_cast<double>(real.epsilon) * (0.35 * std::sqrt(order) + 0.1);
}

// Scalars without values of their own are drawn.
Cells drawn(const Row& of, int size, int choice, Filling filling, Data& data) {
    Cells cells = of.plain(size, choice);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const Argument& argument = of.arguments[i];
        if (argument.role != Role::scalar || !argument.values.empty()) continue;
        const auto put = [&](auto zero) {
            using T = decltype(zero);
            for (std::size_t at = 0; at < argument.type.bytes; at += sizeof(T)) {
                const T value = filling == Filling::mixed ? data.mixed<T>(1)[0] : data.ordinaryReal<T>();
                std::memcpy(cells[i].bytes + at, &value, sizeof value);
            }
        };
        switch (argument.type.real()) {
            case 's': put(float{}); break;
            case 'd': put(double{}); break;
            case 'w': put(std::int16_t{}); break;
            default: put(std::int32_t{}); break;
        }
    }
    return cells;
}

std::vector<int> sizesOf(const Row& row) {
    std::vector<int> sizes;
    if (row.takesOrder()) {
        for (int order = 0; order <= (row.hasBuffers() ? 12 : 31); ++order) sizes.push_back(order);
        return sizes;
    }
    for (int n = 1; n <= 67; ++n) sizes.push_back(n);
    sizes.insert(sizes.end(), {100, 127, 256, 300, 515, 600, 1024, 4099});
    return sizes;
}
// Long vectors and those between take one choice of values in turn.
bool takesAllChoices(const Row& row, int size) {
    if (row.choices() > 64) return size == 1 || size == 67 || size == 600;
    return row.takesOrder() ? size <= 9 || !row.hasBuffers()
                            : size <= 3 || size == 8 || size == 17 || size == 33 || size == 67;
}

class Results : public testing::TestWithParam<std::string> {
protected:
    void TearDown() override { forceLevel(levelNames().back()); }

    const Row& tested = row(GetParam());
    const Oracle* oracle = oracleOf(tested);
    Reports reports;
    Data offsets{11};
    int compared = 0;

    // Calls at every level and a few placements; what comes out must be what the oracle says.
    void check(const Cells& plain, const SceneOptions& given, const std::string& what) {
        SceneOptions options = given;
        const Prepared first(tested, plain, options);
        VekStatus status = VEK_StsOk;
        if (!tested.expectedReports(first.cells, status).empty()) return;
        const std::string reported = tested.lateReports(first.cells, status);
        Sight sight(tested, first.cells, [&](int argument) { return first.initial(argument); });
        if (oracle != nullptr) oracle->tell(sight);
        for (const std::string& level : levelNames()) {
            ASSERT_TRUE(forceLevel(level));
            std::vector<unsigned char> elsewhere;
            for (const auto where : {Place::offset, Place::front, Place::back}) {
                options.places.clear();
                for (const Argument& argument : tested.arguments) {
                    // Complex elements need the alignment of their parts only.
                    const auto unit = static_cast<int>(std::max<std::size_t>(argument.type.realBytes(), 1));
                    options.places.push_back({where, static_cast<std::size_t>(offsets.below(64 / unit) * unit)});
                }
                const Prepared prepared(tested, plain, options);
                reports.clear();
                const Cell result = prepared.call();
                ASSERT_EQ(reports.text(), reported) << what << " " << level;
                if (tested.group.returnsStatus || tested.group.leavesStatus) {
                    ASSERT_EQ(result.get<VekStatus>(),
                              status < 0 ? tested.expectedFailure(status).get<VekStatus>() : VEK_StsOk)
                        << what;
                }
                ASSERT_EQ(prepared.damage(), "") << what << " " << level << " placement " << where;
                ++compared;
                for (const auto& [name, wanted] : sight.wanted)
                    compare(prepared, result, name, wanted, what + " " + level + " " + name);
                if (where == Place::offset) elsewhere = prepared.outputs();
                ASSERT_TRUE(prepared.outputs() == elsewhere) << what << " " << level << " placement " << where;
                if (HasFatalFailure()) return;
            }
        }
    }

private:
    void compare(const Prepared& prepared, const Cell& result, const std::string& name, const Wanted& wanted,
                 const std::string& what) {
        const int argument = tested.index(name);
        const ArgumentType type =
            argument < 0 ? tested.function.result : tested.arguments[static_cast<std::size_t>(argument)].type;
        const std::vector<unsigned char> bytes =
            argument < 0 ? std::vector<unsigned char>(result.bytes, result.bytes + type.bytes) : prepared.now(argument);
        for (std::size_t i = 0; i < wanted.elements.size(); ++i) {
            const std::string wrong = differs(type, &bytes[i * type.bytes], wanted.elements[i]);
            ASSERT_EQ(wrong, "") << what << "[" << i << "]";
        }
        if (wanted.whole.empty()) return;
        ErrorSum sum;
        sum.add(numbers(type, bytes), wanted);
        const double most = wanted.bound >= 0 ? wanted.bound : 2 * bound(realType(type.real()), wanted.order);
        ASSERT_LE(sum.relative(), most) << what;
    }
};

TEST_P(Results, AreTheOracles) {
    Data data(7);
    const bool sized = tested.sizeArgument() >= 0;
    for (const Filling filling : {Filling::ordinary, Filling::mixed}) {
        if (filling == Filling::mixed && (oracle == nullptr || oracle->ordinaryOnly)) continue;
        for (const int size : sized ? sizesOf(tested) : std::vector<int>(1 + 1000 / tested.choices(), 1)) {
            if (!tested.takesOrder()) releaseTables();
            for (int choice = 0; choice < tested.choices(); ++choice) {
                const bool all = !sized || takesAllChoices(tested, size);
                if (!all && choice > 0) break;
                const Cells plain = drawn(tested, size, all ? choice : size % tested.choices(), filling, data);
                for (const auto& aliases : aliasings(tested, plain)) {
                    const std::uint64_t salt = data.bits();
                    check(plain, {.filling = filling, .salt = salt, .aliases = aliases},
                          "size " + std::to_string(size) + " choice " + std::to_string(choice) + " aliases " +
                              std::to_string(aliases.size()) + (filling == Filling::mixed ? " mixed" : ""));
                    if (HasFatalFailure()) return;
                }
            }
        }
    }
    EXPECT_GT(compared, 0);
}

INSTANTIATE_TEST_SUITE_P(Export, Results, testing::ValuesIn(rowNames([](const Row& row) {
                             return row.hasBuffers() || oracleOf(row) != nullptr;
                         })),
                         [](const auto& info) { return info.param; });

TEST(Oracles, OfEveryRow) {
    for (const Row& row : rows()) EXPECT_TRUE(oracleOf(row) != nullptr || !row.group.testedBy.empty()) << row.name();
}

TEST(Oracles, FastTransformIsTheDefinition) {
    for (const int sign : {-1, 1}) {
        for (const std::size_t n : {1u, 2u, 8u, 64u, 512u}) {
            std::vector<Wide> x(n);
            Data data(n);
            for (Wide& value : x) value = {data.uniform(-1, 1), data.uniform(-1, 1)};
            const std::vector<Wide> fast = referenceFft(x, sign);
            const std::vector<Wide> slow = naiveDft(x, sign);
            long double apart = 0;
            for (std::size_t i = 0; i < n; ++i) apart += std::hypot(fast[i].re - slow[i].re, fast[i].im - slow[i].im);
            EXPECT_LT(apart, 1e-16 * static_cast<double>(n)) << n;
        }
    }
}

// ---- Accuracy of the transforms -------------------------------------------------------------------------------------

struct Transform {
    const char* name;
    const char* type;
    int flags;
};
constexpr Transform transforms[] = {{"vekcFft", "forward", VEK_Forw},     {"vekcFft", "inverse", VEK_Inv},
                                    {"veksRealFft", "forward", VEK_Forw}, {"veksCcsFft", "inverse", VEK_Inv},
                                    {"vekzFft", "forward", VEK_Forw},     {"vekzFft", "inverse", VEK_Inv},
                                    {"vekdRealFft", "forward", VEK_Forw}, {"vekdCcsFft", "inverse", VEK_Inv}};

void measure(const Transform& of, int order) {
    const Row& tested = row(of.name);
    Cells plain = tested.plain(order);
    plain[static_cast<std::size_t>(tested.index("flags"))].set(of.flags);
    const auto levels = levelNames();
    std::vector<ErrorSum> sums(levels.size());
    // Short signals tell little by themselves.
    const int signals = order < 12 ? 1 << (12 - order) : 1;
    RealType real = realType('s');
    for (int i = 0; i < signals; ++i) {
        const SceneOptions options = {.filling = Filling::ordinary, .salt = static_cast<std::uint64_t>(i)};
        const Prepared first(tested, plain, options);
        Sight sight(tested, first.cells, [&](int argument) { return first.initial(argument); });
        oracleOf(tested)->tell(sight);
        real = sight.real;
        for (std::size_t level = 0; level < levels.size(); ++level) {
            forceLevel(levels[level]);
            const Prepared prepared(tested, plain, options);
            prepared.call();
            sums[level].add(numbers(tested.arguments[0].type, prepared.now(0)), sight.wanted["samps"]);
        }
    }
    const auto eps = static_cast<double>(real.epsilon);
    std::printf("  %-12s %-8s order %2d, at most %.3f:", of.name, of.type, order, bound(real, order) / eps);
    for (std::size_t level = 0; level < levels.size(); ++level) {
        std::printf("  %s %.3f", levels[level].c_str(), sums[level].relative() / eps);
        EXPECT_LE(sums[level].relative(), bound(real, order)) << of.name << " order " << order << " " << levels[level];
    }
    std::printf("\n");
}

void measureAll(int firstOrder, int lastOrder) {
    Reports reports;
    std::printf("Relative L2 error in eps by level\n");
    for (const Transform& of : transforms)
        for (int order = firstOrder; order <= lastOrder; ++order) measure(of, order);
    EXPECT_EQ(reports.text(), "");
    forceLevel(levelNames().back());
    vekcFreeTwdTbls();
    vekzFreeTwdTbls();
}

TEST(Accuracy, Orders1To14) { measureAll(1, 14); }
TEST(Accuracy, Orders15To20) { measureAll(15, 20); }   // slow where the processor is emulated

}   // namespace
