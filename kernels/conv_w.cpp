// Convolution of int16 vectors: exact sums, scaled; and the ways to float and back.
#include "conv.h"
#include "scaling.h"

namespace vek::VEK_LEVEL {
namespace {

// ---- Exact sums -----------------------------------------------------------------------------------------------------

// 32 bits hold the sum of 256 products of an int16 and a byte. So each tap comes apart into its high byte, with the
// sign, and its low one, without; the instruction that sums the products of pairs takes two taps of either at once, and
// the halves go together in 64 bits. The signal is laid out as pairs of neighbours for it, a block of results at a
// time.
constexpr size_t block = 512;

template <int W>
struct ShortSums {
    static constexpr int vectors = W == 4 && sizeof(void*) == 4 ? 2 : 4;
    static_assert(block % (vectors * W) == 0);

    int32_t low[kernels::maxShortTaps / 2], high[kernels::maxShortTaps / 2];
    size_t pairCount;
    int32_t pairs[kernels::maxShortTaps + block];

    // The tap that meets the later sample stands in the upper half.
    ShortSums(const int16_t* taps, size_t count) : pairCount((count + 1) / 2) {
        for (size_t t = 0; t < pairCount; ++t) {
            const uint16_t later = static_cast<uint16_t>(taps[2 * t]);
            const uint16_t earlier = static_cast<uint16_t>(2 * t + 1 < count ? taps[2 * t + 1] : 0);
            low[t] = static_cast<int32_t>((later & 255u) << 16 | (earlier & 255u));
            high[t] = static_cast<int32_t>(
                static_cast<uint32_t>(static_cast<uint16_t>(static_cast<int16_t>(later) >> 8)) << 16 |
                static_cast<uint16_t>(static_cast<int16_t>(earlier) >> 8));
        }
    }

    // The signal for the results from n on, zeros outside it.
    void lay(const int16_t* signal, size_t length, size_t n) {
        int16_t samples[kernels::maxShortTaps + block + 1];
        constexpr size_t before = kernels::maxShortTaps + 1;   // samples[i] is signal[n - before + i]
        const size_t from = n < before ? before - n : 0;
        const size_t left = length + before - n;   // index of the first that is beyond
        const size_t to = length + before <= n ? 0 : left < before + block ? left : before + block;
        __builtin_memset(samples, 0, sizeof samples);
        if (from < to) __builtin_memcpy(samples + from, signal + (n + from - before), (to - from) * sizeof *samples);
        for (size_t i = 0; i < kernels::maxShortTaps + block; ++i)
            pairs[i] = static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint16_t>(samples[i + 1])) << 16 |
                                            static_cast<uint16_t>(samples[i]));
    }

    // take(i, exact) for the results of a block, vector by vector, until they reach `count`.
    template <class Take>
    VEK_INLINE void each(size_t count, Take take) const {
        for (size_t i = 0; i < count; i += vectors * W) {
            Int32s<W> lows[vectors] = {}, highs[vectors] = {};
            const int32_t* at = pairs + kernels::maxShortTaps + i;
            for (size_t t = 0; t < pairCount; ++t, at -= 2) {
                const auto lowTaps = bitsAs<Int16s<2 * W>>(splat<W>(low[t]));
                const auto highTaps = bitsAs<Int16s<2 * W>>(splat<W>(high[t]));
                unroll<vectors>([&](auto v) VEK_INLINE_LAMBDA {
                    const auto values = held(bitsAs<Int16s<2 * W>>(load<W>(at + v * W)));
                    lows[v] += pairSums<2 * W>(values, lowTaps);
                    highs[v] += pairSums<2 * W>(values, highTaps);
                });
            }
            unroll<vectors>([&](auto v) VEK_INLINE_LAMBDA {
                const Wide<int64_t, W> below = widened<W>(lows[v]), above = widened<W>(highs[v]);
                take(i + v * W, Wide<int64_t, W>{below.low + shiftedLeft<int64_t, W / 2>(above.low, 8),
                                                 below.high + shiftedLeft<int64_t, W / 2>(above.high, 8)});
            });
        }
    }
};

[[maybe_unused]] int64_t exactSum(const int16_t* signal, size_t length, const int16_t* taps, size_t tapCount,
                                  size_t n) {
    int64_t sum = 0;
    for (size_t k = n < length ? 0 : n - length + 1; k < tapCount && k <= n; ++k)
        sum += int64_t{signal[n - k]} * taps[k];
    return sum;
}

template <Fit F>
void direct(const int16_t* signal, size_t length, const int16_t* taps, size_t tapCount, int16_t* y, int places) {
    constexpr int w = lanes<int32_t>;
    const size_t count = length + tapCount - 1;
    if constexpr (w == 1) {
        for (size_t n = 0; n < count; ++n)
            storeFitted<F, 1>(y + n, Wide<int64_t, 1>{exactSum(signal, length, taps, tapCount, n)}, places);
    } else {
        ShortSums<w> sums(taps, tapCount);
        for (size_t n = 0; n < count; n += block) {
            int16_t results[block];
            const size_t some = count - n < block ? count - n : block;
            sums.lay(signal, length, n);
            sums.each(some, [&](size_t i, Wide<int64_t, w> exact)
                                VEK_INLINE_LAMBDA { storeFitted<F, w>(results + i, exact, places); });
            __builtin_memcpy(y + n, results, some * sizeof *y);
        }
    }
}

// Of x ^ 2x for all results, where the highest bit stands above the highest one of x that is no copy of the sign.
constexpr int placesOf(uint64_t excess) { return excess < 0x10000 ? 0 : 48 - __builtin_clzll(excess); }
constexpr uint64_t excessOf(int64_t x) { return static_cast<uint64_t>(x) ^ static_cast<uint64_t>(x) * 2; }

template <int W>
int directPlaces(const int16_t* signal, size_t length, const int16_t* taps, size_t tapCount) {
    const size_t count = length + tapCount - 1;
    uint64_t excess = 0;
    if constexpr (W == 1) {
        for (size_t n = 0; n < count; ++n) excess |= excessOf(exactSum(signal, length, taps, tapCount, n));
    } else {
        ShortSums<W> sums(taps, tapCount);
        Int64s<W / 2> all = {};
        for (size_t n = 0; n < count; n += block) {   // beyond the last result the sums are zero
            sums.lay(signal, length, n);
            sums.each(count - n < block ? count - n : block, [&](size_t, Wide<int64_t, W> exact) VEK_INLINE_LAMBDA {
                all |= (exact.low ^ (exact.low + exact.low)) | (exact.high ^ (exact.high + exact.high));
            });
        }
        for (int i = 0; i < W / 2; ++i) excess |= static_cast<uint64_t>(all[i]);
    }
    return placesOf(excess);
}

// ---- Floats ---------------------------------------------------------------------------------------------------------

void toFloats(const int16_t* src, float* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return loadAs<float, w>(src + i); });
}

constexpr float allWhole = 0x1p23F;   // from here on every float is an integer

// The nearest integer, the even one of two.
template <int W>
VEK_INLINE Vec<float, W> nearest(Vec<float, W> value) {
    const Vec<float, W> size = magnitude<float, W>(value), large = splat<W>(allWhole);
    return size < large ? withSignOf<float, W>((size + large) - large, value) : value;
}
template <int W>
VEK_INLINE Int32s<W> truncated(Vec<float, W> value) {
    if constexpr (W == 1)
        return static_cast<int32_t>(value);
    else
        return __builtin_convertvector(value, Int32s<W>);
}
// The next integer below.
template <int W>
VEK_INLINE Vec<float, W> floored(Vec<float, W> value) {
    const Vec<float, W> large = splat<W>(allWhole);
    const auto fits = magnitude<float, W>(value) < large;
    const Vec<float, W> some = fits ? value : Vec<float, W>{};
    Vec<float, W> whole;
    if constexpr (W == 1)
        whole = static_cast<float>(truncated<W>(some));
    else
        whole = __builtin_convertvector(truncated<W>(some), Vec<float, W>);
    whole = whole > some ? whole - splat<W>(1.0F) : whole;
    return fits ? whole : value;
}

template <Fit F, int W>
VEK_INLINE void storeFitted(int16_t* to, Vec<float, W> value, float scale) {
    Vec<float, W> whole = nearest<W>(value);
    if constexpr (F >= fitRightWraps) whole = floored<W>(whole * splat<W>(scale));
    if constexpr (F == fitSaturates || F == fitRight) {
        const Vec<float, W> low = splat<W>(-32768.0F), high = splat<W>(32767.0F);
        whole = whole < low ? low : whole;
        storeSaturated<W>(to, truncated<W>(whole > high ? high : whole));
    } else {
        const Vec<float, W> turns = floored<W>(whole * splat<W>(0x1p-16F));
        storeNarrowed<W>(to, truncated<W>(fnma(turns, splat<W>(0x1p16F), whole)));   // exact: 0 ... 65535
    }
}

template <Fit F>
void fromFloats(const float* src, int16_t* dst, size_t n, int places) {
    float scale = 1;
    for (int i = 0; i < places; ++i) scale *= 0.5F;
    forAll<float, RealStep<Bound::byArithmetic>>(
        dst, n, [=](auto w, size_t i) VEK_INLINE_LAMBDA { return load<w>(src + i); },
        [=](size_t i, auto value) VEK_INLINE_LAMBDA {
            storeFitted<F, static_cast<int>(sizeof value / sizeof(float))>(dst + i, value, scale);
        });
}

// The extremes as integers tell: rounding keeps their order.
int floatPlaces(const float* src, size_t n) {
    const auto extreme = [=](auto pick) VEK_INLINE_LAMBDA {
        const float value = reduce<float, RealStep<Bound::byMemory>>(
            n, [=](auto w) VEK_INLINE_LAMBDA { return splat<w>(src[0]); },
            [=](auto w, size_t i, auto best) VEK_INLINE_LAMBDA { return pick(best, load<w>(src + i)); }, pick,
            [=](auto w, auto best) VEK_INLINE_LAMBDA { return joinLanes<float, w>(best, pick); });
        return static_cast<int64_t>(nearest<1>(value));
    };
    return placesOf(excessOf(extreme([](auto a, auto b) VEK_INLINE_LAMBDA { return a < b ? a : b; })) |
                    excessOf(extreme([](auto a, auto b) VEK_INLINE_LAMBDA { return a > b ? a : b; })));
}

}   // namespace

extern const kernels::ConvShortsTable conv_w;
const kernels::ConvShortsTable conv_w = {
    {direct<fitWraps>, direct<fitSaturates>, direct<fitRightWraps>, direct<fitRight>},
    directPlaces<lanes<int32_t>>,
    toFloats,
    {fromFloats<fitWraps>, fromFloats<fitSaturates>, fromFloats<fitRightWraps>, fromFloats<fitRight>},
    floatPlaces};

}   // namespace vek::VEK_LEVEL
