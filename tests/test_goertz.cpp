// The Goertzel filter over several calls: its records, and blocks against single samples.
#include <cmath>

#include <gtest/gtest.h>

#include "support/data.h"
#include "support/levels.h"
#include "support/oracle.h"
#include "support/reports.h"

namespace {

using namespace test;

constexpr const char* types[] = {"s", "d", "c", "z", "w", "v"};

const Row& member(const std::string& type, const std::string& operation) { return row("vek" + type + operation); }

// A record of any type, as bytes; and the calls on it.
struct Filter {
    std::string type;
    alignas(8) unsigned char state[64];
    int factor = 3;

    Filter(const std::string& of, double freq) : type(of) {
        std::memset(state, 0x55, sizeof state);
        const Row& init = member(type, "GoertzInit");
        Cells cells(2);
        if (init.arguments[0].type.letter == 'd')
            cells[0].set(freq);
        else
            cells[0].set(static_cast<float>(freq));
        cells[1].set<void*>(state);
        EXPECT_EQ(init.function.call(cells).get<VekStatus>(), VEK_StsOk);
    }
    void reset() {
        Cells cells(1);
        cells[0].set<void*>(state);
        member(type, "GoertzReset").function.call(cells);
    }
    Cell one(const unsigned char* sample) {
        const Row& of = member(type, "Goertz");
        Cells cells = scaling(of);
        std::memcpy(cells[1].bytes, sample, of.arguments[1].type.bytes);
        return of.function.call(cells);
    }
    Cell block(const void* samples, int len) {
        const Row& of = member(type, "bGoertz");
        Cells cells = scaling(of);
        cells[1].set(samples);
        cells[2].set(len);
        return of.function.call(cells);
    }
    std::vector<unsigned char> held() const { return {state, state + sizeof state}; }

private:
    Cells scaling(const Row& of) {
        Cells cells = of.plain(1);
        cells[0].set<void*>(state);
        if (const int at = of.index("scaleFactor"); at >= 0) {
            cells[static_cast<std::size_t>(at) - 1].set(fixedSaturating);
            cells[static_cast<std::size_t>(at)].set(&factor);
        }
        return cells;
    }
    static constexpr int fixedSaturating = 3;
};

std::size_t sampleBytes(const std::string& type) { return member(type, "Goertz").arguments[1].type.bytes; }

// Samples of a kind: ordinary ones, few bits (whose sums are ties when they are rounded), tiny and huge ones.
std::vector<unsigned char> samples(const std::string& type, std::size_t n, int kind, Data& data) {
    const char real = member(type, "Goertz").arguments[1].type.real();
    std::vector<unsigned char> bytes(n * sampleBytes(type));
    const std::size_t width = real == 'd' ? 8 : real == 's' ? 4 : 2;
    for (std::size_t at = 0; at < bytes.size(); at += width) {
        double value = data.uniform(-1, 1);
        if (kind == 1) value = data.below(64) - 32;
        if (kind == 2) value = std::ldexp(value, real == 'd' ? -1060 : -140);
        if (kind == 3) value = std::ldexp(value, real == 'd' ? 1015 : 120);
        const auto single = static_cast<float>(value);
        const auto integer = kind == 1 ? static_cast<std::int16_t>(value) : static_cast<std::int16_t>(data.bits());
        const void* from = real == 'd'   ? static_cast<const void*>(&value)
                           : real == 's' ? &single
                                         : static_cast<const void*>(&integer);
        std::memcpy(&bytes[at], from, width);
    }
    return bytes;
}

class Goertzel : public AtLevel {
protected:
    Reports reports;
};

TEST_P(Goertzel, BlocksAreSingleSamplesToTheBit) {
    Data data(5);
    for (const std::string type : types) {
        for (const double freq : {0.0, 0.1, 1.0 / 6, 0.25, 0.5, 0.937}) {
            for (int kind = 0; kind < 4; ++kind) {
                Filter blocks(type, freq), singles(type, freq);
                for (const int len : {1, 2, 15, 16, 17, 255, 256, 257, 1000, 5}) {
                    const auto x = samples(type, static_cast<std::size_t>(len), kind, data);
                    const Cell whole = blocks.block(x.data(), len);
                    Cell last;
                    for (std::size_t at = 0; at < x.size(); at += sampleBytes(type)) last = singles.one(&x[at]);
                    const std::string what = type + " at " + std::to_string(freq) + " kind " + std::to_string(kind) +
                                             " length " + std::to_string(len);
                    ASSERT_TRUE(whole == last) << what;
                    ASSERT_EQ(blocks.held(), singles.held()) << what;
                }
            }
        }
    }
    EXPECT_EQ(reports.text(), "");
}

// Each step in 113 bits, then rounded as the record is: float takes a product of two of its numbers exactly.
TEST_P(Goertzel, StatesAreTheRecurrences) {
    Data data(6);
    for (const double freq : {0.0, 0.1, 0.25, 0.6}) {
        Filter filter("c", freq);
        const auto bytes = samples("c", 300, 0, data);
        std::vector<VekCplx> x(300);
        std::memcpy(x.data(), bytes.data(), bytes.size());
        VekCGoertzState state;
        std::memcpy(&state, filter.state, sizeof state);
        float s2[2] = {}, s1[2] = {};
        for (const VekCplx& sample : x) {
            const float parts[] = {sample.re, sample.im};
            for (int p = 0; p < 2; ++p) {
                const auto s =
                    static_cast<float>(static_cast<double>(Exact{parts[p]} + Exact{state.cos2V} * s1[p] - s2[p]));
                s2[p] = s1[p];
                s1[p] = s;
            }
        }
        filter.block(x.data(), 300);
        std::memcpy(&state, filter.state, sizeof state);
        EXPECT_EQ(state.prev1.re, s1[0]) << freq;
        EXPECT_EQ(state.prev1.im, s1[1]) << freq;
        EXPECT_EQ(state.prev2.re, s2[0]) << freq;
        EXPECT_EQ(state.prev2.im, s2[1]) << freq;
    }
}

TEST_P(Goertzel, AtZeroItSumsUp) {
    VekZGoertzState state;
    ASSERT_EQ(vekzGoertzInit(0, &state), VEK_StsOk);
    double sum = 0;
    for (int n = 1; n <= 100; ++n) {
        sum += n;
        const VekDCplx got = vekzGoertz(&state, {static_cast<double>(n), 1});
        EXPECT_EQ(got.re, sum);
        EXPECT_EQ(got.im, n);
    }
    vekzGoertzReset(&state);
    EXPECT_EQ(vekzGoertz(&state, {2, 3}).im, 3);
}

VEK_AT_ALL_LEVELS(Goertzel);

TEST(GoertzelRecords, InitFillsThem) {
    Reports reports;
    for (const double freq : {0.0, 0.1, 0.25, 0.5, 0.999}) {
        VekDGoertzState d;
        ASSERT_EQ(vekdGoertzInit(freq, &d), VEK_StsOk);
        const long double angle = 6.28318530717958647692528676655900577L * freq;
        EXPECT_EQ(d.freq, freq);
        EXPECT_NEAR(d.cosV, static_cast<double>(std::cos(angle)), 1e-15);
        EXPECT_NEAR(d.sinV, static_cast<double>(std::sin(angle)), 1e-15);
        EXPECT_EQ(d.cos2V, 2 * d.cosV);
        EXPECT_EQ(d.prev1, 0);
        EXPECT_EQ(d.prev2, 0);
        VekCGoertzState c;
        ASSERT_EQ(vekcGoertzInit(static_cast<float>(freq), &c), VEK_StsOk);
        EXPECT_NEAR(c.cosV, static_cast<double>(std::cos(angle)), 1e-6);
        EXPECT_NEAR(c.sinV, static_cast<double>(std::sin(angle)), 1e-6);
        EXPECT_EQ(c.cos2V, 2 * c.cosV);
        EXPECT_EQ(c.prev1.re, 0);
        EXPECT_EQ(c.prev2.im, 0);
    }
    VekDGoertzState state;
    vekdGoertzInit(std::nan(""), &state);
    EXPECT_EQ(reports.text(), reportLine(VEK_StsBadArg, "vekdGoertzInit", "Invalid frequency value", "vekgrtzl"));
}

// Reset keeps the frequency, and the filter runs as if it were new.
TEST(GoertzelRecords, ResetBeginsAnew) {
    Reports reports;
    Data data(8);
    for (const std::string type : types) {
        Filter used(type, 0.3);
        const Filter fresh(type, 0.3);
        const auto x = samples(type, 40, 0, data);
        used.block(x.data(), 40);
        EXPECT_NE(used.held(), fresh.held()) << type;
        used.reset();
        EXPECT_EQ(used.held(), fresh.held()) << type;
    }
}

}   // namespace
