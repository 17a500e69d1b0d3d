#include "runner.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "kernels/level/levels.h"

namespace bench {

namespace {

struct Options {
    bool quick = false;
    bool all = false;
    int least = 0;   // --sizes=least-most
    int most = 1 << 30;
};

struct Contender {
    std::string name;
    const char* level;   // null: a peer
    std::function<void(std::size_t)> loop;
    std::size_t times = 0;
    std::vector<double> samples;   // nanoseconds per call
};

// Relative L2 distance of two results.
double distance(const std::vector<double>& a, const std::vector<double>& b) {
    double difference = 0;
    double norm = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference += (a[i] - b[i]) * (a[i] - b[i]);
        norm += a[i] * a[i];
    }
    return std::sqrt(difference) / (std::sqrt(norm) + 1e-300);
}

class Contest {
public:
    Contest(const Family& family, const test::Row& row, int size, const Options& options)
        : problem(row, size), target(options.quick ? 2e5 : 5e5) {
        for (int i = vek::level::levelCount - 1; i >= 0; --i)
            if (const auto* level = vek::level::at(i); level != nullptr && std::strcmp(level->name, "sse2") != 0)
                contenders.push_back(
                    {level->name, level->name, [this](std::size_t times) { problem.call(times); }, 0, {}});
        Peers peers;
        for (const auto& add : family.peers) add(problem, peers);
        for (Peer& peer : peers)
            if (agrees(peer)) contenders.push_back({peer.name, nullptr, std::move(peer.loop), 0, {}});
        problem.fill(problem.wantsZeros());
    }

    // Another contender begins in every round.
    void round(std::size_t number) {
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            Contender& contender = contenders[(i + number) % contenders.size()];
            prepare(contender);
            if (contender.times == 0) contender.times = timesFor(contender.loop, target);
            const double start = now();
            contender.loop(contender.times);
            contender.samples.push_back((now() - start) / static_cast<double>(contender.times));
        }
    }

    double secondsOfTheBest() const { return contenders[0].samples.back() * 1e-9; }

    void report(benchmark::State& state) const {
        for (const Contender& contender : contenders) {
            // What disturbs a round only adds to it.
            state.counters["ns " + contender.name] =
                *std::min_element(contender.samples.begin(), contender.samples.end());
        }
        state.counters["size"] = problem.size;
        state.counters["work"] = problem.work();
    }

private:
    Problem problem;
    double target;
    std::vector<Contender> contenders;

    // Whoever computes something else is not in the race; square roots are to be rounded correctly.
    bool agrees(const Peer& peer) {
        if (problem.inPlace) return true;
        problem.fill(false);
        problem.call(1);
        const std::vector<double> ours = problem.result();
        problem.fill(false);
        peer.loop(1);
        const double apart = distance(ours, problem.result());
        const bool exact = problem.operation == "Sqrt" && !problem.isComplex();
        if (exact ? apart == 0 : apart < (problem.isDouble() ? 1e-13 : 1e-5)) return true;
        std::fprintf(stderr, "%s at %d: %s differs by %g, left out\n", problem.row.name().c_str(), problem.size,
                     peer.name.c_str(), apart);
        return false;
    }

    // Brings in the contender's tables and code; none of that is timed.
    static void prepare(const Contender& contender) {
        if (contender.level != nullptr) vek::level::force(contender.level);
        contender.loop(1);
    }
};

bool takeOption(const char* argument, Options& options) {
    if (std::strcmp(argument, "--quick") == 0) return options.quick = true;
    if (std::strcmp(argument, "--all") == 0) return options.all = true;
    return std::sscanf(argument, "--sizes=%d-%d", &options.least, &options.most) == 2;
}

bool isLong(const test::Row& row, int size) { return row.takesOrder() && size >= 17; }

bool isSubject(const test::Row& row, const Family& family, const Options& options) {
    if (!row.hasBuffers() || row.sizeArgument() < 0) return false;
    for (const char* module : family.modules)
        if (row.module == module) return options.all || family.wanted(row);
    return false;
}

}   // namespace

int run(int argc, char** argv, const Family& family) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);   // runner.py reads along
    Options options;
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (takeOption(argv[i], options)) continue;
        std::fprintf(stderr, "unknown option %s\n", argv[i]);
        return 1;
    }
    vekSetErrMode(VEK_ErrModeParent);
    vekRedirectError(vekStdErrReport);

    for (const test::Row& row : test::rows()) {
        if (!isSubject(row, family, options)) continue;
        for (const int size : options.quick ? family.quickSizes : family.sizes) {
            if (size < options.least || size > options.most) continue;
            benchmark::RegisterBenchmark((row.name() + "/" + std::to_string(size)).c_str(),
                                         [&row, &family, size, options](benchmark::State& state) {
                                             Contest contest(family, row, size, options);
                                             std::size_t number = 0;
                                             for (auto _ : state) {
                                                 contest.round(number++);
                                                 state.SetIterationTime(contest.secondsOfTheBest());
                                             }
                                             contest.report(state);
                                         })
                ->UseManualTime()
                ->Iterations(options.quick || isLong(row, size) ? 5 : 15);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return vekGetErrStatus() < 0;
}

int runElementwise(int argc, char** argv, const char* module) {
    const Family family = {
        // The members in place run the loops of those with separate output, unless they take a scalar operand.
        [](const test::Row& row) {
            for (const test::Argument& argument : row.arguments)
                if (argument.role == test::Role::inOut && row.arguments[0].role != test::Role::scalar) return false;
            return true;
        },
        {module},
        {8, 64, 256, 1024, 4096, 16384, 65536},
        {8, 1024, 16384},
        {addPlainLoops, addVolk, addEigen256, addEigen512},
    };
    return run(argc, argv, family);
}

}   // namespace bench
