// Measures what the choice of a method of convolution leaves open, and writes _SRC/vekconvtables.h anew:
//
//     tune_conv > _SRC/vekconvtables.h       for a quiet machine; a few minutes
//     tune_conv --grid                       the choice as it stands, over the fastest method, on a grid of lengths
//
// Settled rows stay as they are. Crossovers between them: for each short length the long one from which on the faster
// of the transform methods beats direct sums, by bisection. Costs between settled orders: the measured times of a
// forward transform, and of a product and an inverse one, bent by a constant factor from order to order so that they
// meet both ends; beyond the largest order measured, and before the first settled one, a constant factor alone.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "problem.h"
#include "vekconv.h"

namespace {

using namespace vek::conv;

// The least of several rounds, in nanoseconds.
template <class Call>
double timeOf(Call call) {
    const std::size_t times = bench::timesFor(
        [&](std::size_t n) {
            for (; n > 0; --n) call();
        },
        1e5);
    double least = 1e300;
    for (int round = 0; round < 7; ++round) {
        const double start = bench::now();
        for (std::size_t i = 0; i < times; ++i) call();
        least = std::min(least, (bench::now() - start) / static_cast<double>(times));
    }
    return least;
}

template <class X, class H>
struct Lengths {
    std::vector<X> x;
    std::vector<H> h;
    std::vector<Result<X, H>> y;
    int xLen, hLen;

    Lengths(int longer, int shorter)
        : x(static_cast<std::size_t>(longer)),
          h(static_cast<std::size_t>(shorter)),
          y(x.size() + h.size()),
          xLen(longer),
          hLen(shorter) {
        for (X& value : x) vek::core::reals(&value)[0] = 1;
        for (H& value : h) vek::core::reals(&value)[0] = 1;
    }
    double time(Method method) {
        return timeOf([&] {
            if (method == Method::direct)
                direct(x.data(), xLen, h.data(), hLen, y.data());
            else if (method == Method::single)
                single(x.data(), xLen, h.data(), hLen, y.data());
            else
                sectioned(x.data(), xLen, h.data(), hLen, y.data(), method == Method::section1 ? 1 : 2);
        });
    }
    double best(std::initializer_list<Method> methods) {
        double least = 1e300;
        for (const Method method : methods) least = std::min(least, time(method));
        return least;
    }
};

constexpr auto transformMethods = {Method::single, Method::section1, Method::section2};

// The entries from `first` to before `last`: each the median of itself and its neighbours, which takes out what
// disturbed a measurement, and never above the one before it.
template <class X, class H>
void measureBetween(std::vector<int>& longBelow, int first, int last) {
    std::vector<int> measured;
    for (int i = first; i < last; ++i) {
        const int shorter = Crossover<X, H>::always + i;
        int low = shorter, high = 1 << 17;   // direct is the faster below
        while (high - low > std::max(1, low / 32)) {
            const int middle = std::max(low + 1, static_cast<int>(std::sqrt(static_cast<double>(low) * high)));
            Lengths<X, H> lengths(middle, shorter);
            (lengths.time(Method::direct) < lengths.best(transformMethods) ? low : high) = middle;
        }
        measured.push_back(high);
    }
    const int count = static_cast<int>(measured.size());
    for (int i = 0, least = 1 << 17; i < count; ++i) {
        std::vector<int> around(measured.begin() + std::max(0, i - 3), measured.begin() + std::min(count, i + 4));
        std::sort(around.begin(), around.end());
        least = std::min(least, around[around.size() / 2]);
        longBelow[static_cast<std::size_t>(first + i)] = least;
    }
}

template <class X, class H>
void crossovers(const char* types) {
    using Rule = Crossover<X, H>;
    constexpr int count = Rule::limit - Rule::always;
    constexpr bool settled = std::is_same_v<X, float> && std::is_same_v<H, float>;
    std::printf("template <>\nstruct Crossover<%s> {\n    static constexpr int always = %d;\n", types, Rule::always);
    std::printf("    static constexpr int limit = %d;\n    static constexpr int32_t longBelow[limit - always] = {",
                Rule::limit);
    std::vector<int> longBelow(Rule::longBelow, Rule::longBelow + count);
    if (!settled) measureBetween<X, H>(longBelow, 4, count - 3);
    for (int i = 0; i < count; ++i) std::printf("%s%d", i == 0 ? "" : ", ", longBelow[static_cast<std::size_t>(i)]);
    std::printf("};\n};\n");
}

constexpr int measuredOrders = 23;

template <class T, class Measure>
void costs(const char* name, const char* type, const T (&old)[costOrders], Measure measure) {
    double cost[costOrders];
    for (int order = 0; order < costOrders; ++order) cost[order] = old[order];
    std::vector<double> times;
    for (int order = 0; order < measuredOrders; ++order) times.push_back(measure(order));
    for (int from = 2; from + 5 < measuredOrders; from += 5) {
        const auto at = [&](int order) { return times[static_cast<std::size_t>(order)]; };
        const double bend = std::pow(cost[from + 5] / cost[from] / (at(from + 5) / at(from)), 0.2);
        for (int order = from + 1; order < from + 5; ++order)
            cost[order] = cost[from] * at(order) / at(from) * std::pow(bend, order - from);
    }
    std::printf("    static constexpr %s %s[costOrders] = {", type, name);
    for (int order = 0; order < costOrders; ++order) {
        char text[32];
        std::snprintf(text, sizeof text, "%.4g", cost[order]);
        const bool whole = std::strpbrk(text, ".e") == nullptr;
        std::printf("%s%s%s%s", order == 0 ? "" : ", ", text, whole ? ".0" : "", sizeof(T) == 4 ? "F" : "");
    }
    std::printf("};\n");
}

template <class Y>
void transformCosts(const char* name) {
    using T = vek::core::Real<Y>;
    const char* type = sizeof(T) == 4 ? "float" : "double";
    std::vector<Y> bins(std::size_t{1} << measuredOrders), by(bins.size());
    std::printf("template <>\nstruct Cost<%s> {\n", name);
    costs("forward", type, Cost<Y>::forward, [&](int order) {
        Spectrum<Y>::prepare(order);
        return timeOf([&] { Spectrum<Y>::forward(bins.data(), order); });
    });
    costs("productAndInverse", type, Cost<Y>::productAndInverse, [&](int order) {
        return timeOf([&] {
            Spectrum<Y>::multiply(by.data(), bins.data(), order);
            Spectrum<Y>::inverse(bins.data(), order);
        });
    });
    std::printf("};\n");
}

// What stands around the tables is copied from the header as it is.
void copyText(const char* from, const char* to) {
    std::FILE* file = std::fopen(VEK_SOURCE_DIR "/_SRC/vekconvtables.h", "r");
    char line[256];
    bool copies = from == nullptr;
    while (file != nullptr && std::fgets(line, sizeof line, file) != nullptr) {
        if (from != nullptr && std::strstr(line, from) == line) copies = true;
        if (to != nullptr && std::strstr(line, to) == line) break;
        if (copies) std::fputs(line, stdout);
    }
    if (file != nullptr) std::fclose(file);
}

void writeTables() {
    copyText(nullptr, "template <>");
    crossovers<float, float>("float, float");
    crossovers<VekCplx, VekCplx>("VekCplx, VekCplx");
    crossovers<VekCplx, float>("VekCplx, float");
    crossovers<float, VekCplx>("float, VekCplx");
    crossovers<double, double>("double, double");
    crossovers<VekDCplx, VekDCplx>("VekDCplx, VekDCplx");
    crossovers<VekDCplx, double>("VekDCplx, double");
    crossovers<double, VekDCplx>("double, VekDCplx");
    std::printf("\n");
    copyText("// By order of the transform", "template <>");
    transformCosts<float>("float");
    transformCosts<VekCplx>("VekCplx");
    transformCosts<double>("double");
    transformCosts<VekDCplx>("VekDCplx");
    std::printf("\n}   // namespace vek::conv\n");
}

template <class X, class H>
void grid(const char* name) {
    static constexpr const char* methods[] = {"direct", "single", "sections 1", "sections 2", "sections 3"};
    for (const int shorter : {4, 16, 40, 64, 100, 128, 256, 512, 1024, 4096}) {
        for (const int ratio : {1, 4, 16, 64, 256, 1024}) {
            if (std::int64_t{shorter} * ratio > 1 << 21) continue;
            Lengths<X, H> lengths(shorter * ratio, shorter);
            const Method method = choose<X, H>(shorter * ratio, shorter);
            const double chosen = lengths.time(method);
            const double best =
                std::min(lengths.best(transformMethods), shorter <= 256 ? lengths.time(Method::direct) : 1e300);
            std::printf("%-3s %8d x %-5d %-10s %12.0f ns, %.2f of the fastest\n", name, shorter * ratio, shorter,
                        methods[static_cast<int>(method)], chosen, std::max(1.0, chosen / best));
        }
    }
}

}   // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--grid") == 0) {
        grid<float, float>("s");
        grid<double, double>("d");
    } else {
        writeTables();
    }
}
