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

template <class T>
void addFor(const Problem& problem, Peers& peers) {
    using F = Fftw<T>;
    using Pair = typename F::Pair;
    const int n = 1 << problem.size;
    std::string operation = problem.operation;
    if (operation.size() > 3 && operation.substr(operation.size() - 3) == "Nip") operation.resize(operation.size() - 3);
    void* in = problem.in[0];
    void* out = problem.out;
    const std::pair<const char*, unsigned> efforts[] = {{"FFTW estimate", FFTW_ESTIMATE},
                                                        {"FFTW measure", FFTW_MEASURE}};
    for (const auto& [name, effort] : efforts) {
        typename F::Plan plan = nullptr;
        if (operation == "Fft") plan = F::complex(n, static_cast<Pair*>(in), static_cast<Pair*>(out), effort);
        if (operation == "RealFft") plan = F::forward(n, static_cast<T*>(in), static_cast<Pair*>(out), effort);
        if (operation == "CcsFft") plan = F::inverse(n, static_cast<Pair*>(in), static_cast<T*>(out), effort);
        if (plan == nullptr) continue;
        const std::shared_ptr<std::remove_pointer_t<typename F::Plan>> held(plan, F::destroy);
        peers.push_back(peerOf(name, [held, plan] { F::execute(plan); }));
    }
}

}   // namespace

void addFftw(const Problem& problem, Peers& peers) {
    if (problem.isDouble())
        addFor<double>(problem, peers);
    else
        addFor<float>(problem, peers);
}

}   // namespace bench
