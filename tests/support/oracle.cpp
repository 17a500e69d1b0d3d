#include "oracle.h"

namespace test {

Wide root(unsigned long long k, unsigned long long n) {
    k %= n;
    // cos and sin of 2 pi k / n by the octant that k lies in: 8 k = octant n + rest.
    const unsigned long long octant = 8 * k / n;
    unsigned long long rest = 8 * k - octant * n;
    if (octant & 1) rest = n - rest;
    const long double angle =
        0.78539816339744830961566084581987572L * static_cast<long double>(rest) / static_cast<long double>(n);
    long double c = std::cos(angle);
    long double s = std::sin(angle);
    if (((octant + 1) >> 1) & 1) {
        const long double t = c;
        c = s;
        s = t;
    }
    if (octant >= 2 && octant < 6) c = -c;
    if (octant >= 4) s = -s;
    return {c, -s};
}

std::vector<Wide> naiveDft(const std::vector<Wide>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<Wide> w(n);
    for (std::size_t k = 0; k < n; ++k) w[k] = sign < 0 ? root(k, n) : conj(root(k, n));
    std::vector<Wide> sums(n);
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t i = 0; i < n; ++i) sums[k] = sums[k] + x[i] * w[i * k % n];
    return sums;
}

namespace {

void split(const Wide* x, Wide* out, std::size_t n, std::size_t stride, const Wide* w, std::size_t wStride, int sign) {
    if (n == 1) {
        out[0] = x[0];
        return;
    }
    const std::size_t half = n / 2;
    split(x, out, half, 2 * stride, w, 2 * wStride, sign);
    split(x + stride, out + half, half, 2 * stride, w, 2 * wStride, sign);
    for (std::size_t k = 0; k < half; ++k) {
        const Wide factor = sign < 0 ? w[k * wStride] : conj(w[k * wStride]);
        const Wide odd = out[half + k] * factor;
        const Wide even = out[k];
        out[k] = even + odd;
        out[half + k] = even - odd;
    }
}

}   // namespace

std::vector<Wide> referenceFft(const std::vector<Wide>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<Wide> w(n / 2 + 1);
    for (std::size_t k = 0; k < n / 2; ++k) w[k] = root(k, n);
    std::vector<Wide> out(n);
    split(x.data(), out.data(), n, 1, w.data(), 1, sign);
    return out;
}

}   // namespace test
