#include <volk/volk.h>

// Three kernels would run with 512 bits at once; these are the ones that they have for 256.
#pragma GCC push_options
#pragma GCC target("avx")
#define LV_HAVE_AVX
#include <volk/volk_32f_x2_add_32f.h>
#include <volk/volk_32f_x2_multiply_32f.h>
#include <volk/volk_32f_x2_subtract_32f.h>
#undef LV_HAVE_AVX
#pragma GCC pop_options

#include "peers.h"

namespace bench {

namespace {

lv_32fc_t* pairs(VekCplx* at) { return reinterpret_cast<lv_32fc_t*>(at); }
const lv_32fc_t* pairs(const VekCplx* at) { return reinterpret_cast<const lv_32fc_t*>(at); }
unsigned length(int n) { return static_cast<unsigned>(n); }

const RegisterPeers volk([] {
    const auto peer = [](const char* of, auto call) { addPeer("VOLK", of, +call); };
    // With what it chooses here, and with 256 bits where it would choose more.
    const auto both = [](const char* of, auto chosen, auto narrow) {
        const bool wide = __builtin_cpu_supports("avx512f") != 0;
        addPeer(wide ? "VOLK 512" : "VOLK", of, +chosen);
        if (wide) addPeer("VOLK 256", of, +narrow);
    };

#define TWO(kernel) [](const float* a, const float* b, float* out, int n) { kernel(out, a, b, length(n)); }
    both("veksbAdd3", TWO(volk_32f_x2_add_32f), TWO(volk_32f_x2_add_32f_a_avx));
    both("veksbSub3", TWO(volk_32f_x2_subtract_32f), TWO(volk_32f_x2_subtract_32f_a_avx));
    both("veksbMpy3", TWO(volk_32f_x2_multiply_32f), TWO(volk_32f_x2_multiply_32f_a_avx));
#define SQUARE(kernel) [](const float* a, float* out, int n) { kernel(out, a, a, length(n)); }
    both("veksbSqr2", SQUARE(volk_32f_x2_multiply_32f), SQUARE(volk_32f_x2_multiply_32f_a_avx));
    peer("veksbAdd1", [](float value, float* out, int n) { volk_32f_s32f_add_32f(out, out, value, length(n)); });
    peer("veksbSub1", [](float value, float* out, int n) { volk_32f_s32f_add_32f(out, out, -value, length(n)); });
    peer("veksbMpy1", [](float value, float* out, int n) { volk_32f_s32f_multiply_32f(out, out, value, length(n)); });
    peer("veksbSqrt2", [](const float* a, float* out, int n) { volk_32f_sqrt_32f(out, a, length(n)); });

    peer("vekdbAdd3",
         [](const double* a, const double* b, double* out, int n) { volk_64f_x2_add_64f(out, a, b, length(n)); });
    peer("vekdbMpy3",
         [](const double* a, const double* b, double* out, int n) { volk_64f_x2_multiply_64f(out, a, b, length(n)); });
    peer("vekdbSqr2", [](const double* a, double* out, int n) { volk_64f_x2_multiply_64f(out, a, a, length(n)); });

    peer("vekcbAdd3", [](const VekCplx* a, const VekCplx* b, VekCplx* out, int n) {
        volk_32fc_x2_add_32fc(pairs(out), pairs(a), pairs(b), length(n));
    });
    peer("vekcbMpy3", [](const VekCplx* a, const VekCplx* b, VekCplx* out, int n) {
        volk_32fc_x2_multiply_32fc(pairs(out), pairs(a), pairs(b), length(n));
    });
    peer("vekcbSqr2", [](const VekCplx* a, VekCplx* out, int n) {
        volk_32fc_x2_multiply_32fc(pairs(out), pairs(a), pairs(a), length(n));
    });
    peer("vekcbMpy1", [](VekCplx value, VekCplx* out, int n) {
        volk_32fc_s32fc_multiply_32fc(pairs(out), pairs(out), {value.re, value.im}, length(n));
    });
    peer("veksDotProd", [](const float* a, const float* b, int n) {
        float sum = 0;
        volk_32f_x2_dot_prod_32f(&sum, a, b, length(n));
        return sum;
    });
    peer("vekcDotProd", [](const VekCplx* a, const VekCplx* b, int n) {
        VekCplx sum = {};
        volk_32fc_x2_dot_prod_32fc(pairs(&sum), pairs(a), pairs(b), length(n));
        return sum;
    });
    peer("vekcsDotProd", [](const VekCplx* a, const float* b, int n) {
        VekCplx sum = {};
        volk_32fc_32f_dot_prod_32fc(pairs(&sum), pairs(a), b, length(n));
        return sum;
    });
    peer("vekcbConj2",
         [](const VekCplx* a, VekCplx* out, int n) { volk_32fc_conjugate_32fc(pairs(out), pairs(a), length(n)); });
});

}   // namespace

}   // namespace bench
