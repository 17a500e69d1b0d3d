// Runs an element-wise operation over lengths, offsets and aliasings, and compares element by element.
#pragma once

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "data.h"

namespace test {

// 113 bits: sums, products, quotients and roots rounded to it, then to double or float, are rounded as if
// once.
__extension__ typedef __float128 Exact;

template <class T>
using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

template <class T>
Bits<T> bitsOf(T value) {
    Bits<T> bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}
template <class T>
bool isNan(T value) {
    return value != value;
}
template <class T>
bool isFinite(T value) {
    return value - value == 0;
}

// The same bits; one NaN is as good as another.
template <class T>
bool same(T a, T b) {
    return bitsOf(a) == bitsOf(b) || (isNan(a) && isNan(b));
}
inline bool same(VekCplx a, VekCplx b) { return same(a.re, b.re) && same(a.im, b.im); }
inline bool same(VekDCplx a, VekDCplx b) { return same(a.re, b.re) && same(a.im, b.im); }

template <class T>
inline constexpr bool isComplexElement = !std::is_floating_point_v<T>;

template <class T>
std::string shown(T value) {
    char text[96];
    if constexpr (isComplexElement<T>)
        std::snprintf(text, sizeof text, "(%.17g, %.17g)", double{value.re}, double{value.im});
    else
        std::snprintf(text, sizeof text, "%.17g", double{value});
    return text;
}

// n elements, `source` and `dst` elements behind the start of 64-byte aligned arrays.
struct Placement {
    int n, source, dst;
};

// Every length up to twice the widest unrolled loop, then some around powers of two at every offset of a
// cache line.
inline std::vector<Placement> placements() {
    std::vector<Placement> all;
    for (int n = 1; n <= 67; ++n)
        for (const int offset : {0, 1, 3, 6}) all.push_back({n, offset, (offset * 5 + n) % 8});
    for (const int n : {127, 256, 300, 515, 1024, 4099})
        for (int offset = 0; offset < 16; ++offset) all.push_back({n, (offset * 7 + 3) % 16, offset});
    return all;
}

// `run(srcA, srcB, dst, n)` against `expected(a, b, formerDst)`, where one or both sources may be dst itself.
enum class Alias {
    none,
    first,
    second
};

template <class T, class Run, class Agree>
void checkElements(const char* name, Alias alias, Placement at, Run run, Agree agree) {
    constexpr std::size_t margin = 32;
    const std::size_t n = static_cast<std::size_t>(at.n);
    Data data(static_cast<std::uint64_t>(at.n * 64 + at.dst));
    struct alignas(64) Line {
        unsigned char bytes[64];
    };
    const std::size_t lines = ((n + 2 * margin) * sizeof(T) + 63) / 64;
    const std::vector<T> fresh = data.mixed<T>(lines * 64 / sizeof(T));
    std::vector<Line> storageA(lines), storageB(lines), storageDst(lines);
    const auto place = [&](std::vector<Line>& storage, int offset, const std::vector<T>& values) {
        T* begin = reinterpret_cast<T*>(storage.data()) + offset;
        std::memcpy(begin, values.data(), n * sizeof(T));
        return begin;
    };
    const std::vector<T> valuesA = data.mixed<T>(n);
    const std::vector<T> valuesB = data.mixed<T>(n);
    T* const a = place(storageA, at.source, valuesA);
    T* const b = place(storageB, at.source, valuesB);
    T* const whole = reinterpret_cast<T*>(storageDst.data());
    std::memcpy(static_cast<void*>(whole), fresh.data(), fresh.size() * sizeof(T));
    T* const dst = whole + at.dst;
    if (alias == Alias::first) std::memcpy(dst, valuesA.data(), n * sizeof(T));
    if (alias == Alias::second) std::memcpy(dst, valuesB.data(), n * sizeof(T));
    const std::vector<T> former(dst, dst + n);

    run(alias == Alias::first ? dst : a, alias == Alias::second ? dst : b, dst, at.n);

    for (std::size_t i = 0; i < n; ++i) {
        if (agree(i, dst[i], valuesA, valuesB, former)) continue;
        ADD_FAILURE() << name << " n=" << n << " offsets " << at.source << ", " << at.dst << " alias "
                      << static_cast<int>(alias) << ": element " << i << " is " << shown(dst[i]) << ", from "
                      << shown(valuesA[i]) << " and " << shown(valuesB[i]);
        return;
    }
    std::memcpy(static_cast<void*>(dst), &fresh[static_cast<std::size_t>(at.dst)], n * sizeof(T));
    EXPECT_EQ(std::memcmp(whole, fresh.data(), fresh.size() * sizeof(T)), 0) << name << " n=" << n << " strays";
    if (alias != Alias::first) {
        EXPECT_EQ(std::memcmp(a, valuesA.data(), n * sizeof(T)), 0) << name << " writes its source";
    }
}

}   // namespace test
