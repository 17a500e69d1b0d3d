// Bit-reversal permutations from the swap list: every element moves once, straight to its place.
#include "kernels/misc.h"

#include "kernels/simd.h"

namespace vek::VEK_LEVEL {
namespace {

// An element by its size alone; any alignment.
template <int Bytes>
struct [[gnu::packed, gnu::may_alias]] Element {
    unsigned char bytes[Bytes];
};

template <class E>
VEK_INLINE void swap(E* a, E* b) {
    const E kept = *a;
    *a = *b;
    *b = kept;
}

template <int Bytes>
void bitRev1(void* vec, int order, const int32_t* swaps) {
    using E = Element<Bytes>;
    E* x = static_cast<E*>(vec);
    if (order < 2) return;
    if (order == 2) return swap(x + 1, x + 2);
    E* upper = x + (size_t{1} << (order - 1));
    size_t at = 0;
    for (; swaps[at] != 0; at += 2) {
        const size_t a = static_cast<size_t>(swaps[at]) / 2;
        const size_t b = static_cast<size_t>(swaps[at + 1]) / 2;
        swap(x + a, x + b);
        swap(x + a + 1, upper + b);
        swap(upper + a, x + b + 1);
        swap(upper + a + 1, upper + b + 1);
    }
    // The self-reversed quarter indices, 0 first.
    size_t a = 0;
    do {
        swap(x + a + 1, upper + a);
        a = static_cast<size_t>(swaps[++at]) / 2;
    } while (a != 0);
}

template <int Bytes>
void bitRev2(const void* src, void* dst, int order, const int32_t* swaps) {
    using E = Element<Bytes>;
    const E* x = static_cast<const E*>(src);
    E* y = static_cast<E*>(dst);
    const size_t half = order < 1 ? 0 : size_t{1} << (order - 1);
    if (order < 3) {
        const size_t last = (size_t{1} << order) - 1;
        y[0] = x[0];
        y[last] = x[last];
        if (order == 2) {
            y[1] = x[2];
            y[2] = x[1];
        }
        return;
    }
    const auto cross = [&](size_t a, size_t b) {
        y[b] = x[a];
        y[half + b] = x[a + 1];
        y[b + 1] = x[half + a];
        y[half + b + 1] = x[half + a + 1];
    };
    size_t at = 0;
    for (; swaps[at] != 0; at += 2) {
        const size_t a = static_cast<size_t>(swaps[at]) / 2;
        const size_t b = static_cast<size_t>(swaps[at + 1]) / 2;
        cross(a, b);
        cross(b, a);
    }
    size_t a = 0;
    do {
        cross(a, a);
        a = static_cast<size_t>(swaps[++at]) / 2;
    } while (a != 0);
}

}   // namespace

extern const kernels::MiscTable misc;
const kernels::MiscTable misc = {{bitRev1<2>, bitRev1<4>, bitRev1<8>, bitRev1<16>},
                                 {bitRev2<2>, bitRev2<4>, bitRev2<8>, bitRev2<16>}};

}   // namespace vek::VEK_LEVEL
