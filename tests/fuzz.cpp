// Calls of all exports with random arguments, right and wrong, against the rows as their model: the reports, the status
// and the result of every call that computes nothing; what it writes, reads and leaves; and that levels agree.
// Beyond that, what no row says: vekm6_tests --fuzz=SECONDS [--seed=N].
#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "support/heap.h"
#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/common_interface_defs.h>
#endif

namespace test {

namespace {

// As many lengths as a thread's lists of tables by length hold: then the tables are released, and a new seed begins.
constexpr int callsPerSeed = 32;
std::string current;   // the call, for whom it ends the program
const std::vector<std::string> levels = levelNames();
std::string level;

void showCurrent() {
    std::fprintf(stderr, "\n--seed=%llu: %s\n", static_cast<unsigned long long>(seed), current.c_str());
}
[[maybe_unused]] void die(int) {
    showCurrent();
    std::_Exit(1);
}

struct Control {
    unsigned short x87 = 0;
    unsigned mxcsr = 0;
    bool operator==(const Control& other) const = default;
};
Control controlWords() {
    Control now;
#if defined(__x86_64__) || defined(__i386__)
    asm volatile("fnstcw %0\n\tstmxcsr %1" : "=m"(now.x87), "=m"(now.mxcsr));
    now.mxcsr &= ~0x3fu;   // what has happened so far
#endif
    return now;
}

// What the calling thread reports when its tables cannot be built.
std::string outOfMemory(const Row& of, const Cells& cells) {
    if (of.inner.name.empty()) return reportLine(VEK_StsNoMemory, of.name(), of.group.noMemory, of.group.module);
    const std::string one = outOfMemory(row(of.inner.name), {});
    return one + (of.value(of.inner.both, cells) != 0 ? one : "") +
           reportLine(VEK_StsBacktrace, of.name(), "out " + of.inner.name, of.group.module);
}

// Whether the call comes as far as its data.
bool computes(const Row& of, const Cells& cells, VekStatus status) {
    if (status < 0 && of.group.gate == Gate::computes) return false;
    if (!of.inner.name.empty()) return computes(row(of.inner.name), of.passedOn(of.inner.first, cells), status);
    return std::none_of(of.checks.begin(), of.checks.end(),
                        [&](const Check& check) { return of.value(check.condition, cells) != 0; });
}

// The first place where two arrays differ by more than `tolerance` of the largest value; -1: none.
template <class T>
int difference(const std::vector<unsigned char>& a, const std::vector<unsigned char>& b, double tolerance) {
    std::vector<T> x(a.size() / sizeof(T)), y(x.size());
    std::memcpy(x.data(), a.data(), x.size() * sizeof(T));
    std::memcpy(y.data(), b.data(), x.size() * sizeof(T));
    double most = 0;
    for (const T value : x) most = std::max(most, std::abs(static_cast<double>(value)));
    for (std::size_t i = 0; i < x.size(); ++i) {
        const bool nan = x[i] != x[i] && y[i] != y[i];
        const double apart = std::abs(static_cast<double>(x[i]) - static_cast<double>(y[i]));
        if (x[i] != y[i] && !nan && !(apart <= most * tolerance)) return static_cast<int>(i);
    }
    return -1;
}

class Step {
public:
    explicit Step(Data& from) : random(from) {}

    // What is wrong; empty: nothing.
    std::string run() {
        if (random.below(8) == 0) forceLevel(level = any(levels));
        vekSetErrMode(VEK_ErrModeSilent);
        choose();
        Prepared prepared(tested, plain, options);
        spoil(prepared.cells);
        if (const bool fits = sizes(prepared.cells) == sizes(plain); !fits && computes(tested, prepared.cells, old))
            return {};   // the arrays are not for that size

        VekStatus status = old;
        std::string wanted = tested.expectedReports(prepared.cells, status);
        const bool computing = computes(tested, prepared.cells, old);
        for (const Check& check : tested.late) {
            if (!computing || tested.value(check.condition, prepared.cells) == 0) continue;
            status = VEK_StsBadArg;
            wanted += reportLine(status, tested.name(), check.message, tested.group.module);
        }
        describe(prepared.cells);
        const bool roomy = random.below(2) != 0;
        const long failing = heap::available() && random.below(4) == 0 ? random.below(3) : -1;
        const bool onwards = random.below(2) != 0;

        reports.clear();
        vekSetErrStatus(old);
        const Control before = controlWords();
        if (failing >= 0)
            heap::failAt(failing, onwards);
        else
            heap::failAbove(64 << 20);
        const Cell result = roomy ? tested.function.callRoomy(prepared.cells) : tested.function.call(prepared.cells);
        const long failures = heap::failures();
        heap::failNone();

        if (!(controlWords() == before)) return "control words changed";
        if (const std::string damage = prepared.damage(); !damage.empty()) return damage;
        if (tested.group.gate == Gate::always &&
            tested.checks.empty()) {   // what the status is, or what asks for memory
            if (tested.name().find("Malloc") != std::string::npos) vekFree(result.get<void*>());
            return {};
        }
        const bool outOf = failures > (tested.group.retriesMemory ? 1 : 0);
        if (outOf) {
            wanted = outOfMemory(tested, prepared.cells);
            status = VEK_StsNoMemory;
        }
        if (reports.text() != wanted) return "reports\n" + reports.text() + "instead of\n" + wanted;
        if (vekGetErrStatus() != status) return "status " + std::to_string(vekGetErrStatus());
        Cell returned;
        if (!wanted.empty())
            returned = tested.expectedFailure(status);
        else if (!tested.inner.name.empty())
            returned.set(status);
        const bool known = outOf || !computing || tested.group.returnsStatus;
        if (known && !(result == returned)) return "result " + std::to_string(result.get<int>());
        if (outOf || !computing) return prepared.untouched() ? "" : "outputs touched";
        return compare(prepared);
    }

private:
    Data& random;
    const Row& tested = any(rows());
    Reports reports;
    Cells plain;
    SceneOptions options;
    VekStatus old = VEK_StsOk;
    bool wild = false;   // special values among data or scalars: then levels may differ

    template <class T>
    const T& any(const std::vector<T>& of) {
        return of[static_cast<std::size_t>(random.below(static_cast<int>(of.size())))];
    }

    void choose() {
        int size =
            random.below(2) != 0 ? 1 + random.below(70) : std::max(1, (1 << random.below(13)) - 2 + random.below(5));
        if (tested.takesOrder()) size = random.below(13);
        plain = tested.plain(size, random.below(tested.choices()));
        options.filling = static_cast<Filling>(random.below(3));
        wild = options.filling == Filling::mixed;
        options.salt = random.bits();
        options.aliases = any(aliasings(tested, plain));
        for (const Argument& argument : tested.arguments)
            options.places.push_back({static_cast<decltype(Place::where)>(random.below(3)),
                                      argument.type.realBytes() * static_cast<std::size_t>(random.below(16))});
        if (!tested.group.hostile.empty() && random.below(8) == 0) options.hostile = any(tested.group.hostile).make;
        old = any<VekStatus>({0, 0, 0, 0, 0, 1, VEK_StsBadArg, VEK_StsNoConvergence});
    }

    // Other values for some of the arguments.
    void spoil(Cells& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            if (random.below(8) != 0) continue;
            if (argument.type.pointer) {
                cells[i] = {};
            } else if (argument.role == Role::flags && random.below(4) != 0) {
                cells[i].set(cells[i].get<int>() ^ (1 << random.below(14)));
            } else if (argument.type.real() == 's' || argument.type.real() == 'd') {
                wild = true;
                const bool single = argument.type.real() == 's';
                const float floats[] = {random.specialReal<float>(), random.specialReal<float>()};
                const double doubles[] = {random.specialReal<double>(), random.specialReal<double>()};
                std::memcpy(cells[i].bytes, single ? static_cast<const void*>(floats) : doubles, argument.type.bytes);
            } else {
                const int value = any<int>(
                    {0, 1, -1, 2, 3, 32, 33, 1 << 30, INT_MIN, INT_MAX, -INT_MAX, static_cast<int>(random.bits())});
                std::memcpy(cells[i].bytes, &value, std::min(argument.type.bytes, sizeof value));
            }
        }
    }

    std::vector<int> sizes(const Cells& cells) const {
        std::vector<int> all;
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (tested.arguments[i].role == Role::length || tested.arguments[i].role == Role::order)
                all.push_back(cells[i].get<int>());
        return all;
    }

    // The same call on other arrays: at the first level the same values but for roundings, at its own the same bits.
    std::string compare(const Prepared& prepared) {
        const bool exact = wild || random.below(4) != 0;
        if (!exact) forceLevel(levels.front());
        SceneOptions other = options;
        other.places.clear();
        Prepared again(tested, plain, other);
        for (std::size_t i = 0; i < plain.size(); ++i)
            if (!tested.arguments[i].type.pointer || prepared.cells[i] == Cell{}) again.cells[i] = prepared.cells[i];
        vekSetErrStatus(old);
        again.call();
        if (!exact) forceLevel(level);
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            if (!argument.isWritten()) continue;
            const auto a = prepared.now(static_cast<int>(i)), b = again.now(static_cast<int>(i));
            const int at = argument.type.real() == 's'   ? difference<float>(a, b, exact ? 0 : 1e-5)
                           : argument.type.real() == 'd' ? difference<double>(a, b, exact ? 0 : 1e-12)
                                                         : difference<unsigned char>(a, b, 0);
            if (at >= 0) return argument.name + ": real " + std::to_string(at) + " differs between two such calls";
        }
        return {};
    }

    void describe(const Cells& cells) {
        current = tested.name() + "(";
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            const auto shown = [&](const std::string& name) {
                char text[64];
                std::snprintf(text, sizeof text, "%.17g", static_cast<double>(tested.value(name, cells)));
                return name + "=" + text + " ";
            };
            if (argument.type.pointer)
                current +=
                    argument.name + (cells[i] == Cell{} ? "=0 "
                                                        : " at " + std::to_string(options.places[i].where) + "+" +
                                                              std::to_string(options.places[i].bytes) + " ");
            else if (argument.type.isComplex())
                current += shown(argument.name + ".re") + shown(argument.name + ".im");
            else
                current += shown(argument.name);
        }
        current += ") at level " + level + ", status " + std::to_string(old) + ", filling " +
                   std::to_string(static_cast<int>(options.filling));
        for (const auto& [out, in] : options.aliases)
            current += ", " + tested.arguments[static_cast<std::size_t>(out)].name + " is " +
                       tested.arguments[static_cast<std::size_t>(in)].name;
    }
};

}   // namespace

int fuzz(double seconds, bool seeded) {
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_set_death_callback(showCurrent);
#else
    for (const int signal : {SIGSEGV, SIGILL, SIGFPE, SIGABRT}) std::signal(signal, die);
#endif
    if (!seeded) seed = std::random_device{}();
    std::printf("Fuzzing from --seed=%llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    const auto start = std::chrono::steady_clock::now();
    long calls = 0;
    for (; std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() < seconds; ++seed) {
        vekcFreeTwdTbls();
        vekzFreeTwdTbls();
        vekvFreeTwdTbls();
        vekFreeBitRevTbls();
        Data random(1);
        forceLevel(level = levels.back());
        for (int i = 0; i < callsPerSeed; ++i, ++calls) {
            const std::string wrong = Step(random).run();
            if (wrong.empty()) continue;
            showCurrent();
            std::fprintf(stderr, "%s\n", wrong.c_str());
            return 1;
        }
    }
    std::printf("%ld calls\n", calls);
    return 0;
}

}   // namespace test
