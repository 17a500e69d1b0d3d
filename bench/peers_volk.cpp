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

void addVolk(const Problem& problem, Peers& peers) {
    const std::string operation = problem.type + (":" + problem.operation);
    const auto n = static_cast<unsigned>(problem.n);
    const auto add = [&](auto call) { peers.push_back(peerOf("VOLK", call)); };
    const auto both = [&](auto chosen, auto narrow) {
        const bool wide = __builtin_cpu_supports("avx512f") != 0;
        peers.push_back(peerOf(wide ? "VOLK 512" : "VOLK", chosen));
        if (wide) peers.push_back(peerOf("VOLK 256", narrow));
    };
    const auto in = [&](std::size_t i) { return i < problem.in.size() ? problem.in[i] : problem.out; };

    if (problem.type == 's') {
        auto* out = static_cast<float*>(problem.out);
        const auto* a = static_cast<const float*>(in(0));
        const auto* b = static_cast<const float*>(in(1));
        const auto value = problem.scalar.get<float>();
        if (operation == "s:Add")
            both([=] { volk_32f_x2_add_32f(out, a, b, n); }, [=] { volk_32f_x2_add_32f_a_avx(out, a, b, n); });
        if (operation == "s:Sub")
            both([=] { volk_32f_x2_subtract_32f(out, a, b, n); },
                 [=] { volk_32f_x2_subtract_32f_a_avx(out, a, b, n); });
        if (operation == "s:Mpy")
            both([=] { volk_32f_x2_multiply_32f(out, a, b, n); },
                 [=] { volk_32f_x2_multiply_32f_a_avx(out, a, b, n); });
        if (operation == "s:Sqr")
            both([=] { volk_32f_x2_multiply_32f(out, a, a, n); },
                 [=] { volk_32f_x2_multiply_32f_a_avx(out, a, a, n); });
        if (operation == "s:Add1") add([=] { volk_32f_s32f_add_32f(out, a, value, n); });
        if (operation == "s:Sub1") add([=] { volk_32f_s32f_add_32f(out, a, -value, n); });
        if (operation == "s:Mpy1") add([=] { volk_32f_s32f_multiply_32f(out, a, value, n); });
        if (operation == "s:Sqrt") add([=] { volk_32f_sqrt_32f(out, a, n); });
    } else if (problem.type == 'd') {
        auto* out = static_cast<double*>(problem.out);
        const auto* a = static_cast<const double*>(in(0));
        const auto* b = static_cast<const double*>(in(1));
        if (operation == "d:Add") add([=] { volk_64f_x2_add_64f(out, a, b, n); });
        if (operation == "d:Mpy") add([=] { volk_64f_x2_multiply_64f(out, a, b, n); });
        if (operation == "d:Sqr") add([=] { volk_64f_x2_multiply_64f(out, a, a, n); });
    } else if (problem.type == 'c') {
        auto* out = static_cast<lv_32fc_t*>(problem.out);
        const auto* a = static_cast<const lv_32fc_t*>(in(0));
        const auto* b = static_cast<const lv_32fc_t*>(in(1));
        const auto value = problem.scalar.get<lv_32fc_t>();
        if (operation == "c:Add") add([=] { volk_32fc_x2_add_32fc(out, a, b, n); });
        if (operation == "c:Mpy") add([=] { volk_32fc_x2_multiply_32fc(out, a, b, n); });
        if (operation == "c:Sqr") add([=] { volk_32fc_x2_multiply_32fc(out, a, a, n); });
        if (operation == "c:Mpy1") add([=] { volk_32fc_s32fc_multiply_32fc(out, a, value, n); });
        if (operation == "c:Conj") add([=] { volk_32fc_conjugate_32fc(out, a, n); });
    }
}

}   // namespace bench
