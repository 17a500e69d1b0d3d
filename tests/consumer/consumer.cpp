// A user's C++ program.
#include <vekm6.h>

#include <memory>

int main() {
    const std::unique_ptr<VekCplx, void (*)(VekCplx*)> samps(vekcMalloc(16), [](VekCplx* block) { vekFree(block); });
    for (int n = 0; n < 16; ++n) samps.get()[n] = VekCplx{1, -1};
    vekcFft(samps.get(), 4, VEK_Forw);
    const VekCplx sum = samps.get()[0];
    return sum.re == 16 && sum.im == -16 && samps.get()[1].re == 0 ? 0 : 1;
}
