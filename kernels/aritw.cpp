// Arithmetic of int16 vectors. Every loop loads a step's sources before it stores its results, so dst may equal a
// source.
#include "aritw.h"

#include "scaling.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::Complex16;
using kernels::LeastAndMost;
using kernels::ScaledOf;

// ---- Without scaling ------------------------------------------------------------------------------------------------

void set(int16_t value, int16_t* dst, size_t n) {
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t) { return splat<w>(value); });
}

void complexSet(Complex16 value, int16_t* dst, size_t n) {
    mapPairs<Bound::byStores>(
        dst, n / 2,
        [=](size_t) {
            return Pair<int16_t>{value.re, value.im};
        },
        [=](auto w, size_t) { return alternating<w>(value.re, value.im); });
}

void copy(const int16_t* src, int16_t* dst, size_t n) { copyReals(src, dst, n); }

// The conjugate of the least imaginary part saturates.
VEK_INLINE Pair<int16_t> conjugated(const int16_t* from) { return {from[0], subSaturated<1>(0, from[1])}; }
template <int W>
VEK_INLINE Int16s<W> conjugated(Int16s<W> a) {
    return subSaturated<W>(a & alternating<W, int16_t>(-1, 0), a & alternating<W, int16_t>(0, -1));
}

void conj2(const int16_t* src, int16_t* dst, size_t n) {
    mapPairs(
        dst, n / 2, [=](size_t i) { return conjugated(src + 2 * i); },
        [=](auto w, size_t i) { return conjugated<w>(load<w>(src + 2 * i)); });
}

void conjFlip2(const int16_t* src, int16_t* dst, size_t n) {
    mapPairs(
        dst, n / 2, [=](size_t i) { return conjugated(src + n - 2 - 2 * i); },
        [=](auto w, size_t i) {
            return conjugated<w>(pairsReversed(load<w>(src + n - 2 * i - w), typename MakeInts<w>::type{}));
        });
}

// ---- With scaling ---------------------------------------------------------------------------------------------------

template <int W>
VEK_INLINE Int16s<W> operand(const int16_t* b, size_t i) {
    return load<W>(b + i);
}
template <int W>
VEK_INLINE Int16s<W> operand(int16_t b, size_t) {
    return splat<W>(b);
}
template <int W>
VEK_INLINE Int16s<W> operand(Complex16 b, size_t) {
    return alternating<W>(b.re, b.im);
}
VEK_INLINE Pair<int16_t> pair(const int16_t* b, size_t i) { return {b[i], b[i + 1]}; }
VEK_INLINE Pair<int16_t> pair(Complex16 b, size_t) { return {b.re, b.im}; }

// What an operation gives at a width of W reals from real i on.
struct Add {
    template <int W, class Operand>
    VEK_INLINE static auto at(const int16_t* a, Operand b, size_t i) {
        if constexpr (W == 1 && __is_same(Operand, Complex16))
            return NumberPair{{a[i] + b.re}, {a[i + 1] + b.im}};
        else
            return Sum<W>{load<W>(a + i), operand<W>(b, i)};
    }
};
struct Subtract {
    template <int W, class Operand>
    VEK_INLINE static auto at(const int16_t* a, Operand b, size_t i) {
        if constexpr (W == 1 && __is_same(Operand, Complex16))
            return NumberPair{{a[i] - b.re}, {a[i + 1] - b.im}};
        else
            return Difference<W>{load<W>(a + i), operand<W>(b, i)};
    }
};
struct Multiply {
    template <int W, class Operand>
    VEK_INLINE static auto at(const int16_t* a, Operand b, size_t i) {
        return Product<W>{load<W>(a + i), operand<W>(b, i)};
    }
};
struct ComplexMultiply {
    template <int W, class Operand>
    VEK_INLINE static auto at(const int16_t* a, Operand b, size_t i) {
        if constexpr (W == 1)
            return complexProduct(pair(a, i), pair(b, i));
        else
            return ComplexProduct<W>(held(load<W>(a + i)), held(operand<W>(b, i)));
    }
};

// The steps of an operation: pairs where it takes the parts apart, or one scalar for each.
template <class Operation, class Operand>
inline constexpr bool takesPairs = __is_same(Operation, ComplexMultiply) || __is_same(Operand, Complex16);
template <Bound B, bool Pairs>
struct StepOf {
    typedef RealStep<B> type;
};
template <Bound B>
struct StepOf<B, true> {
    typedef PairStep<B> type;
};

template <class Operation, Fit F, class Operand>
void run(const int16_t* a, Operand b, int16_t* dst, size_t n, [[maybe_unused]] int places) {
    // Complex products in 32 bits are long enough steps by themselves.
    constexpr Bound bound = __is_same(Operation, ComplexMultiply) && F != fitWraps ? Bound::byArithmetic
                            : __is_same(Operand, const int16_t*)                   ? Bound::byMemory
                                                                                   : Bound::byStores;
    using Step = typename StepOf<bound, takesPairs<Operation, Operand>>::type;
    forAll<int16_t, Step>(
        dst, n / Step::reals,
        [=](auto w, size_t i)
            VEK_INLINE_LAMBDA { return fitted<F>(Operation::template at<w>(a, b, Step::reals * i), places); },
        [=](size_t i, auto value) VEK_INLINE_LAMBDA { storePairs(dst + Step::reals * i, value); });
}

template <class Operation, class Operand>
int places(const int16_t* a, Operand b, size_t n) {
    using Step = typename StepOf<Bound::byMemory, takesPairs<Operation, Operand>>::type;
    return leastPlaces<Step>(n / Step::reals, [=](auto w, size_t i) VEK_INLINE_LAMBDA {
        return Operation::template at<w>(a, b, Step::reals * i);
    });
}

template <class Operation, class Operand>
constexpr ScaledOf<Operand> scaled = {{run<Operation, fitWraps, Operand>, run<Operation, fitSaturates, Operand>,
                                       run<Operation, fitRightWraps, Operand>, run<Operation, fitRight, Operand>},
                                      places<Operation, Operand>};

// ---- The last step of scaling to the left ---------------------------------------------------------------------------

void leftWraps(int16_t* dst, size_t n, int places) {
    const auto factor = static_cast<int16_t>(1 << places);   // 16 places: 0
    mapReals<Bound::byStores>(dst, n,
                              [=](auto w, size_t i) { return productLow<w>(load<w>(dst + i), splat<w>(factor)); });
}

void leftSaturates(int16_t* dst, size_t n, int places) {
    const int by = atMost(places, 15);   // which saturates all that 16 would
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t i) {
        const Int16s<w> x = load<w>(dst + i);
        const auto shifted = shiftedLeft<int16_t, w>(x, by);
        const auto limit = static_cast<Int16s<w>>((x >> 15) ^ splat<w>(most<int16_t>));
        return static_cast<Int16s<w>>(shiftedRight<int16_t, w>(shifted, by) == x ? shifted : limit);
    });
}

// ---- From int32 -----------------------------------------------------------------------------------------------------

template <Fit F>
void narrow(const int32_t* src, int16_t* dst, size_t n, [[maybe_unused]] int places) {
    forAll<int32_t, RealStep<Bound::byArithmetic>>(
        dst, n, [=](auto w, size_t i) VEK_INLINE_LAMBDA { return load<w>(src + i); },
        [=](size_t i, auto value) VEK_INLINE_LAMBDA {
            storeFitted<F, static_cast<int>(sizeof value / sizeof(int32_t))>(dst + i, value, places);
        });
}

template <int W>
struct Extent {
    Int32s<W> least, most;
};

LeastAndMost range(const int32_t* src, size_t n) {
    const auto join = [](auto a, auto b) VEK_INLINE_LAMBDA {
        constexpr int w = static_cast<int>(sizeof a / 2 / sizeof(int32_t));
        return Extent<w>{lesser<int32_t, w>(a.least, b.least), greater<int32_t, w>(a.most, b.most)};
    };
    const auto all = reduce<int32_t, RealStep<Bound::byMemory>>(
        n,
        [=](auto w) VEK_INLINE_LAMBDA {
            return Extent<w>{splat<w>(src[0]), splat<w>(src[0])};
        },
        [=](auto w, size_t i, auto extent) VEK_INLINE_LAMBDA {
            const auto x = load<w>(src + i);
            return join(extent, Extent<w>{x, x});
        },
        join,
        [](auto w, auto extent) VEK_INLINE_LAMBDA {
            return Extent<1>{
                joinLanes<int32_t, w>(extent.least,
                                      [](auto a, auto b) VEK_INLINE_LAMBDA {
                                          return lesser<int32_t, static_cast<int>(sizeof a / sizeof(int32_t))>(a, b);
                                      }),
                joinLanes<int32_t, w>(extent.most, [](auto a, auto b) VEK_INLINE_LAMBDA {
                    return greater<int32_t, static_cast<int>(sizeof a / sizeof(int32_t))>(a, b);
                })};
        });
    return {all.least, all.most};
}

}   // namespace

extern const kernels::AritwTable aritw;
const kernels::AritwTable aritw = {set,
                                   complexSet,
                                   copy,
                                   conj2,
                                   conjFlip2,
                                   scaled<Add, int16_t>,
                                   scaled<Subtract, int16_t>,
                                   scaled<Multiply, int16_t>,
                                   scaled<Add, Complex16>,
                                   scaled<Subtract, Complex16>,
                                   scaled<ComplexMultiply, Complex16>,
                                   scaled<Add, const int16_t*>,
                                   scaled<Subtract, const int16_t*>,
                                   scaled<Multiply, const int16_t*>,
                                   scaled<ComplexMultiply, const int16_t*>,
                                   {leftWraps, leftSaturates},
                                   {narrow<fitWraps>, narrow<fitSaturates>, narrow<fitRightWraps>, narrow<fitRight>},
                                   range};

}   // namespace vek::VEK_LEVEL
