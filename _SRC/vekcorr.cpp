// Correlations of floating-point vectors: direct sums, or products of transforms where an estimate of the work says
// that they take less of it.
#include "vekcorr.h"

#include <bit>

#include "core/elements.h"
#include "core/memory.h"
#include "kernels/corr.h"
#include "vekfft.h"
#include "vekm6/corr.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::Real;
using vek::core::reals;
using vek::corr::Lags;

constexpr const char* module = "vekcorr";

template <class T>
const auto& kernels() {
    return vek::oneOf<vek::kernels::CorrOf<T>>(vek::kernelsNow().corr);
}

// The results of lags lo ... hi, each of which has terms.
template <class A, class B, class R>
void direct(const A* a, std::ptrdiff_t lenA, const B* b, std::ptrdiff_t lenB, R* dst, Lags lags) {
    kernels<Real<R>>().correlate[isComplex<A>][isComplex<B>](reals(a), lenA, reals(b), lenB, reals(dst), lags.lo,
                                                             lags.hi);
}

// ---- Transforms -----------------------------------------------------------------------------------------------------

// What transforms of 2^order elements work with, and three spectra: real ones of a real C. Where memory is short it is
// not ready.
template <class C>
class Transforms {
public:
    using T = Real<C>;

    Transforms(Call& call, int atOrder)
        : order(atOrder),
          n(std::size_t{1} << order),
          ready(vek::fft::findTables<T>(call.thread.tables, tables, isComplex<C> ? order : order - 1,
                                        isComplex<C> ? vek::fft::none : vek::fft::realSplit)) {
        for (C*& spectrum : spectra) {
            if (ready) spectrum = static_cast<C*>(vek::core::allocateArray(n, sizeof(C)));
            ready = ready && spectrum != nullptr;
        }
    }
    ~Transforms() {
        for (C* spectrum : spectra) vek::core::release(spectrum);
    }
    Transforms(const Transforms&) = delete;
    Transforms& operator=(const Transforms&) = delete;

    explicit operator bool() const { return ready; }
    C* spectrum(int i) const { return spectra[i]; }

    // The transform of src[from ... to - 1] as far as these lie in 0 ... len - 1, after `before` zeros and with zeros
    // behind. Real samples may become complex.
    template <class S>
    void load(C* spectrum, std::size_t before, const S* src, std::ptrdiff_t len, std::ptrdiff_t from,
              std::ptrdiff_t to) const {
        const std::ptrdiff_t first = std::clamp<std::ptrdiff_t>(from, 0, len);
        const std::ptrdiff_t last = std::clamp<std::ptrdiff_t>(to, first, len);
        C* at = std::fill_n(spectrum, before + static_cast<std::size_t>(std::max(first, from) - from), C{});
        if (last > first) {
            if constexpr (isComplex<C> && !isComplex<S>)
                at = std::transform(src + first, src + last, at, [](S value) { return C{value, 0}; });
            else
                at = std::copy(src + first, src + last, at);
        }
        std::fill(at, spectrum + n, C{});
        T* const samples = reals(spectrum);
        if constexpr (isComplex<C>)
            fft().transform(samples, samples, order, false, 1, tables.working, tables.scratch);
        else
            fft().realForward(samples, samples, order - 1, false, 1, tables.working, tables.split, tables.scratch);
    }

    // sum = sum + conj(a) b, with `own` conj(a) (a + b). A real spectrum begins with two real bins.
    void addProducts(const C* a, const C* b, C* sum, bool own) const {
        const auto& add = own ? kernels<T>().addOwnProducts : kernels<T>().addProducts;
        if constexpr (isComplex<C>) {
            add(reals(a), reals(b), reals(sum), n);
        } else {
            for (int i = 0; i < 2; ++i) sum[i] += a[i] * (own ? a[i] + b[i] : b[i]);
            add(a + 2, b + 2, sum + 2, n / 2 - 1);
        }
    }

    // In place, without the factor 1/n.
    void invert(C* spectrum) const {
        T* const samples = reals(spectrum);
        if constexpr (isComplex<C>)
            fft().transform(samples, samples, order, true, 1, tables.working, tables.scratch);
        else
            fft().realInverse(samples[0], samples[1], samples + 2, samples, order - 1, true, 1, tables.working,
                              tables.split, tables.scratch);
    }

private:
    static const auto& fft() { return vek::fft::kernelsOf<T>(); }

    int order;
    std::size_t n;
    vek::fft::Tables<T> tables;
    C* spectra[3] = {};
    bool ready;
};

// Largest order of the transforms.
constexpr int largestOrder = 30;

// ---- Estimates of work ----------------------------------------------------------------------------------------------

// In units of which a term of a direct sum takes 4, of complex data 11. Autocorrelations of reals go by the estimate of
// transforms alone; for all others `script/bench corr` says how much more than its estimate a transform takes here, and
// what it takes beside that, however short it is.
template <class C>
constexpr double termCost = isComplex<C> ? 11 : 4;
template <class C>
constexpr double transformWeight = isComplex<C> ? 3.3 : 1.5;
constexpr double transformCall = 10000;

constexpr double power(int p) { return static_cast<double>(std::uint64_t{1} << p); }
constexpr std::ptrdiff_t partsOf(std::ptrdiff_t whole, std::ptrdiff_t part) { return (whole - 1) / part + 1; }

// Of real transforms of 2^(p + 1) samples: the butterflies, and what separates the halves after them and before.
struct TransformCost {
    double butterflies, after, before;

    explicit TransformCost(int p)
        : butterflies(p * power(p) / 2 * 24),
          after(p == 0 ? 8 : (power(p) / 2 - 1) * 40 + 8),
          before(p == 0 ? 8 : (power(p) / 2 - 1) * 36 + 8) {}
};

// ---- Autocorrelation ------------------------------------------------------------------------------------------------

// Sections of P = 2^p samples, the least power of two that holds the lags.
template <class C>
bool takesTransforms(int len, int nLags, int p) {
    const double lags = nLags;
    const double terms = lags * len - lags * (lags - 1) / 2;
    const TransformCost cost(p);
    const double size = power(p);
    const auto sections = static_cast<double>(partsOf(len, std::ptrdiff_t{1} << p));
    const double byTransforms =
        cost.butterflies + (6 * size + cost.butterflies + cost.after + 14 * size) * sections + cost.before;
    const double own = isComplex<C> ? transformWeight<C> * byTransforms + transformCall * sections : byTransforms;
    return termCost<C> * terms > own;
}

// Of each section x[i], with zeros as long, conj(X[i]) (X[i] + X[i+1] shifted by P) holds the terms of the samples of
// x[i]. A shift by P turns the sign of every second bin. Sections stand in the lower and upper half of a transform in
// turn, so that neighbours have that shift, and one more that cancels.
template <class C>
bool byTransforms(Call& call, const C* src, int len, C* dst, int nLags, int type, int p) {
    const Transforms<C> transforms(call, p + 1);
    if (!transforms) return false;
    const std::ptrdiff_t size = std::ptrdiff_t{1} << p;
    C* current = transforms.spectrum(0);
    C* next = transforms.spectrum(1);
    C* const sum = transforms.spectrum(2);
    std::fill_n(sum, 2 * size, C{});
    const auto load = [&](C* to, std::ptrdiff_t from) {
        const bool upper = (from >> p) % 2 != 0;
        transforms.load(to, upper ? static_cast<std::size_t>(size) : 0, src, len, from, from + size);
    };
    load(current, 0);
    std::ptrdiff_t from = 0;
    for (; len - from > size; from += size) {
        load(next, from + size);
        transforms.addProducts(current, next, sum, true);
        std::swap(current, next);
    }
    transforms.addProducts(current, current, sum, false);
    transforms.invert(sum);

    using T = Real<C>;
    const T whole = static_cast<T>(2 * size);
    const auto scaled = [=](T value, int k) {
        if (type == 0) return value * (1 / whole);
        if (type == 1) return value * (1 / (whole * static_cast<T>(len)));
        return value / (whole * static_cast<T>(len - k));
    };
    for (int k = 0; k < nLags; ++k) {
        if constexpr (isComplex<C>)
            dst[k] = {scaled(sum[k].re, k), scaled(sum[k].im, k)};
        else
            dst[k] = scaled(sum[k], k);
    }
    return true;
}

template <class C>
void normalise(C* dst, int len, int nLags, int type) {
    using T = Real<C>;
    if (type == 0) return;
    const T factor = 1 / static_cast<T>(len);
    const auto scaled = [=](T value, int k) { return type == 1 ? value * factor : value / static_cast<T>(len - k); };
    for (int k = 0; k < nLags; ++k) {
        if constexpr (isComplex<C>)
            dst[k] = {scaled(dst[k].re, k), scaled(dst[k].im, k)};
        else
            dst[k] = scaled(dst[k], k);
    }
}

template <class C>
void autoCorr(const char* name, const C* src, int len, C* dst, int nLags, int type) {
    Call call{module, name};
    if (vek::corr::badAutoCorr(call, src, len, dst, nLags, type)) return;
    if (call.stopped()) return;
    const auto p = static_cast<int>(std::bit_width(static_cast<unsigned>(nLags - 1)));
    if (p < largestOrder && takesTransforms<C>(len, nLags, p) && byTransforms(call, src, len, dst, nLags, type, p))
        return;
    direct(src, len, src, len, dst, Lags{0, nLags - 1});
    normalise(dst, len, nLags, type);
}

// ---- Cross-correlation ----------------------------------------------------------------------------------------------

// Sections of srcA, the shorter one, with as many samples as `section`, each transformed once per group of so many
// lags.
struct Sections {
    int order;
    std::ptrdiff_t section, lags;
    double cost;
};

// The terms that srcA's samples first ... last - 1 and lags lo ... hi have, and how to share them out.
template <class C>
Sections bestSections(std::ptrdiff_t samples, std::ptrdiff_t lagCount) {
    Sections best = {0, 0, 0, 0};
    for (int order = 4; order <= largestOrder; ++order) {
        const std::ptrdiff_t half = std::ptrdiff_t{1} << (order - 1);
        Sections one = {order, half, half + 1, 0};
        if (lagCount <= half)
            one = {order, std::min(samples, 2 * half - lagCount + 1), lagCount, 0};
        else if (samples <= half)
            one = {order, samples, std::min(lagCount, 2 * half - samples + 1), 0};
        const double size = static_cast<double>(half);
        const TransformCost cost(order - 1);
        const double transform = transformWeight<C> * (cost.butterflies + cost.after + 6 * size) + transformCall;
        const auto sections = static_cast<double>(partsOf(samples, one.section));
        const auto groups = static_cast<double>(partsOf(lagCount, one.lags));
        const double ofA = sections == 1 ? 1 : sections * groups;
        const double products = transformWeight<C> * 14 * size;
        one.cost = (ofA + sections * groups) * transform + sections * groups * products + groups * transform;
        if (best.order == 0 || one.cost < best.cost) best = one;
        if (half >= samples + lagCount) break;
    }
    return best;
}

// 1 + 2 + ... + n.
constexpr double upTo(std::ptrdiff_t n) { return static_cast<double>(n) * (static_cast<double>(n) + 1) / 2; }

// A lag has as many terms as srcA has samples, less those that srcB ends or begins too late for.
double termsOf(int lenA, int lenB, Lags lags) {
    const double all = static_cast<double>(lenA) * static_cast<double>(lags.hi - lags.lo + 1);
    const auto missing = [](std::ptrdiff_t ofFirst, std::ptrdiff_t ofLast) {   // one more from lag to lag
        return ofLast <= 0 ? 0 : upTo(ofLast) - upTo(std::max<std::ptrdiff_t>(ofFirst - 1, 0));
    };
    const std::ptrdiff_t edge = std::ptrdiff_t{lenB} - lenA;
    return all - missing(lags.lo - edge, lags.hi - edge) - missing(-lags.hi, -lags.lo);
}

template <class A, class B, class C>
bool byTransforms(Call& call, const A* a, int lenA, const B* b, int lenB, C* dst, Lags lags) {
    const std::ptrdiff_t first = std::max<std::ptrdiff_t>(0, -lags.hi);
    const std::ptrdiff_t last = std::min<std::ptrdiff_t>(lenA, lenB - lags.lo);
    const Sections how = bestSections<C>(last - first, lags.hi - lags.lo + 1);
    if (!(termCost<C> * termsOf(lenA, lenB, lags) > how.cost)) return false;
    const Transforms<C> transforms(call, how.order);
    if (!transforms) return false;
    const std::ptrdiff_t size = std::ptrdiff_t{1} << how.order;
    C* const ofA = transforms.spectrum(0);
    C* const ofB = transforms.spectrum(1);
    C* const sum = transforms.spectrum(2);
    const bool onlyOne = last - first <= how.section;
    for (std::ptrdiff_t lag = lags.lo; lag <= lags.hi; lag += how.lags) {
        std::fill_n(sum, size, C{});
        for (std::ptrdiff_t n = first; n < last; n += how.section) {
            const std::ptrdiff_t end = std::min(n + how.section, last);
            if (!onlyOne || lag == lags.lo) transforms.load(ofA, 0, a, lenA, n, end);
            transforms.load(ofB, 0, b, lenB, n + lag, n + lag + size);
            transforms.addProducts(ofA, ofB, sum, false);
        }
        transforms.invert(sum);
        using T = Real<C>;
        const T factor = 1 / static_cast<T>(size);
        const std::ptrdiff_t count = std::min(how.lags, lags.hi - lag + 1);
        T* const to = reals(dst + (lag - lags.lo));
        const T* const from = reals(sum);
        for (std::ptrdiff_t i = 0; i < (isComplex<C> ? 2 : 1) * count; ++i) to[i] = from[i] * factor;
    }
    return true;
}

// r(lag) of a and b is conj(r(-lag)) of b and a.
template <class A, class B, class C>
bool byTransformsOfShorter(Call& call, const A* a, int lenA, const B* b, int lenB, C* dst, Lags lags) {
    if (lenA <= lenB) return byTransforms(call, a, lenA, b, lenB, dst, lags);
    if (!byTransforms(call, b, lenB, a, lenA, dst, Lags{-lags.hi, -lags.lo})) return false;
    C* const end = dst + (lags.hi - lags.lo + 1);
    std::reverse(dst, end);
    if constexpr (isComplex<C>) std::for_each(dst, end, [](C& value) { value.im = -value.im; });
    return true;
}

template <class A, class B, class C>
void crossCorr(const char* name, const A* srcA, int lenA, const B* srcB, int lenB, C* dst, int loLag, int hiLag) {
    Call call{module, name};
    if (vek::corr::badCrossCorr(call, srcA, lenA, srcB, lenB, dst, loLag, hiLag)) return;
    if (call.stopped()) return;
    const Lags lags = vek::corr::lagsWithTerms(lenA, lenB, loLag, hiLag);
    C* const to = vek::corr::clearOthers(dst, loLag, hiLag, lags);
    if (lags.lo > lags.hi) return;
    if (!byTransformsOfShorter(call, srcA, lenA, srcB, lenB, to, lags)) direct(srcA, lenA, srcB, lenB, to, lags);
}

}   // namespace

extern "C" {

void VEKAPI veksAutoCorr(const float* src, int len, float* dst, int nLags, int type) {
    autoCorr("veksAutoCorr", src, len, dst, nLags, type);
}
void VEKAPI vekcAutoCorr(const VekCplx* src, int len, VekCplx* dst, int nLags, int type) {
    autoCorr("vekcAutoCorr", src, len, dst, nLags, type);
}
void VEKAPI vekdAutoCorr(const double* src, int len, double* dst, int nLags, int type) {
    autoCorr("vekdAutoCorr", src, len, dst, nLags, type);
}
void VEKAPI vekzAutoCorr(const VekDCplx* src, int len, VekDCplx* dst, int nLags, int type) {
    autoCorr("vekzAutoCorr", src, len, dst, nLags, type);
}

void VEKAPI veksCrossCorr(const float* srcA, int lenA, const float* srcB, int lenB, float* dst, int loLag, int hiLag) {
    crossCorr("veksCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekcCrossCorr(const VekCplx* srcA, int lenA, const VekCplx* srcB, int lenB, VekCplx* dst, int loLag,
                          int hiLag) {
    crossCorr("vekcCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekdCrossCorr(const double* srcA, int lenA, const double* srcB, int lenB, double* dst, int loLag,
                          int hiLag) {
    crossCorr("vekdCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekzCrossCorr(const VekDCplx* srcA, int lenA, const VekDCplx* srcB, int lenB, VekDCplx* dst, int loLag,
                          int hiLag) {
    crossCorr("vekzCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekscCrossCorr(const float* srcA, int lenA, const VekCplx* srcB, int lenB, VekCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekscCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekcsCrossCorr(const VekCplx* srcA, int lenA, const float* srcB, int lenB, VekCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekcsCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekdzCrossCorr(const double* srcA, int lenA, const VekDCplx* srcB, int lenB, VekDCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekdzCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}
void VEKAPI vekzdCrossCorr(const VekDCplx* srcA, int lenA, const double* srcB, int lenB, VekDCplx* dst, int loLag,
                           int hiLag) {
    crossCorr("vekzdCrossCorr", srcA, lenA, srcB, lenB, dst, loLag, hiLag);
}

}   // extern "C"
