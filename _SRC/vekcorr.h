// What the correlations of floating-point and of int16 vectors share: the checks, and the lags that have terms.
#pragma once

#include <algorithm>
#include <cstddef>

#include "core/call.h"

namespace vek::corr {

using core::Call;

VEK_STEPS bool badAutoCorr(Call& call, const void* src, int len, const void* dst, int nLags, int type) {
    return call.bad(!src, "Null SRC buffer pointer") || call.bad(!dst, "Null DST buffer pointer") ||
           call.bad(len < 1, "Invalid SRC buffer length") || call.bad(nLags < 1 || nLags > len, "Invalid LAG value") ||
           call.bad(type < 0 || type > 2, "Invalid auto-corr type");
}

VEK_STEPS bool badCrossCorr(Call& call, const void* srcA, int lenA, const void* srcB, int lenB, const void* dst,
                            int loLag, int hiLag) {
    return call.bad(!srcA, "Null SRC buffer pointer") || call.bad(!srcB, "Null SRC buffer pointer") ||
           call.bad(!dst, "Null DST buffer pointer") || call.bad(lenA < 1, "Invalid SRC buffer length") ||
           call.bad(lenB < 1, "Invalid SRC buffer length") || call.bad(loLag > hiLag, "Invalid LAG value");
}

// The lags from lo to hi have terms, of those that were asked for; none where lo > hi.
struct Lags {
    std::ptrdiff_t lo, hi;
};
inline Lags lagsWithTerms(int lenA, int lenB, int loLag, int hiLag) {
    return {std::max(loLag, 1 - lenA), std::min(hiLag, lenB - 1)};
}

// Zeros for all other lags; the result of the first lag with terms goes to what is returned.
template <class T>
T* clearOthers(T* dst, int loLag, int hiLag, Lags lags) {
    const auto count = static_cast<std::size_t>(std::int64_t{hiLag} - loLag + 1);
    if (lags.lo > lags.hi) {
        std::fill_n(dst, count, T{});
        return dst;
    }
    const auto before = static_cast<std::size_t>(lags.lo - loLag);
    const auto end = static_cast<std::size_t>(lags.hi - loLag + 1);
    std::fill_n(dst, before, T{});
    std::fill_n(dst + end, count - end, T{});
    return dst + before;
}

}   // namespace vek::corr
