// Overlap-save as one writes it over FFTW, at the section size that is fastest for the lengths.
#include <fftw3.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "peers.h"

namespace bench {

namespace {

template <class T>
struct Fftw;

#define FFTW_OF(real, prefix)                                                                                 \
    template <>                                                                                               \
    struct Fftw<real> {                                                                                       \
        using Pair = prefix##_complex;                                                                        \
        using Plan = std::unique_ptr<std::remove_pointer_t<prefix##_plan>, decltype(&prefix##_destroy_plan)>; \
        using Block = std::unique_ptr<real, decltype(&prefix##_free)>;                                        \
        static Block block(std::size_t reals) {                                                               \
            return {static_cast<real*>(prefix##_malloc(reals * sizeof(real))), prefix##_free};                \
        }                                                                                                     \
        static Plan forward(int n, real* in, Pair* out) {                                                     \
            return {prefix##_plan_dft_r2c_1d(n, in, out, FFTW_MEASURE), prefix##_destroy_plan};               \
        }                                                                                                     \
        static Plan inverse(int n, Pair* in, real* out) {                                                     \
            return {prefix##_plan_dft_c2r_1d(n, in, out, FFTW_MEASURE), prefix##_destroy_plan};               \
        }                                                                                                     \
        static void execute(const Plan& plan) { prefix##_execute(plan.get()); }                               \
    };
FFTW_OF(float, fftwf)
FFTW_OF(double, fftw)
#undef FFTW_OF

template <class T>
class Sections {
    using F = Fftw<T>;
    using Pair = typename F::Pair;
    std::size_t size, bins;
    typename F::Block samples, section, spectrum;
    typename F::Plan forward, inverse;

    Pair* pairs(const typename F::Block& block) const { return reinterpret_cast<Pair*>(block.get()); }

public:
    explicit Sections(int order)
        : size(std::size_t{1} << order),
          bins(size / 2 + 1),
          samples(F::block(size)),
          section(F::block(2 * bins)),
          spectrum(F::block(2 * bins)),
          forward(F::forward(1 << order, samples.get(), pairs(section))),
          inverse(F::inverse(1 << order, pairs(section), samples.get())) {}

    void convolve(const T* x, std::size_t xLen, const T* h, std::size_t hLen, T* y) const {
        T* const in = samples.get();
        const auto load = [&](const T* from, std::size_t count, std::size_t zeros) {
            std::fill_n(in, zeros, T{});
            std::copy_n(from, count, in + zeros);
            std::fill(in + zeros + count, in + size, T{});
            F::execute(forward);
        };
        load(h, hLen, 0);
        std::copy_n(section.get(), 2 * bins, spectrum.get());
        const std::size_t past = hLen - 1, step = size - past, count = xLen + past;
        for (std::size_t at = 0; at < count; at += step) {
            const std::size_t zeros = at < past ? past - at : 0;
            const std::size_t from = at + zeros - past;
            load(x + from, from < xLen ? std::min(xLen - from, size - zeros) : 0, zeros);
            const T scale = T{1} / static_cast<T>(size);
            T* const z = section.get();
            const T* const w = spectrum.get();
            for (std::size_t k = 0; k < bins; ++k) {
                const T re = z[2 * k] * w[2 * k] - z[2 * k + 1] * w[2 * k + 1];
                z[2 * k + 1] = scale * (z[2 * k] * w[2 * k + 1] + z[2 * k + 1] * w[2 * k]);
                z[2 * k] = scale * re;
            }
            F::execute(inverse);
            std::copy_n(in + past, std::min(step, count - at), y + at);
        }
    }
};

// Every size from the first above hLen to the first that holds the whole result is tried.
template <class T>
auto fastest(const Problem& problem) {
    const auto x = problem.pointer<T>("x"), h = problem.pointer<T>("h"), y = problem.pointer<T>("y");
    const auto xLen = static_cast<std::size_t>(problem.number("xLen"));
    const auto hLen = static_cast<std::size_t>(problem.number("hLen"));
    std::shared_ptr<Sections<T>> best;
    double least = 1e300;
    for (int order = 1; std::size_t{1} << order < 2 * (xLen + hLen); ++order) {
        if (std::size_t{1} << order <= hLen) continue;
        const auto sections = std::make_shared<Sections<T>>(order);
        for (int round = 0; round < 3; ++round) {
            const double start = now();
            sections->convolve(x, xLen, h, hLen, y);
            if (const double taken = now() - start; taken < least) {
                least = taken;
                best = sections;
            }
        }
    }
    return [=] { best->convolve(x, xLen, h, hLen, y); };
}

const RegisterPeers conv([] {
    addPeer("FFTW sections", "veksConv", [](const Problem& problem) { return fastest<float>(problem); });
    addPeer("FFTW sections", "vekdConv", [](const Problem& problem) { return fastest<double>(problem); });
});

}   // namespace

}   // namespace bench
