// The Goertzel filter over several calls: its records, against the recurrence, and blocks against single samples.
#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "support/levels.h"
#include "support/oracle.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace {

using namespace test;

constexpr const char* types[] = {"s", "d", "c", "z", "w", "v"};

// A filter of any type: the calls on its record.
struct Filter {
    const std::string type;
    const Row& init = row("vek" + type + "GoertzInit");
    const ArgumentType sample = row("vek" + type + "Goertz").arguments[1].type;
    const char real = init.arguments[0].type.letter;
    alignas(8) std::array<unsigned char, 64> record;

    Filter(const std::string& of, double freq) : type(of) {
        record.fill(0x55);
        Cell cell;
        real == 'd' ? cell.set(freq) : cell.set(static_cast<float>(freq));
        call("GoertzInit", cell.bytes);
    }
    // Of what else the operation takes: a frequency, a sample or a block; int16 in a mode that clamps.
    Cell call(const std::string& operation, const void* from = nullptr, int len = 0) {
        const Row& of = row("vek" + type + operation);
        Cells cells(of.arguments.size());
        int factor = 3;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            switch (of.arguments[i].role) {
                case Role::record: cells[i].set<void*>(record.data()); break;
                case Role::scalar: std::memcpy(cells[i].bytes, from, of.arguments[i].type.bytes); break;
                case Role::in: cells[i].set(from); break;
                case Role::length: cells[i].set(len); break;
                case Role::mode: cells[i].set(3); break;
                default: cells[i].set(&factor); break;
            }
        }
        return of.function.call(cells);
    }
    std::vector<double> held() const { return realsAt(record.data(), init.arguments[1].type.bytes, real); }
};

// Samples of a kind: ordinary ones, few bits (whose sums are ties when they are rounded), tiny and huge ones.
std::vector<unsigned char> samples(const ArgumentType& type, std::size_t n, int kind, Data& data) {
    std::vector<unsigned char> bytes(n * type.bytes);
    for (std::size_t at = 0; at < bytes.size(); at += type.realBytes()) {
        double value = kind == 1 ? data.below(64) - 32 : data.uniform(-1, 1);
        if (kind == 2) value = std::ldexp(value, type.real() == 'd' ? -1060 : -140);
        if (kind == 3) value = std::ldexp(value, type.real() == 'd' ? 1015 : 120);
        Cell cell;
        if (type.real() == 'd') cell.set(value);
        if (type.real() == 's') cell.set(static_cast<float>(value));
        if (type.real() == 'w')
            cell.set(kind == 1 ? static_cast<std::int16_t>(value) : static_cast<std::int16_t>(data.bits()));
        std::memcpy(&bytes[at], cell.bytes, type.realBytes());
    }
    return bytes;
}

// Each step in 113 bits, then rounded as the record is: float takes a product of two of its numbers exactly.
void advance(std::vector<double>& state, const std::vector<Number>& x) {
    const std::size_t parts = state.size() / 2 - 2;
    for (const Number& sample : x) {
        for (std::size_t p = 0; p < parts; ++p) {
            double &before = state[4 + p], &last = state[4 + parts + p];
            const Exact next = (p == 0 ? sample.re : sample.im) + Exact{state[3]} * last - before;
            before = std::exchange(last, static_cast<float>(static_cast<double>(next)));
        }
    }
}

// As Init makes it.
void expectFresh(const Filter& filter, unsigned thousandths) {
    const std::vector<double> held = filter.held();
    const Wide wanted = conj(root(thousandths, 1000));
    const double within = filter.real == 'd' ? 1e-15 : 1e-6;
    EXPECT_NEAR(held[0], thousandths / 1000.0, within / 10);
    EXPECT_NEAR(held[1], static_cast<double>(wanted.re), within);
    EXPECT_NEAR(held[2], static_cast<double>(wanted.im), within);
    EXPECT_EQ(held[3], 2 * held[1]);
    for (std::size_t i = 4; i < held.size(); ++i) EXPECT_EQ(held[i], 0);
}

class Goertzel : public AtLevel {};

TEST_P(Goertzel, RunsTheRecurrence_BlocksAsSingleSamplesToTheBit) {
    Reports reports;
    Data data(5);
    for (const std::string type : types) {
        for (const unsigned thousandths : {0u, 100u, 167u, 250u, 500u, 937u}) {
            for (int kind = 0; kind < 4; ++kind) {
                SCOPED_TRACE(type + " at " + std::to_string(thousandths) + " kind " + std::to_string(kind));
                Filter blocks(type, thousandths / 1000.0), singles = blocks;
                const Filter fresh = blocks;
                expectFresh(fresh, thousandths);
                std::vector<double> state = fresh.held();
                for (const int len : {1, 2, 15, 16, 17, 255, 256, 257, 1000, 5}) {
                    const auto x = samples(fresh.sample, static_cast<std::size_t>(len), kind, data);
                    const Cell whole = blocks.call("bGoertz", x.data(), len);
                    Cell last;
                    for (std::size_t at = 0; at < x.size(); at += fresh.sample.bytes)
                        last = singles.call("Goertz", &x[at]);
                    ASSERT_TRUE(whole == last && blocks.record == singles.record) << len;
                    if (fresh.real == 'd' || kind == 3) continue;
                    advance(state, numbers(fresh.sample, x));
                    ASSERT_EQ(blocks.held(), state) << len;
                }
                blocks.call("GoertzReset");
                ASSERT_EQ(blocks.record, fresh.record);
            }
        }
    }
    EXPECT_EQ(reports.text(), "");
    const Filter none("d", std::nan(""));
    EXPECT_EQ(reports.text(), reportLine(VEK_StsBadArg, "vekdGoertzInit", "Invalid frequency value", "vekgrtzl"));
}

VEK_AT_ALL_LEVELS(Goertzel);

}   // namespace
