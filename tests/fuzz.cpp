// Calls of all exports with random arguments, right and wrong. The rows are the model of what each reports, returns and
// leaves as it was; what it computes is compared between levels and between places of its arrays.
// vekm6_tests --fuzz=SECONDS [--seed=N]
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
// What sanitizers find ends in a signal too, once they have said it.
extern "C" const char* __asan_default_options() { return "abort_on_error=1:allocator_may_return_null=1"; }
extern "C" const char* __ubsan_default_options() { return "abort_on_error=1"; }
constexpr int fatalSignals[] = {SIGABRT};
#else
constexpr int fatalSignals[] = {SIGABRT, SIGSEGV, SIGILL, SIGFPE};
#endif

namespace test {

namespace {

// As many lengths as a thread keeps tables for; then they are released and a new seed begins.
constexpr int callsPerSeed = 32;
const std::vector<std::string> levels = levelNames();
std::string level, current;   // the call, for whom it ends the program

void showCurrent() {
    std::fprintf(stderr, "\n--seed=%llu: %s\n", static_cast<unsigned long long>(seed), current.c_str());
}
void die(int) {
    showCurrent();
    std::_Exit(1);
}

// Rounding, exception masks and precision, of the x87 in the upper half.
unsigned long long controlWords() {
    unsigned short x87 = 0;
    unsigned mxcsr = 0;
#if defined(__x86_64__) || defined(__i386__)
    asm volatile("fnstcw %0\n\tstmxcsr %1" : "=m"(x87), "=m"(mxcsr));
#endif
    return static_cast<unsigned long long>(x87) << 32 | (mxcsr & ~0x3fu);
}

std::string outOfMemory(const Row& of, const Cells& cells) {
    if (of.inner.name.empty()) return of.noMemoryReports(0);
    const std::string one = outOfMemory(row(of.inner.name), {});   // each of both signals asks for its tables
    return one + (of.value(of.inner.both, cells) != 0 ? one : "") +
           reportLine(VEK_StsBacktrace, of.name(), of.inner.message, of.group.module);
}

// Whether the call comes as far as its data.
bool computes(const Row& of, const Cells& cells, VekStatus status) {
    if (status < 0 && of.group.gate == Gate::computes) return false;
    if (!of.inner.name.empty()) return computes(row(of.inner.name), of.passedOn(of.inner.first, cells), status);
    return std::none_of(of.checks.begin(), of.checks.end(),
                        [&](const Check& check) { return of.value(check.condition, cells) != 0; });
}

bool differ(const void* a, const void* b, std::size_t bytes, char real, bool exact) {
    const std::vector<double> x = realsAt(a, bytes, real), y = realsAt(b, bytes, real);
    double most = 0;
    for (const double value : x) most = std::max(most, std::abs(value));
    // Roundings, and the last bit of what has hardly any.
    const double apart = exact         ? 0
                         : real == 's' ? most * 1e-5 + 4 * std::numeric_limits<float>::denorm_min()
                         : real == 'd' ? most * 1e-12 + 4 * std::numeric_limits<double>::denorm_min()
                                       : 0;
    for (std::size_t k = 0; k < x.size(); ++k)
        if (x[k] != y[k] && !(std::isnan(x[k]) && std::isnan(y[k])) && !(std::abs(x[k] - y[k]) <= apart)) return true;
    return false;
}

class Step {
public:
    explicit Step(Data& from) : random(from) {}

    // What is wrong; empty: nothing.
    std::string run() {
        choose();
        Prepared prepared(tested, plain, options);
        const Cells& cells = prepared.cells;
        const bool fits = spoil(prepared.cells) && options.hostile == nullptr;
        const bool computing = computes(tested, cells, old);
        if (computing && !fits) return {};   // what it would work on is not there
        VekStatus status = old;
        std::string wanted = tested.expectedReports(cells, status);
        describe(cells);
        for (const Check& check : tested.late) {
            if (!computing || tested.value(check.condition, cells) == 0) continue;
            status = VEK_StsBadArg;
            wanted += reportLine(status, tested.name(), check.message, tested.group.module);
        }

        reports.clear();
        vekSetErrStatus(old);
        const bool roomy = random.below(2) != 0;
        const unsigned long long control = controlWords();
        if (heap::available() && fits && random.below(4) == 0)
            heap::failAt(random.below(3), random.below(2) != 0);
        else
            heap::failAbove(64 << 20);
        const Cell result = roomy ? tested.function.callRoomy(cells) : tested.function.call(cells);
        const bool without = tested.group.doesWithout && heap::failures() > 0;
        // Of work memory no row speaks: the chain of reports begins with who lacked it, and ends with the export.
        const bool unspoken = tested.group.noMemory.empty() && tested.inner.name.empty();
        bool outOf = !without && heap::failures() > (tested.group.retriesMemory ? 1 : 0) &&
                     (!unspoken || vekGetErrStatus() == VEK_StsNoMemory);
        heap::failNone();
        // Of several requests nobody knows here which one failed, and whether that was made good.
        const bool several = outOf && tested.group.noMemory.find(';') != std::string::npos;
        if (several) outOf = !reports.text().empty();

        if (controlWords() != control) return "control words changed";
        if (const std::string damage = prepared.damage(); !damage.empty()) return damage;
        if (tested.name().find("Malloc") != std::string::npos) vekFree(result.get<void*>());
        if (tested.group.gate == Gate::always && tested.checks.empty()) return {};   // status and memory: no row says
        if (outOf) {
            const std::vector<Report>& seen = reports.seen();
            const bool isChain =
                !seen.empty() && seen.front().status == VEK_StsNoMemory && seen.back().name == tested.name();
            wanted = several || (unspoken && isChain) ? reports.text() : outOfMemory(tested, cells);
            status = several ? vekGetErrStatus() : VEK_StsNoMemory;
        }
        if (reports.text() != wanted) return "reports\n" + reports.text() + "instead of\n" + wanted;
        if (vekGetErrStatus() != status) return "status " + std::to_string(vekGetErrStatus());
        if (without) return {};   // with other roundings than the same call again
        Cell returned;
        if (!wanted.empty())
            returned = tested.expectedFailure(outOf && unspoken ? reports.seen().back().status : status);
        else if (!tested.inner.name.empty())
            returned.set(status);
        if (tested.group.leavesStatus) returned.set(status);
        if ((outOf || !computing || tested.group.returnsStatus || tested.group.leavesStatus) && !(result == returned))
            return "result " + std::to_string(result.get<int>());
        if (outOf || !computing) return prepared.untouched() ? "" : "outputs touched";
        return compare(prepared, result);
    }

private:
    Data& random;
    const Row& tested = any(rows());
    Reports reports;
    Cells plain;
    SceneOptions options;
    VekStatus old = VEK_StsOk;
    bool wild = false;   // special values among data or scalars, of which levels may make different ones

    template <class T>
    const T& any(const std::vector<T>& of) {
        return of[static_cast<std::size_t>(random.below(static_cast<int>(of.size())))];
    }

    void choose() {
        if (random.below(8) == 0) forceLevel(level = any(levels));
        const int length = random.below(2) == 0 ? random.below(70) : (1 << random.below(13)) - 2 + random.below(5);
        plain =
            tested.plain(tested.takesOrder() ? random.below(13) : std::max(1, length), random.below(tested.choices()));
        options.filling = any<Filling>({Filling::positive, Filling::ordinary, Filling::mixed});
        wild = options.filling == Filling::mixed;
        options.salt = random.bits();
        options.aliases = any(aliasings(tested, plain));
        for (const Argument& argument : tested.arguments)
            options.places.push_back({any<decltype(Place::where)>({Place::front, Place::back, Place::offset}),
                                      argument.type.realBytes() * static_cast<std::size_t>(random.below(16))});
        if (!tested.group.hostile.empty() && random.below(8) == 0) options.hostile = any(tested.group.hostile).make;
        old = any<VekStatus>({0, 0, 0, 0, 0, 1, VEK_StsBadArg, VEK_StsNoConvergence});
        vekSetErrMode(VEK_ErrModeSilent);
    }

    // Other values for some of the arguments; false: of a size, or such that the arrays are too short.
    bool spoil(Cells& cells) {
        bool fits = true;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const ArgumentType& type = tested.arguments[i].type;
            const Role role = tested.arguments[i].role;
            if (random.below(8) != 0) continue;
            // Orders of which nobody wants to wait for the tables are not among them.
            int number[4] = {
                any<int>({0, 1, -1, 2, 3, 32, 33, 1 << 30, INT_MIN, INT_MAX, static_cast<int>(random.bits())})};
            // Nor are lengths for which there may be no memory.
            if (role == Role::length && !tested.group.noMemory.empty()) number[0] = any<int>({0, -1, INT_MIN});
            if (role == Role::flags && random.below(4) != 0) number[0] = cells[i].get<int>() ^ 1 << random.below(14);
            const float singles[] = {random.specialReal<float>(), random.specialReal<float>()};
            const double doubles[] = {random.specialReal<double>(), random.specialReal<double>()};
            const bool real = !type.pointer && (type.real() == 's' || type.real() == 'd');
            const void* from = !real ? number : type.real() == 's' ? static_cast<const void*>(singles) : doubles;
            cells[i] = {};
            if (!type.pointer) std::memcpy(cells[i].bytes, from, type.bytes);
            wild = wild || real;
            fits = fits && role != Role::length && role != Role::order;
        }
        for (const Argument& of : tested.arguments)
            fits = fits && (!of.isBuffer() || tested.elements(of, cells) <= tested.elements(of, plain));
        return fits;
    }

    // The same call on arrays apart: at its own level the same bits, at the first one the same but for roundings.
    std::string compare(const Prepared& prepared, const Cell& result) {
        const bool exact = wild || tested.group.perLevel || random.below(2) != 0;
        if (!exact) forceLevel(levels.front());
        SceneOptions apart = options;
        apart.places.clear();
        if (tested.group.setUp == nullptr) apart.aliases.clear();   // records would be set up with other data
        Prepared again(tested, plain, apart);
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            if (!argument.type.pointer || prepared.cells[i] == Cell{}) again.cells[i] = prepared.cells[i];
            if (!argument.isBuffer() || again.cells[i] == Cell{}) continue;
            const std::size_t bytes = tested.elements(argument, plain) * argument.type.bytes;
            std::memcpy(again.cells[i].get<void*>(), prepared.initial(static_cast<int>(i)).data(), bytes);
        }
        vekSetErrStatus(old);
        const Cell other = again.call();
        if (!exact) forceLevel(level);
        const ArgumentType& type = tested.function.result;
        if (!type.pointer && differ(result.bytes, other.bytes, type.bytes, type.real(), exact)) return "other result";
        for (std::size_t i = 0; i < plain.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            if (!argument.isWritten()) continue;
            const auto a = prepared.now(static_cast<int>(i)), b = again.now(static_cast<int>(i));
            if (differ(a.data(), b.data(), a.size(), argument.type.real(), exact))
                return argument.name + " differs between two such calls";
        }
        return {};
    }

    void describe(const Cells& cells) {
        current = tested.name() + " at level " + level + ", status " + std::to_string(old) + ":";
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Argument& argument = tested.arguments[i];
            const auto value = static_cast<double>(tested.value(argument.name, cells));
            current += " " + argument.name + "=";
            current += value != 0 && argument.type.pointer ? "array" : std::to_string(value);
        }
    }
};

}   // namespace

int fuzz(double seconds, bool seeded) {
    for (const int signal : fatalSignals) std::signal(signal, die);
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
        Data random(Data().bits());   // neighbouring seeds alone would give the same values, one later
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
