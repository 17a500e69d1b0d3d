// Transforms in long double, written from their definition.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace test {

struct Wide {
    long double re = 0;
    long double im = 0;
};
inline Wide operator+(Wide a, Wide b) { return {a.re + b.re, a.im + b.im}; }
inline Wide operator-(Wide a, Wide b) { return {a.re - b.re, a.im - b.im}; }
inline Wide operator*(Wide a, Wide b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
inline Wide conj(Wide a) { return {a.re, -a.im}; }

// exp(-2 pi i k / n); the angle never exceeds an eighth of the circle.
Wide root(unsigned long long k, unsigned long long n);

// sum over n of x[n] exp(sign 2 pi i n k / N): by the definition, and by splitting even and odd.
std::vector<Wide> naiveDft(const std::vector<Wide>& x, int sign);
std::vector<Wide> referenceFft(const std::vector<Wide>& x, int sign);

template <class C>
std::vector<Wide> widen(const std::vector<C>& x) {
    std::vector<Wide> wide(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) wide[i] = {x[i].re, x[i].im};
    return wide;
}
template <class T>
std::vector<Wide> widenReal(const std::vector<T>& x) {
    std::vector<Wide> wide(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) wide[i] = {x[i], 0};
    return wide;
}

inline std::size_t reversedBits(std::size_t value, int order) {
    std::size_t reversed = 0;
    for (int i = 0; i < order; ++i)
        if (value & (std::size_t{1} << i)) reversed |= std::size_t{1} << (order - 1 - i);
    return reversed;
}

}   // namespace test
