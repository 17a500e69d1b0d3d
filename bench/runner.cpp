// One Google Benchmark per row and size, whose iterations are rounds. In each round the library, at every level, and
// all peers are timed one after the other on the same buffers, so that a ratio never compares times from different
// minutes. The least over the rounds is the benchmark's counter; runner.py makes the tables.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

#include "family.h"
#include "kernels/level/levels.h"
#include "machine.h"
#include "peers.h"

namespace bench {

namespace {

// Another build of the library, by name: it races instead of levels and peers.
struct Library {
    std::string name;
    void* handle;

    template <class F>
    F* find(const char* symbol, F*) const {
        return reinterpret_cast<F*>(dlsym(handle, symbol));
    }
    test::Address address(const test::Row& row) const {
        return reinterpret_cast<test::Address>(dlsym(handle, row.name().c_str()));
    }
};

struct Options {
    bool quick = false;
    bool all = false;
    int least = 0;   // --sizes=least-most
    int most = 1 << 30;
    std::vector<std::string> families;   // --family=; none: all
    std::vector<Library> libraries;      // --library=name=file
};

std::vector<std::string> levelNames() {
    std::vector<std::string> names;
    for (int i = vek::level::levelCount - 1; i >= 0; --i)
        if (const auto* level = vek::level::at(i); level != nullptr && level->name != std::string("sse2"))
            names.push_back(level->name);
    return names;
}

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

struct Contender {
    std::string counter;
    std::string level;   // empty: no matter
    Loop loop;
    double perTurn = 1;   // the work of a turn whose time is counted
    std::size_t times = 0;
    double least = 1e300;   // nanoseconds: what disturbs a round only adds to it
    double latest = 0;
};

class Contest {
public:
    Contest(const Family& family, const test::Row& row, int size, const Variant& variant, const Options& options)
        : problem(family, row, size, variant), slice(options.quick ? 2e5 : 5e5) {
        if (options.libraries.empty())
            addLevelsAndPeers();
        else
            for (const Library& library : options.libraries) addCalls(library.name, "", library.address(row));
    }

    // Another contender begins in every round.
    void round(std::size_t number) {
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            Contender& contender = contenders[(i + number) % contenders.size()];
            // Brings in the contender's tables and code; none of that is timed.
            if (!contender.level.empty()) vek::level::force(contender.level.c_str());
            contender.loop(1);
            if (contender.times == 0) contender.times = timesFor(contender.loop, slice);
            const double start = now();
            contender.loop(contender.times);
            contender.latest = (now() - start) / static_cast<double>(contender.times) / contender.perTurn;
            contender.least = std::min(contender.least, contender.latest);
        }
    }

    double secondsOfTheBest() const { return contenders[0].latest * 1e-9; }

    void report(benchmark::State& state) const {
        const Family& family = problem.family;
        for (const Contender& contender : contenders) state.counters[contender.counter] = contender.least;
        state.counters["size"] = problem.size;
        state.counters["order"] = problem.row.takesOrder();
        state.counters["elements"] = elements(problem);
        state.counters["work"] = family.work(problem);
        state.counters["peakWork"] = family.peakWork(problem);
        state.counters["goal"] = family.goal(problem.size);
    }

private:
    Problem problem;
    double slice;
    std::vector<Contender> contenders;

    void addCalls(const std::string& name, const std::string& level, test::Address address) {
        test::Function function = problem.row.function;
        function.address = address;
        contenders.push_back(
            {"ns " + name, level, [this, function](std::size_t times) { function.repeat(problem.cells, times); }});
    }

    void addLevelsAndPeers() {
        const auto add = [this](const std::string& name, const Measure& measure) {
            contenders.push_back({name, "", measure.loop, measure.work});
        };
        const Family& family = problem.family;
        for (const std::string& level : levelNames()) addCalls(level, level, problem.row.function.address);
        bool destroyed = false;
        const auto [first, last] = peers().equal_range(problem.row.name());
        for (auto it = first; it != last; ++it) addPeer(it->second, destroyed);
        problem.fill(destroyed || problem.inPlace());
        if (family.cycles) add("clock", clockCycles());
        for (const std::string& level : levelNames()) {
            if (family.peak == Peak::multiplyAdds) add("peak " + level, multiplyAdds(level, problem.isDouble()));
            if (family.peak == Peak::loads) add("peak " + level, cacheLoads(level));
        }
    }

    // Whoever computes something else is not in the race.
    void addPeer(const Peer& peer, bool& destroyed) {
        const test::Function& export_ = problem.row.function;
        if (!peer.plan && !takesTheSame(peer.function, export_)) {
            std::fprintf(stderr, "%s takes other arguments than %s\n", peer.name.c_str(), export_.name.c_str());
            std::exit(1);
        }
        const Loop loop = peer.plan ? peer.plan(problem) : [this, function = peer.function](std::size_t times) {
            function.repeat(problem.cells, times);
        };
        problem.fill(false);
        const std::vector<double> ours = problem.result(export_.call(problem.cells));
        problem.fill(false);
        const std::uint64_t inputs = problem.inputs();
        test::Cell returned;
        if (peer.plan)
            loop(1);
        else
            returned = peer.function.call(problem.cells);
        destroyed = destroyed || problem.inputs() != inputs;
        const double apart = distance(ours, problem.result(returned));
        if (apart <= problem.family.tolerance(problem))
            contenders.push_back({"ns " + peer.name, "", loop});
        else
            std::fprintf(stderr, "%s at %d: %s differs by %g, left out\n", export_.name.c_str(), problem.size,
                         peer.name.c_str(), apart);
    }

    static bool takesTheSame(const test::Function& one, const test::Function& other) {
        return std::equal(one.arguments.begin(), one.arguments.end(), other.arguments.begin(), other.arguments.end(),
                          [](const test::ArgumentType& a, const test::ArgumentType& b) {
                              return a.letter == b.letter && a.pointer == b.pointer && a.constant == b.constant &&
                                     a.bytes == b.bytes && a.record == b.record;
                          });
    }
};

bool takeOption(const std::string& argument, Options& options) {
    const auto value = [&argument](const std::string& name) {
        return argument.find(name) == 0 ? argument.substr(name.size()) : std::string();
    };
    if (argument == "--quick") return options.quick = true;
    if (argument == "--all") return options.all = true;
    if (const std::string family = value("--family="); !family.empty()) {
        options.families.push_back(family);
        return true;
    }
    if (const std::string library = value("--library="); !library.empty()) {
        const std::size_t between = library.find('=');
        const std::string file = library.substr(between + 1);
        options.libraries.push_back({library.substr(0, between), dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)});
        if (options.libraries.back().handle == nullptr) std::fprintf(stderr, "%s\n", dlerror());
        return options.libraries.back().handle != nullptr;
    }
    return std::sscanf(argument.c_str(), "--sizes=%d-%d", &options.least, &options.most) == 2;
}

// For runner.py: what it prints beside the times.
void printFamilies() {
    std::printf("{\"levels\": [");
    for (const std::string& level : levelNames())
        std::printf("%s\"%s\"", level == levelNames()[0] ? "" : ", ", level.c_str());
    std::printf("],\n \"families\": {");
    for (const Family& family : families())
        std::printf("%s\"%s\": {\"unit\": \"%s\", \"against\": \"%s\", \"shortCalls\": %s}",
                    &family == &families()[0] ? "" : ",\n  ", family.name, family.unit, family.against,
                    family.shortCalls ? "true" : "false");
    std::printf("}}\n");
}

bool isSubject(const Family& family, const test::Row& row, const Options& options) {
    const auto holds = [](const auto& list, const auto& one) {
        return std::find(list.begin(), list.end(), one) != list.end();
    };
    return (options.families.empty() || holds(options.families, family.name)) && row.hasBuffers() &&
           row.sizeArgument() >= 0 && holds(family.modules, row.group.module) &&
           (options.all || family.measured(row)) &&
           std::all_of(options.libraries.begin(), options.libraries.end(),
                       [&row](const Library& library) { return library.address(row) != nullptr; });
}

void registerRow(const Family& family, const test::Row& row, const Options& options) {
    for (const Variant& variant : family.variants(row))
        for (const int size : options.quick ? family.quickSizes : family.sizes) {
            if (size < options.least || size > options.most) continue;
            const std::string name = std::string(family.name) + "/" + row.name() +
                                     (variant.label.empty() ? "" : "," + variant.label) + "/" + std::to_string(size);
            const bool isLong = row.takesOrder() && size >= 17;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&, variant, size](benchmark::State& state) {
                                             Contest contest(family, row, size, variant, options);
                                             std::size_t number = 0;
                                             for (auto _ : state) {
                                                 contest.round(number++);
                                                 state.SetIterationTime(contest.secondsOfTheBest());
                                             }
                                             contest.report(state);
                                         })
                ->UseManualTime()
                ->Iterations(options.quick || isLong ? 5 : 15);
        }
}

int run(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);   // runner.py reads along
    if (argc == 2 && argv[1] == std::string("--families")) {
        printFamilies();
        return 0;
    }
    Options options;
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (takeOption(argv[i], options)) continue;
        std::fprintf(stderr, "not an option here: %s\n", argv[i]);
        return 1;
    }
    vekSetErrMode(VEK_ErrModeParent);
    for (const Library& library : options.libraries) library.find("vekSetErrMode", vekSetErrMode)(VEK_ErrModeParent);

    for (const Family& family : families())
        for (const test::Row& row : test::rows())
            if (isSubject(family, row, options)) registerRow(family, row, options);
    benchmark::RunSpecifiedBenchmarks();
    bool failed = vekGetErrStatus() < 0;
    for (const Library& library : options.libraries)
        failed = failed || library.find("vekGetErrStatus", vekGetErrStatus)() < 0;
    return failed;
}

}   // namespace

}   // namespace bench

int main(int argc, char** argv) { return bench::run(argc, argv); }
