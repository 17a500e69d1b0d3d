// Bit-reversal permutations, tile by tile: what lies in one tile goes to one tile.
//
// Source: A. H. Karp, "Bit reversal on uniprocessors", SIAM Review 38 (1996), the methods with blocks; here the tile is
// turned in registers, one bit of the row's number after the other changing places with one of the column's.
#include "misc.h"

#include "common/tiles.h"
#include "simd.h"

namespace vek::VEK_LEVEL {
namespace {

// An element as one unsigned integer, or as two.
template <int Bytes>
struct UnitOf {
    typedef uint64_t type;
    static constexpr int count = Bytes / 8;
};
template <>
struct UnitOf<2> {
    typedef uint16_t type;
    static constexpr int count = 1;
};
template <>
struct UnitOf<4> {
    typedef uint32_t type;
    static constexpr int count = 1;
};

// Size rows of Size elements, read with row and column reversed and exchanged. All of a tile is read before any of it
// is written: rows that lie a power of two apart differ in no bit by which the processor tells loads from earlier
// stores.
template <int Bytes, int Size>
class Tile {
public:
    VEK_INLINE Tile(const unsigned char* from, size_t stride) {
        unroll<Size>([&](auto r) {
            unroll<across>([&](auto h) {
                Part part;
                __builtin_memcpy(&part, from + r * stride + h * sizeof part, sizeof part);
                parts[r][h] = part;
            });
        });
        turn<1>();
    }
    VEK_INLINE void put(unsigned char* to, size_t stride) const {
        unroll<Size>(
            [&](auto r) { unroll<across>([&](auto h) { store(to + r * stride + h * sizeof(Part), parts[r][h]); }); });
    }

private:
    // What a vector register holds of a row.
    static constexpr int inVector = vectorBytes <= Bytes ? 1 : vectorBytes / Bytes;
    static constexpr int width = inVector < Size ? inVector : Size;
    static constexpr int across = Size / width;
    static constexpr int units = UnitOf<Bytes>::count;
    static constexpr int lanes = width * units;
    using Part = Vec<typename UnitOf<Bytes>::type, lanes>;
    Part parts[Size][across];

    template <int ColumnBit>
    VEK_INLINE void turn() {
        if constexpr (ColumnBit < Size) {
            constexpr int rowBit = Size / 2 / ColumnBit;
            unroll<Size>([&](auto r) {
                if constexpr ((decltype(r){} & rowBit) == 0) turn<ColumnBit>(parts[r], parts[r + rowBit]);
            });
            turn<2 * ColumnBit>();
        }
    }
    template <int ColumnBit>
    VEK_INLINE static void turn(Part (&low)[across], Part (&high)[across]) {
        unroll<across>([&](auto h) {
            if constexpr (ColumnBit < width) {
                exchange<ColumnBit * units>(low[h], high[h], typename MakeInts<lanes>::type{});
            } else if constexpr ((decltype(h){} & ColumnBit / width) == 0) {
                const Part kept = low[h + ColumnBit / width];
                low[h + ColumnBit / width] = high[h];
                high[h] = kept;
            }
        });
    }
    template <int LaneBit, int... I>
    VEK_INLINE static void exchange(Part& low, Part& high, Ints<I...>) {
        const Part a = low;
        const Part b = high;
        low = __builtin_shufflevector(a, b, ((I & LaneBit) != 0 ? lanes + I - LaneBit : I)...);
        high = __builtin_shufflevector(a, b, ((I & LaneBit) != 0 ? lanes + I : I + LaneBit)...);
    }
};

// pair(a, b) for tiles that change places, self(a) for those that stay; arguments in bytes.
template <int Bytes, class Pair, class Self>
VEK_INLINE void forTiles(const int32_t* swaps, Pair pair, Self self) {
    const auto bytes = [](int32_t elements) { return static_cast<size_t>(elements) * Bytes; };
    for (; *swaps != 0; swaps += 2) pair(bytes(swaps[0]), bytes(swaps[1]));
    do self(bytes(*swaps));
    while (*++swaps != 0);
}

template <int Bytes, int Size>
void moveTile(const unsigned char* from, unsigned char* to, size_t stride) {
    Tile<Bytes, Size>(from, stride).put(to, stride);
}

template <int Bytes, int Size>
void permute1(unsigned char* x, size_t stride, const int32_t* swaps) {
    forTiles<Bytes>(
        swaps,
        [=](size_t a, size_t b) {
            const Tile<Bytes, Size> there(x + a, stride);
            const Tile<Bytes, Size> back(x + b, stride);
            there.put(x + b, stride);
            back.put(x + a, stride);
        },
        [=](size_t a) { moveTile<Bytes, Size>(x + a, x + a, stride); });
}

template <int Bytes, int Size>
void permute2(const unsigned char* x, unsigned char* y, size_t stride, const int32_t* swaps) {
    forTiles<Bytes>(
        swaps,
        [=](size_t a, size_t b) {
            moveTile<Bytes, Size>(x + a, y + b, stride);
            moveTile<Bytes, Size>(x + b, y + a, stride);
        },
        [=](size_t a) { moveTile<Bytes, Size>(x + a, y + a, stride); });
}

// One tile, which stays.
constexpr int32_t noSwaps[2] = {0, 0};

constexpr size_t strideOf(int order, int bytes) {
    return (size_t{1} << (order - tileBits(order))) * static_cast<size_t>(bytes);
}

template <int Bytes>
void bitRev1(void* vec, int order, const int32_t* swaps) {
    auto* x = static_cast<unsigned char*>(vec);
    const size_t stride = strideOf(order, Bytes);
    switch (tileBits(order)) {
        case 1: return permute1<Bytes, 2>(x, stride, order == 2 ? noSwaps : swaps);
        case 2: return permute1<Bytes, 4>(x, stride, swaps);
        case 3: return permute1<Bytes, 8>(x, stride, swaps);
    }
}

template <int Bytes>
void bitRev2(const void* src, void* dst, int order, const int32_t* swaps) {
    const auto* x = static_cast<const unsigned char*>(src);
    auto* y = static_cast<unsigned char*>(dst);
    const size_t stride = strideOf(order, Bytes);
    switch (tileBits(order)) {
        case 0: __builtin_memcpy(y, x, static_cast<size_t>(Bytes) << order); return;
        case 1: return permute2<Bytes, 2>(x, y, stride, order == 2 ? noSwaps : swaps);
        case 2: return permute2<Bytes, 4>(x, y, stride, swaps);
        case 3: return permute2<Bytes, 8>(x, y, stride, swaps);
    }
}

}   // namespace

extern const kernels::MiscTable misc;
const kernels::MiscTable misc = {{bitRev1<2>, bitRev1<4>, bitRev1<8>, bitRev1<16>},
                                 {bitRev2<2>, bitRev2<4>, bitRev2<8>, bitRev2<16>}};

}   // namespace vek::VEK_LEVEL
