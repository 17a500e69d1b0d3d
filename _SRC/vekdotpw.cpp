// Dot products of int16 vectors and their complex form: exact sums, then scaled.
#include "core/call.h"
#include "core/elements.h"
#include "kernels/dotp.h"
#include "kernels/level/levels.h"
#include "vekm6/dotp.h"
#include "vekscale.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::lacksFactor;
using vek::core::reals;
using Sums = vek::kernels::DotPair<int64_t>;

constexpr const char* module = "vekdotpw";

template <class A, class B>
Sums sums(const A* a, const B* b, int len) {
    const auto& kernels = vek::oneOf<vek::kernels::DotpOf<int16_t>>(vek::kernelsNow().dotp);
    const auto n = static_cast<std::size_t>(len);
    if constexpr (isComplex<A> && isComplex<B>)
        return kernels.complex(reals(a), reals(b), n);
    else if constexpr (isComplex<B>)
        return kernels.mixed(a, reals(b), n);
    else if constexpr (isComplex<A>)
        return kernels.mixed(b, reals(a), n);
    else
        return {kernels.real(a, b, n), 0};
}

template <class R, class A, class B>
R dotProd(const char* name, const A* a, const B* b, int len, int scaleMode, int* scaleFactor) {
    Call call{module, name};
    if (call.bad(!a || !b, "Null buffer pointer")) return {};
    if (call.bad(len < 0, "Invalid value")) return {};
    if (call.bad(lacksFactor(scaleMode, scaleFactor), "Null scale factor pointer")) return {};
    if (call.stopped()) return {};
    const Sums exact = sums(a, b, len);
    if constexpr (requires { R::re; }) {
        using Part = decltype(R::re);
        const int factor = vek::factorOf<Part>(exact.re, exact.im, scaleMode, scaleFactor);
        return {vek::scaledSum<Part>(exact.re, scaleMode, factor), vek::scaledSum<Part>(exact.im, scaleMode, factor)};
    } else {
        return vek::scaledSum<R>(exact.re, scaleMode, vek::factorOf<R>(exact.re, 0, scaleMode, scaleFactor));
    }
}

}   // namespace

extern "C" {

int16_t VEKAPI vekwDotProd(const int16_t* a, const int16_t* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<int16_t>("vekwDotProd", a, b, len, scaleMode, scaleFactor);
}
VekWCplx VEKAPI vekvDotProd(const VekWCplx* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekWCplx>("vekvDotProd", a, b, len, scaleMode, scaleFactor);
}
VekWCplx VEKAPI vekwvDotProd(const int16_t* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekWCplx>("vekwvDotProd", a, b, len, scaleMode, scaleFactor);
}
VekWCplx VEKAPI vekvwDotProd(const VekWCplx* a, const int16_t* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekWCplx>("vekvwDotProd", a, b, len, scaleMode, scaleFactor);
}
int32_t VEKAPI vekwDotProdExt(const int16_t* a, const int16_t* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<int32_t>("vekwDotProdExt", a, b, len, scaleMode, scaleFactor);
}
VekICplx VEKAPI vekvDotProdExt(const VekWCplx* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekICplx>("vekvDotProdExt", a, b, len, scaleMode, scaleFactor);
}
VekICplx VEKAPI vekwvDotProdExt(const int16_t* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekICplx>("vekwvDotProdExt", a, b, len, scaleMode, scaleFactor);
}
VekICplx VEKAPI vekvwDotProdExt(const VekWCplx* a, const int16_t* b, int len, int scaleMode, int* scaleFactor) {
    return dotProd<VekICplx>("vekvwDotProdExt", a, b, len, scaleMode, scaleFactor);
}

}   // extern "C"
