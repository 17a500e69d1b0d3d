// Vectors of int16, int32 and int64: what the operators of the compiler's vectors do not say. Internal linkage
// throughout, for the reasons that simd.h gives.
//
// Sums, differences, products and comparisons are operators. As in the language itself, those that may leave the range
// are for `Unsigned` vectors; and at width 1 int16 is computed in int, so that results want a cast or a store.
#pragma once

#include "elementwise.h"

namespace vek::VEK_LEVEL {
namespace {

template <int W>
using Int16s = Vec<int16_t, W>;
template <int W>
using Int32s = Vec<int32_t, W>;
template <int W>
using Int64s = Vec<int64_t, W>;

template <class T>
inline constexpr T most = static_cast<T>(~uint64_t{0} >> (65 - 8 * sizeof(T)));
template <class T>
inline constexpr T least = static_cast<T>(-most<T> - 1);

// ---- Registers, and the instructions that the compiler's vectors lack -----------------------------------------------

template <int Bytes>
struct RegisterOf;
#define VEK_REGISTER(bytes, type, prefix)                                                        \
    template <>                                                                                  \
    struct RegisterOf<bytes> {                                                                   \
        typedef type Register;                                                                   \
    };                                                                                           \
    VEK_INLINE type addSaturated16(type a, type b) { return prefix##_adds_epi16(a, b); }         \
    VEK_INLINE type subSaturated16(type a, type b) { return prefix##_subs_epi16(a, b); }         \
    VEK_INLINE type productHigh16(type a, type b) { return prefix##_mulhi_epi16(a, b); }         \
    VEK_INLINE type productHighUnsigned16(type a, type b) { return prefix##_mulhi_epu16(a, b); } \
    VEK_INLINE type pairSums16(type a, type b) { return prefix##_madd_epi16(a, b); }             \
    VEK_INLINE type packSaturated32(type a, type b) { return prefix##_packs_epi32(a, b); }
#if defined(__SSE2__)
VEK_REGISTER(16, __m128i, _mm)
#endif
#if defined(__AVX2__)
VEK_REGISTER(32, __m256i, _mm256)
#endif
#if defined(__AVX512BW__)
VEK_REGISTER(64, __m512i, _mm512)
#endif
#undef VEK_REGISTER

template <class V>
VEK_INLINE auto reg(V value) {
    return bitsAs<typename RegisterOf<sizeof(V)>::Register>(value);
}

// ---- Of one type ----------------------------------------------------------------------------------------------------

template <class T, int W>
VEK_INLINE Vec<T, W> lesser(Vec<T, W> a, Vec<T, W> b) {
    return a < b ? a : b;
}
template <class T, int W>
VEK_INLINE Vec<T, W> greater(Vec<T, W> a, Vec<T, W> b) {
    return a > b ? a : b;
}
template <class T, int W>
VEK_INLINE Vec<T, W> clamped(Vec<T, W> value, T low, T high) {
    return lesser<T, W>(greater<T, W>(value, splat<W>(low)), splat<W>(high));
}

template <class T>
struct UnsignedOf;
template <>
struct UnsignedOf<int16_t> {
    typedef uint16_t type;
};
template <>
struct UnsignedOf<int32_t> {
    typedef uint32_t type;
};
template <>
struct UnsignedOf<int64_t> {
    typedef uint64_t type;
};
template <class T, int W>
using Unsigned = Vec<typename UnsignedOf<T>::type, W>;

// The magnitude; of the least number that number.
template <class T, int W>
VEK_INLINE Vec<T, W> absolute(Vec<T, W> value) {
    const Unsigned<T, W> bits = bitsAs<Unsigned<T, W>>(value);
    return greater<T, W>(value, bitsAs<Vec<T, W>>(static_cast<Unsigned<T, W>>(Unsigned<T, W>{} - bits)));
}

// Modulo 2^bits.
template <class T, int W>
VEK_INLINE Vec<T, W> sumWrapped(Vec<T, W> a, Vec<T, W> b) {
    return bitsAs<Vec<T, W>>(static_cast<Unsigned<T, W>>(bitsAs<Unsigned<T, W>>(a) + bitsAs<Unsigned<T, W>>(b)));
}
template <class T, int W>
VEK_INLINE Vec<T, W> differenceWrapped(Vec<T, W> a, Vec<T, W> b) {
    return bitsAs<Vec<T, W>>(static_cast<Unsigned<T, W>>(bitsAs<Unsigned<T, W>>(a) - bitsAs<Unsigned<T, W>>(b)));
}

// By 0 ... bits - 1 places, known only at run time: to the left; to the right with copies of the sign; with zeros.
template <class T, int W>
VEK_INLINE Vec<T, W> shiftedLeft(Vec<T, W> value, int places) {
    return bitsAs<Vec<T, W>>(static_cast<Unsigned<T, W>>(bitsAs<Unsigned<T, W>>(value) << places));
}
template <class T, int W>
VEK_INLINE Vec<T, W> shiftedRightLogical(Vec<T, W> value, int places) {
    return bitsAs<Vec<T, W>>(static_cast<Unsigned<T, W>>(bitsAs<Unsigned<T, W>>(value) >> places));
}
template <class T, int W>
VEK_INLINE Vec<T, W> shiftedRight(Vec<T, W> value, int places) {
#if !defined(__AVX512F__)
    if constexpr (W > 1 && sizeof(T) == 8) {
        // Only AVX-512 has the instruction. The sign's place after the shift, turned over and taken away, extends it.
        const Unsigned<T, W> sign = splat<W>(uint64_t{1} << 63 >> places);
        return bitsAs<Vec<T, W>>(((bitsAs<Unsigned<T, W>>(value) >> places) ^ sign) - sign);
    }
#endif
    return static_cast<Vec<T, W>>(value >> places);
}

template <int W>
VEK_INLINE Int16s<W> addSaturated(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return static_cast<int16_t>(clamped<int32_t, 1>(a + b, least<int16_t>, most<int16_t>));
    else
        return bitsAs<Int16s<W>>(addSaturated16(reg(a), reg(b)));
}
template <int W>
VEK_INLINE Int16s<W> subSaturated(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return static_cast<int16_t>(clamped<int32_t, 1>(a - b, least<int16_t>, most<int16_t>));
    else
        return bitsAs<Int16s<W>>(subSaturated16(reg(a), reg(b)));
}

// The halves of the product in 32 bits.
template <int W>
VEK_INLINE Int16s<W> productLow(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return static_cast<int16_t>(a * b);
    else
        return bitsAs<Int16s<W>>(bitsAs<Unsigned<int16_t, W>>(a) * bitsAs<Unsigned<int16_t, W>>(b));
}
template <int W>
VEK_INLINE Int16s<W> productHigh(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return static_cast<int16_t>(a * b >> 16);
    else
        return bitsAs<Int16s<W>>(productHigh16(reg(a), reg(b)));
}

// The upper half of the product of numbers without sign.
template <int W>
VEK_INLINE Int16s<W> productHighUnsigned(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return static_cast<int16_t>(uint32_t{static_cast<uint16_t>(a)} * static_cast<uint16_t>(b) >> 16);
    else
        return bitsAs<Int16s<W>>(productHighUnsigned16(reg(a), reg(b)));
}

// Of each pair of neighbours the sum of its two products, in 32 bits; 2^31, of the four least factors, wraps.
template <int W>
VEK_INLINE Int32s<W / 2> pairSums(Int16s<W> a, Int16s<W> b) {
    return bitsAs<Int32s<W / 2>>(pairSums16(reg(a), reg(b)));
}

// ---- Twice as wide, in two vectors ----------------------------------------------------------------------------------

// W elements that came from one vector of a type half as wide. They stand in the order of unpacking, within 16-byte
// lanes (see laneOf in simd.h): arithmetic ignores it and narrowing undoes it, both without the price of crossing
// lanes.
template <class T, int W>
struct Wide {
    Vec<T, W / 2> low, high;

    // f(Int<W / 2>, half) of both.
    template <class F>
    VEK_INLINE Wide map(F f) const {
        return {f(Int<W / 2>{}, low), f(Int<W / 2>{}, high)};
    }
};
template <class T>
struct Wide<T, 1> {
    T low;

    template <class F>
    VEK_INLINE Wide map(F f) const {
        return {static_cast<T>(f(Int<1>{}, low))};
    }
};

// Lanes of `low` with those of `high` above them.
template <class T, class N, int W>
VEK_INLINE Wide<T, W> joined(Vec<N, W> low, Vec<N, W> high) {
    constexpr typename MakeInts<W>::type indices;
    return {bitsAs<Vec<T, W / 2>>(unpackLow<N>(low, high, indices)),
            bitsAs<Vec<T, W / 2>>(unpackHigh<N>(low, high, indices))};
}
template <int W>
VEK_INLINE Wide<int32_t, W> widened(Int16s<W> value) {
    if constexpr (W == 1)
        return {value};
    else
        return joined<int32_t, int16_t, W>(value, value >> 15);
}
template <int W>
VEK_INLINE Wide<int64_t, W> widened(Int32s<W> value) {
    if constexpr (W == 1)
        return {value};
    else
        return joined<int64_t, int32_t, W>(value, value >> 31);
}

template <int W>
VEK_INLINE Wide<int32_t, W> product(Int16s<W> a, Int16s<W> b) {
    if constexpr (W == 1)
        return {a * b};
    else
        return joined<int32_t, int16_t, W>(productLow<W>(a, b), productHigh<W>(a, b));
}

template <int W>
VEK_INLINE Int16s<W> narrowedSaturated(Wide<int32_t, W> value) {
    if constexpr (W == 1)
        return static_cast<int16_t>(clamped<int32_t, 1>(value.low, least<int16_t>, most<int16_t>));
    else
        return bitsAs<Int16s<W>>(packSaturated32(reg(value.low), reg(value.high)));
}
template <int W>
VEK_INLINE Int16s<W> narrowed(Wide<int32_t, W> value) {
    if constexpr (W == 1)
        return static_cast<int16_t>(value.low);
    else
        return narrowedSaturated<W>(value.map([](auto, auto half) VEK_INLINE_LAMBDA { return half << 16 >> 16; }));
}
template <int W>
VEK_INLINE Int32s<W> narrowed(Wide<int64_t, W> value) {
    if constexpr (W == 1)
        return static_cast<int32_t>(value.low);
    else
        return pickEven<int32_t>(bitsAs<Int32s<W>>(value.low), bitsAs<Int32s<W>>(value.high),
                                 typename MakeInts<W>::type{});
}
template <int W>
VEK_INLINE Int32s<W> narrowedSaturated(Wide<int64_t, W> value) {
    return narrowed<W>(value.map(
        [](auto w, auto half) VEK_INLINE_LAMBDA { return clamped<int64_t, w>(half, least<int32_t>, most<int32_t>); }));
}

// ---- Memory of another type, in its order ---------------------------------------------------------------------------

// By one instruction, or two. A vector of eight bytes would be an MMX register on 32-bit processors; the masks keep
// AVX-512's conversions from seeming to read what is not initialised.
#if defined(__SSE2__)
VEK_INLINE __m128i eightBytes(const void* from) { return _mm_loadl_epi64(static_cast<const __m128i*>(from)); }
VEK_INLINE void loadWider(const int16_t* from, Int32s<4>& to) {
    const __m128i four = eightBytes(from);
    to = bitsAs<Int32s<4>>(_mm_srai_epi32(_mm_unpacklo_epi16(four, four), 16));
}
VEK_INLINE void loadWider(const int32_t* from, Int64s<2>& to) {
    const __m128i two = eightBytes(from);
    to = bitsAs<Int64s<2>>(_mm_unpacklo_epi32(two, _mm_srai_epi32(two, 31)));
}
VEK_INLINE void loadWider(const int32_t* from, Vec<double, 2>& to) { to = _mm_cvtepi32_pd(eightBytes(from)); }
VEK_INLINE void loadWider(const float* from, Vec<double, 2>& to) {
    to = _mm_cvtps_pd(bitsAs<__m128>(eightBytes(from)));
}
VEK_INLINE void storeNarrower(int16_t* to, Int32s<4> value) {
    const auto low = reg(static_cast<Int32s<4>>(value << 16 >> 16));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packs_epi32(low, low));
}
VEK_INLINE void storeNearest(int16_t* to, Int32s<4> value) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packs_epi32(reg(value), reg(value)));
}
VEK_INLINE void storeNarrower(int32_t* to, Int64s<2> value) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi32(reg(value), 0x08));
}
#endif
#if defined(__AVX2__)
VEK_INLINE void loadWider(const int16_t* from, Int32s<8>& to) {
    to = bitsAs<Int32s<8>>(_mm256_cvtepi16_epi32(reg(load<8>(from))));
}
VEK_INLINE void loadWider(const int32_t* from, Int64s<4>& to) {
    to = bitsAs<Int64s<4>>(_mm256_cvtepi32_epi64(reg(load<4>(from))));
}
VEK_INLINE void loadWider(const int32_t* from, Vec<double, 4>& to) { to = _mm256_cvtepi32_pd(reg(load<4>(from))); }
VEK_INLINE void loadWider(const float* from, Vec<double, 4>& to) { to = _mm256_cvtps_pd(load<4>(from)); }
VEK_INLINE void storeNearest(int16_t* to, Int32s<8> value) {
    const __m256i all = reg(value);
    store(to, _mm_packs_epi32(_mm256_castsi256_si128(all), _mm256_extracti128_si256(all, 1)));
}
VEK_INLINE void storeNarrower(int16_t* to, Int32s<8> value) {
    storeNearest(to, static_cast<Int32s<8>>(value << 16 >> 16));
}
VEK_INLINE void storeNarrower(int32_t* to, Int64s<4> value) {
    const __m256i low = _mm256_permutevar8x32_epi32(reg(value), _mm256_setr_epi32(0, 2, 4, 6, 0, 2, 4, 6));
    store(to, _mm256_castsi256_si128(low));
}
#endif
#if defined(__AVX512F__)
VEK_INLINE void loadWider(const int16_t* from, Int32s<16>& to) {
    to = bitsAs<Int32s<16>>(_mm512_maskz_cvtepi16_epi32(0xffff, reg(load<16>(from))));
}
VEK_INLINE void loadWider(const int32_t* from, Int64s<8>& to) {
    to = bitsAs<Int64s<8>>(_mm512_maskz_cvtepi32_epi64(0xff, reg(load<8>(from))));
}
VEK_INLINE void loadWider(const int32_t* from, Vec<double, 8>& to) {
    to = _mm512_maskz_cvtepi32_pd(0xff, reg(load<8>(from)));
}
VEK_INLINE void loadWider(const float* from, Vec<double, 8>& to) { to = _mm512_maskz_cvtps_pd(0xff, load<8>(from)); }
VEK_INLINE void storeNearest(int16_t* to, Int32s<16> value) {
    store(to, _mm512_maskz_cvtsepi32_epi16(0xffff, reg(value)));
}
VEK_INLINE void storeNarrower(int16_t* to, Int32s<16> value) {
    store(to, _mm512_maskz_cvtepi32_epi16(0xffff, reg(value)));
}
VEK_INLINE void storeNarrower(int32_t* to, Int64s<8> value) {
    store(to, _mm512_maskz_cvtepi64_epi32(0xff, reg(value)));
}
#endif

// The W elements from `from` on, each as a T, which is no narrower.
template <class T, int W, class From>
VEK_INLINE Vec<T, W> loadAs(const From* from) {
    if constexpr (W == 1) {
        return static_cast<T>(*from);
    } else if constexpr (sizeof(From) == sizeof(T)) {
        return __builtin_convertvector(load<W>(from), Vec<T, W>);
    } else if constexpr (sizeof(From) == 2 && !__is_same(T, int32_t)) {
        if constexpr (sizeof(T) == 4) {
            return __builtin_convertvector((loadAs<int32_t, W>(from)), Vec<T, W>);
        } else if constexpr (W >= 4) {
            int32_t between[W];
            store(between, loadAs<int32_t, W>(from));
            return loadAs<T, W>(between);
        } else {
            return Vec<T, W>{static_cast<T>(from[0]), static_cast<T>(from[1])};
        }
    } else {
        Vec<T, W> to;
        loadWider(from, to);
        return to;
    }
}

// To integers half as wide: the low halves; and the nearest numbers.
template <int W, class To, class From>
VEK_INLINE void storeNarrowed(To* to, From value) {
    if constexpr (W == 1)
        store(to, value);
    else
        storeNarrower(to, value);
}
template <int W>
VEK_INLINE void storeSaturated(int16_t* to, Int32s<W> value) {
    if constexpr (W == 1)
        store(to, clamped<int32_t, 1>(value, least<int16_t>, most<int16_t>));
    else
        storeNearest(to, value);
}
template <int W>
VEK_INLINE void storeSaturated(int32_t* to, Int64s<W> value) {
    storeNarrowed<W>(to, clamped<int64_t, W>(value, least<int32_t>, most<int32_t>));
}

}   // namespace
}   // namespace vek::VEK_LEVEL
