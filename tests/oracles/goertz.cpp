#include "shorts.h"

namespace test {

namespace {

// Of a filter at a tenth of the sampling rate that begins with these samples: the sum of x[m] exp(2 pi i (n - m) / 10).
// Coefficients are rounded to the state's type, and so is each step; neither decays.
void bin(Sight& call) {
    const std::vector<Wide> x = call.wide(call.operands[0].c_str());
    const char letter = call.row.function.letters[0];
    const RealType state = realType(letter == 'd' || letter == 'z' ? 'd' : 's');
    Wide sum;
    long double size = 0;
    for (std::size_t m = 0; m < x.size(); ++m) {
        sum = sum + x[m] * conj(root(x.size() - m, 10));
        size += std::fabs(x[m].re) + std::fabs(x[m].im);
    }
    const long double error = 4 * static_cast<long double>(state.epsilon) * static_cast<long double>(x.size()) * size;
    if (call.row.index("scaleMode") >= 0) return wantShorts(call, "", {sum}, error + 1e-9L);
    call.wanted[""].elements = {Expected{{Part::near, sum.re, error}, {Part::near, sum.im, error}}};
}

}   // namespace

VEK_ORACLES(goertz) { whole("Goertz bGoertz", "s d c z w v", bin, true); }

}   // namespace test
