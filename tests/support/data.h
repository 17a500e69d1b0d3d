// Test signals from a printed seed.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#include "vekm6.h"

namespace test {

extern std::uint64_t seed;   // of the whole run; main prints it and reads --seed=

// The real type inside an element.
template <class T>
struct RealOfElement {
    using type = T;
};
template <>
struct RealOfElement<VekCplx> {
    using type = float;
};
template <>
struct RealOfElement<VekDCplx> {
    using type = double;
};
template <>
struct RealOfElement<VekWCplx> {
    using type = std::int16_t;
};

class Data {
public:
    // `salt` tells the users of one seed apart.
    explicit Data(std::uint64_t salt = 0) : state(seed * 0x9e3779b97f4a7c15ull + salt) {}

    std::uint64_t bits() {   // splitmix64
        std::uint64_t z = (state += 0x9e3779b97f4a7c15ull);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
        return z ^ (z >> 31);
    }
    int below(int limit) { return static_cast<int>(bits() % static_cast<std::uint64_t>(limit)); }
    double uniform(double low, double high) {
        return low + (high - low) * (static_cast<double>(bits() >> 11) * 0x1p-53);
    }

    // An ordinary value: reals in (-1, 1), integers over their whole range.
    template <class T>
    T ordinaryReal() {
        if constexpr (std::is_integral_v<T>)
            return static_cast<T>(bits());
        else
            return static_cast<T>(uniform(-1, 1) * uniform(0.5, 1));   // the product fills the whole mantissa
    }
    // Zeros of both signs, extremes, subnormals, infinities, NaN and ordinary values of all exponents.
    template <class T>
    T specialReal() {
        using Limits = std::numeric_limits<T>;
        if constexpr (std::is_integral_v<T>) {
            const T values[] = {0, 1, static_cast<T>(-1), Limits::max(), Limits::min(), static_cast<T>(bits())};
            return values[below(6)];
        } else {
            T value = 0;
            switch (below(16)) {
                case 0:
                case 1: value = 0; break;
                case 2: value = Limits::max(); break;
                case 3: value = Limits::min(); break;
                case 4: value = Limits::denorm_min(); break;
                case 5: value = Limits::min() * static_cast<T>(uniform(0, 1)); break;
                case 6: value = Limits::infinity(); break;
                case 7: value = Limits::quiet_NaN(); break;
                case 8: value = 1; break;
                case 9: {   // any exponent
                    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
                    const Bits any = static_cast<Bits>(bits());
                    std::memcpy(&value, &any, sizeof value);
                    if (value != value) value = 2;
                    break;
                }
                default: value = static_cast<T>(uniform(0, 4)); break;
            }
            return below(2) != 0 ? -value : value;
        }
    }

    template <class T>
    std::vector<T> ordinary(std::size_t n) {
        std::vector<T> values(n);
        fill<T>(values, [this] { return ordinaryReal<typename RealOfElement<T>::type>(); });
        return values;
    }
    // Specials among ordinary values, runs of one value, and stretches without specials, as long as several vectors.
    template <class T>
    std::vector<T> mixed(std::size_t n) {
        using Real = typename RealOfElement<T>::type;
        std::vector<T> values(n);
        int runLeft = 0;
        int stretchLeft = 0;
        bool specials = false;
        int quiet = 0;   // integers: the leading bits that they do without
        Real kept = 0;
        fill<T>(values, [&] {
            if (stretchLeft-- <= 0) {
                stretchLeft = 16 + below(128);
                specials = below(2) == 0;
                if (std::is_integral_v<Real>) quiet = below(8 * sizeof(Real));
            }
            if (runLeft-- <= 0) {
                runLeft = below(8) == 0 ? below(24) : 0;
                const bool special = specials && (std::is_integral_v<Real> || below(3) == 0);
                kept = special ? specialReal<Real>() : ordinaryReal<Real>();
                if constexpr (std::is_integral_v<Real>)
                    if (!special) kept = static_cast<Real>(kept >> quiet);
            }
            return kept;
        });
        return values;
    }

private:
    template <class T, class Next>
    static void fill(std::vector<T>& values, Next next) {
        using Real = typename RealOfElement<T>::type;
        Real reals[sizeof(T) / sizeof(Real)];
        for (T& value : values) {
            for (Real& real : reals) real = next();
            std::memcpy(&value, reals, sizeof value);
        }
    }

    std::uint64_t state;
};

}   // namespace test
