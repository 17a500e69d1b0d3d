// Complex values in vectors, and butterflies: the transform of R of them, in place, natural order, forward sign.
//
// a[k] of dftR(a) becomes sum of a[j] exp(-2 pi i j k / R). A vector holds the same a[j] of W transforms.
#pragma once

#include "kernels/simd.h"

namespace vek::VEK_LEVEL {
namespace {

template <class V>
struct Cx {
    V re, im;
};
template <class V>
VEK_INLINE Cx<V> operator+(Cx<V> a, Cx<V> b) {
    return {a.re + b.re, a.im + b.im};
}
template <class V>
VEK_INLINE Cx<V> operator-(Cx<V> a, Cx<V> b) {
    return {a.re - b.re, a.im - b.im};
}
template <class V>
VEK_INLINE Cx<V> operator*(Cx<V> a, Cx<V> w) {
    return {fnma(a.im, w.im, a.re * w.re), fma(a.im, w.re, a.re * w.im)};
}
template <class V>
VEK_INLINE Cx<V> timesMinusI(Cx<V> a) {
    return {a.im, -a.re};
}

template <class V>
VEK_INLINE void dft2(Cx<V>& a, Cx<V>& b) {
    const Cx<V> sum = a + b;
    b = a - b;
    a = sum;
}

template <class V>
VEK_INLINE void dft4(Cx<V>& a, Cx<V>& b, Cx<V>& c, Cx<V>& d) {
    const Cx<V> t0 = a + c;
    const Cx<V> t1 = a - c;
    const Cx<V> t2 = b + d;
    const Cx<V> t3 = b - d;
    a = t0 + t2;
    c = t0 - t2;
    b = {t1.re + t3.im, t1.im - t3.re};
    d = {t1.re - t3.im, t1.im + t3.re};
}

// a times exp(-i pi/4), less the factor sqrt(1/2); and times exp(-3 i pi/4), likewise.
template <class V>
VEK_INLINE Cx<V> eighth(Cx<V> a) {
    return {a.re + a.im, a.im - a.re};
}
template <class V>
VEK_INLINE Cx<V> threeEighths(Cx<V> a) {
    return {a.im - a.re, -(a.re + a.im)};
}

template <class T, int W>
VEK_INLINE void dft8(Cx<Vec<T, W>>* a) {
    using V = Vec<T, W>;
    const V half = splat<W>(static_cast<T>(0.70710678118654752440));
    dft2(a[0], a[4]);
    dft2(a[1], a[5]);
    dft2(a[2], a[6]);
    dft2(a[3], a[7]);
    const Cx<V> e = eighth(a[5]);
    const Cx<V> t = threeEighths(a[7]);
    dft4(a[0], a[1], a[2], a[3]);
    // DFT of the odd half with the factor sqrt(1/2) fused into its sums.
    const Cx<V> s = e + t;
    const Cx<V> d = e - t;
    const Cx<V> q = timesMinusI(a[6]);
    const Cx<V> t0 = a[4] + q;
    const Cx<V> t1 = a[4] - q;
    const Cx<V> x1 = {fma(s.re, half, t0.re), fma(s.im, half, t0.im)};
    const Cx<V> x5 = {fnma(s.re, half, t0.re), fnma(s.im, half, t0.im)};
    const Cx<V> x3 = {fma(d.im, half, t1.re), fnma(d.re, half, t1.im)};
    const Cx<V> x7 = {fnma(d.im, half, t1.re), fma(d.re, half, t1.im)};
    const Cx<V> x2 = a[1];
    const Cx<V> x4 = a[2];
    const Cx<V> x6 = a[3];
    a[1] = x1;
    a[2] = x2;
    a[3] = x3;
    a[4] = x4;
    a[5] = x5;
    a[6] = x6;
    a[7] = x7;
}

template <class T, int W>
VEK_INLINE void dft16(Cx<Vec<T, W>>* a) {
    using V = Vec<T, W>;
    const V half = splat<W>(static_cast<T>(0.70710678118654752440));
    const V c = splat<W>(static_cast<T>(0.92387953251128675613));
    const V s = splat<W>(static_cast<T>(0.38268343236508977173));
    unroll<4>([&](auto i) { dft4(a[i], a[i + 4], a[i + 8], a[i + 12]); });
    // a[4 k1 + n2] times exp(-2 pi i n2 k1 / 16)
    const auto turn = [&](Cx<V> x, V re, V im) { return Cx<V>{fma(x.im, im, x.re * re), fnma(x.re, im, x.im * re)}; };
    a[5] = turn(a[5], c, s);
    a[6] = eighth(a[6]);
    a[6] = {a[6].re * half, a[6].im * half};
    a[7] = turn(a[7], s, c);
    a[9] = eighth(a[9]);
    a[9] = {a[9].re * half, a[9].im * half};
    a[10] = timesMinusI(a[10]);
    a[11] = threeEighths(a[11]);
    a[11] = {a[11].re * half, a[11].im * half};
    a[13] = turn(a[13], s, c);
    a[14] = threeEighths(a[14]);
    a[14] = {a[14].re * half, a[14].im * half};
    a[15] = turn(a[15], -c, -s);
    unroll<4>([&](auto k1) { dft4(a[4 * k1], a[4 * k1 + 1], a[4 * k1 + 2], a[4 * k1 + 3]); });
    // a[4 k1 + k2] is bin k1 + 4 k2
    const auto exchange = [&](int i, int j) {
        const Cx<V> kept = a[i];
        a[i] = a[j];
        a[j] = kept;
    };
    exchange(1, 4);
    exchange(2, 8);
    exchange(3, 12);
    exchange(6, 9);
    exchange(7, 13);
    exchange(11, 14);
}

template <class T, int W, int R>
VEK_INLINE void dft(Cx<Vec<T, W>>* a) {
    if constexpr (R == 2) dft2(a[0], a[1]);
    if constexpr (R == 4) dft4(a[0], a[1], a[2], a[3]);
    if constexpr (R == 8) dft8<T, W>(a);
    if constexpr (R == 16) dft16<T, W>(a);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
