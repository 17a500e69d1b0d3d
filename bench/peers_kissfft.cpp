#include <kissfft/kiss_fft.h>
#include <kissfft/kiss_fftr.h>

#include <memory>

#include "peers.h"

namespace bench {

// Debian builds it for float.
void addKissFft(const Problem& problem, Peers& peers) {
    const bool inverse = problem.operation.find("Ccs") == 0;
    if (problem.isDouble() || problem.inPlace || problem.size < 1) return;
    const int n = 1 << problem.size;
    void* in = problem.in[0];
    void* out = problem.out;
    const auto add = [&](auto plan, auto run) {
        const std::shared_ptr<std::remove_pointer_t<decltype(plan)>> held(plan, [](void* it) { kiss_fft_free(it); });
        peers.push_back(peerOf("KissFFT", [held, plan, run] { run(plan); }));
    };
    if (problem.operation == "FftNip")
        add(kiss_fft_alloc(n, 0, nullptr, nullptr), [=](kiss_fft_cfg plan) {
            kiss_fft(plan, static_cast<const kiss_fft_cpx*>(in), static_cast<kiss_fft_cpx*>(out));
        });
    if (problem.operation == "RealFftNip" || problem.operation == "CcsFftNip")
        add(kiss_fftr_alloc(n, inverse, nullptr, nullptr), [=](kiss_fftr_cfg plan) {
            if (inverse)
                kiss_fftri(plan, static_cast<const kiss_fft_cpx*>(in), static_cast<kiss_fft_scalar*>(out));
            else
                kiss_fftr(plan, static_cast<const kiss_fft_scalar*>(in), static_cast<kiss_fft_cpx*>(out));
        });
}

}   // namespace bench
