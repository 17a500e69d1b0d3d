// Squares, square roots, absolute values and thresholds. Every loop loads a step's sources before it stores
// its results, so dst may equal src.
//
// Moduli of complex elements are taken of elements scaled by a power of two, so that no square leaves the
// range; all scaling is exact, and the results carry about two units in the last place of the modulus.
//
// No lane raises overflow, invalid or division by zero unless its result shows it. So operators that compare by order,
// which are invalid for any NaN, see no NaN, and what a lane will not use is computed from harmless operands.
#include "vec.h"

#include "elementwise.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::Success;

inline constexpr Success success = 0;

// ---- Reals --------------------------------------------------------------------------------------

template <class T>
Success sqr2(const T* src, T* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) {
        const auto x = load<w>(src + i);
        return x * x;
    });
    return success;
}

template <class T, int W>
VEK_INLINE auto isNegative(Vec<T, W> x) {   // no NaN is
    const Vec<T, W> zero = {};
    if constexpr (W == 1)
        return __builtin_isless(x, zero) != 0;
    else
        return (x == x ? x : zero) < zero;
}

template <class T>
bool sqrt2(const T* src, T* dst, size_t n) {
    bool negativeMet = false;
    mapReals<Bound::byArithmetic>(dst, n, [src, dst, &negativeMet](auto w, size_t i) {
        const auto x = load<w>(src + i);
        const Vec<T, w> zero = {};
        const auto negative = isNegative<T, w>(x);
        if (!any<w>(negative)) [[likely]]
            return squareRoot(x);
        negativeMet = true;
        const auto former = load<w>(dst + i);
        return negative ? former : squareRoot(negative ? zero : x);
    });
    return negativeMet;
}

template <class T>
Success abs2(const T* src, T* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return magnitude<T, w>(load<w>(src + i)); });
    return success;
}

// The order of the bit patterns: as sign and magnitude, so that -0 is below +0 and NaNs lie beyond the
// infinities. Against a threshold with the sign bit clear that is the order of the patterns as signed
// integers; against one with the sign bit set it is the reverse of their order as unsigned integers.
template <class T, bool Below>
Success threshold(const T* src, T* dst, size_t n, T thresh) {
    using Signed = typename IntOf<T>::type;
    const Signed limit = bitsAs<Signed>(thresh);
    if (limit >= 0) {
        mapReals(dst, n, [=](auto w, size_t i) {
            const auto x = bitsAs<IntVec<T, w>>(held(load<w>(src + i)));
            const IntVec<T, w> bound = splat<w>(limit);
            const IntVec<T, w> kept = Below ? (x > bound ? x : bound) : (x < bound ? x : bound);
            return bitsAs<Vec<T, w>>(kept);
        });
    } else {
        mapReals(dst, n, [=](auto w, size_t i) {
            const auto x = bitsAs<UintVec<T, w>>(held(load<w>(src + i)));
            const auto bound = bitsAs<UintVec<T, w>>(splat<w>(limit));
            const UintVec<T, w> kept = Below ? (x < bound ? x : bound) : (x > bound ? x : bound);
            return bitsAs<Vec<T, w>>(kept);
        });
    }
    return success;
}

// What stands for the reciprocal of zero, in both precisions: the largest finite float.
inline constexpr float reciprocalOfZero = __FLT_MAX__;

template <class T>
bool invThresh2(const T* src, T* dst, size_t n, T thresh) {
    const T one = 1;
    if (thresh != 0) {
        // A NaN counts as zero; adding zero takes the sign off -0. No element exceeds a threshold that is a NaN, which
        // makes NaNs of all.
        const bool isNumber = thresh == thresh;
        const T bound = isNumber ? thresh : static_cast<T>(__builtin_inff());
        const T numerator = isNumber ? one : thresh;
        mapReals<Bound::byArithmetic>(dst, n, [=](auto w, size_t i) {
            const auto x = load<w>(src + i);
            const Vec<T, w> zero = {};
            if constexpr (w == 1)
                return numerator / (__builtin_isgreater(magnitude<T, 1>(x), bound) ? x
                                    : isNegative<T, 1>(x)                          ? -bound
                                                                                   : bound);
            const Vec<T, w> number = x == x ? x : zero;
            const auto modulus = magnitude<T, w>(number);
            const auto limit = splat<w>(bound);
            return splat<w>(numerator) / withSignOf<T, w>(modulus > limit ? modulus : limit, number + zero);
        });
        return false;
    }
    bool zeroMet = false;
    mapReals<Bound::byArithmetic>(dst, n, [src, one, &zeroMet](auto w, size_t i) {
        const auto x = load<w>(src + i);
        const Vec<T, w> zero = {};
        const auto isZero = x == zero;
        zeroMet |= any<w>(isZero);
        const auto inverse = splat<w>(one) / (isZero ? splat<w>(one) : x);
        return isZero ? splat<w>(static_cast<T>(reciprocalOfZero)) : inverse;
    });
    return zeroMet;
}

// ---- Complex ------------------------------------------------------------------------------------

template <class T, int W>
struct Planar {
    Vec<T, W> re, im;
};

template <class T, int W>
VEK_INLINE Planar<T, W> loadPlanar(const T* from) {
    if constexpr (W == 1) {
        return {from[0], from[1]};
    } else {
        constexpr typename MakeInts<W>::type indices;
        const auto a = held(load<W>(from));
        const auto b = held(load<W>(from + W));
        return {pickEven<T>(a, b, indices), pickOdd<T>(a, b, indices)};
    }
}

template <class T, int W>
VEK_INLINE void storePlanar(T* to, Planar<T, W> value) {
    if constexpr (W == 1) {
        to[0] = value.re;
        to[1] = value.im;
    } else {
        constexpr typename MakeInts<W>::type indices;
        store(to, unpackLow<T>(value.re, value.im, indices));
        store(to + W, unpackHigh<T>(value.re, value.im, indices));
    }
}

// What is rare happens out of line, to parts in memory: re[W], im[W]. A vector on the stack would have every call align
// the stack for it, and most calls never come here.
template <int W, class T>
VEK_INLINE Planar<T, W> loadParts(const T* parts) {
    return {load<W>(parts), load<W>(parts + W)};
}
template <class T, int W>
VEK_INLINE void storeParts(T* parts, Planar<T, W> value) {
    store(parts, value.re);
    store(parts + W, value.im);
}
template <class T, int W, class Change>
VEK_INLINE Planar<T, W> inMemory(Planar<T, W> value, Change change) {
    T parts[2 * W];
    storeParts(parts, value);
    change(parts);
    return loadParts<W>(parts);
}

// dst[i ...] = compute(W values of src from i on).
template <Bound B, class T, class Compute>
VEK_INLINE void mapComplex(const T* src, T* dst, size_t count, Compute compute) {
    forAll<T, PlanarStep<B>>(
        dst, count, [=](auto w, size_t i) VEK_INLINE_LAMBDA { return compute(w, loadPlanar<T, w>(src + 2 * i)); },
        [=](size_t i, auto value) VEK_INLINE_LAMBDA { storePlanar(dst + 2 * i, value); });
}

template <class T>
Success complexSqr2(const T* src, T* dst, size_t count) {
    mapComplex<Bound::byMemory>(src, dst, count, [](auto w, auto x) {
        const auto cross = x.re * x.im;
        return Planar<T, w>{(x.re - x.im) * (x.re + x.im), cross + cross};
    });
    return success;
}

// Elements whose parts are at most highPart and whose square of the modulus is at least lowSquare, and a threshold
// between smallThreshold and largeThreshold, need no scaling: what is computed from the two stays in the range.
//
// Elements whose larger part is below lowEnd or not below highBegin are scaled by raise or lower. Then the
// modulus lies between 2^-59 and 2^61 (2^-474 and 2^385 in double precision), and so do the thresholds that
// thresholdPart leaves, within 2^+-64 (2^+-512): no quotient or product of two such numbers leaves the range.
template <class T>
struct Range;
template <>
struct Range<float> {
    static constexpr float lowEnd = 0x1p-30f, highBegin = 0x1p30f;
    static constexpr float raise = 0x1p90f, raiseRoot = 0x1p-45f;
    static constexpr float lower = 0x1p-80f, lowerRoot = 0x1p40f;
    static constexpr float smallThreshold = 0x1p-64f, largeThreshold = 0x1p64f;
    static constexpr float ofSmall = 0x1p85f, backToSmall = 0x1p-85f;
    static constexpr float lowSquare = 0x1p-100f, highPart = 0x1p60f;
    static constexpr float largest = __FLT_MAX__;
};
template <>
struct Range<double> {
    static constexpr double lowEnd = 0x1p-240, highBegin = 0x1p240;
    static constexpr double raise = 0x1p600, raiseRoot = 0x1p-300;
    static constexpr double lower = 0x1p-640, lowerRoot = 0x1p320;
    static constexpr double smallThreshold = 0x1p-512, largeThreshold = 0x1p512;
    static constexpr double ofSmall = 0x1p562, backToSmall = 0x1p-562;
    static constexpr double lowSquare = 0x1p-960, highPart = 0x1.000007fffffffp480;
    static constexpr double largest = __DBL_MAX__;
};

// threshold = part / scale, scale a power of two.
template <class T>
struct ThresholdPart {
    T part, scale, unscale;
};
template <class T>
VEK_INLINE ThresholdPart<T> thresholdPart(T thresh) {
    using R = Range<T>;
    if (thresh < R::smallThreshold) return {thresh * R::ofSmall, R::ofSmall, R::backToSmall};
    if (thresh >= R::largeThreshold) return {thresh * R::smallThreshold, R::smallThreshold, R::largeThreshold};
    return {thresh, 1, 1};
}

// Whether a part of any element exceeds highPart or is a NaN: by the patterns of the magnitudes, which order as the
// numbers do, those of NaNs beyond. They are compared in words of 32 bits, for which all levels have the instruction;
// no lower word of a double exceeds that of highPart, so the upper one decides.
template <class T, int W>
VEK_INLINE bool anyHighPart(Planar<T, W> x) {
    const T high = Range<T>::highPart;
    const auto re = magnitude<T, W>(x.re);
    const auto im = magnitude<T, W>(x.im);
    if constexpr (W == 1) {
        return !(__builtin_islessequal(re, high) && __builtin_islessequal(im, high));
    } else {
        constexpr int words = W * static_cast<int>(sizeof(T)) / 4;
        using Words = Vec<int32_t, words>;
        const auto limit = bitsAs<Words>(splat<W>(high));
        const auto a = bitsAs<Words>(re);
        const auto b = bitsAs<Words>(im);
#if defined(__AVX2__)
        return anyBelow<words>(limit, Words(a > b ? a : b));
#else
        return any<words>((limit < a) | (limit < b));
#endif
    }
}

// compute(x, square) where all elements are in that range. Zeros are frequent in signals: where these alone are not,
// ones are computed in their place, and `ofZero` is the result. Everything else is left to unusual(x).
template <class T, int W, class Compute, class Unusual>
VEK_INLINE Planar<T, W> byRange(Planar<T, W> x, bool zeros, Planar<T, W> ofZero, Compute compute, Unusual unusual) {
    if (anyHighPart<T, W>(x)) [[unlikely]]
        return unusual(x);
    const auto low = splat<W>(static_cast<T>(Range<T>::lowSquare));
    const auto square = fma(x.re, x.re, x.im * x.im);
    if (!anyBelow<W>(square, low)) [[likely]]
        return compute(x, square);
    const Vec<T, W> zero = {};
    const auto one = splat<W>(static_cast<T>(1));
    const auto isZero = (x.re == zero) & (x.im == zero);
    const auto others = isZero ? one : square;
    if (!zeros || anyBelow<W>(others, low)) return unusual(x);
    const Planar<T, W> result = compute(Planar<T, W>{isZero ? one : x.re, x.im}, others);
    return {isZero ? ofZero.re : result.re, isZero ? ofZero.im : result.im};
}

// x, but zero where a part is a NaN.
template <class T, int W>
VEK_INLINE Planar<T, W> withoutNans(Planar<T, W> x) {
    const Vec<T, W> zero = {};
    const auto numbers = (x.re == x.re) & (x.im == x.im);
    return {numbers ? x.re : zero, numbers ? x.im : zero};
}

template <class T, int W>
struct Scaled {
    Vec<T, W> re, im;
    Vec<T, W> scale, rootScale;   // 1 / sqrt(scale)
    Vec<T, W> square;             // of the scaled modulus; infinite only where a part is
};

template <class T, int W>
VEK_INLINE Scaled<T, W> scaled(Planar<T, W> x) {   // without NaNs
    using R = Range<T>;
    const auto a = magnitude<T, W>(x.re);
    const auto b = magnitude<T, W>(x.im);
    const auto larger = a > b ? a : b;
    const auto smaller = a > b ? b : a;
    const auto isLow = larger < splat<W>(R::lowEnd);
    const auto isHigh = larger >= splat<W>(R::highBegin);
    const auto one = splat<W>(static_cast<T>(1));
    Scaled<T, W> s;
    s.scale = isLow ? splat<W>(R::raise) : (isHigh ? splat<W>(R::lower) : one);
    s.rootScale = isLow ? splat<W>(R::raiseRoot) : (isHigh ? splat<W>(R::lowerRoot) : one);
    s.re = x.re * s.scale;
    s.im = x.im * s.scale;
    const auto c = larger * s.scale;
    const auto d = smaller * s.scale;
    s.square = fma(c, c, d * d);
    return s;
}

// The principal root of an element with an infinite or NaN part, as Annex G of the C standard has it.
template <class T>
VEK_INLINE void unusualRoot(T re, T im, T& rootRe, T& rootIm) {
    const T infinity = static_cast<T>(__builtin_inff());
    if (magnitude<T, 1>(im) == infinity) {
        rootRe = infinity;
        rootIm = im;
    } else if (re == infinity) {
        rootRe = re;
        rootIm = im == im ? withSignOf<T, 1>(0, im) : im;
    } else if (re == -infinity) {
        rootRe = im == im ? 0 : im;
        rootIm = withSignOf<T, 1>(infinity, im);
    } else {
        rootRe = rootIm = re != re ? re : im;
    }
}

// With r = |x|, the principal root is (t, im / 2t), t = sqrt((|re| + r) / 2), for re >= 0; its parts change
// places, both signs following im's, for re < 0. Nothing cancels in either.
template <class T, int W>
VEK_INLINE Planar<T, W> principalRoot(Planar<T, W> x, Vec<T, W> t) {
    const Vec<T, W> zero = {};
    const auto one = splat<W>(static_cast<T>(1));
    const auto twice = t + t;
    const auto other = magnitude<T, W>(x.im) / (twice == zero ? one : twice);
    const auto left = x.re < zero;
    return {left ? other : t, withSignOf<T, W>(left ? t : other, x.im)};
}

template <class T, int W>
[[gnu::noinline]] void unusualRoots(T* parts) {
    const Planar<T, W> x = loadParts<W>(parts);
    const Planar<T, W> numbers = withoutNans<T, W>(x);
    const auto half = splat<W>(static_cast<T>(0.5));
    const Scaled<T, W> s = scaled(numbers);
    const auto t = squareRoot((magnitude<T, W>(s.re) + squareRoot(s.square)) * half) * s.rootScale;
    const auto usual = (s.square <= splat<W>(Range<T>::largest)) & (x.re == x.re) & (x.im == x.im);
    const auto one = splat<W>(static_cast<T>(1));
    storeParts<T, W>(parts, principalRoot<T, W>({usual ? numbers.re : one, usual ? numbers.im : one}, usual ? t : one));
    if (!any<W>(!usual)) [[likely]]
        return;
    T unusual[2 * W];
    storeParts(unusual, x);
    for (int k = 0; k < W; ++k)
        if (!__builtin_isfinite(unusual[k]) || !__builtin_isfinite(unusual[W + k]))
            unusualRoot(unusual[k], unusual[W + k], parts[k], parts[W + k]);
}

template <class T>
Success complexSqrt2(const T* src, T* dst, size_t count) {
    mapComplex<Bound::byArithmetic>(src, dst, count, [](auto width, auto x) VEK_INLINE_LAMBDA {
        constexpr int w = decltype(width){};
        return byRange<T, w>(
            x, true, Planar<T, w>{{}, x.im},
            [](auto usual, auto square) VEK_INLINE_LAMBDA {
                const auto half = splat<w>(static_cast<T>(0.5));
                const auto sum = magnitude<T, w>(usual.re) + squareRoot(square);
                return principalRoot<T, w>(usual, squareRoot(sum * half));
            },
            [](auto rare) VEK_INLINE_LAMBDA {
                return inMemory(rare, [](T* parts) VEK_INLINE_LAMBDA { unusualRoots<T, w>(parts); });
            });
    });
    return success;
}

// Where a part is infinite, the point of the unit square's edge that lies in that direction; elsewhere x.
template <class T, int W>
[[gnu::noinline, gnu::cold]] Planar<T, W> directionOfInfinite(const Planar<T, W>& x) {
    const Vec<T, W> zero = {};
    const auto one = splat<W>(static_cast<T>(1));
    const auto largest = splat<W>(Range<T>::largest);
    const auto infiniteRe = magnitude<T, W>(x.re) > largest;
    const auto infiniteIm = magnitude<T, W>(x.im) > largest;
    const auto infinite = infiniteRe | infiniteIm;
    const auto re = withSignOf<T, W>(infiniteRe ? one : zero, x.re);
    const auto im = withSignOf<T, W>(infiniteIm ? one : zero, x.im);
    return {infinite ? re : x.re, infinite ? im : x.im};
}

// thresh in the scale of each element. Low ones lie below 1, and so does what they are compared with.
template <class T, int W>
VEK_INLINE Vec<T, W> scaledThreshold(T thresh, const Scaled<T, W>& s) {
    const auto low = splat<W>(thresh < 1 ? thresh : static_cast<T>(1));
    return (s.scale == splat<W>(Range<T>::raise) ? low : splat<W>(thresh)) * s.scale;
}

// x becomes x thresh / |x| where |x| lies on the wrong side of thresh. An element with a NaN part stays.
template <class T, int W, bool Below>
[[gnu::noinline]] void limitUnusual(T* parts, T thresh, ThresholdPart<T> limit) {
    const Planar<T, W> x = loadParts<W>(parts);
    const Vec<T, W> zero = {};
    const auto one = splat<W>(static_cast<T>(1));
    Scaled<T, W> s = scaled(withoutNans<T, W>(x));
    const auto bound = scaledThreshold<T, W>(thresh, s);
    auto modulus = squareRoot(s.square);
    const auto beyond = Below ? modulus < bound : modulus > bound;
    const auto replaced = beyond & (x.re == x.re) & (x.im == x.im);
    if constexpr (!Below) {
        if (any<W>(s.square > splat<W>(Range<T>::largest))) [[unlikely]] {
            s = scaled(directionOfInfinite<T, W>(withoutNans<T, W>(x)));
            modulus = squareRoot(s.square);
        }
    }
    const auto isZero = modulus == zero;
    const auto factor = splat<W>(limit.part) / ((replaced & !isZero) ? modulus : one);
    const auto unscale = splat<W>(limit.unscale);
    // a part that is zero stays so when thresh is infinite
    const auto re = s.re * ((replaced & (s.re != zero)) ? factor : one) * unscale;
    const auto im = s.im * ((replaced & (s.im != zero)) ? factor : one) * unscale;
    storeParts<T, W>(parts,
                     {replaced ? (isZero ? splat<W>(thresh) : re) : x.re, replaced ? (isZero ? zero : im) : x.im});
}

template <class T, bool Below>
Success complexThreshold(const T* src, T* dst, size_t count, T thresh) {
    // A NaN has nothing on its wrong side.
    const T harmless = Below ? 0 : static_cast<T>(__builtin_inff());
    const T limit = thresh == thresh ? magnitude<T, 1>(thresh) : harmless;
    const ThresholdPart<T> part = thresholdPart(limit);
    const T squareLimit = part.scale == 1 ? limit * limit : 0;
    mapComplex<Bound::byArithmetic>(src, dst, count, [&](auto width, auto x) VEK_INLINE_LAMBDA {
        constexpr int w = decltype(width){};
        const auto unusual = [&](auto rare) VEK_INLINE_LAMBDA {
            return inMemory(rare, [&](T* parts) VEK_INLINE_LAMBDA { limitUnusual<T, w, Below>(parts, limit, part); });
        };
        if (part.scale != 1) return unusual(x);
        return byRange<T, w>(
            x, true, Below ? Planar<T, w>{splat<w>(limit), {}} : x,
            [&](auto usual, auto square) VEK_INLINE_LAMBDA {
                const auto bound = splat<w>(squareLimit);
                const auto replaced = Below ? square < bound : square > bound;
                const auto one = splat<w>(static_cast<T>(1));
                const auto factor = replaced ? splat<w>(limit) / squareRoot(square) : one;
                return Planar<T, w>{usual.re * factor, usual.im * factor};
            },
            unusual);
    });
    return success;
}

// 1 / x where |x| exceeds thresh; elsewhere a number of modulus 1 / thresh with the phase of 1 / x.
template <class T, int W>
[[gnu::noinline]] bool invertUnusual(T* parts, T thresh, ThresholdPart<T> limit) {
    const Planar<T, W> x = loadParts<W>(parts);
    const Vec<T, W> zero = {};
    const auto one = splat<W>(static_cast<T>(1));
    const auto isNumber = (x.re == x.re) & (x.im == x.im);
    const Planar<T, W> numbers = withoutNans<T, W>(x);
    Scaled<T, W> s = scaled(numbers);
    auto divisor = s.square;
    auto scale = s.scale;
    const auto infinite = s.square > splat<W>(Range<T>::largest);
    const auto isZero = isNumber & (s.square == zero);
    if (any<W>(infinite)) [[unlikely]] {
        const Planar<T, W> direction = directionOfInfinite<T, W>(numbers);
        s.re = infinite ? direction.re : s.re;
        s.im = infinite ? direction.im : s.im;
    }
    auto ofZero = splat<W>(static_cast<T>(reciprocalOfZero));
    if (limit.part != 0) {
        const auto modulus = squareRoot(s.square);
        const auto exceeds = modulus > scaledThreshold<T, W>(thresh, s);
        divisor = exceeds ? s.square : (s.square == zero ? one : modulus) * splat<W>(limit.part);
        scale = exceeds ? s.scale : splat<W>(limit.scale);
        ofZero = one / (isZero ? splat<W>(limit.part) : one) * splat<W>(limit.scale);
    }
    const auto factor = one / (s.square == zero ? one : divisor);
    const auto re = s.re * factor * scale;
    const auto im = negated<T, W>(s.im * factor * scale);
    const auto nan = x.re != x.re ? x.re : x.im;
    storeParts<T, W>(parts, {isNumber ? (isZero ? ofZero : re) : nan, isNumber ? (isZero ? zero : im) : nan});
    return any<W>(isZero);
}

template <class T>
bool complexInvThresh2(const T* src, T* dst, size_t count, T thresh) {
    const bool plain = thresh == 0;
    // Nothing exceeds a NaN, which makes NaNs of all.
    const bool isNumber = thresh == thresh;
    const T bound = isNumber ? thresh : static_cast<T>(__builtin_inff());
    ThresholdPart<T> limit = thresholdPart(bound);
    if (!isNumber) limit.part = thresh;
    const bool scales = limit.scale != 1;
    const T inverseOfZero = plain || scales ? 0 : 1 / thresh;
    const T squareLimit = scales ? 0 : thresh * thresh;
    bool zeroMet = false;
    mapComplex<Bound::byArithmetic>(src, dst, count, [&](auto width, auto x) VEK_INLINE_LAMBDA {
        constexpr int w = decltype(width){};
        const auto unusual = [&](auto rare) VEK_INLINE_LAMBDA {
            return inMemory(rare,
                            [&](T* parts) VEK_INLINE_LAMBDA { zeroMet |= invertUnusual<T, w>(parts, bound, limit); });
        };
        if (!plain && scales) return unusual(x);
        return byRange<T, w>(
            x, !plain, Planar<T, w>{splat<w>(inverseOfZero), {}},
            [&](auto usual, auto square) VEK_INLINE_LAMBDA {
                auto divisor = square;
                if (!plain) divisor = square > splat<w>(squareLimit) ? square : squareRoot(square) * splat<w>(thresh);
                const auto factor = splat<w>(static_cast<T>(1)) / divisor;
                return Planar<T, w>{usual.re * factor, negated<T, w>(usual.im * factor)};
            },
            unusual);
    });
    return plain && zeroMet;
}

template <class T>
constexpr kernels::VecOf<T> entries = {sqr2<T>,
                                       sqrt2<T>,
                                       abs2<T>,
                                       threshold<T, true>,
                                       threshold<T, false>,
                                       invThresh2<T>,
                                       complexSqr2<T>,
                                       complexSqrt2<T>,
                                       complexThreshold<T, true>,
                                       complexThreshold<T, false>,
                                       complexInvThresh2<T>};

}   // namespace

extern const kernels::VecTable vec;
const kernels::VecTable vec = {{entries<float>, entries<double>}};

}   // namespace vek::VEK_LEVEL
