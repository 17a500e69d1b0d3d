// Correlations as direct sums, and the products of spectra that make them of transforms.
//
// The sums of neighbouring lags stand in the lanes of vectors, as many as there are registers for: each step takes one
// sample of a in all lanes and as many samples of b as there are lags. Samples of a come in blocks, whose sums are
// added up in dst: the block and the part of b that it meets stay in the first-level cache, and the error grows with
// the length of a block and the number of blocks, not with their product.
#include "corr.h"

#include "dots.h"

namespace vek::VEK_LEVEL {
namespace {

inline constexpr ptrdiff_t blockSamples = 1024;

// Vectors of samples of b in a large group and in a small one, of a with so many parts. Of complex samples each takes
// two registers for its sums. Fewer than the small ones would wait for their own additions.
#if defined(__i386__)
constexpr int manyOf(int parts) { return 4 / parts; }
constexpr int fewOf(int parts) { return 4 / parts; }
#else
constexpr int manyOf(int parts) { return 12 / parts; }
constexpr int fewOf(int) { return 4; }
#endif

constexpr ptrdiff_t larger(ptrdiff_t a, ptrdiff_t b) { return a > b ? a : b; }
constexpr ptrdiff_t smaller(ptrdiff_t a, ptrdiff_t b) { return a < b ? a : b; }

// A and B reals to an element of a and of b: one, or two where they are complex.
template <class T, int A, int B>
struct Correlation {
    static constexpr int parts = A > B ? A : B;   // of a result

    // All of a block: samples first ... last - 1 of a.
    const T *a, *b;
    ptrdiff_t first, last, lenB;
    T* dst;   // of lag 0

    VEK_INLINE ptrdiff_t from(ptrdiff_t lag) const { return larger(first, -lag); }
    VEK_INLINE ptrdiff_t to(ptrdiff_t lag) const { return smaller(last, lenB - lag); }

    // Adds the terms of samples begin ... end - 1 to one lag.
    [[gnu::noinline]] void addOne(ptrdiff_t lag, ptrdiff_t begin, ptrdiff_t end) const {
        if (begin >= end) return;
        const T* const x = a + A * begin;
        const T* const y = b + B * (begin + lag);
        T* const sum = dst + parts * lag;
        const auto n = static_cast<size_t>(end - begin);
        if constexpr (parts == 1) {
            *sum += dotOfReals(x, y, n);
        } else {
            Pair<T> more;
            if constexpr (A == B)
                more = dotOfConjugate(x, y, n);
            else if constexpr (B == 2)
                more = dotOfRealsAndPairs(x, y, n);
            else
                more = dotOfRealsAndPairs(y, x, n);
            sum[0] += more.re;
            sum[1] += A > B ? -more.im : more.im;
        }
    }

    // Sums of many lags over n samples: of the real parts of x in sums[0], of the imaginary ones in sums[1].
    template <int K>
    VEK_INLINE static void sum(const T* x, const T* y, ptrdiff_t n, T (&sums)[A][K * lanes<T>]) {
        constexpr int w = lanes<T>;
        Vec<T, w> all[A * K] = {};
#pragma GCC unroll 1
        for (ptrdiff_t i = 0; i < n; ++i, y += B) {
            // Else the compiler would see that steps share samples of b, and keep these in registers that it lacks.
            __asm__("" : "+r"(y));
            unroll<K>([&](auto k) VEK_INLINE_LAMBDA {
                const auto v = load<w>(y + k * w);
                unroll<A>([&](auto part) VEK_INLINE_LAMBDA {
                    all[part * K + k] = fma(Vec<T, w>(splat<w>(x[A * i + part])), v, all[part * K + k]);
                });
            });
        }
        unroll<A * K>([&](auto k) VEK_INLINE_LAMBDA { store(&sums[k / K][k % K * w], all[k]); });
    }

    // Adds the block's terms to the lags lag + skip ... lag + group - 1.
    template <int K>
    static constexpr ptrdiff_t group = K* lanes<T> / B;
    template <int K>
    void addGroup(ptrdiff_t lag, ptrdiff_t skip) const {
        constexpr ptrdiff_t lags = group<K>;
        const ptrdiff_t begin = from(lag);   // all of the lags have the samples from here
        const ptrdiff_t end = to(lag + lags - 1);
        if (end - begin < lanes<T>) {
            for (ptrdiff_t j = lag + skip; j < lag + lags; ++j) addOne(j, from(j), to(j));
            return;
        }
        T sums[A][K * lanes<T>];
        sum<K>(a + A * begin, b + B * (begin + lag), end - begin, sums);
        T* const to0 = dst + parts * lag;
        for (ptrdiff_t j = skip; j < lags; ++j) {
            if constexpr (A == 2 && B == 2) {
                to0[2 * j] += sums[0][2 * j] + sums[1][2 * j + 1];
                to0[2 * j + 1] += sums[0][2 * j + 1] - sums[1][2 * j];
            } else if constexpr (A == 2) {
                to0[2 * j] += sums[0][j];
                to0[2 * j + 1] -= sums[1][j];
            } else {
                for (int part = 0; part < B; ++part) to0[B * j + part] += sums[0][B * j + part];
            }
        }
        if (begin > first)
            for (ptrdiff_t j = lag + skip; j < lag + lags; ++j) addOne(j, from(j), begin);
        if (end < last)
            for (ptrdiff_t j = lag + skip; j < lag + lags; ++j) addOne(j, end, to(j));
    }

    void addBlock(ptrdiff_t lo, ptrdiff_t hi) const {
        lo = larger(lo, 1 - last);
        hi = smaller(hi, lenB - 1 - first);
        const ptrdiff_t start = lo;
        for (; hi - lo + 1 >= group<manyOf(A)>; lo += group<manyOf(A)>) addGroup<manyOf(A)>(lo, 0);
        constexpr ptrdiff_t few = group<fewOf(A)>;
        for (; hi - lo + 1 >= few; lo += few) addGroup<fewOf(A)>(lo, 0);
        if (lo > hi) return;
        if (hi - start + 1 >= few) return addGroup<fewOf(A)>(hi - few + 1, lo - (hi - few + 1));
        for (; lo <= hi; ++lo) addOne(lo, from(lo), to(lo));
    }
};

template <class T, int A, int B>
void correlate(const T* a, ptrdiff_t lenA, const T* b, ptrdiff_t lenB, T* dst, ptrdiff_t lo, ptrdiff_t hi) {
    constexpr int parts = Correlation<T, A, B>::parts;
    __builtin_memset(dst, 0, static_cast<size_t>(parts * (hi - lo + 1)) * sizeof(T));
    const ptrdiff_t last = smaller(lenA, lenB - lo);
    for (ptrdiff_t n = larger(0, -hi); n < last; n += blockSamples)
        Correlation<T, A, B>{a, b, n, smaller(n + blockSamples, last), lenB, dst - parts * lo}.addBlock(lo, hi);
}

// ---- Products of spectra --------------------------------------------------------------------------------------------

// conj(a) b + sum, of vectors of pairs.
template <class T, int W>
VEK_INLINE Vec<T, W> withProduct(Vec<T, W> a, Vec<T, W> b, Vec<T, W> sum) {
    constexpr typename MakeInts<W>::type indices;
    const Vec<T, W> turned = bitsAs<Vec<T, W>>(bitsAs<IntVec<T, W>>(exchanged(b, indices)) ^
                                               alternating<W, typename IntOf<T>::type>(0, signBit<T>));
    return fma(oddTwice(a, indices), turned, fma(evenTwice(a, indices), b, sum));
}

template <class T, bool Own>
void addProducts(const T* a, const T* b, T* sum, size_t count) {
    mapPairs(
        sum, count,
        [=](size_t i) {
            const T re = a[2 * i], im = a[2 * i + 1];
            const T x = Own ? b[2 * i] + re : b[2 * i], y = Own ? b[2 * i + 1] + im : b[2 * i + 1];
            return Pair<T>{fma(im, y, fma(re, x, sum[2 * i])), fnma(im, x, fma(re, y, sum[2 * i + 1]))};
        },
        [=](auto w, size_t i) {
            const auto x = held(load<w>(a + 2 * i));
            auto y = load<w>(b + 2 * i);
            if constexpr (Own) y = y + x;
            return withProduct<T, w>(x, held(y), load<w>(sum + 2 * i));
        });
}

template <class T>
constexpr kernels::CorrOf<T> entries = {
    {{correlate<T, 1, 1>, correlate<T, 1, 2>}, {correlate<T, 2, 1>, correlate<T, 2, 2>}},
    addProducts<T, false>,
    addProducts<T, true>};

}   // namespace

extern const kernels::CorrTable corr;
const kernels::CorrTable corr = {{entries<float>, entries<double>}};

}   // namespace vek::VEK_LEVEL
