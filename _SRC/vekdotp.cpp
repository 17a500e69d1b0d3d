// Dot products of floating-point vectors.
#include "vekm6/dotp.h"

#include "core/call.h"
#include "core/elements.h"
#include "kernels/dotp.h"
#include "kernels/level/levels.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::Real;
using vek::core::reals;

constexpr const char* module = "vekdotp";

// R is the type of the result, complex where a or b is.
template <class R, class A, class B>
VEK_STEPS R dotProd(const char* name, const A* a, const B* b, int len) {
    Call call{module, name};
    if (call.bad(!a || !b, "Null buffer pointer")) return {};
    if (call.bad(len < 0, "Invalid value")) return {};
    if (call.stopped()) return {};
    const auto& kernels = vek::oneOf<vek::kernels::DotpOf<Real<R>>>(vek::kernelsNow().dotp);
    const auto n = static_cast<std::size_t>(len);
    const auto pair = [](auto dot) { return R{dot.re, dot.im}; };
    if constexpr (!isComplex<R>)
        return kernels.real(a, b, n);
    else if constexpr (isComplex<A> && isComplex<B>)
        return pair(kernels.complex(reals(a), reals(b), n));
    else if constexpr (isComplex<B>)
        return pair(kernels.mixed(a, reals(b), n));
    else
        return pair(kernels.mixed(b, reals(a), n));
}

}   // namespace

extern "C" {

float VEKAPI veksDotProd(const float* a, const float* b, int len) { return dotProd<float>("veksDotProd", a, b, len); }
VekCplx VEKAPI vekcDotProd(const VekCplx* a, const VekCplx* b, int len) {
    return dotProd<VekCplx>("vekcDotProd", a, b, len);
}
double VEKAPI vekdDotProd(const double* a, const double* b, int len) {
    return dotProd<double>("vekdDotProd", a, b, len);
}
VekDCplx VEKAPI vekzDotProd(const VekDCplx* a, const VekDCplx* b, int len) {
    return dotProd<VekDCplx>("vekzDotProd", a, b, len);
}
VekCplx VEKAPI vekscDotProd(const float* a, const VekCplx* b, int len) {
    return dotProd<VekCplx>("vekscDotProd", a, b, len);
}
VekCplx VEKAPI vekcsDotProd(const VekCplx* a, const float* b, int len) {
    return dotProd<VekCplx>("vekcsDotProd", a, b, len);
}
VekDCplx VEKAPI vekdzDotProd(const double* a, const VekDCplx* b, int len) {
    return dotProd<VekDCplx>("vekdzDotProd", a, b, len);
}
VekDCplx VEKAPI vekzdDotProd(const VekDCplx* a, const double* b, int len) {
    return dotProd<VekDCplx>("vekzdDotProd", a, b, len);
}

}   // extern "C"
