// Autocorrelations that a program would write itself around FFTW: by sections as long as the lags, each transformed
// once, as short transforms in the caches as there are.
#include <fftw3.h>

#include <complex>
#include <memory>

#include "peers.h"

namespace bench {

namespace {

template <class T>
struct Fftw;
#define FFTW_OF(real, prefix)                                                                                          \
    template <>                                                                                                        \
    struct Fftw<real> {                                                                                                \
        using Plan = prefix##_plan;                                                                                    \
        using Pair = prefix##_complex;                                                                                 \
        static Plan forward(int n, real* in, Pair* out) { return prefix##_plan_dft_r2c_1d(n, in, out, FFTW_MEASURE); } \
        static Plan inverse(int n, Pair* in, real* out) { return prefix##_plan_dft_c2r_1d(n, in, out, FFTW_MEASURE); } \
        static void forward(Plan plan, real* in, Pair* out) { prefix##_execute_dft_r2c(plan, in, out); }               \
        static void inverse(Plan plan, Pair* in, real* out) { prefix##_execute_dft_c2r(plan, in, out); }               \
        static real* reals(std::size_t n) { return prefix##_alloc_real(n); }                                           \
        static void release(void* block) { prefix##_free(block); }                                                     \
    };
FFTW_OF(float, fftwf)
FFTW_OF(double, fftw)
#undef FFTW_OF

// Plans and buffers stay for the rest of the program.
template <class T>
class Blockwise {
public:
    Blockwise(std::size_t lags) {
        while (size < lags) size *= 2;
        samples = Fftw<T>::reals(2 * size);
        for (Bin*& spectrum : spectra) spectrum = reinterpret_cast<Bin*>(Fftw<T>::reals(2 * size + 2));
        forward = Fftw<T>::forward(static_cast<int>(2 * size), samples, pair(spectra[0]));
        inverse = Fftw<T>::inverse(static_cast<int>(2 * size), pair(spectra[0]), samples);
    }
    // conj(X[i]) (X[i] + X[i+1] shifted by a section, which turns the sign of every second bin).
    void run(const T* src, std::size_t len, T* dst, std::size_t lags) {
        Bin *now = spectra[0], *next = spectra[1], *sum = spectra[2];
        std::fill_n(sum, size + 1, Bin());
        load(src, len, now);
        for (std::size_t at = 0; at < len; at += size) {
            if (at + size < len)
                load(src + at + size, len - at - size, next);
            else
                std::fill_n(next, size + 1, Bin());
            const T* const x = reinterpret_cast<const T*>(now);
            const T* const y = reinterpret_cast<const T*>(next);
            T* const z = reinterpret_cast<T*>(sum);
            for (std::size_t k = 0; k <= size; ++k) {
                const T sign = k % 2 == 0 ? T(1) : T(-1);
                const T re = x[2 * k] + sign * y[2 * k], im = x[2 * k + 1] + sign * y[2 * k + 1];
                z[2 * k] += x[2 * k] * re + x[2 * k + 1] * im;
                z[2 * k + 1] += x[2 * k] * im - x[2 * k + 1] * re;
            }
            std::swap(now, next);
        }
        Fftw<T>::inverse(inverse, pair(sum), samples);
        const T factor = T(1) / static_cast<T>(2 * size);
        for (std::size_t k = 0; k < lags; ++k) dst[k] = samples[k] * factor;
    }

private:
    using Bin = std::complex<T>;
    using Pair = typename Fftw<T>::Pair;
    static Pair* pair(Bin* bins) { return reinterpret_cast<Pair*>(bins); }

    void load(const T* src, std::size_t len, Bin* spectrum) {
        const std::size_t n = std::min(len, size);
        std::copy_n(src, n, samples);
        std::fill(samples + n, samples + 2 * size, T(0));
        Fftw<T>::forward(forward, samples, pair(spectrum));
    }

    std::size_t size = 1;
    T* samples;
    Bin* spectra[3];
    typename Fftw<T>::Plan forward, inverse;
};

template <class T>
void addFor() {
    addPeer("FFTW by sections", nameOf<T>("AutoCorr"), [](const Problem& problem) {
        const auto number = [&](const char* name) {
            return problem.cells[static_cast<std::size_t>(problem.row.index(name))].template get<int>();
        };
        const auto lags = static_cast<std::size_t>(number("nLags"));
        const auto held = std::make_shared<Blockwise<T>>(lags);
        return [=, &problem] { held->run(problem.source<T>(), problem.n(), problem.target<T>(), lags); };
    });
}

const RegisterPeers corr([] {
    addFor<float>();
    addFor<double>();
});

}   // namespace

}   // namespace bench
