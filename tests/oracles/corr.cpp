#include "tests/support/oracle.h"

namespace test {

namespace {

Wide sumAt(const std::vector<Wide>& a, const std::vector<Wide>& b, long lag) {
    Wide sum;
    const auto lenA = static_cast<long>(a.size());
    const auto lenB = static_cast<long>(b.size());
    for (long n = std::max(0L, -lag); n < std::min(lenA, lenB - lag); ++n)
        sum = sum + conj(a[static_cast<std::size_t>(n)]) * b[static_cast<std::size_t>(n + lag)];
    return sum;
}

long double norm(const std::vector<Wide>& x) {
    long double square = 0;
    for (const Wide& value : x) square += value.re * value.re + value.im * value.im;
    return std::sqrt(square);
}

// Sums of int16 are exact in 64 bits, and so is the place of a quotient among the halves.
Exact nearestShort(long double value) { return std::max(-32768.0L, std::min(32767.0L, std::nearbyint(value))); }

// divisor(lag) scales; a bound on floating-point errors comes from the transforms, whose errors spread over all lags.
void correlated(Sight& call, const std::vector<Wide>& a, const std::vector<Wide>& b, long lo, long hi,
                const std::function<long double(long lag)>& divisor) {
    const auto longest = static_cast<double>(std::max(a.size(), b.size()));
    const long double within =
        (8 + 2 * std::log2(longest)) * static_cast<long double>(call.real.epsilon) * norm(a) * norm(b);
    for (long lag = lo; lag <= hi; ++lag) {
        const Wide sum = sumAt(a, b, lag);
        const auto part = [&](long double value) -> Part {
            if (call.real.letter == 'w') return {Part::bits, nearestShort(value / divisor(lag))};
            const bool none = lag >= static_cast<long>(b.size()) || -lag >= static_cast<long>(a.size());
            if (none) return {Part::bits, 0};
            Part near = {Part::near, value / divisor(lag), (within / divisor(lag))};
            near.others = {-near.value};
            if (near.value != 0) near.others.clear();
            return near;
        };
        call.wanted["dst"].elements.push_back({part(sum.re), part(sum.im)});
    }
}

}   // namespace

VEK_ORACLES(corr) {
    const auto ofOne = [](Sight& call) {
        const std::vector<Wide> x = call.wide("src");
        const int type = call.number("type");
        const auto length = static_cast<long>(x.size());
        correlated(call, x, x, 0, call.number("nLags") - 1, [=](long lag) {
            return static_cast<long double>(type == 0 ? 1 : type == 1 ? length : length - lag);
        });
    };
    const auto ofTwo = [](Sight& call) {
        correlated(call, call.wide("srcA"), call.wide("srcB"), call.number("loLag"), call.number("hiLag"),
                   [](long) { return 1.0L; });
    };
    const bool ordinaryOnly = true;
    whole("AutoCorr", "s c d z", ofOne, ordinaryOnly);
    whole("CrossCorr", "s c d z sc cs dz zd", ofTwo, ordinaryOnly);
    whole("AutoCorr", "w v", ofOne);
    whole("CrossCorr", "w v wv vw", ofTwo);
}

}   // namespace test
