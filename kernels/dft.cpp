// The discrete Fourier transform by its definition, with a quarter of the definition's multiplications.
//
// Half sums: with u[n] = x[n] + x[N-n] and v[n] = x[n] - x[N-n], n = 1 ... (N-1)/2, a = 2 pi / N,
//
//     C[k] = sum u[n] cos(a n k),  S[k] = sum v[n] sin(a n k),  X[k] = e[k] + C[k] - i S[k],  X[N-k] = e[k] + C[k] + i
//     S[k]
//
// where e[k] is x[0], and for an even N also x[N/2] (-1)^k.
//
// A vector takes several n, for which the cosines of one k would have to be gathered from all over the table. Instead
// n runs through blocks around centres m, as m + j and m - j, and half sums within them take the centre's root out:
//
//     sum over the block of u[n] cos(a n k) = sum over j of cos(a m k) cos(a j k) (u[m+j] + u[m-j])
//                                                         - sin(a m k) sin(a j k) (u[m+j] - u[m-j])
//
// So each j is a lane, whose data are multiplied by a root that all lanes share; the roots of j follow at the end, once
// for each k. The sines take the same course. Half sums of half sums cost one multiplication for each of the N data
// and each pair of k, however wide the vector is.
#include "dft.h"

#include "elementwise.h"

namespace vek::VEK_LEVEL {
namespace {

// Sums begin anew after so many terms, and are summed in turn: errors grow with the terms of one run.
inline constexpr size_t runLength = 64;

#if defined(__AVX512F__)
inline constexpr int sumsInRegisters = 16;
#elif defined(__i386__)
inline constexpr int sumsInRegisters = 4;
#else
inline constexpr int sumsInRegisters = 8;
#endif

// How data are laid out for vectors of W reals. A block's rows: u, v; or, where a row has lanes beside the centre,
// u+, u-, v+, v-, the half sums within the block.
template <class T, int W>
struct Shape {
    // Vectors in a row.
    static constexpr int vectors = W == 1 ? 2 : W == 4 && sumsInRegisters >= 8 ? 2 : 1;
    static constexpr size_t reals = size_t{W} * vectors;
    static constexpr size_t lanes = reals / 2;
    static constexpr int rows = lanes > 1 ? 4 : 2;
    static constexpr size_t blockReals = rows * reals;
    static constexpr size_t covers = 2 * lanes - 1;   // elements of u, and of v
    // Bins that share the loads of the data.
    static constexpr int bins = sumsInRegisters / (rows * vectors) > 0 ? sumsInRegisters / (rows * vectors) : 1;

    static constexpr size_t halfSums(size_t n) { return (n - 1) / 2; }
    static constexpr size_t blocks(size_t n) { return (halfSums(n) + covers - 1) / covers; }
};

inline constexpr size_t line = 64;

template <class T>
T* onLine(T* scratch) {
    return reinterpret_cast<T*>((reinterpret_cast<uintptr_t>(scratch) + line - 1) / line * line);
}

template <class T>
struct Pair {
    T re, im;
};
template <class T>
VEK_INLINE Pair<T> operator+(Pair<T> a, Pair<T> b) {
    return {a.re + b.re, a.im + b.im};
}
template <class T>
VEK_INLINE Pair<T> operator-(Pair<T> a, Pair<T> b) {
    return {a.re - b.re, a.im - b.im};
}
template <class T, class From>
VEK_INLINE Pair<T> pairAt(const From* data, size_t n) {
    return {static_cast<T>(data[2 * n]), static_cast<T>(data[2 * n + 1])};
}
template <class T>
VEK_INLINE void putPair(T* data, size_t n, Pair<T> value) {
    data[2 * n] = value.re;
    data[2 * n + 1] = value.im;
}

// u and v, laid out; lanes beyond the data hold zeros.
template <class S, class T, class From>
void fold(const From* src, size_t n, T* blocks) {
    const size_t half = S::halfSums(n);
    const auto sum = [=](size_t i)
                         VEK_INLINE_LAMBDA { return i > half ? Pair<T>{} : pairAt<T>(src, i) + pairAt<T>(src, n - i); };
    const auto difference = [=](size_t i) VEK_INLINE_LAMBDA {
        return i > half ? Pair<T>{} : pairAt<T>(src, i) - pairAt<T>(src, n - i);
    };
    for (size_t centre = S::lanes; centre - S::lanes < half; centre += S::covers, blocks += S::blockReals) {
        if constexpr (S::rows == 2) {
            putPair(blocks, 0, sum(centre));
            putPair(blocks + S::reals, 0, difference(centre));
        } else {
            const auto rows = [&](T* plus, T* minus, auto element) VEK_INLINE_LAMBDA {
                putPair(plus, 0, element(centre));
                putPair(minus, 0, Pair<T>{});
                for (size_t j = 1; j < S::lanes; ++j) {
                    const Pair<T> after = element(centre + j);
                    const Pair<T> before = element(centre - j);
                    putPair(plus, j, after + before);
                    putPair(minus, j, after - before);
                }
            };
            rows(blocks, blocks + S::reals, sum);
            rows(blocks + 2 * S::reals, blocks + 3 * S::reals, difference);
        }
    }
}

// The plain sum.
template <class T, class From>
Pair<T> sumOf(const From* src, size_t n) {
    Pair<T> all = {};
    for (size_t i = 0; i < n;) {
        const size_t stop = n - i < runLength ? n : i + runLength;
        Pair<T> run = {};
        for (; i < stop; ++i) run = run + pairAt<T>(src, i);
        all = all + run;
    }
    return all;
}

// An index into the table of N roots, and what it advances by; both below N.
struct Walk {
    uint32_t at, step;
};
VEK_INLINE uint32_t advanced(uint32_t at, uint32_t step, uint32_t n) {
    const uint32_t next = at + step;
    return next >= n ? next - n : next;
}

// For several k at once, the rows of all blocks times the roots of their centres, whose indices `walks` follows. Rows
// u (u+) and v- take the real part of the root, -v (v+) and u- the imaginary one.
template <class T, int W, class S>
VEK_INLINE void addBlocks(const T* data, size_t blocks, const T* table, uint32_t n, Walk (&walks)[S::bins],
                          T (&sums)[S::bins][S::blockReals]) {
    constexpr int vectors = S::rows * S::vectors;
    using V = Vec<T, W>;
    for (T(&of)[S::blockReals] : sums)
        for (T& sum : of) sum = 0;
    while (blocks > 0) {
        size_t left = blocks < runLength ? blocks : runLength;
        blocks -= left;
        V run[S::bins][vectors] = {};
        do {
            unroll<S::bins>([&](auto k) VEK_INLINE_LAMBDA {
                const T* root = table + 2 * size_t{walks[k].at};
                const V re = splat<W>(root[0]);
                const V im = splat<W>(root[1]);
                walks[k].at = advanced(walks[k].at, walks[k].step, n);
                unroll<vectors>([&](auto i) VEK_INLINE_LAMBDA {
                    constexpr int row = i / S::vectors;
                    run[k][i] = fma(load<W>(data + i * W), row == 0 || row == 3 ? re : im, run[k][i]);
                });
            });
            data += S::blockReals;
        } while (--left > 0);
        unroll<S::bins>([&](auto k) VEK_INLINE_LAMBDA {
            unroll<vectors>([&](auto i) VEK_INLINE_LAMBDA {
                T* sum = &sums[k][i * W];
                store(sum, load<W>(sum) + run[k][i]);
            });
        });
    }
}

// C and -S of one k: lanes times their roots.
template <class T>
struct Halves {
    Pair<T> c, s;
};
template <class S, class T>
VEK_INLINE Halves<T> joined(const T (&sums)[S::blockReals], const T* table, uint32_t k, uint32_t n) {
    if constexpr (S::rows == 2) {
        return {{sums[0], sums[1]}, {sums[S::reals], sums[S::reals + 1]}};
    } else {
        Halves<T> all = {};
        uint32_t at = 0;
        for (size_t j = 0; j < S::lanes; ++j) {
            const Pair<T> root = pairAt<T>(table, at);
            const auto row = [&](size_t r) VEK_INLINE_LAMBDA { return pairAt<T>(&sums[r * S::reals], j); };
            const auto add = [&](T& to, T plus, T re, T minus, T im)
                                 VEK_INLINE_LAMBDA { to = fma(plus, re, fma(minus, im, to)); };
            add(all.c.re, row(0).re, root.re, -row(1).re, root.im);
            add(all.c.im, row(0).im, root.re, -row(1).im, root.im);
            add(all.s.re, row(2).re, root.re, row(3).re, root.im);
            add(all.s.im, row(2).im, root.re, row(3).im, root.im);
            at = advanced(at, k, n);
        }
        return all;
    }
}

// `one` is what stands for 1 in the table.
template <class T, int W, class From>
void transformAt(const From* src, T* dst, uint32_t n, bool inverse, T scale, T one, const T* table, T* scratch) {
    using S = Shape<T, W>;
    T* data = onLine(scratch);
    fold<S>(src, n, data);
    const Pair<T> first = {one * src[0], one * src[1]};
    Pair<T> middle = {};
    if (n % 2 == 0) middle = {one * src[n], one * src[n + 1]};
    const Pair<T> sum = sumOf<T>(src, n);
    const auto put = [=](uint32_t k, Pair<T> value) VEK_INLINE_LAMBDA {
        putPair(dst, k, {value.re * scale, value.im * scale});
    };
    put(0, {one * sum.re, one * sum.im});

    const auto centre = static_cast<uint32_t>(S::lanes % n);
    const auto covers = static_cast<uint32_t>(S::covers % n);
    const uint32_t last = n / 2;
    Walk next = {};
    for (uint32_t k = 1; k <= last; k += S::bins) {
        Walk walks[S::bins];
        unroll<S::bins>([&](auto i) VEK_INLINE_LAMBDA {
            next = {advanced(next.at, centre, n), advanced(next.step, covers, n)};
            walks[i] = next;
        });
        T sums[S::bins][S::blockReals];
        addBlocks<T, W, S>(data, S::blocks(n), table, n, walks, sums);
        for (uint32_t i = 0; i < S::bins && k + i <= last; ++i) {
            const uint32_t bin = k + i;
            const Halves<T> of = joined<S>(sums[i], table, bin, n);
            const Pair<T> even = (bin % 2 == 0 ? first + middle : first - middle) + of.c;
            const Pair<T> odd = {-of.s.im, of.s.re};
            const uint32_t mirrored = n - bin;
            put(inverse ? mirrored : bin, even + odd);
            if (mirrored != bin) put(inverse ? bin : mirrored, even - odd);
        }
    }
}

template <class T, int W>
uint64_t lengthAt(int length) {
    using S = Shape<T, W>;
    return S::blocks(static_cast<size_t>(length)) * S::blockReals + line / sizeof(T);
}

// ---- Floating point -------------------------------------------------------------------------------------------------

// Below, the roots of the lanes cost more than the lanes save.
template <class T>
inline constexpr int fewest = 56;

template <class T>
uint64_t scratchLength(int length) {
    return length < fewest<T> ? lengthAt<T, 1>(length) : lengthAt<T, lanes<T>>(length);
}

template <class T>
void transform(const T* src, T* dst, int length, bool inverse, T scale, const T* table, T* scratch) {
    const auto n = static_cast<uint32_t>(length);
    const T one = 1;
    if (length < fewest<T>)
        transformAt<T, 1>(src, dst, n, inverse, scale, one, table, scratch);
    else
        transformAt<T, lanes<T>>(src, dst, n, inverse, scale, one, table, scratch);
}

// ---- Integers -------------------------------------------------------------------------------------------------------

// Doubles hold them. Roots are not taken apart here, for products of two would not be those of the table.
inline constexpr int pairWidth = lanes<double> > 1 ? 2 : 1;

uint64_t integerScratch(int length) { return lengthAt<double, pairWidth>(length) + 2 * static_cast<uint64_t>(length); }

void integerTransform(const int16_t* src, double* dst, int length, bool inverse, const int16_t* table,
                      double* scratch) {
    const size_t reals = 2 * static_cast<size_t>(length);
    for (size_t i = 0; i < reals; ++i) scratch[i] = table[i];
    constexpr double unit = 16384;
    transformAt<double, pairWidth>(src, dst, static_cast<uint32_t>(length), inverse, 1.0, unit, scratch,
                                   scratch + reals);
}

template <class T>
inline constexpr kernels::DftOf<T> entries = {scratchLength<T>, transform<T>};

}   // namespace

extern const kernels::DftTable dft;
const kernels::DftTable dft = {{entries<float>, entries<double>, {integerScratch, integerTransform}}};

}   // namespace vek::VEK_LEVEL
