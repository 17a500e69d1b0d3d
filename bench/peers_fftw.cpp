#include <fftw3.h>

#include <memory>

#include "peers.h"

namespace bench {

namespace {

template <class T>
struct Fftw;

// The two precisions differ in their prefix alone.
#define FFTW_OF(real, prefix)                                              \
    template <>                                                            \
    struct Fftw<real> {                                                    \
        using Plan = prefix##_plan;                                        \
        using Pair = prefix##_complex;                                     \
        static Plan complex(int n, Pair* in, Pair* out, unsigned effort) { \
            return prefix##_plan_dft_1d(n, in, out, FFTW_FORWARD, effort); \
        }                                                                  \
        static Plan forward(int n, real* in, Pair* out, unsigned effort) { \
            return prefix##_plan_dft_r2c_1d(n, in, out, effort);           \
        }                                                                  \
        static Plan inverse(int n, Pair* in, real* out, unsigned effort) { \
            return prefix##_plan_dft_c2r_1d(n, in, out, effort);           \
        }                                                                  \
        static void execute(Plan plan) { prefix##_execute(plan); }         \
        static void destroy(Plan plan) { prefix##_destroy_plan(plan); }    \
    };
FFTW_OF(float, fftwf)
FFTW_OF(double, fftw)
#undef FFTW_OF

template <class T, class Make>
void add(const std::string& of, Make make) {
    const std::pair<const char*, unsigned> efforts[] = {{"FFTW estimate", FFTW_ESTIMATE},
                                                        {"FFTW measure", FFTW_MEASURE}};
    for (const auto& [name, effort] : efforts)
        for (const char* nip : {"", "Nip"})
            addPeer(name, of + nip, [make, effort = effort](const Problem& problem) {
                const auto plan = make(1 << problem.size, problem, effort);
                return [held = std::shared_ptr<std::remove_pointer_t<decltype(plan)>>(plan, Fftw<T>::destroy)] {
                    Fftw<T>::execute(held.get());
                };
            });
}

template <class T, class Complex>
void addFor() {
    using F = Fftw<T>;
    using Pair = typename F::Pair;
    add<T>(nameOf<Complex>("Fft"), [](int n, const Problem& problem, unsigned effort) {
        return F::complex(n, problem.source<Pair>(), problem.target<Pair>(), effort);
    });
    add<T>(nameOf<T>("RealFft"), [](int n, const Problem& problem, unsigned effort) {
        return F::forward(n, problem.source<T>(), problem.target<Pair>(), effort);
    });
    add<T>(nameOf<T>("CcsFft"), [](int n, const Problem& problem, unsigned effort) {
        return F::inverse(n, problem.source<Pair>(), problem.target<T>(), effort);
    });
}

const RegisterPeers fftw([] {
    addFor<float, VekCplx>();
    addFor<double, VekDCplx>();
});

}   // namespace

}   // namespace bench
