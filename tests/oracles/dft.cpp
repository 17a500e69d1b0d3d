#include "shorts.h"

namespace test {

namespace {

// By the definition, with roots from the table in Q14 or true ones.
std::vector<Wide> transformed(const Sight& call, bool inIntegers) {
    const std::vector<Wide> x = call.wide("src");
    const int flags = call.number("flags");
    const std::size_t n = x.size();
    std::vector<VekWCplx> table(n);
    if (inIntegers) vekvCalcDftTwdTbl(table.data(), static_cast<int>(n));
    std::vector<Wide> roots, bins(n);
    for (std::size_t m = 0; m < n; ++m) {
        const Wide w = inIntegers ? Wide{table[m].re / 16384.0L, table[m].im / 16384.0L} : root(m, n);
        roots.push_back((flags & VEK_Forw) != 0 ? w : conj(w));
    }
    const long double divisor = (flags & VEK_Inv) != 0 && (flags & VEK_NoScale) == 0 ? static_cast<long double>(n) : 1;
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t i = 0; i < n; ++i) bins[k] = bins[k] + x[i] * roots[i * k % n];
        bins[k] = {bins[k].re / divisor, bins[k].im / divisor};
        // Such quotients are exact enough for the nearest, the even one of two: a tie is exact, others are farther off.
        if (inIntegers) bins[k] = {std::nearbyint(bins[k].re), std::nearbyint(bins[k].im)};
    }
    return bins;
}

double accuracy(const RealType& real, int length) {
    return 4 * static_cast<double>(real.epsilon) * std::sqrt(std::log2(static_cast<double>(length)));
}

void floats(Sight& call) {
    call.wanted["dst"].whole = transformed(call, false);
    call.wanted["dst"].bound = accuracy(call.real, call.number("length"));
}

void shorts(Sight& call) {
    const int flags = call.number("flags");
    const int length = call.number("length");
    if (length == 1) {   // a copy
        const bool chosen = (call.number("scaleMode") & 4) != 0;
        call.wanted["dst"].elements = {exactly(call.array("src")[0])};
        call.wanted["scaleFactor"].elements = {chosen ? Exact{0} : call.array("scaleFactor")[0].re};
        return;
    }
    const bool inIntegers = (flags & VEK_DoIntCore) != 0 || ((flags & VEK_DoFloatCore) == 0 && length < 129);
    const std::vector<Wide> bins = transformed(call, inIntegers);
    long double power = 0;
    for (const Wide& bin : bins) power += bin.re * bin.re + bin.im * bin.im;
    const long double error = 4 * accuracy(realType('s'), length) * std::sqrt(power / length);
    wantShorts(call, "dst", bins, inIntegers ? 0 : error);
}

}   // namespace

VEK_ORACLES(dft) {
    whole("Dft", "c z", floats, true);
    whole("Dft", "v", shorts);
}

}   // namespace test
