#include <algorithm>

#include "scaled.h"

namespace test {

namespace {

// The definition. The accumulated type holds every product exactly: Wide of floats, Number of integers.
template <class Value>
std::vector<Value> sums(const std::vector<Value>& x, const std::vector<Value>& h) {
    std::vector<Value> y(x.size() + h.size() - 1);
    for (std::size_t i = 0; i < x.size(); ++i)
        for (std::size_t k = 0; k < h.size(); ++k) y[i + k] = y[i + k] + x[i] * h[k];
    return y;
}

void convolved(Sight& call) {
    Wanted& wanted = call.wanted["y"];
    wanted.whole = sums(call.wide("x"), call.wide("h"));
    // Three transforms and a product; with order 0 a sum of some products.
    while (std::size_t{1} << wanted.order < wanted.whole.size()) ++wanted.order;
    wanted.order = 4 * wanted.order + 4;
}

// Long operands go through floats: results are as far off as theirs are, and where they wrap that may be anything.
void convolvedShorts(Sight& call) {
    const std::vector<Number>& x = call.array("x");
    const std::vector<Number>& h = call.array("h");
    std::vector<long long> xs, hs;
    for (const Number& value : x) xs.push_back(static_cast<long long>(value.re));
    for (const Number& value : h) hs.push_back(static_cast<long long>(value.re));
    std::vector<Number> exact;
    Exact largest = 0;
    for (const long long sum : sums(xs, hs)) {
        exact.push_back({static_cast<Exact>(sum), 0});
        largest = std::max(largest, magnitude(exact.back().re));
    }
    scaled(call, exact);
    const std::size_t shorter = std::min(x.size(), h.size()), longer = std::max(x.size(), h.size());
    if (shorter < 64 || (shorter < 128 && longer < 8192) || (shorter < 256 && longer < 512)) return;
    const int mode = call.number("scaleMode");
    const bool saturates = mode == 1 || mode == 3 || mode == 4;
    const Exact factor = mode == 1 ? Exact{0} : call.wanted["scaleFactor"].elements[0].re.value;
    Exact within = largest * 1e-6;
    for (int i = 0; i < 64 && i < magnitude(factor); ++i) within = factor > 0 ? within / 2 : within * 2;
    for (Expected& element : call.wanted["y"].elements)
        element = saturates ? Expected({Part::near, element.re.value, within + 1}) : anything();
}

}   // namespace

VEK_ORACLES(conv) {
    const bool ordinaryOnly = true;
    whole("Conv", "s c cs sc d z zd dz", convolved, ordinaryOnly);
    whole("Conv", "w", convolvedShorts);
}

}   // namespace test
