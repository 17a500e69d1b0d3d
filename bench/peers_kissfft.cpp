#include <kissfft/kiss_fft.h>
#include <kissfft/kiss_fftr.h>

#include <memory>

#include "peers.h"

namespace bench {

namespace {

template <class Plan>
auto owned(Plan plan) {
    return std::shared_ptr<std::remove_pointer_t<Plan>>(plan, [](void* it) { kiss_fft_free(it); });
}

// Debian builds it for float.
const RegisterPeers kissFft([] {
    addPeer("KissFFT", "vekcFftNip", [](const Problem& problem) {
        return
            [plan = owned(kiss_fft_alloc(1 << problem.size, 0, nullptr, nullptr)), in = problem.source<kiss_fft_cpx>(),
             out = problem.target<kiss_fft_cpx>()] { kiss_fft(plan.get(), in, out); };
    });
    addPeer("KissFFT", "veksRealFftNip", [](const Problem& problem) {
        return [plan = owned(kiss_fftr_alloc(1 << problem.size, 0, nullptr, nullptr)), in = problem.source<float>(),
                out = problem.target<kiss_fft_cpx>()] { kiss_fftr(plan.get(), in, out); };
    });
    addPeer("KissFFT", "veksCcsFftNip", [](const Problem& problem) {
        return
            [plan = owned(kiss_fftr_alloc(1 << problem.size, 1, nullptr, nullptr)), in = problem.source<kiss_fft_cpx>(),
             out = problem.target<float>()] { kiss_fftri(plan.get(), in, out); };
    });
});

}   // namespace

}   // namespace bench
