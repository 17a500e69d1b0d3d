#include "shorts.h"

namespace test {

namespace {

int signOf(int flags) { return (flags & VEK_Forw) != 0 ? -1 : 1; }
int divisor(const Sight& call) {
    const int flags = call.number("flags");
    return (flags & VEK_Inv) != 0 && (flags & VEK_NoScale) == 0 ? call.number("length") : 1;
}

std::vector<Wide> transformed(const Sight& call) {
    std::vector<Wide> bins = naiveDft(call.wide("src"), signOf(call.number("flags")));
    const long double scale = 1.0L / divisor(call);
    for (Wide& bin : bins) bin = {bin.re * scale, bin.im * scale};
    return bins;
}

double accuracy(const RealType& real, int length) {
    return 4 * static_cast<double>(real.epsilon) * std::sqrt(std::log2(static_cast<double>(length)));
}

void floats(Sight& call) {
    Wanted& wanted = call.wanted["dst"];
    wanted.whole = transformed(call);
    wanted.bound = accuracy(call.real, call.number("length"));
}

// With roots in Q14, truncated, in whole numbers; divided to the nearest, the even one of two.
std::vector<Wide> integerSums(const Sight& call) {
    const std::vector<Wide> x = call.wide("src");
    const std::size_t n = x.size();
    const auto q14 = [](long double value) -> long long {
        const long double product = value * 16384;
        const bool isWhole = std::fabs(product - std::round(product)) < 1e-10L;
        return static_cast<long long>(isWhole ? std::round(product) : std::trunc(product));
    };
    std::vector<long long> re(n), im(n);
    for (std::size_t m = 0; m < n; ++m) {
        const Wide w = root(m, n);
        re[m] = q14(w.re);
        im[m] = (call.number("flags") & VEK_Forw) != 0 ? q14(w.im) : -q14(w.im);
    }
    const long double scale = 16384.0L * divisor(call);
    std::vector<Wide> bins;
    for (std::size_t k = 0; k < n; ++k) {
        long long sumRe = 0, sumIm = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const auto a = static_cast<long long>(x[i].re), b = static_cast<long long>(x[i].im);
            const std::size_t m = i * k % n;
            sumRe += a * re[m] - b * im[m];
            sumIm += a * im[m] + b * re[m];
        }
        // Quotients of 46 bits by 26 are exact enough for the nearest: a tie is exact, and others are farther from it.
        bins.push_back({std::nearbyint(static_cast<long double>(sumRe) / scale),
                        std::nearbyint(static_cast<long double>(sumIm) / scale)});
    }
    return bins;
}

void shorts(Sight& call) {
    const int flags = call.number("flags");
    const int length = call.number("length");
    if (length == 1) {
        call.wanted["dst"].elements = {exactly(call.array("src")[0])};
        const bool chosen = (call.number("scaleMode") & 4) != 0;
        call.wanted["scaleFactor"].elements = {chosen ? Exact{0} : call.array("scaleFactor")[0].re};
        return;
    }
    if ((flags & VEK_DoIntCore) != 0 || ((flags & VEK_DoFloatCore) == 0 && length < 129))
        return wantShorts(call, "dst", integerSums(call), 0);
    const std::vector<Wide> bins = transformed(call);
    long double power = 0;
    for (const Wide& bin : bins) power += bin.re * bin.re + bin.im * bin.im;
    wantShorts(call, "dst", bins, accuracy(realType('s'), length) * std::sqrt(power / length) * 4);
}

}   // namespace

VEK_ORACLES(dft) {
    whole("Dft", "c z", floats, true);
    whole("Dft", "v", shorts);
}

}   // namespace test
