// Transforms of 2^order complex points, and the two loops that make real transforms of them.
//
// Up to a cache-sized order a self-sorting radix 4/8/16 algorithm runs (Stockham's, see Cochran et al., "What is the
// fast Fourier transform?", 1967): one pass per radix, from buffer to buffer, results in natural order without a
// permutation. With n the length that is left and s the number of interleaved transforms (n s = N), a pass of radix r
// reads x[q + s(p + m j)], m = n / r, and writes y[q + s(r p + k)] = w^(p k) DFT_r(x)[k], w = exp(-2 pi i / n).
// Vectors run along q once s has reached their width; the first pass runs along p and transposes in registers.
//
// Above that order the four-step form (Gentleman and Sande 1966; Bailey 1990) splits N = N1 N2 into transforms of
// columns, a cache line or two wide, so that memory is read and written twice in all.
//
// Between passes data lie in blocks of W real parts and W imaginary parts, W being the vector width: no shuffles but
// in the first pass (from pairs) and in the last (to pairs). The inverse transform exchanges real and imaginary parts
// on the way in and on the way out.
#pragma once

#include "kernels/fft.h"

#include "kernels/simd.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::FftData;
using kernels::RootFunction;

template <class T>
struct BareOf {
    typedef T type;
};
template <class T>
struct BareOf<const T> {
    typedef T type;
};
template <class T>
using Bare = typename BareOf<T>::type;

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

// ---- Butterflies: DFT of R values, in place, natural order, forward sign ------------------------------------------

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

// ---- Where data lie -----------------------------------------------------------------------------------------------

// Pairs; Swap exchanges real and imaginary parts, and scales what it stores.
template <class T, bool Swap>
struct Pairs {
    T* at;
    T scale;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        Cx<V> x;
        if constexpr (W == 1) {
            x = {at[2 * e], at[2 * e + 1]};
        } else {
            const V a = load<W>(at + 2 * e);
            const V b = load<W>(at + 2 * e + W);
            using I = typename MakeInts<W>::type;
            x = {pickEven<Bare<T>>(a, b, I{}), pickOdd<Bare<T>>(a, b, I{})};
        }
        return Swap ? Cx<V>{x.im, x.re} : x;
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        if constexpr (Swap) {
            const auto factor = splat<W>(scale);
            x = {x.im * factor, x.re * factor};
        }
        if constexpr (W == 1) {
            at[2 * e] = x.re;
            at[2 * e + 1] = x.im;
        } else {
            using I = typename MakeInts<W>::type;
            store(at + 2 * e, unpackLow<T>(x.re, x.im, I{}));
            store(at + 2 * e + W, unpackHigh<T>(x.re, x.im, I{}));
        }
    }
};

// Two arrays; the caller exchanges them for the inverse direction.
template <class T>
struct Arrays {
    T* re;
    T* im;
    T scale;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        const Cx<V> x = {load<W>(re + e), load<W>(im + e)};
        if constexpr (W == 1) {
            return x;
        } else {
            using I = typename MakeInts<W>::type;
            return Cx<V>{toLanes<Bare<T>>(x.re, I{}), toLanes<Bare<T>>(x.im, I{})};
        }
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        const auto factor = splat<W>(scale);
        if constexpr (W > 1) {
            using I = typename MakeInts<W>::type;
            x = {fromLanes<T>(x.re, I{}), fromLanes<T>(x.im, I{})};
        }
        store(re + e, x.re * factor);
        store(im + e, x.im * factor);
    }
};

// Blocks of W real and W imaginary parts; e is a multiple of W.
template <class T>
struct Blocks {
    T* at;

    template <int W>
    VEK_INLINE auto read(size_t e) const {
        using V = Vec<Bare<T>, W>;
        return Cx<V>{load<W>(at + 2 * e), load<W>(at + 2 * e + W)};
    }

    template <int W>
    VEK_INLINE void write(size_t e, Cx<Vec<T, W>> x) const {
        store(at + 2 * e, x.re);
        store(at + 2 * e + W, x.im);
    }
};

// How a pass takes its data: in registers where structures travel in them. On the 32-bit stack a copy would be read in
// wider pieces than it was written in, and each such read waits until the writes have reached the cache.
#if defined(__i386__)
template <class Data>
using Handed = const Data&;
// Transforms in registers spill less in the order in which they are written.
#define VEK_AS_WRITTEN [[gnu::optimize("no-schedule-insns")]]
#else
template <class Data>
using Handed = Data;
#define VEK_AS_WRITTEN
#endif

// ---- Passes -------------------------------------------------------------------------------------------------------

// Transposes W vectors of W in lane order: element e of vector i becomes element i of vector e.
template <class T, int W>
VEK_INLINE void transpose(Vec<T, W>* v) {
    if constexpr (W > 1) {
        using V = Vec<T, W>;
        using I = typename MakeInts<W>::type;
        constexpr int logW = W == 2 ? 1 : W == 4 ? 2 : W == 8 ? 3 : 4;
        constexpr int top = logW - 1;   // the element bit that tells the two source vectors of a lane apart
        // Each stage exchanges a bit of the vector's index with one of the lane's position.
        const auto stage = [&](auto bit, auto low, auto high) {
            constexpr int step = 1 << decltype(bit){};
            unroll<W>([&](auto i) {
                if constexpr ((decltype(i){} & step) == 0) {
                    const V a = v[i];
                    const V b = v[i + step];
                    v[i] = low(a, b);
                    v[i + step] = high(a, b);
                }
            });
        };
        const auto unpack = [&](auto bit) {
            stage(
                bit, [](V a, V b) { return unpackLow<T>(a, b, I{}); },
                [](V a, V b) { return unpackHigh<T>(a, b, I{}); });
        };
        const auto lanesApart = [&](auto bit) {
            stage(
                bit, [](V a, V b) { return evenLanes<T>(a, b, I{}); }, [](V a, V b) { return oddLanes<T>(a, b, I{}); });
        };
        unpack(Int<top>{});
        if constexpr (sizeof(T) == 4) unpack(Int<0>{});
        constexpr int firstLaneBit = sizeof(T) == 4 ? 1 : 0;
        if constexpr (firstLaneBit < top) lanesApart(Int<firstLaneBit>{});
        if constexpr (firstLaneBit + 1 < top) lanesApart(Int<firstLaneBit + 1>{});
    }
}

template <class T, int W>
VEK_INLINE void transpose(Cx<Vec<T, W>>* a) {
    Vec<T, W> re[W];
    Vec<T, W> im[W];
    unroll<W>([&](auto i) {
        re[i] = a[i].re;
        im[i] = a[i].im;
    });
    transpose<T, W>(re);
    transpose<T, W>(im);
    unroll<W>([&](auto i) { a[i] = {re[i], im[i]}; });
}

// s = 1, m a multiple of W, R at least W. Twiddles stand per block of W values of p: R - 1 vectors of each part.
template <class T, int W, int R, class In>
[[gnu::noinline]] void firstPass(Handed<In> from, T* y, size_t m, const T* twiddles) {
    const In in = from;
    for (size_t p = 0; p < m; p += W) {
        Cx<Vec<T, W>> a[R];
        unroll<R>([&](auto j) { a[j] = in.template read<W>(p + m * j); });
        dft<T, W, R>(a);
        unroll<R - 1>([&](auto k) { a[k + 1] = a[k + 1] * Blocks<const T>{twiddles}.template read<W>(W * k); });
        twiddles += 2 * W * (R - 1);
        unroll<R / W>([&](auto group) {
            Cx<Vec<T, W>>* const square = a + group * W;
            transpose<T, W>(square);
            unroll<W>([&](auto i) { Blocks<T>{y}.template write<W>(R * (p + i) + W * group, square[i]); });
        });
    }
}

// One pass over s columns; row r of the input starts at element r * inRow. Twiddles stand per p: R - 1 pairs.
template <class T, int W, int R, class In>
[[gnu::noinline]] void columnPass(Handed<In> from, size_t inRow, T* y, size_t m, size_t s, const T* twiddles) {
    const In in = from;
    for (size_t p = 0; p < m; ++p) {
        for (size_t q = 0; q < s; q += W) {
            Cx<Vec<T, W>> a[R];
            unroll<R>([&](auto j) { a[j] = in.template read<W>(q + inRow * (p + m * j)); });
            dft<T, W, R>(a);
            Blocks<T>{y}.template write<W>(q + s * (R * p), a[0]);
            unroll<R - 1>([&](auto k) {
                const Cx<Vec<T, W>> w = {splat<W>(twiddles[2 * k]), splat<W>(twiddles[2 * k + 1])};
                Blocks<T>{y}.template write<W>(q + s * (R * p + k + 1), a[k + 1] * w);
            });
        }
        twiddles += 2 * (R - 1);
    }
}

// The pass that needs no twiddles, s columns of R values left. Works in place.
template <class T, int W, int R, class In, class Out>
[[gnu::noinline]] void lastPass(Handed<In> from, Handed<Out> to, size_t s) {
    const In in = from;
    const Out out = to;
    for (size_t q = 0; q < s; q += W) {
        Cx<Vec<T, W>> a[R];
        unroll<R>([&](auto j) { a[j] = in.template read<W>(q + s * j); });
        dft<T, W, R>(a);
        unroll<R>([&](auto k) { out.template write<W>(q + s * k, a[k]); });
    }
}

// The same for `columns` columns side by side, written to rows of the output that are outRow apart.
template <class T, int W, int R, class Out>
[[gnu::noinline]] void lastColumnPass(const T* x, Handed<Out> to, size_t outRow, size_t rows, size_t columns) {
    const Out out = to;
    const size_t s = rows * columns;
    for (size_t row = 0; row < rows; ++row) {
        for (size_t c = 0; c < columns; c += W) {
            Cx<Vec<T, W>> a[R];
            unroll<R>([&](auto j) { a[j] = Blocks<const T>{x}.template read<W>(row * columns + c + s * j); });
            dft<T, W, R>(a);
            unroll<R>([&](auto k) { out.template write<W>(c + outRow * (row + rows * k), a[k]); });
        }
    }
}

// ---- Plans --------------------------------------------------------------------------------------------------------

inline constexpr int maxPasses = 16;

// Which radices, from the first pass to the last, and the vector width.
struct Plan {
    int width;
    int passes;
    int logRadix[maxPasses];
};

// AVX-512 has registers for sixteen complex values at once, 32-bit processors for four.
#if defined(__i386__)
inline constexpr int maxLogRadix = 2;
#else
inline constexpr int maxLogRadix = vectorBytes == 64 ? 4 : 3;
#endif
// Where the rest then fits one vector, a larger first radix is worth its spills.
inline constexpr int maxLogRadixShort = maxLogRadix < 3 ? 3 : maxLogRadix;

constexpr int log2Of(int power) {
    int log = 0;
    while ((1 << log) < power) ++log;
    return log;
}

// Spreads `order` over passes of nearly equal radix, larger ones first; the first at least as asked.
constexpr Plan spread(int order, int width, int firstAtLeast) {
    Plan plan{width, 0, {}};
    const int most = order <= maxLogRadixShort + log2Of(width) ? maxLogRadixShort : maxLogRadix;
    int left = order;
    while (left > 0) {
        const int passesLeft = (left + most - 1) / most;
        int logRadix = (left + passesLeft - 1) / passesLeft;
        if (plan.passes == 0 && logRadix < firstAtLeast) logRadix = firstAtLeast;
        // Vectors need room on both sides of the transposition: never a single pass.
        if (width > 1 && logRadix == order) logRadix = order - order / 2;
        plan.logRadix[plan.passes++] = logRadix;
        left -= logRadix;
    }
    return plan;
}

// The self-sorting form: the first radix and the rest both hold at least one vector.
template <class T>
constexpr Plan planOf(int order) {
    if (order == 3 && sizeof(T) == 8 && lanes < T >> 1) return spread(order, 2, 1);
    if (order <= 3 || lanes<T> == 1) return spread(order, 1, 1);
    int width = lanes<T>;
    while (2 * log2Of(width) > order) width /= 2;
    return spread(order, width, log2Of(width));
}

template <class T>
struct Plans {
    Plan of[32];
};
template <class T>
constexpr Plans<T> makePlans() {
    Plans<T> plans{};
    for (int order = 0; order < 32; ++order) plans.of[order] = planOf<T>(order);
    return plans;
}
template <class T>
constexpr Plans<T> plans = makePlans<T>();

// Columns side by side in the four-step form: two cache lines.
template <class T>
inline constexpr int tileColumns = 128 / (2 * sizeof(T));

// The four-step form begins where data, scratch and tables of the self-sorting form outgrow the second-level cache.
// Measured with script/bench fft: orders around the crossing, both forms.
template <class T>
inline constexpr int fourStepOrder = sizeof(T) == 4 ? 16 : 15;

constexpr size_t columnTableLength(const Plan& plan, int order) {
    size_t length = 0;
    int left = order;
    for (int i = 0; i + 1 < plan.passes; ++i) {
        const size_t radix = size_t{1} << plan.logRadix[i];
        left -= plan.logRadix[i];
        length += 2 * (radix - 1) << left;
    }
    return length;
}

template <class T>
constexpr size_t alignedLength(size_t length) {
    return (length + 64 / sizeof(T) - 1) / (64 / sizeof(T)) * (64 / sizeof(T));
}

// How an order of the four-step form splits, and where its tables stand.
template <class T>
struct FourStep {
    int order1, order2;   // column lengths N1 <= N2
    Plan plan1, plan2;
    size_t twiddles2, base, step, length;   // offsets into the table, and its length

    constexpr explicit FourStep(int order)
        : order1(order / 2),
          order2(order - order / 2),
          plan1(spread(order1, lanes<T>, 1)),
          plan2(spread(order2, lanes<T>, 1)),
          twiddles2(alignedLength<T>(columnTableLength(plan1, order1))),
          base(twiddles2 + alignedLength<T>(columnTableLength(plan2, order2))),
          step(base + (size_t{2} << order1) * ((size_t{1} << order2) / tileColumns<T>)),
          length(step + (size_t{2} << order1) * tileColumns<T>) {}
};

// ---- The self-sorting transform -----------------------------------------------------------------------------------

template <class T>
struct Stages {
    const T* table;
    T* first;   // intermediate buffers, written in turns
    T* second;
};

template <class T, int W, class In>
VEK_INLINE void runFirst(int logRadix, const In& in, T* y, size_t m, const T* table) {
    if constexpr (W <= 4)
        if (logRadix == 2) return firstPass<T, W, 4>(in, y, m, table);
    if constexpr (W <= 8)
        if (logRadix == 3) return firstPass<T, W, 8>(in, y, m, table);
    if constexpr (maxLogRadix >= 4)
        if (logRadix == 4) return firstPass<T, W, 16>(in, y, m, table);
}

template <class T, int W, class In>
VEK_INLINE void runColumns(int logRadix, const In& in, size_t inRow, T* y, size_t m, size_t s, const T* table) {
    switch (logRadix) {
        case 2: return columnPass<T, W, 4>(in, inRow, y, m, s, table);
        case 3: return columnPass<T, W, 8>(in, inRow, y, m, s, table);
        case 4:
            if constexpr (maxLogRadix >= 4) columnPass<T, W, 16>(in, inRow, y, m, s, table);
            return;
        default: return columnPass<T, W, 2>(in, inRow, y, m, s, table);
    }
}

template <class T, int W, class In, class Out>
VEK_INLINE void runLast(int logRadix, const In& in, const Out& out, size_t s) {
    switch (logRadix) {
        case 2: return lastPass<T, W, 4>(in, out, s);
        case 3: return lastPass<T, W, 8>(in, out, s);
        case 4:
            if constexpr (maxLogRadix >= 4) lastPass<T, W, 16>(in, out, s);
            return;
        default: return lastPass<T, W, 2>(in, out, s);
    }
}

// Two passes or more.
template <class T, int W, class In, class Out>
void selfSorting(const Plan& plan, const In& in, const Out& out, int order, const Stages<T>& stages) {
    int left = order - plan.logRadix[0];
    runFirst<T, W>(plan.logRadix[0], in, stages.first, size_t{1} << left, stages.table);
    const T* table = stages.table + ((2 * ((size_t{1} << plan.logRadix[0]) - 1)) << left);
    T* from = stages.first;
    T* to = stages.second;
    for (int i = 1; i + 1 < plan.passes; ++i) {
        const int logRadix = plan.logRadix[i];
        const size_t s = size_t{1} << (order - left);
        left -= logRadix;
        runColumns<T, W>(logRadix, Blocks<const T>{from}, s, to, size_t{1} << left, s, table);
        table += (2 * ((size_t{1} << logRadix) - 1)) << left;
        T* written = to;
        to = from;
        from = written;
    }
    runLast<T, W>(plan.logRadix[plan.passes - 1], Blocks<const T>{from}, out, size_t{1} << (order - left));
}

template <class T, class In, class Out>
void chooseWidth(const Plan& plan, const In& in, const Out& out, int order, const Stages<T>& stages) {
    const auto general = [&](auto width) { selfSorting<T, decltype(width){}>(plan, in, out, order, stages); };
    constexpr int w = lanes<T>;
    if (plan.width == w) return general(Int<w>{});
    if constexpr (narrower < T, w >> 1)
        if (plan.width == narrower<T, w>) return general(Int<narrower<T, w>>{});
    if constexpr (narrower < T, narrower < T, w >>> 1)
        if (plan.width == narrower<T, narrower<T, w>>) return general(Int<narrower<T, narrower<T, w>>>{});
    if constexpr (w > 1) return general(Int<1>{});
}

// ---- Orders that fit the registers --------------------------------------------------------------------------------

// Two passes with nothing stored between them: N = R W, R at least W, as the plan of the order says.
template <class T, int W, int R, class In, class Out>
VEK_AS_WRITTEN [[gnu::noinline]] void inRegisters(Handed<In> from, Handed<Out> to, const T* twiddles) {
    const In in = from;
    const Out out = to;
    Cx<Vec<T, W>> a[R];
    unroll<R>([&](auto j) { a[j] = in.template read<W>(W * j); });
    dft<T, W, R>(a);
    unroll<R - 1>([&](auto k) { a[k + 1] = a[k + 1] * Blocks<const T>{twiddles}.template read<W>(W * k); });
    unroll<R / W>([&](auto group) {
        Cx<Vec<T, W>>* const square = a + group * W;
        transpose<T, W>(square);
        dft<T, W, W>(square);
        unroll<W>([&](auto k) { out.template write<W>(W * group + R * k, square[k]); });
    });
}

template <class T>
constexpr bool fitsRegisters(int order) {
    const Plan plan = planOf<T>(order);
    return plan.passes == 2 && plan.width > 1 && plan.logRadix[1] == log2Of(plan.width);
}

// True: done. One pass and no tables for 2, 4 and, where vectors would not pay, 8 points.
template <class T, class In, class Out>
VEK_INLINE bool runInRegisters(const In& in, const Out& out, int order, const T* table) {
    const auto attempt = [&](auto candidate) {
        constexpr int o = decltype(candidate){};
        constexpr Plan plan = planOf<T>(o);
        if constexpr (fitsRegisters<T>(o)) {
            inRegisters<T, plan.width, 1 << plan.logRadix[0]>(in, out, table);
        } else if constexpr (plan.passes == 1) {
            lastPass<T, 1, 1 << o>(in, out, 1);
        }
        return fitsRegisters<T>(o) || plan.passes == 1;
    };
    switch (order) {
        case 1: return attempt(Int<1>{});
        case 2: return attempt(Int<2>{});
        case 3: return attempt(Int<3>{});
        case 4: return attempt(Int<4>{});
        case 5: return attempt(Int<5>{});
        case 6: return attempt(Int<6>{});
        case 7: return attempt(Int<7>{});
        case 8: return attempt(Int<8>{});
        default: return false;
    }
}

// ---- The four-step transform --------------------------------------------------------------------------------------

// Transforms of `tileColumns` columns of 2^order values: all passes but the last, which the caller runs from the
// buffer returned.
template <class T, class In>
VEK_INLINE T* columnsButLast(const Plan& plan, int order, const In& in, size_t inRow, const Stages<T>& stages) {
    constexpr int w = lanes<T>;
    size_t s = tileColumns<T>;
    int left = order - plan.logRadix[0];
    runColumns<T, w>(plan.logRadix[0], in, inRow, stages.first, size_t{1} << left, s, stages.table);
    const T* table = stages.table + ((2 * ((size_t{1} << plan.logRadix[0]) - 1)) << left);
    s <<= plan.logRadix[0];
    T* from = stages.first;
    T* to = stages.second;
    for (int i = 1; i + 1 < plan.passes; ++i) {
        const int logRadix = plan.logRadix[i];
        left -= logRadix;
        runColumns<T, w>(logRadix, Blocks<const T>{from}, s, to, size_t{1} << left, s, table);
        table += (2 * ((size_t{1} << logRadix) - 1)) << left;
        s <<= logRadix;
        T* written = to;
        to = from;
        from = written;
    }
    return from;
}

template <class T, class Out>
VEK_INLINE void runLastColumns(int logRadix, const T* x, const Out& out, size_t outRow, size_t rows) {
    constexpr int w = lanes<T>;
    switch (logRadix) {
        case 2: return lastColumnPass<T, w, 4>(x, out, outRow, rows, tileColumns<T>);
        case 3: return lastColumnPass<T, w, 8>(x, out, outRow, rows, tileColumns<T>);
        case 4:
            if constexpr (maxLogRadix >= 4) lastColumnPass<T, w, 16>(x, out, outRow, rows, tileColumns<T>);
            return;
        default: return lastColumnPass<T, w, 2>(x, out, outRow, rows, tileColumns<T>);
    }
}

// Rows k of the tile times exp(-2 pi i k (base + c) / N), transposed: column c becomes row base + c of `to`.
template <class T>
VEK_INLINE void twistAndTranspose(const T* tile, T* to, size_t rows, size_t base, const T* baseTwiddles,
                                  const T* stepTwiddles) {
    constexpr int w = lanes<T>;
    constexpr int columns = tileColumns<T>;
    for (size_t k = 0; k < rows; k += w) {
        for (int c = 0; c < columns; c += w) {
            Cx<Vec<T, w>> x[w];
            unroll<w>([&](auto i) {
                const Cx<Vec<T, w>> b = {splat<w>(baseTwiddles[2 * (k + i)]), splat<w>(baseTwiddles[2 * (k + i) + 1])};
                const size_t e = (k + i) * columns + c;
                x[i] =
                    Blocks<const T>{tile}.template read<w>(e) * (Blocks<const T>{stepTwiddles}.template read<w>(e) * b);
            });
            transpose<T, w>(x);
            unroll<w>([&](auto i) { Blocks<T>{to}.template write<w>((base + c + i) * rows + k, x[i]); });
        }
    }
}

// In and Out shifted by some elements.
template <class Data>
VEK_INLINE Data shifted(Data data, size_t elements) {
    if constexpr (requires { data.im; }) {
        data.re += elements;
        data.im += elements;
    } else {
        data.at += 2 * elements;
    }
    return data;
}

template <class T, class In, class Out>
void fourSteps(const In& in, const Out& out, int order, const T* table, T* scratch) {
    constexpr size_t columns = tileColumns<T>;
    const FourStep<T> form(order);
    const size_t n1 = size_t{1} << form.order1;
    const size_t n2 = size_t{1} << form.order2;
    T* middle = scratch;
    T* tile1 = scratch + (size_t{2} << order);
    T* tile2 = tile1 + 2 * n2 * columns;

    for (size_t base = 0; base < n2; base += columns) {
        T* x = columnsButLast<T>(form.plan1, form.order1, shifted(in, base), n2, {table, tile1, tile2});
        const int logRadix = form.plan1.logRadix[form.plan1.passes - 1];
        runLastColumns<T>(logRadix, x, Blocks<T>{x}, columns, n1 >> logRadix);
        twistAndTranspose(x, middle, n1, base, table + form.base + 2 * n1 * (base / columns), table + form.step);
    }
    for (size_t base = 0; base < n1; base += columns) {
        T* x = columnsButLast<T>(form.plan2, form.order2, Blocks<const T>{middle + 2 * base}, n1,
                                 {table + form.twiddles2, tile1, tile2});
        const int logRadix = form.plan2.logRadix[form.plan2.passes - 1];
        runLastColumns<T>(logRadix, x, shifted(out, base), n1, n2 >> logRadix);
    }
}

// ---- Tables -------------------------------------------------------------------------------------------------------

template <class T>
constexpr bool usesFourSteps(int order) {
    return order >= fourStepOrder<T>;
}

template <class T>
uint64_t tableLength(int order) {
    if (usesFourSteps<T>(order)) return FourStep<T>(order).length;
    return alignedLength<T>(columnTableLength(plans<T>.of[order], order));
}

template <class T>
uint64_t scratchLength(int order) {
    const uint64_t whole = uint64_t{2} << order;
    if (usesFourSteps<T>(order)) return whole + 4 * tileColumns<T> * (uint64_t{1} << FourStep<T>(order).order2);
    return 2 * alignedLength<T>(whole);
}

template <class T>
void putRoot(T* re, T* im, uint64_t k, uint64_t n, RootFunction root) {
    double c = 0;
    double s = 0;
    root(k, n, &c, &s);
    *re = static_cast<T>(c);
    *im = static_cast<T>(s);
}

// The twiddles of the passes of one transform; those of the first stand in blocks of firstWidth.
template <class T>
void fillPasses(const Plan& plan, int order, int firstWidth, T* table, RootFunction root) {
    int left = order;
    for (int i = 0; i + 1 < plan.passes; ++i) {
        const uint64_t n = uint64_t{1} << left;
        const uint64_t radix = uint64_t{1} << plan.logRadix[i];
        const uint64_t width = i == 0 ? firstWidth : 1;
        left -= plan.logRadix[i];
        for (uint64_t p = 0; p < n / radix; ++p)
            for (uint64_t k = 1; k < radix; ++k) {
                T* block = table + 2 * width * ((p / width) * (radix - 1) + k - 1) + laneOf<T>(p % width, width);
                putRoot(block, block + width, p * k, n, root);
            }
        table += 2 * (radix - 1) * (n / radix);
    }
}

template <class T>
void fillTable(int order, T* table, RootFunction root) {
    if (!usesFourSteps<T>(order)) {
        const Plan& plan = plans<T>.of[order];
        return fillPasses(plan, order, plan.width, table, root);
    }
    constexpr uint64_t columns = tileColumns<T>;
    constexpr uint64_t w = lanes<T>;
    const FourStep<T> form(order);
    const uint64_t n1 = uint64_t{1} << form.order1;
    const uint64_t n2 = uint64_t{1} << form.order2;
    fillPasses(form.plan1, form.order1, 1, table, root);
    fillPasses(form.plan2, form.order2, 1, table + form.twiddles2, root);
    T* base = table + form.base;
    for (uint64_t tile = 0; tile < n2 / columns; ++tile)
        for (uint64_t k = 0; k < n1; ++k, base += 2) putRoot(base, base + 1, k * tile, n1 * n2 / columns, root);
    for (uint64_t k = 0; k < n1; ++k)
        for (uint64_t c = 0; c < columns; ++c) {
            T* block = table + form.step + 2 * (k * columns + c / w * w) + laneOf<T>(c % w, w);
            putRoot(block, block + w, k * c, n1 * n2, root);
        }
}

// ---- Entries ------------------------------------------------------------------------------------------------------

template <class T, class In, class Out>
[[gnu::noinline]] void runPasses(Handed<In> from, Handed<Out> to, T* outBuffer, int order, const T* table, T* scratch) {
    const In in = from;
    const Out out = to;
    if (usesFourSteps<T>(order)) return fourSteps<T>(in, out, order, table, scratch);
    T* second = outBuffer != nullptr ? outBuffer : scratch + alignedLength<T>(size_t{2} << order);
    chooseWidth<T>(plans<T>.of[order], in, out, order, {table, scratch, second});
}

// What follows keeps no frame: small transforms are done in less time than it takes to save the registers.
template <class T, class In, class Out>
VEK_INLINE void run(const In& in, const Out& out, T* outBuffer, int order, const T* table, T* scratch) {
    if (!runInRegisters<T>(in, out, order, table)) runPasses<T, In, Out>(in, out, outBuffer, order, table, scratch);
}

template <class T>
void transform(const T* in, T* out, int order, bool inverse, T scale, const T* table, T* scratch) {
    if (inverse)
        run<T>(Pairs<const T, true>{in, 1}, Pairs<T, true>{out, scale}, out, order, table, scratch);
    else
        run<T>(Pairs<const T, false>{in, 1}, Pairs<T, false>{out, 1}, out, order, table, scratch);
}

template <class T>
void transformParts(FftData<const T> in, FftData<T> out, int order, bool inverse, T scale, const T* table, T* scratch) {
    const Arrays<const T> from = inverse ? Arrays<const T>{in.im, in.re, 1} : Arrays<const T>{in.re, in.im, 1};
    const Arrays<T> to = inverse ? Arrays<T>{out.im, out.re, scale} : Arrays<T>{out.re, out.im, static_cast<T>(1)};
    run<T>(from, to, static_cast<T*>(nullptr), order, table, scratch);
}

// ---- Real transforms ----------------------------------------------------------------------------------------------

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

template <class T>
constexpr kernels::FftOf<T> entries = {tableLength<T>, fillTable<T>, scratchLength<T>, transform<T>,  transformParts<T>,
                                       splitLength<T>, fillSplit<T>, realForward<T>,   realInverse<T>};

}   // namespace

}   // namespace vek::VEK_LEVEL
