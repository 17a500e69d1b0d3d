// Transforms against long double references: all members, flags, layouts, directions and levels; accuracy by order;
// the life of their tables.
#include <cmath>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/data.h"
#include "support/heap.h"
#include "support/levels.h"
#include "support/oracle.h"
#include "support/reports.h"

namespace {

using namespace test;

template <class T>
struct Members;
#define VEK_MEMBERS(T, Complex, real, complex)                   \
    template <>                                                  \
    struct Members<T> {                                          \
        using C = Complex;                                       \
        static constexpr const char* name = #T;                  \
        static constexpr auto fft = complex##Fft;                \
        static constexpr auto fftNip = complex##FftNip;          \
        static constexpr auto rFft = complex##rFft;              \
        static constexpr auto rFftNip = complex##rFftNip;        \
        static constexpr auto freeTables = complex##FreeTwdTbls; \
        static constexpr auto realFft = real##RealFft;           \
        static constexpr auto realFftNip = real##RealFftNip;     \
        static constexpr auto realFftl = real##RealFftl;         \
        static constexpr auto realFftlNip = real##RealFftlNip;   \
        static constexpr auto ccsFft = real##CcsFft;             \
        static constexpr auto ccsFftNip = real##CcsFftNip;       \
        static constexpr auto ccsFftl = real##CcsFftl;           \
        static constexpr auto ccsFftlNip = real##CcsFftlNip;     \
        static constexpr auto real2Fft = real##Real2Fft;         \
        static constexpr auto real2FftNip = real##Real2FftNip;   \
        static constexpr auto ccs2Fft = real##Ccs2Fft;           \
        static constexpr auto ccs2FftNip = real##Ccs2FftNip;     \
        static constexpr auto mpyRCPack2 = real##MpyRCPack2;     \
        static constexpr auto mpyRCPack3 = real##MpyRCPack3;     \
        static constexpr auto mpyRCPerm2 = real##MpyRCPerm2;     \
        static constexpr auto mpyRCPerm3 = real##MpyRCPerm3;     \
    };
VEK_MEMBERS(float, VekCplx, veks, vekc)
VEK_MEMBERS(double, VekDCplx, vekd, vekz)

// The largest relative L2 error over many points; a few may have it twice.
template <class T>
double bound(int order) {
    return static_cast<double>(std::numeric_limits<T>::epsilon()) * (0.35 * std::sqrt(order) + 0.1);
}

// Error and power, summed over signals.
struct Sum {
    long double error = 0;
    long double power = 0;

    void add(const std::vector<Wide>& got, const std::vector<Wide>& wanted) {
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const Wide apart = got[i] - wanted[i];
            error += apart.re * apart.re + apart.im * apart.im;
            power += wanted[i].re * wanted[i].re + wanted[i].im * wanted[i].im;
        }
    }
    double relative() const {
        const auto ratio = static_cast<double>(std::sqrt(error / power));
        return ratio == ratio ? ratio : HUGE_VAL;
    }
};

double relativeError(const std::vector<Wide>& got, const std::vector<Wide>& wanted) {
    Sum sum;
    sum.add(got, wanted);
    return sum.relative();
}

std::vector<Wide> scaled(std::vector<Wide> values, long double by) {
    for (Wide& value : values) value = {value.re * by, value.im * by};
    return values;
}

struct Direction {
    int flags;
    const char* name;
    int sign() const { return (flags & VEK_Forw) != 0 ? -1 : 1; }
    long double scale(std::size_t n) const {
        return (flags & VEK_Inv) != 0 && (flags & VEK_NoScale) == 0 ? 1.0L / static_cast<long double>(n) : 1.0L;
    }
};
constexpr Direction directions[] = {{VEK_Forw, "forward"},
                                    {VEK_Forw | VEK_NoScale, "forward, no scale"},
                                    {VEK_Inv, "inverse"},
                                    {VEK_Inv | VEK_NoScale, "inverse, no scale"}};

template <class T>
std::vector<T> parts(const std::vector<typename Members<T>::C>& values, bool imaginary) {
    std::vector<T> picked(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) picked[i] = imaginary ? values[i].im : values[i].re;
    return picked;
}
template <class T>
std::vector<Wide> joined(const std::vector<T>& re, const std::vector<T>& im) {
    std::vector<Wide> values(re.size());
    for (std::size_t i = 0; i < re.size(); ++i) values[i] = {re[i], im[i]};
    return values;
}
template <class Value>
std::vector<Value> bitReversed(const std::vector<Value>& values, int order) {
    std::vector<Value> reordered(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) reordered[i] = values[reversedBits(i, order)];
    return reordered;
}

// ---- The oracles agree ----------------------------------------------------------------------------------------------

TEST(Oracle, FastReferenceIsTheDefinition) {
    for (const int sign : {-1, 1}) {
        for (const std::size_t n : {1u, 2u, 8u, 64u, 512u}) {
            const auto x = widen(Data(n).ordinary<VekDCplx>(n));
            EXPECT_LT(relativeError(referenceFft(x, sign), naiveDft(x, sign)), 1e-17) << n;
        }
    }
}

// ---- Complex members ------------------------------------------------------------------------------------------------

class Fft : public AtLevel {
protected:
    Reports reports;
    void TearDown() override {
        EXPECT_EQ(reports.text(), "");
        AtLevel::TearDown();
    }
};

template <class T>
void checkComplex(int order) {
    using M = Members<T>;
    const std::size_t n = std::size_t{1} << order;
    const auto x = Data(static_cast<std::uint64_t>(order)).ordinary<typename M::C>(n);
    for (const Direction& direction : directions) {
        const auto natural = scaled(referenceFft(widen(x), direction.sign()), direction.scale(n));
        for (const int bitOrder : {0, int{VEK_NoBitRev}, int{VEK_InBitRev}, int{VEK_OutBitRev}}) {
            const int flags = direction.flags | bitOrder;
            const std::string what = std::string(M::name) + " order " + std::to_string(order) + " " + direction.name +
                                     " bit order " + std::to_string(bitOrder);
            const auto input = bitOrder == VEK_InBitRev ? bitReversed(x, order) : x;
            const auto wanted = bitOrder == VEK_OutBitRev ? bitReversed(natural, order) : natural;
            const auto near = [&](const std::vector<Wide>& got, const char* member) {
                EXPECT_LE(relativeError(got, wanted), 2 * bound<T>(order)) << what << " " << member;
            };

            auto inPlace = input;
            M::fft(inPlace.data(), order, flags);
            near(widen(inPlace), "in place");

            const auto source = input;
            std::vector<typename M::C> out(n);
            M::fftNip(source.data(), out.data(), order, flags);
            near(widen(out), "Nip");
            EXPECT_EQ(std::memcmp(source.data(), input.data(), n * sizeof input[0]), 0) << what << ": input changed";

            auto re = parts<T>(input, false);
            auto im = parts<T>(input, true);
            M::rFft(re.data(), im.data(), order, flags);
            near(joined(re, im), "split");

            const auto reIn = parts<T>(input, false);
            const auto imIn = parts<T>(input, true);
            M::rFftNip(reIn.data(), imIn.data(), re.data(), im.data(), order, flags);
            near(joined(re, im), "split Nip");
            EXPECT_TRUE(reIn == parts<T>(input, false) && imIn == parts<T>(input, true)) << what << ": input changed";
        }
    }
}

TEST_P(Fft, ComplexMembers) {
    for (int order = 0; order <= 12; ++order) {
        checkComplex<float>(order);
        checkComplex<double>(order);
    }
}

template <class T>
void checkExact() {
    using M = Members<T>;
    using C = typename M::C;
    // A point, and the smallest transform.
    C one[] = {{3, -5}};
    for (const Direction& direction : directions) {
        M::fft(one, 0, direction.flags);
        EXPECT_TRUE(one[0].re == 3 && one[0].im == -5) << direction.name;
    }
    for (const Direction& direction : directions) {
        C two[] = {{3, -5}, {8, 1}};
        M::fft(two, 1, direction.flags);
        const T scale = direction.scale(2) == 1 ? T(1) : T(0.5);
        EXPECT_TRUE(two[0].re == 11 * scale && two[0].im == -4 * scale) << direction.name;
        EXPECT_TRUE(two[1].re == -5 * scale && two[1].im == -6 * scale) << direction.name;
    }
    // An impulse and a constant, on small paths and blocked ones.
    for (const int order : {4, 11, 16}) {
        const std::size_t n = std::size_t{1} << order;
        std::vector<C> x(n);
        x[0].re = 1;
        M::fft(x.data(), order, VEK_Forw);
        std::size_t wrong = 0;
        for (const C& value : x) wrong += value.re != 1 || value.im != 0;
        EXPECT_EQ(wrong, 0u) << M::name << " impulse, order " << order;
        M::fft(x.data(), order, VEK_Forw);   // all ones by now
        wrong = x[0].re != static_cast<T>(n) || x[0].im != 0;
        for (std::size_t k = 1; k < n; ++k) wrong += x[k].re != 0 || x[k].im != 0;
        EXPECT_EQ(wrong, 0u) << M::name << " constant, order " << order;
    }
}

TEST_P(Fft, ExactResults) {
    checkExact<float>();
    checkExact<double>();
}

// Flags that a member does not use change no bit.
template <class T>
void checkUnusedFlags() {
    using M = Members<T>;
    constexpr int order = 7;
    constexpr std::size_t n = 1 << order;
    constexpr int others = 2048 | VEK_DoIntCore | VEK_DoFloatCore | VEK_DoFastQuad;
    const auto x = Data(5).ordinary<typename M::C>(n);
    auto plain = x;
    M::fft(plain.data(), order, VEK_Forw);
    for (const int unused : {others | VEK_OutRCPack | VEK_OutRCPerm | VEK_InRCPack | VEK_InRCPerm, int{VEK_NoBitRev}}) {
        auto flagged = x;
        M::fft(flagged.data(), order, VEK_Forw | unused);
        EXPECT_EQ(std::memcmp(plain.data(), flagged.data(), n * sizeof x[0]), 0) << M::name << " " << unused;
    }
    const auto signal = Data(6).ordinary<T>(n + 2);
    auto spectrum = signal;
    M::realFft(spectrum.data(), order, VEK_Forw);
    for (const int unused : {others, VEK_NoBitRev | VEK_InBitRev | VEK_OutBitRev,
                             VEK_OutRCPack | VEK_OutRCPerm | VEK_InRCPack | VEK_InRCPerm}) {
        auto flagged = signal;
        M::realFft(flagged.data(), order, VEK_Forw | unused);
        EXPECT_TRUE(flagged == spectrum) << M::name << " real " << unused;
    }
}

TEST_P(Fft, UnusedFlags) {
    checkUnusedFlags<float>();
    checkUnusedFlags<double>();
}

// ---- Real members ---------------------------------------------------------------------------------------------------

enum class Layout {
    ccs,
    rcPack,
    rcPerm
};

// Where the parts of bin k stand, and no position (-1) for an imaginary part that is zero.
struct Position {
    int re, im;
};
Position position(Layout layout, int order, int k) {
    const int n = 1 << order;
    const int m = n / 2;
    if (k == 0) return {0, layout == Layout::ccs ? 1 : -1};
    if (k == m && layout == Layout::ccs) return {n, n + 1};
    if (k == m) return {layout == Layout::rcPack ? n - 1 : 1, -1};
    const int re = layout == Layout::rcPack ? 2 * k - 1 : 2 * k;
    return {re, re + 1};
}
std::size_t length(Layout layout, int order) { return (std::size_t{1} << order) + (layout == Layout::ccs ? 2 : 0); }
int outFlag(Layout layout) {
    return layout == Layout::ccs ? 0 : layout == Layout::rcPack ? VEK_OutRCPack : VEK_OutRCPerm;
}
int inFlag(Layout layout) { return layout == Layout::ccs ? 0 : layout == Layout::rcPack ? VEK_InRCPack : VEK_InRCPerm; }

// Half a spectrum in its layout, read by position.
template <class T>
std::vector<Wide> bins(const std::vector<T>& spectrum, Layout layout, int order) {
    std::vector<Wide> half((std::size_t{1} << order) / 2 + 1);
    for (std::size_t k = 0; k < half.size(); ++k) {
        const Position at = position(layout, order, static_cast<int>(k));
        half[k].re = spectrum[static_cast<std::size_t>(at.re)];
        if (at.im >= 0) half[k].im = spectrum[static_cast<std::size_t>(at.im)];
    }
    return half;
}
// The whole spectrum of a real signal.
std::vector<Wide> wholeSpectrum(const std::vector<Wide>& half, int order) {
    const std::size_t n = std::size_t{1} << order;
    std::vector<Wide> whole(n);
    for (std::size_t k = 0; k < n; ++k) whole[k] = k <= n / 2 ? half[k] : conj(half[n - k]);
    return whole;
}

template <class T>
void checkReal(int order) {
    using M = Members<T>;
    const std::size_t n = std::size_t{1} << order;
    Data data(static_cast<std::uint64_t>(order) + 100);
    const auto signal = data.ordinary<T>(n);
    auto second = data.ordinary<T>(n);
    for (const Direction& direction : directions) {
        auto reference = scaled(referenceFft(widenReal(signal), direction.sign()), direction.scale(n));
        auto reference2 = scaled(referenceFft(widenReal(second), direction.sign()), direction.scale(n));
        reference.resize(n / 2 + 1);
        reference2.resize(n / 2 + 1);
        for (const Layout layout : {Layout::ccs, Layout::rcPack, Layout::rcPerm}) {
            const int flags = direction.flags | outFlag(layout);
            const std::string what = std::string(M::name) + " order " + std::to_string(order) + " " + direction.name +
                                     " layout " + std::to_string(static_cast<int>(layout));
            const auto near = [&](const std::vector<T>& got, const std::vector<Wide>& wanted, const char* member) {
                EXPECT_LE(relativeError(bins(got, layout, order), wanted), 2 * bound<T>(order))
                    << what << " " << member;
                const bool zeros = layout != Layout::ccs || (got[1] == 0 && (order == 0 || got[n + 1] == 0));
                EXPECT_TRUE(zeros) << what << " " << member;
            };
            auto inPlace = signal;
            inPlace.resize(length(layout, order), T(7));
            const auto source = signal;
            std::vector<T> out(length(layout, order), T(7));
            if (layout == Layout::ccs) {
                M::realFft(inPlace.data(), order, flags);
                M::realFftNip(source.data(), out.data(), order, flags);
            } else {
                M::realFftl(inPlace.data(), order, flags);
                M::realFftlNip(source.data(), out.data(), order, flags);
            }
            near(inPlace, reference, "in place");
            near(out, reference, "Nip");
            EXPECT_TRUE(source == signal) << what << ": input changed";
            if (layout != Layout::ccs) continue;

            auto both1 = signal;
            auto both2 = second;
            both1.resize(n + 2);
            both2.resize(n + 2);
            EXPECT_EQ(M::real2Fft(both1.data(), both2.data(), order, flags), VEK_StsOk);
            near(both1, reference, "first of two");
            near(both2, reference2, "second of two");
            std::vector<T> out2(n + 2);
            EXPECT_EQ(M::real2FftNip(signal.data(), second.data(), out.data(), out2.data(), order, flags), VEK_StsOk);
            near(out, reference, "first of two, Nip");
            near(out2, reference2, "second of two, Nip");
        }
    }
}

TEST_P(Fft, RealMembers) {
    for (int order = 0; order <= 12; ++order) {
        checkReal<float>(order);
        checkReal<double>(order);
    }
}

template <class T>
void checkSpectrumToReal(int order) {
    using M = Members<T>;
    const std::size_t n = std::size_t{1} << order;
    Data data(static_cast<std::uint64_t>(order) + 200);
    for (const Layout layout : {Layout::ccs, Layout::rcPack, Layout::rcPerm}) {
        auto spectrum = data.ordinary<T>(length(layout, order));
        auto second = data.ordinary<T>(length(layout, order));
        const auto reference = [&](std::vector<T>& of, const Direction& direction) {
            auto half = bins(of, layout, order);
            half[0].im = half[n / 2].im = 0;
            return scaled(referenceFft(wholeSpectrum(half, order), direction.sign()), direction.scale(n));
        };
        // Positions that are not read hold what would show.
        const auto poison = [&](std::vector<T>& of) {
            if (layout != Layout::ccs) return;
            of[1] = std::numeric_limits<T>::quiet_NaN();
            if (order > 0) of[n + 1] = std::numeric_limits<T>::quiet_NaN();
        };
        for (const Direction& direction : directions) {
            const int flags = direction.flags | inFlag(layout);
            const std::string what = std::string(M::name) + " order " + std::to_string(order) + " " + direction.name +
                                     " layout " + std::to_string(static_cast<int>(layout));
            const auto wanted = reference(spectrum, direction);
            const auto wanted2 = reference(second, direction);
            const auto near = [&](const std::vector<T>& got, const std::vector<Wide>& to, const char* member) {
                const std::vector<T> samples(got.begin(), got.begin() + static_cast<std::ptrdiff_t>(n));
                EXPECT_LE(relativeError(widenReal(samples), to), 2 * bound<T>(order)) << what << " " << member;
            };
            auto inPlace = spectrum;
            auto source = spectrum;
            poison(inPlace);
            poison(source);
            const auto sourceBefore = source;
            std::vector<T> out(n);
            if (layout == Layout::ccs) {
                M::ccsFft(inPlace.data(), order, flags);
                M::ccsFftNip(source.data(), out.data(), order, flags);
            } else {
                M::ccsFftl(inPlace.data(), order, flags);
                M::ccsFftlNip(source.data(), out.data(), order, flags);
            }
            near(inPlace, wanted, "in place");
            near(out, wanted, "Nip");
            EXPECT_EQ(std::memcmp(source.data(), sourceBefore.data(), source.size() * sizeof(T)), 0)
                << what << ": input changed";
            if (layout != Layout::ccs) continue;

            auto both1 = spectrum;
            auto both2 = second;
            EXPECT_EQ(M::ccs2Fft(both1.data(), both2.data(), order, flags), VEK_StsOk);
            near(both1, wanted, "first of two");
            near(both2, wanted2, "second of two");
            std::vector<T> out2(n);
            EXPECT_EQ(M::ccs2FftNip(spectrum.data(), second.data(), out.data(), out2.data(), order, flags), VEK_StsOk);
            near(out, wanted, "first of two, Nip");
            near(out2, wanted2, "second of two, Nip");
        }
    }
}

TEST_P(Fft, SpectrumToRealMembers) {
    for (int order = 0; order <= 12; ++order) {
        checkSpectrumToReal<float>(order);
        checkSpectrumToReal<double>(order);
    }
}

// Products of spectra: each bin against long double.
template <class T>
void checkProducts(int order) {
    using M = Members<T>;
    const std::size_t n = std::size_t{1} << order;
    Data data(static_cast<std::uint64_t>(order) + 300);
    const auto a = data.ordinary<T>(n);
    const auto b = data.ordinary<T>(n);
    for (const Layout layout : {Layout::rcPack, Layout::rcPerm}) {
        std::vector<T> three(n);
        auto two = b;
        if (layout == Layout::rcPack) {
            M::mpyRCPack3(a.data(), b.data(), three.data(), order);
            M::mpyRCPack2(a.data(), two.data(), order);
        } else {
            M::mpyRCPerm3(a.data(), b.data(), three.data(), order);
            M::mpyRCPerm2(a.data(), two.data(), order);
        }
        EXPECT_TRUE(two == three) << M::name << " order " << order;
        const auto binsA = bins(a, layout, order);
        const auto binsB = bins(b, layout, order);
        const auto got = bins(three, layout, order);
        for (std::size_t k = 0; k < got.size(); ++k) {
            const Wide apart = got[k] - binsA[k] * binsB[k];
            const long double size = std::hypot(binsA[k].re, binsA[k].im) * std::hypot(binsB[k].re, binsB[k].im);
            EXPECT_LE(std::hypot(apart.re, apart.im), std::numeric_limits<T>::epsilon() * size)
                << M::name << " order " << order << " bin " << k;
        }
    }
}

TEST_P(Fft, Products) {
    for (int order = 0; order <= 11; ++order) {
        checkProducts<float>(order);
        checkProducts<double>(order);
    }
}

// Through spectra: circular convolution.
TEST_P(Fft, ProductOfSpectraIsCircularConvolution) {
    constexpr int order = 6;
    constexpr std::size_t n = 1 << order;
    auto x = Data(1).ordinary<double>(n);
    auto h = Data(2).ordinary<double>(n);
    std::vector<Wide> wanted(n);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) wanted[(i + j) % n].re += static_cast<long double>(x[i]) * h[j];
    vekdRealFftl(x.data(), order, VEK_Forw | VEK_OutRCPack);
    vekdRealFftl(h.data(), order, VEK_Forw | VEK_OutRCPack);
    vekdMpyRCPack2(x.data(), h.data(), order);
    vekdCcsFftl(h.data(), order, VEK_Inv | VEK_InRCPack);
    EXPECT_LE(relativeError(widenReal(h), wanted), 1e-15);
}

VEK_AT_ALL_LEVELS(Fft);

// ---- Accuracy -------------------------------------------------------------------------------------------------------

constexpr const char* kinds[] = {"complex forward", "complex inverse", "real forward", "real inverse"};

// One random signal of each kind through every level; sums[level][kind].
template <class T>
void addErrors(int order, std::uint64_t salt, std::vector<std::vector<Sum>>& sums) {
    using M = Members<T>;
    const std::size_t n = std::size_t{1} << order;
    Data data(salt);
    const auto x = data.ordinary<typename M::C>(n);
    const auto forward = referenceFft(widen(x), -1);
    std::vector<Wide> inverse(n);
    for (std::size_t k = 0; k < n; ++k) inverse[k] = forward[(n - k) % n];
    inverse = scaled(inverse, 1.0L / static_cast<long double>(n));

    const auto signal = data.ordinary<T>(n);
    auto half = referenceFft(widenReal(signal), -1);
    half.resize(n / 2 + 1);

    auto spectrum = data.ordinary<T>(n + 2);
    spectrum[1] = spectrum[n + 1] = 0;
    const auto back = scaled(referenceFft(wholeSpectrum(bins(spectrum, Layout::ccs, order), order), 1),
                             1.0L / static_cast<long double>(n));

    const auto levels = levelNames();
    for (std::size_t level = 0; level < levels.size(); ++level) {
        ASSERT_TRUE(forceLevel(levels[level]));
        auto y = x;
        M::fft(y.data(), order, VEK_Forw);
        sums[level][0].add(widen(y), forward);
        y = x;
        M::fft(y.data(), order, VEK_Inv);
        sums[level][1].add(widen(y), inverse);
        std::vector<T> r(n + 2);
        M::realFftNip(signal.data(), r.data(), order, VEK_Forw);
        sums[level][2].add(bins(r, Layout::ccs, order), half);
        r = spectrum;
        M::ccsFft(r.data(), order, VEK_Inv);
        r.resize(n);
        sums[level][3].add(widenReal(r), back);
    }
}

template <class T>
void measureAccuracy(int firstOrder, int lastOrder) {
    const auto levels = levelNames();
    for (int order = firstOrder; order <= lastOrder; ++order) {
        std::vector<std::vector<Sum>> sums(levels.size(), std::vector<Sum>(4));
        // Short signals tell little by themselves.
        const int signals = order < 12 ? 1 << (12 - order) : 1;
        for (int i = 0; i < signals; ++i) addErrors<T>(order, static_cast<std::uint64_t>(100 * i + order), sums);
        const double eps = static_cast<double>(std::numeric_limits<T>::epsilon());
        std::printf("  %-6s order %2d, at most %.3f:", Members<T>::name, order, bound<T>(order) / eps);
        for (std::size_t level = 0; level < levels.size(); ++level) {
            std::printf("  %s", levels[level].c_str());
            for (int kind = 0; kind < 4; ++kind) {
                const double error = sums[level][static_cast<std::size_t>(kind)].relative();
                std::printf(" %.3f", error / eps);
                EXPECT_LE(error, bound<T>(order))
                    << Members<T>::name << " order " << order << " " << levels[level] << " " << kinds[kind];
            }
        }
        std::printf("\n");
    }
    Members<T>::freeTables();
}

void printAccuracy(int firstOrder, int lastOrder) {
    std::printf("Relative L2 error in eps; per level complex forward, inverse, real forward, inverse\n");
    measureAccuracy<float>(firstOrder, lastOrder);
    measureAccuracy<double>(firstOrder, lastOrder);
}

class Accuracy : public testing::Test {
protected:
    Reports reports;
    void TearDown() override {
        EXPECT_EQ(reports.text(), "");
        forceLevel(levelNames().back());
    }
};

TEST_F(Accuracy, Orders1To14) { printAccuracy(1, 14); }

// Slow where the processor is emulated.
TEST_F(Accuracy, Orders15To20) { printAccuracy(15, 20); }

// ---- Tables ---------------------------------------------------------------------------------------------------------

class Tables : public testing::Test {
protected:
    void SetUp() override { releaseAll(); }
    void TearDown() override {
        releaseAll();
        EXPECT_EQ(reports.text(), "");
    }
    static void releaseAll() {
        vekcFreeTwdTbls();
        vekzFreeTwdTbls();
        vekvFreeTwdTbls();
        vekFreeBitRevTbls();
    }
    Reports reports;
    heap::Restore restore;
};

// Init builds all that the transform needs, without looking at data; Free with the same order and flags releases it.
template <class T>
void checkInitAndFree() {
    using M = Members<T>;
    const struct {
        const char* name;
        int flags;
        void (*call)(T* data, int order, int flags);
    } members[] = {
        {"fft", VEK_Forw,
         [](T* data, int order, int flags) { M::fft(reinterpret_cast<typename M::C*>(data), order, flags); }},
        {"fft, in reversed", VEK_Inv | VEK_InBitRev,
         [](T* data, int order, int flags) { M::fft(reinterpret_cast<typename M::C*>(data), order, flags); }},
        {"fft, out reversed", VEK_Forw | VEK_OutBitRev,
         [](T* data, int order, int flags) { M::fft(reinterpret_cast<typename M::C*>(data), order, flags); }},
        {"split fft", VEK_Forw,
         [](T* data, int order, int flags) { M::rFft(data, data == nullptr ? nullptr : data + 64, order, flags); }},
        {"real", VEK_Forw, [](T* data, int order, int flags) { M::realFft(data, order, flags); }},
        {"real packed", VEK_Forw | VEK_OutRCPerm,
         [](T* data, int order, int flags) { M::realFftl(data, order, flags); }},
        {"ccs", VEK_Inv, [](T* data, int order, int flags) { M::ccsFft(data, order, flags); }},
        {"packed", VEK_Inv | VEK_InRCPack, [](T* data, int order, int flags) { M::ccsFftl(data, order, flags); }},
        {"two real", VEK_Forw,
         [](T* data, int order, int flags) {
             EXPECT_EQ(M::real2Fft(data, data == nullptr ? nullptr : data + 70, order, flags), VEK_StsOk);
         }},
    };
    for (const auto& member : members) {
        constexpr int order = 6;
        std::vector<T> data(200);
        const long before = heap::outstanding();
        member.call(nullptr, order, member.flags | VEK_Init);
        EXPECT_GT(heap::outstanding(), before) << member.name;
        heap::failAt(0, true);
        member.call(data.data(), order, member.flags);
        EXPECT_EQ(heap::requests(), 0) << M::name << " " << member.name;
        heap::failNone();
        member.call(nullptr, 40, member.flags | VEK_Free);
        member.call(nullptr, -1, member.flags | VEK_Free);
        EXPECT_GT(heap::outstanding(), before) << member.name;
        member.call(nullptr, order, member.flags | VEK_Free | VEK_Init);
        EXPECT_EQ(heap::outstanding(), before) << M::name << " " << member.name;
    }
}

TEST_F(Tables, InitAndFree) {
    if (!heap::available()) GTEST_SKIP();
    checkInitAndFree<float>();
    checkInitAndFree<double>();
}

// A Free under a negative status: the two-signal members still tell of the status.
TEST_F(Tables, FreeUnderANegativeStatus) {
    vekSetErrStatus(VEK_StsBadArg);
    float data[18] = {};
    veksRealFft(data, 4, VEK_Free);
    vekcFft(nullptr, 77, VEK_Free | VEK_Forw | VEK_Inv);
    EXPECT_EQ(reports.text(), "");
    EXPECT_EQ(veksReal2Fft(nullptr, nullptr, 4, VEK_Free), Reports::answer(VEK_StsBacktrace));
    EXPECT_EQ(reports.text(), reportLine(VEK_StsBacktrace, "veksReal2Fft", "out veksRealFft", "vekffts"));
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    reports.clear();
}

TEST_F(Tables, InitNeedsNoSecondSignal) {
    float data[18] = {};
    EXPECT_EQ(veksReal2Fft(data, nullptr, 4, VEK_Init | VEK_Forw), VEK_StsOk);
    EXPECT_EQ(veksReal2FftNip(data, nullptr, nullptr, nullptr, 4, VEK_Init | VEK_Forw), VEK_StsOk);
    EXPECT_EQ(vekdCcs2Fft(nullptr, nullptr, 4, VEK_Init), VEK_StsOk);
}

// Each type's Free leaves the other's transforms ready.
TEST_F(Tables, OfOneTypeOnly) {
    if (!heap::available()) GTEST_SKIP();
    const long none = heap::outstanding();
    vekcFft(nullptr, 7, VEK_Init);
    vekdRealFft(nullptr, 7, VEK_Init);
    vekcFreeTwdTbls();
    std::vector<double> data(130);
    heap::failAt(0, true);
    vekdRealFft(data.data(), 7, VEK_Forw);
    EXPECT_EQ(heap::requests(), 0);
    heap::failNone();
    vekzFreeTwdTbls();
    EXPECT_EQ(heap::outstanding(), none);
}

}   // namespace
