// Compiled with PLAIN naming the namespace.
#include "plain_loops.h"

#include <cmath>
#include <complex>
#include <cstring>

namespace bench::PLAIN {

namespace {

#define LOOP(name, body)                                                                                              \
    template <class T>                                                                                                \
    void name([[maybe_unused]] const T* a, [[maybe_unused]] const T* b, T* out, std::size_t n, [[maybe_unused]] T re, \
              [[maybe_unused]] T im) {                                                                                \
        _Pragma("GCC ivdep") for (std::size_t i = 0; i < n; ++i) body                                                 \
    }

LOOP(zero, { out[i] = 0; })
LOOP(set, { out[i] = re; })
LOOP(copy, { out[i] = a[i]; })
LOOP(add1, { out[i] = a[i] + re; })
LOOP(sub1, { out[i] = a[i] - re; })
LOOP(mpy1, { out[i] = a[i] * re; })
LOOP(add, { out[i] = a[i] + b[i]; })
LOOP(sub, { out[i] = a[i] - b[i]; })
LOOP(mpy, { out[i] = a[i] * b[i]; })
LOOP(sqr, { out[i] = a[i] * a[i]; })
LOOP(squareRoot, { out[i] = std::sqrt(a[i]); })
LOOP(absolute, { out[i] = std::fabs(a[i]); })
LOOP(thresh, { out[i] = a[i] < re ? re : a[i]; })
LOOP(invThresh, {
    const T x = a[i];
    out[i] = std::fabs(x) > re ? 1 / x : std::copysign(1 / re, x);
})

#define PAIRS(name, body)         \
    LOOP(name, {                  \
        const T x = a[2 * i];     \
        const T y = a[2 * i + 1]; \
        body                      \
    })

LOOP(pairSet, {
    out[2 * i] = re;
    out[2 * i + 1] = im;
})
PAIRS(pairAdd1, {
    out[2 * i] = x + re;
    out[2 * i + 1] = y + im;
})
PAIRS(pairSub1, {
    out[2 * i] = x - re;
    out[2 * i + 1] = y - im;
})
PAIRS(pairMpy1, {
    out[2 * i] = x * re - y * im;
    out[2 * i + 1] = x * im + y * re;
})
PAIRS(pairMpy, {
    const T u = b[2 * i];
    const T v = b[2 * i + 1];
    out[2 * i] = x * u - y * v;
    out[2 * i + 1] = x * v + y * u;
})
PAIRS(pairSqr, {
    out[2 * i] = x * x - y * y;
    out[2 * i + 1] = 2 * x * y;
})
PAIRS(conj, {
    out[2 * i] = x;
    out[2 * i + 1] = -y;
})
PAIRS(conjFlip, {
    out[2 * (n - 1 - i)] = x;
    out[2 * (n - 1 - i) + 1] = -y;
})
PAIRS(pairSquareRoot, {
    const std::complex<T> root = std::sqrt(std::complex<T>(x, y));
    out[2 * i] = root.real();
    out[2 * i + 1] = root.imag();
})
// What one writes for ordinary data: squares may overflow.
PAIRS(pairThresh, {
    const T square = x * x + y * y;
    const T factor = square < re * re ? re / std::sqrt(square) : T(1);
    out[2 * i] = square == 0 ? re : x * factor;
    out[2 * i + 1] = y * (square == 0 ? T(1) : factor);
})
PAIRS(pairInvThresh, {
    const T square = x * x + y * y;
    const T factor = square > re * re ? 1 / square : 1 / (re * std::sqrt(square));
    out[2 * i] = square == 0 ? 1 / re : x * factor;
    out[2 * i + 1] = -y * (square == 0 ? T(1) : factor);
})

// Complex vectors whose parts are treated alike, as reals.
template <class T, PlainLoop<T> F>
void asReals(const T* a, const T* b, T* out, std::size_t n, T re, T im) {
    F(a, b, out, 2 * n, re, im);
}

// Packed spectra: one pair of reals at the ends, complex products between.
template <class T>
void spectra(const T* a, const T* b, T* out, std::size_t n, bool permuted) {
    out[0] = a[0] * b[0];
    if (n < 2) return;
    const std::size_t last = permuted ? 1 : n - 1;
    out[last] = a[last] * b[last];
    const std::size_t first = permuted ? 2 : 1;
    pairMpy<T>(a + first, b + first, out + first, n / 2 - 1, 0, 0);
}
template <class T>
void packed(const T* a, const T* b, T* out, std::size_t n, T, T) {
    spectra(a, b, out, n, false);
}
template <class T>
void permuted(const T* a, const T* b, T* out, std::size_t n, T, T) {
    spectra(a, b, out, n, true);
}

template <class T>
struct Entry {
    const char* operation;
    PlainLoop<T> real;
    PlainLoop<T> complex;
};

}   // namespace

template <class T>
PlainLoop<T> find(const std::string& operation, bool complex) {
    static constexpr Entry<T> entries[] = {
        {"Zero", zero<T>, asReals<T, zero<T>>},
        {"Set", set<T>, pairSet<T>},
        {"Copy", copy<T>, asReals<T, copy<T>>},
        {"Add1", add1<T>, pairAdd1<T>},
        {"Sub1", sub1<T>, pairSub1<T>},
        {"Mpy1", mpy1<T>, pairMpy1<T>},
        {"Add", add<T>, asReals<T, add<T>>},
        {"Sub", sub<T>, asReals<T, sub<T>>},
        {"Mpy", mpy<T>, pairMpy<T>},
        {"Conj", nullptr, conj<T>},
        {"ConjFlip", nullptr, conjFlip<T>},
        {"Sqr", sqr<T>, pairSqr<T>},
        {"Sqrt", squareRoot<T>, pairSquareRoot<T>},
        {"Abs", absolute<T>, nullptr},
        {"Thresh", thresh<T>, pairThresh<T>},
        {"InvThresh", invThresh<T>, pairInvThresh<T>},
        {"MpyRCPack", packed<T>, nullptr},
        {"MpyRCPerm", permuted<T>, nullptr},
    };
    for (const Entry<T>& entry : entries)
        if (operation == entry.operation) return complex ? entry.complex : entry.real;
    return nullptr;
}

template PlainLoop<float> find<float>(const std::string& operation, bool complex);
template PlainLoop<double> find<double>(const std::string& operation, bool complex);

}   // namespace bench::PLAIN
