// Golden results: what every export computed from fixed data when tests/golden.txt was written, as hashes.
//
// A line is an export, a key, and a hash; the key says how far the bits are promised: * everywhere, avx2 at that level
// on every target, linux/avx2 at that level of that target, linux/* at all its levels. Those of a target depend on the
// sines and cosines of its mathematical library, which another version of it, or the same on another processor, may
// round the other way: lines "sincos" hold their hash, and where it differs, lines with a target are passed over.
// `vekm6_tests --golden` writes the lines of the levels it can run, of each export with the keys that it has; a new one
// gets * if its levels agree. Do so on both targets, and give it the keys that its header promises.
#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>

#include "support/levels.h"
#include "support/prepared.h"
#include "support/reports.h"

namespace test {

bool writesGolden = false;   // main: --golden

namespace {

#ifdef _WIN32
const std::string target = "win32/";
#else
const std::string target = "linux/";
#endif
constexpr const char* file = VEK_SOURCE_DIR "/tests/golden.txt";
constexpr const char* sines = "sincos";

using Lines = std::map<std::string, std::uint64_t>;   // hashes by key

void hashIn(std::uint64_t& hash, const void* start, std::size_t bytes, char real) {
    for (double number : realsAt(start, bytes, real)) {
        if (std::isnan(number)) number = std::numeric_limits<double>::quiet_NaN();   // all are one
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        hash = (hash ^ bits) * 0x9e3779b97f4a7c15ull;
        hash ^= hash >> 29;
    }
}

bool hasResults(const Row& of) {
    return of.group.gate != Gate::always &&
           ((of.function.result.bytes != 0 && !of.function.result.pointer) ||
            std::any_of(of.arguments.begin(), of.arguments.end(), [](const Argument& a) { return a.isWritten(); }));
}

std::uint64_t hashOf(const Row& of) {
    std::uint64_t hash = 0;
    Reports reports;
    const std::vector<int> orders = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, lengths = {1, 2, 3, 7, 64, 67, 300};
    for (const int size : of.takesOrder() ? orders : lengths)
        for (int variant = 0; variant < 2 * of.choices(); ++variant) {
            Cells plain = of.plain(size, variant / 2);
            Data random(static_cast<std::uint64_t>(size));
            for (std::size_t i = 0; i < plain.size(); ++i) {
                const Argument& scalar = of.arguments[i];
                if (scalar.role != Role::scalar || !scalar.values.empty()) continue;
                const auto doubles = random.mixed<double>(2);
                const float singles[] = {static_cast<float>(doubles[0]), static_cast<float>(doubles[1])};
                const auto shorts = Data(i).ordinary<std::int16_t>(2);
                const void* drawn = doubles.data();
                if (scalar.type.real() == 's') drawn = singles;
                if (scalar.type.real() == 'w') drawn = shorts.data();
                std::memcpy(plain[i].bytes, drawn, scalar.type.bytes);
            }
            const Prepared prepared(of, plain, {.filling = variant % 2 == 0 ? Filling::ordinary : Filling::mixed});
            reports.clear();
            const Cell result = prepared.call();
            if (!of.function.result.pointer)
                hashIn(hash, result.bytes, of.function.result.bytes, of.function.result.real());
            for (std::size_t i = 0; i < plain.size(); ++i) {
                if (!of.arguments[i].isWritten()) continue;
                const std::vector<unsigned char> now = prepared.now(static_cast<int>(i));
                hashIn(hash, now.data(), now.size(), of.arguments[i].type.real());
            }
        }
    return hash;
}

// Of the angles that the tables of those sizes have.
std::uint64_t hashOfSines() {
    std::uint64_t hash = 0;
    for (const int n : {1024, 3, 7, 67, 300})
        for (int i = 0; i <= n; ++i) {
            const double angle = 6.283185307179586 * (i / (8.0 * n));
            const double both[] = {std::cos(angle), std::sin(angle)};
            hashIn(hash, both, sizeof both, 'd');
        }
    return hash;
}

bool isRecorded(const Lines& lines, const std::string& level, std::uint64_t hash, bool sameSines) {
    bool found = false;
    for (const auto& [key, recorded] : lines) {
        const std::size_t slash = key.find('/') + 1;
        const bool here = slash == 0 || key.compare(0, slash, target) == 0;
        const bool now = key.substr(slash) == "*" || key.substr(slash) == level || level == "auto";
        found = found || (here && now && recorded == hash) || (slash != 0 && !sameSines);
    }
    return found;
}

TEST(Golden, ResultsAreTheRecordedOnes) {
    const std::uint64_t usual = seed;
    seed = 1;
    writesGolden = writesGolden && levelNames().front() != "auto";   // which level that is, nobody says
    std::map<std::string, Lines> known, fresh;
    std::ifstream in(file);
    for (std::string name, key; in >> name >> key;) in >> std::hex >> known[name][key];
    const bool sameSines = known[sines][target + "*"] == hashOfSines();
    if (!sameSines) std::printf("Other sines and cosines than recorded: transforms are passed over\n");
    (fresh[sines] = known[sines])[target + "*"] = hashOfSines();
    for (const Row& of : rows()) {
        if (!hasResults(of)) continue;
        const Lines& lines = known[of.name()];
        Lines hashes;   // by level
        for (const std::string& level : levelNames())
            if (forceLevel(level)) hashes[level] = hashOf(of);
        const bool agree = std::all_of(hashes.begin(), hashes.end(),
                                       [&](const auto& one) { return one.second == hashes.begin()->second; });
        const std::string form = !lines.empty() ? lines.begin()->first : agree ? "*" : target;
        const bool perTarget = form.find('/') != form.npos, perLevel = form.back() != '*';
        fresh[of.name()] = lines;
        for (const auto& [level, hash] : hashes) {
            fresh[of.name()][(perTarget ? target : "") + (perLevel ? level : "*")] = hash;
            EXPECT_TRUE(writesGolden || isRecorded(lines, level, hash, sameSines))
                << of.name() << " " << level << " " << hash;
        }
        EXPECT_TRUE(agree || perLevel) << of.name() << ": levels differ, though its key is " << form;
    }
    EXPECT_TRUE(writesGolden || fresh.size() == known.size()) << "lines of what is no export";
    seed = usual;
    if (!writesGolden || HasFailure()) return;
    std::ofstream out(file, std::ios::binary);
    for (const auto& [name, lines] : fresh)
        for (const auto& [key, hash] : lines) out << name << " " << key << " " << std::hex << hash << "\n";
}

}   // namespace

}   // namespace test
