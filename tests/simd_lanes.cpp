// The vector layer against the language's own arithmetic: every operation, in every lane, over all pairs of edge
// values. Compiled once per level, as the kernels are and by their rules; test_level.cpp calls simdFault() where the
// level runs.
#include "kernels/scaling.h"

namespace vek::VEK_LEVEL {

const char* simdFault();   // null, or an operation that differed

namespace {

const char* fault;

void expect(bool holds, const char* what) {
    if (!holds) fault = what;
}

// All pairs of edge values, and some again, so that windows slide over them.
template <class T>
struct Operands {
    static constexpr T edges[] = {0,    1,     -1,      2,           127,      -128,        181,
                                  -182, 16384, most<T>, most<T> - 1, least<T>, least<T> + 1};
    static constexpr int edgeCount = sizeof edges / sizeof(T);
    static constexpr int count = edgeCount * edgeCount + 64;
    T a[count], b[count];
    constexpr Operands() : a{}, b{} {
        for (int i = 0; i < count; ++i) {
            a[i] = edges[i % edgeCount];
            b[i] = edges[i / edgeCount % edgeCount];
        }
    }
};
template <class T>
constexpr Operands<T> operands{};

// vector(Int<W>, a, b, to) writes W results, scalar(a, b) is what each has to be; W from the lanes of Widest down.
template <class Widest, class Result, class T, int W = lanes<Widest>, class Vector, class Scalar>
void compare(const char* what, Vector vector, Scalar scalar) {
    Result results[W];
    for (int i = 0; i + W <= operands<T>.count; ++i) {
        const T* const a = operands<T>.a + i;
        const T* const b = operands<T>.b + i;
        vector(Int<W>{}, a, b, results);
        for (int k = 0; k < W; ++k)
            expect(results[k] == static_cast<Result>(scalar(int64_t{a[k]}, int64_t{b[k]})), what);
    }
    if constexpr (W > 1) compare<Widest, Result, T, narrower<Widest, W>>(what, vector, scalar);
}

template <class T>
int64_t nearest(int64_t value) {
    return value < least<T> ? least<T> : value > most<T> ? most<T> : value;
}

// The same in short: `write` from memory, or `call` of x and y, vectors of w lanes, against a and b, numbers.
#define VEK_EACH(Widest, Result, Source, write, scalar)                                                           \
    compare<Widest, Result, Source>(                                                                              \
        #write, [=]([[maybe_unused]] auto w, const auto* a, [[maybe_unused]] const auto* b, auto* to) { write; }, \
        [=](int64_t a, [[maybe_unused]] int64_t b) { return scalar; })
#define VEK_ONE(T, call, scalar) \
    VEK_EACH(T, T, T, const auto x = load<w>(a); [[maybe_unused]] const auto y = load<w>(b); store(to, call), scalar)

template <class T>
void checkType() {
    VEK_ONE(T, (lesser<T, w>(x, y)), a < b ? a : b);
    VEK_ONE(T, (greater<T, w>(x, y)), a > b ? a : b);
    VEK_ONE(T, (clamped<T, w>(x, -2, 127)), a < -2 ? -2 : a > 127 ? 127 : a);
    VEK_ONE(T, (absolute<T, w>(x)), a >= 0 || a == least<T> ? a : -a);
    for (int n = 0; n < 8 * static_cast<int>(sizeof(T)); ++n) {
        const uint64_t bits = ~uint64_t{0} >> (64 - 8 * sizeof(T));
        VEK_ONE(T, (shiftedLeft<T, w>(x, n)), static_cast<uint64_t>(a) << n);
        VEK_ONE(T, (shiftedRight<T, w>(x, n)), a >> n);
        VEK_ONE(T, (shiftedRightLogical<T, w>(x, n)), (static_cast<uint64_t>(a) & bits) >> n);
    }
    const auto someAndEvery = [](auto w, const T* a, const T* b, T* to) {
        int held = 0;
        for (int k = 0; k < w; ++k) held += to[k] = a[k] < b[k];
        expect(any<w>(load<w>(a) < load<w>(b)) == (held > 0), "any");
        expect(all<w>(load<w>(a) < load<w>(b)) == (held == w), "all");
    };
    compare<T, T, T>("<", someAndEvery, [](int64_t a, int64_t b) { return a < b; });
}

constexpr auto doubled = [](auto, auto x) { return x + x; };

// T is what its elements widen to.
template <class S, class T>
void checkWidening() {
    const auto changed = [](auto, auto x) { return (x >> 1) * 3 + 5; };
    VEK_ONE(S, (narrowed<w>(widened<w>(x).map(changed))), (a >> 1) * 3 + 5);
    VEK_ONE(S, (narrowedSaturated<w>(widened<w>(x).map(changed))), nearest<S>((a >> 1) * 3 + 5));
    VEK_EACH(T, T, S, store(to, (loadAs<T, w>(a))), a);
    VEK_EACH(double, double, S, store(to, (loadAs<double, w>(a))), a);
    VEK_EACH(float, float, S, store(to, (loadAs<float, w>(a))), a);
    VEK_EACH(T, S, T, storeNarrowed<w>(to, load<w>(a)), a);
    VEK_EACH(T, S, T, storeSaturated<w>(to, load<w>(a)), nearest<S>(a));
}

// Accumulated results that take 64 bits; what takes fewer, exports show.
void checkScaling() {
    for (int places = 1; places <= 32; ++places) {
        VEK_EACH(int32_t, int16_t, int32_t, (storeFitted<fitRight, w>(to, widened<w>(load<w>(a)).map(doubled), places)),
                 nearest<int16_t>(a * 2 >> places));
        VEK_EACH(int32_t, int16_t, int32_t,
                 (storeFitted<fitRightWraps, w>(to, widened<w>(load<w>(a)).map(doubled), places)), a * 2 >> places);
    }
    VEK_EACH(int32_t, int16_t, int32_t, (storeFitted<fitWraps, w>(to, widened<w>(load<w>(a)).map(doubled), 0)), a * 2);
    VEK_EACH(int32_t, int16_t, int32_t, (storeFitted<fitSaturates, w>(to, widened<w>(load<w>(a)).map(doubled), 0)),
             nearest<int16_t>(a * 2));
}

void checkReductions() {
    const auto& data = operands<int16_t>.a;
    int32_t sum = 0;
    int16_t largest = least<int16_t>;
    for (int n = 0; n <= operands<int16_t>.count; ++n) {
        expect(sum == sumOf<int32_t>(n, [&](auto w, size_t i, auto s) { return s + loadAs<int32_t, w>(data + i); }),
               "sum");
        const auto join = [](auto a, auto b) { return a > b ? a : b; };
        const auto max = reduce<int16_t, RealStep<Bound::byMemory>>(
            n, [](auto w) { return splat<w>(least<int16_t>); },
            [&](auto w, size_t i, auto m) { return greater<int16_t, w>(m, load<w>(data + i)); }, join,
            [=](auto w, auto m) { return joinLanes<int16_t, w>(m, join); });
        expect(largest == max, "reduce");
        if (n == operands<int16_t>.count) break;
        sum += data[n];
        largest = join(largest, data[n]);
    }
    float twice[lanes<float>];
    const float once[] = {1, 2, 3, 4, 5, 6, 7, 8};
    store(twice, loadTwice<lanes<float>>(once));
    for (int k = 0; k < lanes<float>; ++k) expect(twice[k] == once[k / 2], "loadTwice");
}

}   // namespace

const char* simdFault() {
    fault = nullptr;
    checkType<int16_t>();
    checkType<int32_t>();
    checkType<int64_t>();
    VEK_ONE(int16_t, addSaturated<w>(x, y), nearest<int16_t>(a + b));
    VEK_ONE(int16_t, subSaturated<w>(x, y), nearest<int16_t>(a - b));
    VEK_ONE(int16_t, productLow<w>(x, y), a * b);
    VEK_ONE(int16_t, productHigh<w>(x, y), a * b >> 16);
    VEK_ONE(int16_t, narrowedSaturated<w>(product<w>(x, y)), nearest<int16_t>(a * b));
    checkWidening<int16_t, int32_t>();
    checkWidening<int32_t, int64_t>();
    checkScaling();
    checkReductions();
    return fault;
}

}   // namespace vek::VEK_LEVEL
