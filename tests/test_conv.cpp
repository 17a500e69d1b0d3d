// What no call of a convolution shows by itself: which method is chosen, each method by its own routine, failing memory
// inside, and how int16 results come from floats.
#include <algorithm>

#include <gtest/gtest.h>

#ifndef VEK_TEST_DLL   // no exports

#include "oracles/scaled.h"
#include "support/data.h"
#include "support/heap.h"
#include "support/levels.h"
#include "support/reports.h"
#include "vekconv.h"
#include "vekm6.h"

namespace {

using namespace test;
using namespace vek::conv;

template <class X, class H>
struct Pair {
    using Signal = X;
    using Taps = H;
};
using AllPairs =
    testing::Types<Pair<float, float>, Pair<VekCplx, VekCplx>, Pair<VekCplx, float>, Pair<float, VekCplx>,
                   Pair<double, double>, Pair<VekDCplx, VekDCplx>, Pair<VekDCplx, double>, Pair<double, VekDCplx>>;

// ---- The choice -----------------------------------------------------------------------------------------------------

TEST(ConvChoice, DirectBelowTheCrossover) {
    const auto isDirect = [](int shorter, int longer) {
        EXPECT_EQ((choose<float, float>(shorter, longer)), (choose<float, float>(longer, shorter)));
        return choose<float, float>(longer, shorter) == Method::direct;
    };
    EXPECT_TRUE(isDirect(1, 1));
    EXPECT_TRUE(isDirect(8, 1 << 30));
    EXPECT_TRUE(isDirect(9, 53242));
    EXPECT_FALSE(isDirect(9, 53243));
    EXPECT_TRUE(isDirect(12, 43003));
    EXPECT_FALSE(isDirect(11, 43003));
    EXPECT_TRUE(isDirect(110, 110));
    EXPECT_FALSE(isDirect(110, 111));
    EXPECT_FALSE(isDirect(111, 111));
}

// The settled values of the others at both ends; the mixed ones take hLen for the short operand, whatever xLen is.
TEST(ConvChoice, EndsOfTheTables) {
    const auto ends = [](auto x, auto h, int first, int firstLong, int last, int lastLong) {
        using X = decltype(x);
        using H = decltype(h);
        EXPECT_EQ((choose<X, H>(1 << 30, first - 1)), Method::direct);
        EXPECT_EQ((choose<X, H>(firstLong - 1, first)), Method::direct);
        EXPECT_NE((choose<X, H>(firstLong, first)), Method::direct);
        EXPECT_EQ((choose<X, H>(lastLong - 1, last)), Method::direct);
        EXPECT_NE((choose<X, H>(lastLong, last)), Method::direct);
        EXPECT_NE((choose<X, H>(last + 1, last + 1)), Method::direct);
        if constexpr (!std::is_same_v<X, H>) {
            EXPECT_NE((choose<X, H>(1, last + 1)), Method::direct);
        }
    };
    ends(VekCplx{}, VekCplx{}, 5, 31705, 48, 50);
    ends(VekCplx{}, float{}, 5, 61684, 98, 102);
    ends(float{}, VekCplx{}, 7, 36388, 98, 99);
    ends(double{}, double{}, 5, 44034, 108, 109);
    ends(VekDCplx{}, VekDCplx{}, 3, 12801, 59, 61);
    ends(VekDCplx{}, double{}, 3, 16482, 106, 108);
    ends(double{}, VekDCplx{}, 3, 17759, 110, 111);
}

// What follows from the settled costs however those between them grow.
TEST(ConvChoice, Transforms) {
    EXPECT_EQ((choose<VekCplx, float>(1, 2000)), Method::single);   // one section would be of a higher order
    EXPECT_EQ((choose<float, float>(4096, 4096)), Method::single);
    EXPECT_EQ((choose<float, float>(4096, 128)), Method::section1);
    EXPECT_NE((choose<float, float>(4097, 128)), Method::section1);   // beyond 32 times the length it is no candidate
    EXPECT_EQ((choose<float, float>(1 << 20, 128)), Method::section3);
    // Up to the longest operands there are: no order outside the tables.
    const int most = std::numeric_limits<int>::max();
    EXPECT_NE((choose<double, double>(most, most)), Method::direct);
    EXPECT_NE((choose<float, VekCplx>(1, most)), Method::direct);
    EXPECT_NE((choose<VekDCplx, double>(most, 1000)), Method::direct);
}

// ---- The routines ---------------------------------------------------------------------------------------------------

template <class T>
Wide wide(T value) {
    return {value, 0};
}
Wide wide(VekCplx value) { return {value.re, value.im}; }
Wide wide(VekDCplx value) { return {value.re, value.im}; }

template <class Y>
Y mark() {
    Y value;
    std::memset(&value, 0x5a, sizeof value);
    return value;
}

template <class P>
class ConvMethods : public testing::Test {
protected:
    using X = typename P::Signal;
    using H = typename P::Taps;
    using Y = Result<X, H>;

    // Relative L2 distance from the definition; what lies around y must not change.
    template <class Run>
    void check(int xLen, int hLen, const char* what, Run run) {
        Data data(static_cast<std::uint64_t>(xLen) * 9999 + static_cast<std::uint64_t>(hLen));
        const auto x = data.ordinary<X>(static_cast<std::size_t>(xLen));
        const auto h = data.ordinary<H>(static_cast<std::size_t>(hLen));
        const std::size_t count = x.size() + h.size() - 1;
        std::vector<Y> y(count + 16, mark<Y>());
        EXPECT_EQ(run(x.data(), h.data(), y.data() + 8), VEK_StsOk);
        const Y outside = mark<Y>();
        for (std::size_t i = 0; i < 8; ++i) {
            EXPECT_EQ(std::memcmp(&y[i], &outside, sizeof outside), 0) << what;
            EXPECT_EQ(std::memcmp(&y[8 + count + i], &outside, sizeof outside), 0) << what;
        }
        long double error = 0, power = 0;
        for (std::size_t n = 0; n < count; ++n) {
            Wide sum;
            for (std::size_t k = n < x.size() ? 0 : n - x.size() + 1; k < h.size() && k <= n; ++k)
                sum = sum + wide(x[n - k]) * wide(h[k]);
            const Wide apart = wide(y[8 + n]) - sum;
            error += apart.re * apart.re + apart.im * apart.im;
            power += sum.re * sum.re + sum.im * sum.im;
        }
        const auto epsilon = static_cast<double>(realType(sizeof(vek::core::Real<Y>) == 4 ? 's' : 'd').epsilon);
        EXPECT_LE(static_cast<double>(std::sqrt(error / power)), 6 * epsilon) << what << " " << xLen << " by " << hLen;
    }
};
TYPED_TEST_SUITE(ConvMethods, AllPairs);

TYPED_TEST(ConvMethods, ByThemselves) {
    using X = typename TypeParam::Signal;
    using H = typename TypeParam::Taps;
    using Y = Result<X, H>;
    Reports reports;
    for (const std::string& level : levelNames()) {
        ASSERT_TRUE(forceLevel(level));
        for (const auto& [xLen, hLen] : std::vector<std::pair<int, int>>{{1, 1},
                                                                         {2, 1},
                                                                         {1, 2},
                                                                         {2, 2},
                                                                         {12, 12},
                                                                         {5, 100},
                                                                         {100, 100},
                                                                         {511, 2},
                                                                         {700, 13},
                                                                         {4, 3000},
                                                                         {2500, 257}}) {
            const int xs = xLen, hs = hLen;
            this->check(xs, hs, "direct", [=](const X* x, const H* h, Y* y) { return direct(x, xs, h, hs, y); });
            this->check(xs, hs, "single", [=](const X* x, const H* h, Y* y) { return single(x, xs, h, hs, y); });
            for (const int method : {1, 2, 3})
                this->check(xs, hs, "sectioned",
                            [=](const X* x, const H* h, Y* y) { return sectioned(x, xs, h, hs, y, method); });
        }
    }
    forceLevel(levelNames().back());
    EXPECT_EQ(reports.text(), "");
}

TYPED_TEST(ConvMethods, CheckInTheirOwnNames) {
    using X = typename TypeParam::Signal;
    using H = typename TypeParam::Taps;
    using Y = Result<X, H>;
    X x{};
    H h{};
    Y y = mark<Y>();
    const Y before = y;
    const vek::conv::Names& names = namesOf<X, H>;
    Reports reports;
    for (const char* name : {names.direct, names.single, names.sectioned}) {
        const auto run = [&](const X* signal, int xLen, const H* taps, int hLen, Y* to, const char* message) {
            reports.clear();
            if (name == names.direct) direct(signal, xLen, taps, hLen, to);
            if (name == names.single) single(signal, xLen, taps, hLen, to);
            if (name == names.sectioned) sectioned(signal, xLen, taps, hLen, to, 1);
            EXPECT_EQ(reports.text(), reportLine(VEK_StsBadArg, name, message, moduleOf<X>));
        };
        run(nullptr, 0, nullptr, 0, nullptr, "x==0");
        run(&x, 0, nullptr, 0, nullptr, "xLen<=0");
        run(&x, 1, nullptr, 0, nullptr, "h==0");
        run(&x, 1, &h, 0, nullptr, "hLen<=0");
        run(&x, 1, &h, 1, nullptr, "y==0");
        vekSetErrStatus(VEK_StsBadArg);
        if (name == names.direct) direct(&x, 1, &h, 1, &y);
        if (name == names.single) single(&x, 1, &h, 1, &y);
        if (name == names.sectioned) sectioned(&x, 1, &h, 1, &y, 1);
        EXPECT_EQ(std::memcmp(&y, &before, sizeof y), 0);
    }
}

// ---- Memory ---------------------------------------------------------------------------------------------------------

class ConvMemory : public testing::Test {
protected:
    void SetUp() override {
        if (!heap::available()) GTEST_SKIP() << "requests for memory cannot be watched here";
    }
    void TearDown() override {
        heap::failNone();
        releaseTables();
    }
    static void releaseTables() {
        vekcFreeTwdTbls();
        vekzFreeTwdTbls();
    }

    // `run` is the call, into `y`; of the requests that fail, those in the order of `messages` are the call's own, and
    // the others are for tables.
    template <class Y, class Run, class Wanted>
    void failAtEach(std::vector<Y>& y, Run run, Wanted wanted) {
        releaseTables();
        const long before = heap::held();
        heap::failNone();
        run();
        const long requests = heap::requests();
        for (long n = 0; n < requests; ++n) {
            releaseTables();
            std::fill(y.begin(), y.end(), mark<Y>());
            const std::vector<Y> untouched = y;
            reports.clear();
            heap::failAt(n, true);
            run();
            heap::failNone();
            EXPECT_EQ(reports.text(), wanted(n, requests)) << "request " << n << " of " << requests;
            EXPECT_EQ(std::memcmp(y.data(), untouched.data(), y.size() * sizeof(Y)), 0) << n;
            EXPECT_EQ(vekGetErrStatus(), VEK_StsNoMemory);
            releaseTables();
            EXPECT_EQ(heap::held(), before) << n;
        }
    }

    Reports reports;
    heap::Restore restore;
};

TEST_F(ConvMemory, FailingInsideEachMethod) {
    for (const auto& [xLen, hLen, method] : {std::tuple{400, 400, "veksConv1"}, std::tuple{100000, 400, "veksConvm"}}) {
        Data data(1);
        const auto x = data.ordinary<float>(static_cast<std::size_t>(xLen));
        const auto h = data.ordinary<float>(static_cast<std::size_t>(hLen));
        std::vector<float> y(x.size() + h.size() - 1);
        const int xs = xLen, hs = hLen;
        const std::string name = method;
        failAtEach(
            y, [&] { veksConv(x.data(), xs, h.data(), hs, y.data()); },
            [&](long n, long requests) {
                const bool own = n >= requests - 2;   // the tables come first
                const std::string chain = reportLine(VEK_StsBacktrace, "veksConv", "(null)", "vekconvs");
                if (own) return reportLine(VEK_StsNoMemory, name, "NULL Pointer", "vekconvs") + chain;
                return reportLine(VEK_StsNoMemory, "veksRealFftl", "No working Twd memory", "vekffts") +
                       reportLine(VEK_StsBacktrace, name, "(null)", "vekconvs") + chain;
            });
    }
}

TEST_F(ConvMemory, FailingInsideShorts) {
    Data data(1);
    const auto x = data.ordinary<std::int16_t>(300);
    std::vector<std::int16_t> y(599);
    failAtEach(
        y, [&] { vekwConv(x.data(), 300, x.data(), 300, y.data(), VEK_SATURATE, nullptr); },
        [&](long n, long requests) {
            if (n < 3)
                return reportLine(VEK_StsNoMemory, "vekwConv", std::string("NULL pointer to float copy ") + "xhy"[n],
                                  "vekconvw");
            const std::string chain = reportLine(VEK_StsBacktrace, "veksConv", "(null)", "vekconvs") +
                                      reportLine(VEK_StsBacktrace, "vekwConv", "(null)", "vekconvw");
            if (n >= requests - 2) return reportLine(VEK_StsNoMemory, "veksConv1", "NULL Pointer", "vekconvs") + chain;
            return reportLine(VEK_StsNoMemory, "veksRealFftl", "No working Twd memory", "vekffts") +
                   reportLine(VEK_StsBacktrace, "veksConv1", "(null)", "vekconvs") + chain;
        });
}

// A million samples by four thousand: tables, which stay, and two buffers of a section.
TEST_F(ConvMemory, SectionsNeedNoMoreThanSections) {
    releaseTables();
    const std::vector<float> x(1000000, 1), h(4096, 1);
    std::vector<float> y(x.size() + h.size() - 1);
    const long before = heap::heldBytes();
    constexpr std::size_t section = 32768 * sizeof(float);
    heap::failNone();
    veksConv(x.data(), 1000000, h.data(), 4096, y.data());
    EXPECT_LE(heap::lastBytes(), section + 64);
    EXPECT_LT(heap::heldBytes() - before + 2 * static_cast<long>(section), 1000000);
    EXPECT_EQ(reports.text(), "");
}

// ---- int16 ----------------------------------------------------------------------------------------------------------

// Products so small that the transforms' errors round away: the route through floats is exact too.
class ConvShorts : public AtLevel {};

TEST_P(ConvShorts, ThroughFloatsAsThroughIntegers) {
    Reports reports;
    for (const auto& [xLen, hLen] : {std::pair{256, 256}, std::pair{128, 512}, std::pair{9000, 100}}) {
        Data data(static_cast<std::uint64_t>(xLen));
        std::vector<std::int16_t> x(static_cast<std::size_t>(xLen)), h(static_cast<std::size_t>(hLen));
        for (auto& value : x) value = static_cast<std::int16_t>(data.below(61) - 30);
        for (auto& value : h) value = static_cast<std::int16_t>(data.below(61) - 30);
        std::vector<long long> sums(x.size() + h.size() - 1);
        for (std::size_t i = 0; i < x.size(); ++i)
            for (std::size_t k = 0; k < h.size(); ++k) sums[i + k] += x[i] * h[k];
        std::vector<std::int16_t> y(sums.size());
        for (const int mode : {0, 1, 2, 3, 4}) {
            for (const int given : {0, 1, 5, 40, -2, -20}) {
                int factor = given;
                vekwConv(x.data(), xLen, h.data(), hLen, y.data(), mode, &factor);
                if (mode == 4) {
                    int least = 0;
                    for (const long long sum : sums)
                        while (!fitsShort(shifted(sum, least))) ++least;
                    EXPECT_EQ(factor, least);
                }
                for (std::size_t n = 0; n < sums.size(); ++n) {
                    const Exact moved = shifted(sums[n], mode < 2 ? 0 : factor);
                    const Exact wanted = mode == 1 || mode >= 3 ? saturatedToShort(moved) : wrappedToShort(moved);
                    ASSERT_EQ(y[n], static_cast<int>(wanted)) << "mode " << mode << " factor " << given << " at " << n;
                }
            }
        }
    }
    EXPECT_EQ(reports.text(), "");
}

// Floats of every size, halves among them.
TEST_P(ConvShorts, FloatsOfEverySize) {
    Data data(3);
    std::vector<float> values;
    for (int exponent = -3; exponent <= 61; ++exponent) {
        for (const double sign : {1.0, -1.0}) {
            values.push_back(static_cast<float>(sign * std::ldexp(1.0, exponent)));
            values.push_back(static_cast<float>(sign * std::ldexp(data.uniform(1, 2), exponent)));
            values.push_back(static_cast<float>(sign * (data.below(40000) + 0.5)));
        }
    }
    const vek::kernels::ConvShortsTable& kernels = *vek::kernelsNow().conv_w;
    std::vector<std::int16_t> got(values.size());
    const auto nearest = [](float value) { return static_cast<Exact>(std::nearbyint(static_cast<double>(value))); };
    for (const int places : {1, 2, 15, 16, 17, 31, 32, 33, 46, 60, 63}) {
        for (const vek::Fit fit : {vek::fitWraps, vek::fitSaturates, vek::fitRightWraps, vek::fitRight}) {
            kernels.fromFloats[fit](values.data(), got.data(), values.size(), places);
            for (std::size_t i = 0; i < values.size(); ++i) {
                const Exact moved = shifted(nearest(values[i]), fit >= vek::fitRightWraps ? places : 0);
                const bool saturates = fit == vek::fitSaturates || fit == vek::fitRight;
                ASSERT_EQ(got[i], static_cast<int>(saturates ? saturatedToShort(moved) : wrappedToShort(moved)))
                    << values[i] << " fit " << fit << " places " << places;
            }
        }
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        int least = 0;
        while (!fitsShort(shifted(nearest(values[i]), least))) ++least;
        ASSERT_EQ(kernels.floatPlaces(&values[i], 1), least) << values[i];
    }
}

VEK_AT_ALL_LEVELS(ConvShorts);

}   // namespace

#endif
