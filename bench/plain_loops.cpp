// The loops that a program would write itself, made into vectors by the compiler; compiled once with WIDTH 256 and once
// with 512, the width of the vectors.
#include <algorithm>
#include <cmath>
#include <complex>

#include "peers.h"

namespace bench {

namespace {

template <class T>
concept Pair = requires(T x) {
    x.re + x.im;
};
template <Pair C>
C operator+(C x, C y) {
    return {x.re + y.re, x.im + y.im};
}
template <Pair C>
C operator-(C x, C y) {
    return {x.re - y.re, x.im - y.im};
}
template <Pair C>
C operator*(C x, C y) {
    return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
}

// A loop for each form of arguments, around what it does to an element.
#define EACH(i, n) _Pragma("GCC ivdep") for (std::size_t i = 0, count = static_cast<std::size_t>(n); i < count; ++i)
template <class T, auto F>
void fill(T* out, int n) {
    EACH(i, n) out[i] = F(T{});
}
template <class T, auto F>
void fillWith(T value, T* out, int n) {
    EACH(i, n) out[i] = F(out[i], value);
}
template <class T, auto F>
void oneInPlace(T* out, int n) {
    EACH(i, n) out[i] = F(out[i]);
}
template <class T, auto F>
void one(const T* a, T* out, int n) {
    EACH(i, n) out[i] = F(a[i]);
}
template <class T, auto F>
void twoInPlace(const T* b, T* out, int n) {
    EACH(i, n) out[i] = F(out[i], b[i]);
}
template <class T, auto F>
void two(const T* a, const T* b, T* out, int n) {
    EACH(i, n) out[i] = F(a[i], b[i]);
}
template <class T, class R, auto F>
void limited(const T* a, T* out, int n, R limit, int) {
    EACH(i, n) out[i] = F(a[i], limit);
}
template <class T, class R, auto F>
void inverted(const T* a, T* out, int n, R limit) {
    EACH(i, n) out[i] = F(a[i], limit);
}
template <class T>
void conjFlip(const T* a, T* out, int n) {
    EACH(i, n) out[count - 1 - i] = {a[i].re, -a[i].im};
}

// Packed spectra: one pair of reals at the ends, complex products between.
template <class C, bool permuted, class T>
void spectra(const T* a, const T* b, T* out, int order) {
    const std::size_t n = std::size_t{1} << order;
    out[0] = a[0] * b[0];
    if (n < 2) return;
    const std::size_t last = permuted ? 1 : n - 1;
    out[last] = a[last] * b[last];
    const std::size_t first = permuted ? 2 : 1;
    const auto pairs = [first](auto* reals) { return reals + first; };
    EACH(i, n / 2 - 1) {
        const C product = C{pairs(a)[2 * i], pairs(a)[2 * i + 1]} * C{pairs(b)[2 * i], pairs(b)[2 * i + 1]};
        pairs(out)[2 * i] = product.re;
        pairs(out)[2 * i + 1] = product.im;
    }
}

template <class T>
void convolve(const T* x, int xLen, const T* h, int hLen, T* y) {
    for (int n = 0; n < xLen + hLen - 1; ++n) y[n] = 0;
    for (int k = 0; k < hLen; ++k) EACH(i, xLen) y[k + static_cast<int>(i)] += h[k] * x[i];
}

#define TEXT_OF(bits) #bits
#define TEXT(bits) TEXT_OF(bits)
constexpr const char* name = "plain " TEXT(WIDTH);

template <class T>
void peer(const char* operation, auto* function) {
    addPeer(name, nameOf<T>(operation), function);
}

template <class T>
void addArithmetic() {
    constexpr auto sum = [](T x, T y) { return x + y; };
    constexpr auto difference = [](T x, T y) { return x - y; };
    constexpr auto product = [](T x, T y) { return x * y; };
    peer<T>("bZero", fill<T, [](T) { return T{}; }>);
    peer<T>("bSet", fillWith<T, [](T, T value) { return value; }>);
    peer<T>("bCopy", one<T, [](T x) { return x; }>);
    peer<T>("bAdd1", fillWith<T, sum>);
    peer<T>("bAdd2", twoInPlace<T, sum>);
    peer<T>("bAdd3", two<T, sum>);
    peer<T>("bSub1", fillWith<T, difference>);
    peer<T>("bSub2", twoInPlace<T, difference>);
    peer<T>("bSub3", two<T, difference>);
    peer<T>("bMpy1", fillWith<T, product>);
    peer<T>("bMpy2", twoInPlace<T, product>);
    peer<T>("bMpy3", two<T, product>);
}

template <class T, auto F>
void addOne(const std::string& operation) {
    peer<T>((operation + "1").c_str(), oneInPlace<T, F>);
    peer<T>((operation + "2").c_str(), one<T, F>);
}

template <class T>
void addReals() {
    constexpr auto limit = [](T x, T least) { return x < least ? least : x; };
    constexpr auto invert = [](T x, T least) { return std::fabs(x) > least ? 1 / x : std::copysign(1 / least, x); };
    addArithmetic<T>();
    addOne<T, [](T x) { return x * x; }>("bSqr");
    addOne<T, [](T x) { return std::sqrt(x); }>("bSqrt");
    addOne<T, [](T x) { return std::fabs(x); }>("bAbs");
    peer<T>("bThresh2", limited<T, T, limit>);
    peer<T>("bInvThresh2", inverted<T, T, invert>);
    peer<T>("Conv", convolve<T>);
}

template <class C>
void addPairs() {
    using T = decltype(C::re);
    constexpr auto root = [](C x) {
        const std::complex<T> of = std::sqrt(std::complex<T>(x.re, x.im));
        return C{of.real(), of.imag()};
    };
    // What one writes for ordinary data: squares may overflow.
    constexpr auto limit = [](C x, T least) {
        const T square = x.re * x.re + x.im * x.im;
        const T factor = square < least * least ? least / std::sqrt(square) : T(1);
        return C{square == 0 ? least : x.re * factor, x.im * (square == 0 ? T(1) : factor)};
    };
    constexpr auto invert = [](C x, T least) {
        const T square = x.re * x.re + x.im * x.im;
        const T factor = square > least * least ? 1 / square : 1 / (least * std::sqrt(square));
        return C{square == 0 ? 1 / least : x.re * factor, -x.im * (square == 0 ? T(1) : factor)};
    };
    addArithmetic<C>();
    addOne<C, [](C x) { return C{x.re, -x.im}; }>("bConj");
    peer<C>("bConjFlip2", conjFlip<C>);
    addOne<C, [](C x) { return C{x.re * x.re - x.im * x.im, 2 * x.re * x.im}; }>("bSqr");
    addOne<C, root>("bSqrt");
    peer<C>("bThresh2", limited<C, T, limit>);
    peer<C>("bInvThresh2", inverted<C, T, invert>);
    peer<T>("MpyRCPack3", spectra<C, false, T>);
    peer<T>("MpyRCPerm3", spectra<C, true, T>);
}

// ---- int16, by scale mode -------------------------------------------------------------------------------------------

struct WidePair {
    std::int64_t re, im;
};
std::int32_t wide(std::int16_t x) { return x; }
WidePair wide(VekWCplx x) { return {x.re, x.im}; }

template <class X>
std::int16_t saturated(X x) {
    return static_cast<std::int16_t>(x < -32768 ? X{-32768} : x > 32767 ? X{32767} : x);
}
template <bool Saturates>
std::int16_t fit(std::int32_t x, int places) {
    return Saturates ? saturated(x >> places) : static_cast<std::int16_t>(x >> places);
}
template <bool Saturates>
VekWCplx fit(WidePair x, int places) {
    const auto part = [places](std::int64_t y) {
        return Saturates ? saturated(y >> places) : static_cast<std::int16_t>(y >> places);
    };
    return {part(x.re), part(x.im)};
}
template <class X, class Include>
void eachPart(X x, Include include) {
    if constexpr (Pair<X>) {
        include(x.re);
        include(x.im);
    } else {
        include(x);
    }
}

// exact(i) in all modes; the automatic one from the least and the most of all results.
template <class T, class Exact>
void scaled(T* out, int n, int mode, int* factor, Exact exact) {
    if (mode == VEK_AUTO_SCALE) {
        std::int64_t least = 0, most = 0;
        EACH(i, n) {
            eachPart(exact(i), [&](std::int64_t x) {
                least = x < least ? x : least;
                most = x > most ? x : most;
            });
        }
        *factor = 0;
        while (least >> *factor < -32768 || most >> *factor > 32767) ++*factor;
    }
    const int places = mode < VEK_FIXED_SCALE ? 0 : *factor;
    if (mode == VEK_NO_SCALE) EACH(i, n) out[i] = fit<false>(exact(i), 0);
    if (mode == VEK_SATURATE) EACH(i, n) out[i] = fit<true>(exact(i), 0);
    if (mode == VEK_FIXED_SCALE) EACH(i, n) out[i] = fit<false>(exact(i), places);
    if (mode > VEK_FIXED_SCALE) EACH(i, n) out[i] = fit<true>(exact(i), places);
}
template <class T, auto F>
void scaledTwo(const T* a, const T* b, T* out, int n, int mode, int* factor) {
    scaled(out, n, mode, factor, [=](std::size_t i) { return F(wide(a[i]), wide(b[i])); });
}
template <class T, auto F>
void scaledWith(T value, T* out, int n, int mode, int* factor) {
    scaled(out, n, mode, factor, [=](std::size_t i) { return F(wide(out[i]), wide(value)); });
}

template <class T>
void addShorts() {
    constexpr auto sum = [](auto x, auto y) { return x + y; };
    constexpr auto difference = [](auto x, auto y) { return x - y; };
    constexpr auto product = [](auto x, auto y) { return x * y; };
    peer<T>("bZero", fill<T, [](T) { return T{}; }>);
    peer<T>("bSet", fillWith<T, [](T, T value) { return value; }>);
    peer<T>("bCopy", one<T, [](T x) { return x; }>);
    peer<T>("bAdd1", scaledWith<T, sum>);
    peer<T>("bAdd3", scaledTwo<T, sum>);
    peer<T>("bSub1", scaledWith<T, difference>);
    peer<T>("bSub3", scaledTwo<T, difference>);
    peer<T>("bMpy1", scaledWith<T, product>);
    peer<T>("bMpy3", scaledTwo<T, product>);
}

// Exact sums, saturated as in mode VEK_SATURATE.
std::int16_t shortDot(const std::int16_t* a, const std::int16_t* b, int n, int, int*) {
    std::int64_t sum = 0;
    EACH(i, n) sum += a[i] * b[i];
    return saturated(sum);
}
// All lags of a sample at once.
template <class T>
void autoCorr(const T* src, int len, T* dst, int nLags, int) {
    EACH(k, nLags) dst[k] = 0;
    for (int n = 0; n < len; ++n)
        EACH(k, std::min(nLags, len - n)) dst[k] += src[n] * src[static_cast<std::size_t>(n) + k];
}

constexpr auto shortConj = [](VekWCplx x) { return VekWCplx{x.re, saturated(-x.im)}; };
void shortConjFlip(const VekWCplx* a, VekWCplx* out, int n) { EACH(i, n) out[count - 1 - i] = shortConj(a[i]); }

const RegisterPeers plain([] {
    addReals<float>();
    addReals<double>();
    addPairs<VekCplx>();
    addPairs<VekDCplx>();
    addShorts<std::int16_t>();
    addShorts<VekWCplx>();
    peer<std::int16_t>("DotProd", shortDot);
    peer<float>("AutoCorr", autoCorr<float>);
    peer<double>("AutoCorr", autoCorr<double>);
    addOne<VekWCplx, shortConj>("bConj");
    peer<VekWCplx>("bConjFlip2", shortConjFlip);
});

}   // namespace

}   // namespace bench
