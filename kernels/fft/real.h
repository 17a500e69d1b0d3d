// Real transforms: of 2m samples by a complex transform of m points, and the loop that takes its spectrum apart, or
// puts it together.
#pragma once

#include "complex.h"

namespace vek::VEK_LEVEL {
namespace {

// t[k] = -i/2 exp(-pi i k / m), k = 0 ... m/2, in pairs.
template <class T>
uint64_t splitLength(int order) {
    return 2 * ((uint64_t{1} << order) / 2 + 1);
}

template <class T>
void fillSplit(int order, T* table, RootFunction root) {
    const uint64_t m = uint64_t{1} << order;
    for (uint64_t k = 0; k <= m / 2; ++k) {
        double c = 0;
        double s = 0;
        root(k, 2 * m, &c, &s);
        table[2 * k] = static_cast<T>(0.5 * s);
        table[2 * k + 1] = static_cast<T>(-0.5 * c);
    }
}

template <class T, int W>
VEK_INLINE Cx<Vec<T, W>> backwards(Cx<Vec<T, W>> x) {
    if constexpr (W == 1) {
        return x;
    } else {
        using I = typename MakeInts<W>::type;
        return {reversed(x.re, I{}), reversed(x.im, I{})};
    }
}

// Calls body(Int<W>, k) for groups k ... k + W - 1 of 1 ... m/2, W the widest for which a group and its mirror image
// m - k ... share no more than the middle bin. Groups that start at 1 end there exactly.
template <class T, int W, class F>
VEK_INLINE size_t mirrorGroups(size_t k, size_t m, F body) {
    for (; 2 * (k + W - 1) <= m; k += W) body(Int<W>{}, k);
    if constexpr (W > 1) return mirrorGroups<T, narrower<T, W>>(k, m, body);
    return k;
}

// The same for all of them; one by one where they are few, because wider reads would wait for what was just stored.
template <class T, class F>
VEK_INLINE void mirrored(size_t m, F body) {
    if (m > 4)
        mirrorGroups<T, lanes<T>>(1, m, body);
    else
        mirrorGroups<T, 1>(1, m, body);
}

// X[k] = S/2 + t D and X[m - k] = conj(S/2 - t D), S = Z[k] + conj Z[m - k], D = Z[k] - conj Z[m - k].
template <class T, bool Inverse>
void splitSpectrum(T* z, size_t m, T scale, const T* split) {
    const T first = (z[0] + z[1]) * scale;
    z[1] = (z[0] - z[1]) * scale;
    z[0] = first;
    mirrored<T>(m, [&](auto width, size_t k) {
        constexpr int w = decltype(width){};
        using V = Vec<T, w>;
        const Pairs<T, false> low{z + 2 * k, 1};
        const Pairs<T, false> high{z + 2 * (m - k - (w - 1)), 1};
        const Cx<V> a = low.template read<w>(0);
        const Cx<V> b = backwards<T, w>(high.template read<w>(0));
        const Cx<V> t = Pairs<const T, false>{split, 1}.template read<w>(k);
        const V half = splat<w>(static_cast<T>(0.5));
        const V factor = splat<w>(scale);
        const Cx<V> sum = {(a.re + b.re) * half, (a.im - b.im) * half};
        const Cx<V> turned = Cx<V>{a.re - b.re, a.im + b.im} * t;
        Cx<V> x = {(sum.re + turned.re) * factor, (sum.im + turned.im) * factor};
        Cx<V> y = {(sum.re - turned.re) * factor, (turned.im - sum.im) * factor};
        if constexpr (Inverse) {
            x.im = -x.im;
            y.im = -y.im;
        }
        low.template write<w>(0, x);
        high.template write<w>(0, backwards<T, w>(y));
    });
}

// Z[k] = S + u D and Z[m - k] = conj(S - u D), u = 2 conj t, S and D as above of X.
template <class T, bool Inverse>
void mergeSpectrum(T x0, T xm, const T* bins, T* z, size_t m, const T* split) {
    mirrored<T>(m, [&](auto width, size_t k) {
        constexpr int w = decltype(width){};
        using V = Vec<T, w>;
        Cx<V> a = Pairs<const T, false>{bins + 2 * (k - 1), 1}.template read<w>(0);
        Cx<V> b = backwards<T, w>(Pairs<const T, false>{bins + 2 * (m - k - (w - 1) - 1), 1}.template read<w>(0));
        if constexpr (!Inverse) {
            a.im = -a.im;
            b.im = -b.im;
        }
        const V two = splat<w>(static_cast<T>(2));
        const Cx<V> t = Pairs<const T, false>{split, 1}.template read<w>(k);
        const Cx<V> u = {t.re * two, t.im * -two};
        const Cx<V> sum = {a.re + b.re, a.im - b.im};
        const Cx<V> turned = Cx<V>{a.re - b.re, a.im + b.im} * u;
        const Cx<V> y = {sum.re - turned.re, turned.im - sum.im};
        Pairs<T, false>{z + 2 * k, 1}.template write<w>(0, sum + turned);
        Pairs<T, false>{z + 2 * (m - k - (w - 1)), 1}.template write<w>(0, backwards<T, w>(y));
    });
    z[0] = x0 + xm;
    z[1] = x0 - xm;
}

// Sixteen samples, four by four in registers: x[4 a + b] to X[c + 4 d], b or c along the lanes. Through eight pairs
// this length would wait for its own stores.
template <class T>
constexpr T cosine16[] = {1,  T(0.92387953251128675613),  T(0.70710678118654752440),  T(0.38268343236508977173),
                          0,  T(-0.38268343236508977173), T(-0.70710678118654752440), T(-0.92387953251128675613),
                          -1, T(-0.92387953251128675613)};
template <class T>
constexpr T sine16[] = {0, T(0.38268343236508977173), T(0.70710678118654752440), T(0.92387953251128675613),
                        1, T(0.92387953251128675613), T(0.70710678118654752440), T(0.38268343236508977173),
                        0, T(-0.38268343236508977173)};

// Lane i: the cosine and sine of 2 pi K i / 16, in memory order or in lane order; K i is at most 9.
template <class T, int K, bool InLaneOrder, int... I>
VEK_INLINE Cx<Vec<T, 4>> turns16(Ints<I...>) {
    return {Vec<T, 4>{cosine16<T>[K * (InLaneOrder ? elementOf<T>(I, 4) : I)]...},
            Vec<T, 4>{sine16<T>[K * (InLaneOrder ? elementOf<T>(I, 4) : I)]...}};
}

template <class T, bool Inverse>
VEK_INLINE void forward16(const T* in, T* out, T scale) {
    using V = Vec<T, 4>;
    using I = typename MakeInts<4>::type;
    V x[4];
    unroll<4>([&](auto a) { x[a] = load<4>(in + 4 * a); });
    const V t0 = x[0] + x[2];
    const V t1 = x[0] - x[2];
    const V t2 = x[1] + x[3];
    const V t3 = x[1] - x[3];
    const V t4 = t0 - t2;
    const Cx<V> w1 = turns16<T, 1, false>(I{});
    const Cx<V> w2 = turns16<T, 2, false>(I{});
    const Cx<V> w3 = turns16<T, 3, false>(I{});
    Cx<V> rows[4] = {{t0 + t2, V{}},
                     {fnma(t3, w1.im, t1 * w1.re), -fma(t3, w1.re, t1 * w1.im)},
                     {t4 * w2.re, -(t4 * w2.im)},
                     {fma(t3, w3.im, t1 * w3.re), fnma(t1, w3.im, t3 * w3.re)}};
    transpose<T, 4>(rows);
    Cx<V> y[4];
    unroll<4>([&](auto b) { y[b] = rows[elementOf<T>(b, 4)]; });
    dft4(y[0], y[1], y[2], y[3]);
    y[0].im = __builtin_shufflevector(y[2].re, y[0].im, 0, 5, 6, 7);   // X8 beside X0
    unroll<2>([&](auto d) {
        if constexpr (Inverse) {
            y[d].re *= scale;
            y[d].im *= d == 0 ? Vec<T, 4>{scale, -scale, -scale, -scale} : splat<4>(-scale);
        }
        Pairs<T, false>{out, 1}.template write<4>(4 * d, y[d]);
    });
}

template <class T, bool Inverse>
VEK_INLINE void inverse16(T x0, T xm, const T* bins, T* out, T scale) {
    using V = Vec<T, 4>;
    using I = typename MakeInts<4>::type;
    Cx<V> low = Pairs<const T, false>{bins, 1}.template read<4>(0);        // X1 ... X4
    Cx<V> high = Pairs<const T, false>{bins + 6, 1}.template read<4>(0);   // X4 ... X7
    if constexpr (!Inverse) {
        low.im = -low.im;
        high.im = -high.im;
    }
    // Element 0 from `first`, element e from `rest`: element e - 1, or 4 - e when backwards.
    const auto shifted = [](T first, V rest, auto backwards) {
        return [&]<int... L>(Ints<L...>) {
            constexpr auto from = [](int e) {
                return e == 0 ? 4 : laneOf<T>(decltype(backwards){} ? 4 - e : e - 1, 4);
            };
            return __builtin_shufflevector(rest, splat<4>(first), from(elementOf<T>(L, 4))...);
        }
        (I{});
    };
    const Cx<V> y0 = {shifted(x0, low.re, Int<0>{}), shifted(0, low.im, Int<0>{})};
    const Cx<V> y2 = {shifted(xm, high.re, Int<1>{}), shifted(0, high.im, Int<1>{})};   // conjugated, as y3
    const Cx<V> y3 = backwards<T, 4>(low);
    const Cx<V> t0 = {y0.re + y2.re, y0.im - y2.im};
    const Cx<V> t1 = {y0.re - y2.re, y0.im + y2.im};
    const Cx<V> t2 = {high.re + y3.re, high.im - y3.im};
    const Cx<V> t3 = {high.re - y3.re, high.im + y3.im};
    Cx<V> c[4];
    constexpr int at1 = elementOf<T>(1, 4);
    constexpr int at2 = elementOf<T>(2, 4);
    c[0] = t0 + t2;
    c[at1] = Cx<V>{t1.re - t3.im, t1.im + t3.re} * turns16<T, 1, true>(I{});
    c[at2] = (t0 - t2) * turns16<T, 2, true>(I{});
    c[3] = Cx<V>{t1.re + t3.im, t1.im - t3.re} * turns16<T, 3, true>(I{});
    transpose<T, 4>(c);
    // The spectrum is that of a real signal: row 3 would be the conjugate of row 1.
    const V factor = splat<4>(scale);
    const V twice = factor + factor;
    const V even = (c[0].re + c[2].re) * factor;
    const V odd = (c[0].re - c[2].re) * factor;
    store(out, fma(c[1].re, twice, even));
    store(out + 4, fnma(c[1].im, twice, odd));
    store(out + 8, fnma(c[1].re, twice, even));
    store(out + 12, fma(c[1].im, twice, odd));
}

template <class T>
void realForward(const T* in, T* out, int order, bool inverse, T scale, const T* table, const T* split, T* scratch) {
    if constexpr (lanes<T> >= 4)
        if (order == 3) return inverse ? forward16<T, true>(in, out, scale) : forward16<T, false>(in, out, scale);
    transform<T>(in, out, order, false, 1, table, scratch);
    const size_t m = size_t{1} << order;
    return inverse ? splitSpectrum<T, true>(out, m, scale, split) : splitSpectrum<T, false>(out, m, scale, split);
}

template <class T>
void realInverse(T x0, T xm, const T* bins, T* out, int order, bool inverse, T scale, const T* table, const T* split,
                 T* scratch) {
    if constexpr (lanes<T> >= 4)
        if (order == 3)
            return inverse ? inverse16<T, true>(x0, xm, bins, out, scale)
                           : inverse16<T, false>(x0, xm, bins, out, scale);
    const size_t m = size_t{1} << order;
    if (inverse)
        mergeSpectrum<T, true>(x0, xm, bins, out, m, split);
    else
        mergeSpectrum<T, false>(x0, xm, bins, out, m, split);
    transform<T>(out, out, order, true, scale, table, scratch);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
