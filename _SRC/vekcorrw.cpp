// Correlations of int16 vectors and their complex form: exact sums, scaled, rounded to nearest and saturated.
#include "core/elements.h"
#include "kernels/dotp.h"
#include "kernels/level/levels.h"
#include "vekcorr.h"
#include "vekm6/corr.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::reals;
using vek::corr::Lags;
using Sums = vek::kernels::DotPair<int64_t>;

constexpr const char* module = "vekcorrw";

// Of conj(a) b.
template <class A, class B>
Sums sums(const A* a, const B* b, std::ptrdiff_t count) {
    const auto& kernels = vek::oneOf<vek::kernels::DotpOf<int16_t>>(vek::kernelsNow().dotp);
    const auto n = static_cast<std::size_t>(count);
    if constexpr (isComplex<A> && isComplex<B>) {
        return kernels.conjugated(reals(a), reals(b), n);
    } else if constexpr (isComplex<B>) {
        return kernels.mixed(a, reals(b), n);
    } else if constexpr (isComplex<A>) {
        const Sums sum = kernels.mixed(b, reals(a), n);
        return {sum.re, -sum.im};
    } else {
        return {kernels.real(a, b, n), 0};
    }
}

// The integer nearest to sum / divisor, the even one of two, as far as int16 goes.
int16_t rounded(int64_t sum, int64_t divisor) {
    int64_t quotient = sum / divisor;
    const int64_t rest = 2 * (sum % divisor);
    if (rest > divisor || (rest == divisor && quotient % 2 != 0)) ++quotient;
    if (rest < -divisor || (rest == -divisor && quotient % 2 != 0)) --quotient;
    return static_cast<int16_t>(std::clamp<int64_t>(quotient, -32768, 32767));
}

template <class C>
C result(Sums sum, int64_t divisor) {
    if constexpr (isComplex<C>)
        return {rounded(sum.re, divisor), rounded(sum.im, divisor)};
    else
        return rounded(sum.re, divisor);
}

template <class C>
void autoCorr(const char* name, const C* src, int len, C* dst, int nLags, int type) {
    Call call{module, name};
    if (vek::corr::badAutoCorr(call, src, len, dst, nLags, type)) return;
    if (call.stopped()) return;
    for (int k = 0; k < nLags; ++k)
        dst[k] = result<C>(sums(src, src + k, len - k), type == 0 ? 1 : type == 1 ? len : len - k);
}

template <class A, class B, class C>
void crossCorr(const char* name, const A* srcA, int lenA, const B* srcB, int lenB, C* dst, int loLag, int hiLag) {
    Call call{module, name};
    if (vek::corr::badCrossCorr(call, srcA, lenA, srcB, lenB, dst, loLag, hiLag)) return;
    if (call.stopped()) return;
    const Lags lags = vek::corr::lagsWithTerms(lenA, lenB, loLag, hiLag);
    C* to = vek::corr::clearOthers(dst, loLag, hiLag, lags);
    for (std::ptrdiff_t lag = lags.lo; lag <= lags.hi; ++lag) {
        const std::ptrdiff_t first = std::max<std::ptrdiff_t>(0, -lag);
        const std::ptrdiff_t last = std::min<std::ptrdiff_t>(lenA, lenB - lag);
        *to++ = result<C>(sums(srcA + first, srcB + first + lag, last - first), 1);
    }
}

}   // namespace

extern "C" {

void VEKAPI vekwAutoCorr(const int16_t* src, int len, int16_t* dst, int nLags, int type) {
    autoCorr("vekwAutoCorr", src, len, dst, nLags, type);
}
void VEKAPI vekvAutoCorr(const VekWCplx* src, int len, VekWCplx* dst, int nLags, int type) {
    autoCorr("vekvAutoCorr", src, len, dst, nLags, type);
}

void VEKAPI vekwCrossCorr(const int16_t* srcA, int lenA, const int16_t* srcB, int lenB, int16_t* dst, int loLag,
                          int hiLag) {
    crossCorr("vekwCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekvCrossCorr(const VekWCplx* srcA, int lenA, const VekWCplx* srcB, int lenB, VekWCplx* dst, int loLag,
                          int hiLag) {
    crossCorr("vekvCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekwvCrossCorr(const int16_t* srcA, int lenA, const VekWCplx* srcB, int lenB, VekWCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekwvCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekvwCrossCorr(const VekWCplx* srcA, int lenA, const int16_t* srcB, int lenB, VekWCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekvwCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}

}   // extern "C"
