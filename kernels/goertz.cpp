// The Goertzel recurrence.
//
// Each sample waits for the one before it, so the time is that of one multiplication, one addition and the rounding to
// the state's type; what does not depend on the latest value is computed aside. Instructions that round to float and
// widen again take longer than the arithmetic. So blocks are first run with a rounding in two integer operations, which
// errs on ties and beyond float's normal range, while the true one is computed aside; a stretch in which the two differ
// is run again with the true one.
#include "goertz.h"

#include "integers.h"

namespace vek::VEK_LEVEL {
namespace {

template <class T, class X, int Parts>
VEK_INLINE void runExactly(double factor, const X* samples, size_t n, T* prev2, T* prev1) {
    double before[Parts], last[Parts];
    unroll<Parts>([&](auto p) VEK_INLINE_LAMBDA {
        before[p] = prev2[p];
        last[p] = prev1[p];
    });
    // The newest value takes the place of the oldest.
    const auto step = [=](const X* sample, double(&oldest)[Parts], const double(&newest)[Parts]) VEK_INLINE_LAMBDA {
        unroll<Parts>([&](auto p) VEK_INLINE_LAMBDA {
            oldest[p] = static_cast<T>(fma(factor, newest[p], static_cast<double>(sample[p]) - oldest[p]));
        });
    };
    for (; n >= 2; n -= 2, samples += 2 * Parts) {
        step(samples, before, last);
        step(samples + Parts, last, before);
    }
    if (n > 0) {
        step(samples, before, last);
        unroll<Parts>([&](auto p) VEK_INLINE_LAMBDA {
            prev2[p] = static_cast<T>(last[p]);
            prev1[p] = static_cast<T>(before[p]);
        });
        return;
    }
    unroll<Parts>([&](auto p) VEK_INLINE_LAMBDA {
        prev2[p] = static_cast<T>(before[p]);
        prev1[p] = static_cast<T>(last[p]);
    });
}

#if defined(__SSE2__)
using Doubles = Vec<double, 2>;

template <int Parts, class From>
VEK_INLINE Doubles loadParts(const From* from) {
    if constexpr (Parts == 1)
        return Doubles{static_cast<double>(*from), 0};
    else
        return loadAs<double, 2>(from);
}

// As many stretches as need no other rounding; returns how many samples they had.
template <class X, int Parts>
VEK_INLINE size_t runQuickly(double factor, const X* samples, size_t n, float* prev2, float* prev1) {
    constexpr size_t stretch = 256;
    const Doubles factors = splat<2>(factor);
    const Int64s<2> half = splat<2>(int64_t{1} << 28);
    const Doubles kept = bitsAs<Doubles>(Int64s<2>(splat<2>(-(int64_t{1} << 29))));
    Doubles before = loadParts<Parts>(prev2);
    Doubles last = loadParts<Parts>(prev1);
    size_t done = 0;
    while (done < n) {
        const size_t stop = n - done < stretch ? n : done + stretch;
        Int64s<2> differing = {};
        for (size_t i = done; i < stop; ++i) {
            const Doubles rest = loadParts<Parts>(samples + i * Parts) - before;
            before = last;
            const Doubles next = fma(factors, last, rest);
            const Doubles rounded = _mm_and_pd(bitsAs<Doubles>(bitsAs<Int64s<2>>(next) + half), kept);
            differing |= bitsAs<Int64s<2>>(rounded) ^ bitsAs<Int64s<2>>(_mm_cvtps_pd(_mm_cvtpd_ps(next)));
            last = rounded;
        }
        if (any<2>(differing != 0)) break;
        done = stop;
        unroll<Parts>([&](auto p) VEK_INLINE_LAMBDA {
            prev2[p] = static_cast<float>(before[int{p}]);
            prev1[p] = static_cast<float>(last[int{p}]);
        });
    }
    return done;
}
#endif

template <class T, class X, int Parts>
void run(T cos2, const X* samples, size_t n, T* prev2, T* prev1) {
#if defined(__SSE2__)
    constexpr size_t fewest = 16;
    if constexpr (vectorBytes > 0 && sizeof(T) == sizeof(float)) {
        if (n >= fewest) {
            const size_t done = runQuickly<X, Parts>(cos2, samples, n, prev2, prev1);
            samples += done * Parts;
            n -= done;
        }
    }
#endif
    runExactly<T, X, Parts>(cos2, samples, n, prev2, prev1);
}

template <class T, class X, int Parts>
inline constexpr kernels::GoertzOf<T, X, Parts> entry = {run<T, X, Parts>};

}   // namespace

extern const kernels::GoertzTable goertz;
const kernels::GoertzTable goertz = {{entry<float, float, 1>, entry<float, float, 2>, entry<double, double, 1>,
                                      entry<double, double, 2>, entry<float, int16_t, 1>, entry<float, int16_t, 2>}};

}   // namespace vek::VEK_LEVEL
