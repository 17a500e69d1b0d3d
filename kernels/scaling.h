// Exact results that int16 may not hold, and how each becomes one: wrapped, saturated, or shifted to the right first,
// as common/scaling.h says. A type of result knows the shortest way to each, which seldom leads through 32 bits; it
// also knows its excess, from which the least shift follows that makes all results of a vector fit. Internal linkage
// throughout, for the reasons that simd.h gives.
#pragma once

#include "common/scaling.h"
#include "integers.h"
#include "pairs.h"

namespace vek::VEK_LEVEL {
namespace {

constexpr int atMost(int places, int limit) { return places < limit ? places : limit; }

// ---- Excess: what tells of many results the least shift to the right after which all fit ----------------------------

// Excesses join by |. In x ^ 2x the highest bit stands above the highest bit of x that is no copy of the sign.
template <class T, int W>
VEK_INLINE uint32_t anyBits(Vec<T, W> value) {
    const auto join = [](auto a, auto b) VEK_INLINE_LAMBDA { return a | b; };
    return static_cast<typename UnsignedOf<T>::type>(joinLanes<T, W>(value, join));
}

// Of one number x, the bits of x without copies of the sign.
struct NumberExcess {
    uint32_t value;
    VEK_INLINE NumberExcess operator|(NumberExcess other) const { return {value | other.value}; }
    VEK_INLINE int leastPlaces() const { return value < 0x8000 ? 0 : 17 - __builtin_clz(value); }
};

// Of sums: not zero where one does not fit. Then the answer is known, and no other sum can change it.
template <int W>
struct SumExcess {
    Int16s<W> value;
    VEK_INLINE SumExcess operator|(SumExcess other) const { return {static_cast<Int16s<W>>(value | other.value)}; }
    VEK_INLINE bool isKnown() const { return any<W>(value != Int16s<W>{}); }
    VEK_INLINE int leastPlaces() const { return isKnown() ? 1 : 0; }
};

// Of the high halves h ^ 2h; and where those are but copies of the sign, the sign of low ^ high.
template <int W>
struct ProductExcess {
    Int16s<W> high, sign;
    VEK_INLINE ProductExcess operator|(ProductExcess other) const {
        return {static_cast<Int16s<W>>(high | other.high), static_cast<Int16s<W>>(sign | other.sign)};
    }
    VEK_INLINE int leastPlaces() const {
        const uint32_t bits = anyBits<int16_t, W>(high);
        return bits > 1 ? 32 - __builtin_clz(bits) : static_cast<int>(anyBits<int16_t, W>(sign) >> 15);
    }
};

// Of 32 bits, and whether an imaginary part is 2^31.
template <int W>
struct ComplexExcess {
    Int32s<W> value, beyond;
    VEK_INLINE ComplexExcess operator|(ComplexExcess other) const {
        return {value | other.value, beyond | other.beyond};
    }
    VEK_INLINE int leastPlaces() const {
        if (any<W>(beyond)) return 17;
        const uint32_t bits = anyBits<int32_t, W>(value);
        return bits < 0x10000 ? 0 : 16 - __builtin_clz(bits);
    }
};

// ---- Results --------------------------------------------------------------------------------------------------------

// One, whatever it is.
struct Number {
    int64_t value;

    VEK_INLINE int16_t wrapped() const { return static_cast<int16_t>(value); }
    VEK_INLINE int16_t saturated() const {
        return static_cast<int16_t>(clamped<int64_t, 1>(value, least<int16_t>, most<int16_t>));
    }
    VEK_INLINE int16_t rightWrapped(int places) const { return static_cast<int16_t>(value >> places); }
    VEK_INLINE int16_t right(int places) const { return Number{value >> places}.saturated(); }
    VEK_INLINE NumberExcess excess() const { return {static_cast<uint32_t>(value ^ (value >> 63))}; }
};

// Two at a width of one pair.
struct NumberPair {
    Number re, im;

    VEK_INLINE Pair<int16_t> wrapped() const { return {re.wrapped(), im.wrapped()}; }
    VEK_INLINE Pair<int16_t> saturated() const { return {re.saturated(), im.saturated()}; }
    VEK_INLINE Pair<int16_t> rightWrapped(int places) const {
        return {re.rightWrapped(places), im.rightWrapped(places)};
    }
    VEK_INLINE Pair<int16_t> right(int places) const { return {re.right(places), im.right(places)}; }
    VEK_INLINE NumberExcess excess() const { return re.excess() | im.excess(); }
};

// Sums and differences shifted by one place fit 16 bits, and come from the bits that the operands share and those in
// which they differ.
template <int W>
struct Sum {
    Int16s<W> a, b;

    VEK_INLINE Int16s<W> wrapped() const { return sumWrapped<int16_t, W>(a, b); }
    VEK_INLINE Int16s<W> saturated() const { return addSaturated<W>(a, b); }
    VEK_INLINE Int16s<W> right(int places) const {
        const Int16s<W> x = held(a), y = held(b);
        const auto half = static_cast<Int16s<W>>((x & y) + ((x ^ y) >> 1));
        return shiftedRight<int16_t, W>(half, atMost(places - 1, 15));
    }
    VEK_INLINE Int16s<W> rightWrapped(int places) const { return right(places); }
    VEK_INLINE SumExcess<W> excess() const {
        const Sum of = {held(a), held(b)};
        return {static_cast<Int16s<W>>(of.wrapped() ^ of.saturated())};
    }
};
template <int W>
struct Difference {
    Int16s<W> a, b;

    VEK_INLINE Int16s<W> wrapped() const { return differenceWrapped<int16_t, W>(a, b); }
    VEK_INLINE Int16s<W> saturated() const { return subSaturated<W>(a, b); }
    VEK_INLINE Int16s<W> right(int places) const {
        const Int16s<W> x = held(a), y = held(b);
        const auto half = static_cast<Int16s<W>>(((x ^ y) >> 1) - (~x & y));
        return shiftedRight<int16_t, W>(half, atMost(places - 1, 15));
    }
    VEK_INLINE Int16s<W> rightWrapped(int places) const { return right(places); }
    VEK_INLINE SumExcess<W> excess() const {
        const Difference of = {held(a), held(b)};
        return {static_cast<Int16s<W>>(of.wrapped() ^ of.saturated())};
    }
};

template <int W>
struct Product {
    Int16s<W> a, b;

    VEK_INLINE Int16s<W> wrapped() const { return productLow<W>(a, b); }
    VEK_INLINE Int16s<W> saturated() const { return narrowedSaturated<W>(product<W>(held(a), held(b))); }
    VEK_INLINE Int16s<W> rightWrapped(int places) const {
        const Int16s<W> factor = splat<W>(static_cast<int16_t>(1 << (16 - places)));   // shifts across the halves
        const Int16s<W> x = held(a), y = held(b);
        return static_cast<Int16s<W>>(productLow<W>(productHigh<W>(x, y), factor) |
                                      productHighUnsigned<W>(productLow<W>(x, y), factor));
    }
    VEK_INLINE Int16s<W> right(int places) const {
        return narrowedSaturated<W>(product<W>(held(a), held(b)).map([=](auto w, auto half) VEK_INLINE_LAMBDA {
            return shiftedRight<int32_t, w>(half, atMost(places, 31));
        }));
    }
    VEK_INLINE ProductExcess<W> excess() const {
        const Int16s<W> x = held(a), y = held(b), high = productHigh<W>(x, y);
        return {static_cast<Int16s<W>>(high ^ sumWrapped<int16_t, W>(high, high)),
                static_cast<Int16s<W>>(productLow<W>(x, y) ^ high)};
    }
};

// W / 2 pairs. Only the imaginary part can leave 32 bits, and only as 2^31, of the four least factors; it stands here
// as -2^31, which no other product gives.
template <int W>
struct ComplexProduct {
    static constexpr int half = W / 2;
    Int16s<W> a, b;
    Int32s<half> re, im;

    // a.re b.re - a.im b.im is a.re b.re + a.im ~b.im + a.im.
    VEK_INLINE ComplexProduct(Int16s<W> x, Int16s<W> y)
        : a(x),
          b(y),
          re(sumWrapped<int32_t, half>(pairSums<W>(a, static_cast<Int16s<W>>(b ^ alternating<W, int16_t>(0, -1))),
                                       bitsAs<Int32s<half>>(a) >> 16)),
          im(pairSums<W>(a, exchanged(b, typename MakeInts<W>::type{}))) {}

    VEK_INLINE Int16s<W> wrapped() const {
        const Int16s<W> products = productLow<W>(a, b);
        const auto difference =
            differenceWrapped<int16_t, W>(products, exchanged(products, typename MakeInts<W>::type{}));
        return bitsAs<Int16s<W>>((bitsAs<Int32s<half>>(difference) & splat<half>(0xffff)) |
                                 shiftedLeft<int32_t, half>(im, 16));
    }
    VEK_INLINE Int16s<W> saturated() const {
        return saturated(re,
                         sumWrapped<int32_t, half>(im, im == splat<half>(least<int32_t>)));   // -2^31 becomes 2^31 - 1
    }
    VEK_INLINE Int16s<W> rightWrapped(int places) const {
        return wrapped(shiftedRight<int32_t, half>(re >> 1, places - 1),
                       shiftedRight<int32_t, half>(halfIm(), places - 1));
    }
    VEK_INLINE Int16s<W> right(int places) const {
        return saturated(shiftedRight<int32_t, half>(re >> 1, places - 1),
                         shiftedRight<int32_t, half>(halfIm(), places - 1));
    }
    VEK_INLINE ComplexExcess<half> excess() const {
        return {(re ^ sumWrapped<int32_t, half>(re, re)) | (im ^ sumWrapped<int32_t, half>(im, im)),
                im == splat<half>(least<int32_t>)};
    }

private:
    VEK_INLINE Int32s<half> halfIm() const { return (im >> 1) ^ (im & (im == splat<half>(least<int32_t>))); }
    VEK_INLINE static Int16s<W> wrapped(Int32s<half> re, Int32s<half> im) {
        return bitsAs<Int16s<W>>((re & splat<half>(0xffff)) | shiftedLeft<int32_t, half>(im, 16));
    }
    VEK_INLINE static Int16s<W> saturated(Int32s<half> re, Int32s<half> im) {
        constexpr typename MakeInts<half>::type indices;
        return narrowedSaturated<W>(
            Wide<int32_t, W>{unpackLow<int32_t>(re, im, indices), unpackHigh<int32_t>(re, im, indices)});
    }
};
VEK_INLINE NumberPair complexProduct(Pair<int16_t> a, Pair<int16_t> b) {
    return {{int64_t{a.re} * b.re - int64_t{a.im} * b.im}, {int64_t{a.re} * b.im + int64_t{a.im} * b.re}};
}

// The least shift to the right after which at(Int<W>, i), a step's results from element i on, fit for all of n
// elements.
template <class Step, int W = lanes<int16_t>, class At>
VEK_INLINE int leastPlaces(size_t n, At at) {
    constexpr size_t step = Step::elements(W);
    if constexpr (step > 1)
        if (n < step) return leastPlaces<Step, narrower<int16_t, W>>(n, at);
    constexpr size_t unrolled = W == 1 ? 1 : 4;
    auto all = at(Int<W>{}, n - step).excess();   // some results may count twice
    size_t i = 0;
    for (; n - i >= unrolled * step; i += unrolled * step) {
        unroll<unrolled>([&](auto k) VEK_INLINE_LAMBDA { all = all | at(Int<W>{}, i + k * step).excess(); });
        if constexpr (requires { all.isKnown(); })
            if (all.isKnown()) return all.leastPlaces();
    }
    for (; n - i > step; i += step) all = all | at(Int<W>{}, i).excess();
    return all.leastPlaces();
}

template <Fit F, class Exact>
VEK_INLINE auto fitted(const Exact& exact, int places) {
    if constexpr (F == fitWraps) return exact.wrapped();
    if constexpr (F == fitSaturates) return exact.saturated();
    if constexpr (F == fitRightWraps) return exact.rightWrapped(places);
    if constexpr (F == fitRight) return exact.right(places);
}

// ---- Accumulated results: 32 or 64 bits in vectors, int16 in memory -------------------------------------------------

template <Fit F, int W>
VEK_INLINE void storeFitted(int16_t* to, Int32s<W> exact, int places) {
    if constexpr (F >= fitRightWraps) exact = shiftedRight<int32_t, W>(exact, atMost(places, 31));
    if constexpr (F == fitSaturates || F == fitRight)
        storeSaturated<W>(to, exact);
    else
        storeNarrowed<W>(to, exact);
}
template <Fit F, int W>
VEK_INLINE void storeFitted(int16_t* to, Wide<int64_t, W> exact, int places) {
    if constexpr (F >= fitRightWraps)
        exact = exact.map([=](auto w, auto half) VEK_INLINE_LAMBDA { return shiftedRight<int64_t, w>(half, places); });
    if constexpr (F == fitSaturates || F == fitRight)
        storeFitted<fitSaturates, W>(to, narrowedSaturated<W>(exact), 0);
    else
        storeFitted<fitWraps, W>(to, narrowed<W>(exact), 0);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
