// Initialisation, arithmetic and conjugation of floating-point vectors; complex arithmetic on one sample.
#include "vekm6/arith.h"

#include "core/call.h"
#include "core/elements.h"
#include "kernels/arith.h"
#include "kernels/level/levels.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::Real;
using vek::core::realCount;
using vek::core::reals;
using vek::core::stopped;

constexpr const char* module = "vekarith";

// The active level's kernels for elements of type T.
template <class T>
const auto& kernels() {
    return vek::oneOf<vek::kernels::ArithOf<Real<T>>>(vek::kernelsNow().arith);
}

// ---- Filling and copying ------------------------------------------------------------------------

template <class T>
void zero(const char* name, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().set(0, reals(dst), realCount<T>(n));
}

template <class T>
void set(const char* name, T val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels<T>().complexSet(val.re, val.im, reals(dst), n);
    else
        kernels<T>().set(val, dst, n);
}

template <class T>
void copy(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().copy(reals(src), reals(dst), realCount<T>(n));
}

// ---- Sums, differences, products ----------------------------------------------------------------

template <class T>
void add1(const char* name, T val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels<T>().complexAdd1(val.re, val.im, reals(dst), n);
    else
        kernels<T>().add1(val, dst, n);
}

template <class T>
void add2(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().add3(reals(dst), reals(src), reals(dst), realCount<T>(n));
}

template <class T>
void add3(const char* name, const T* srcA, const T* srcB, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!srcA, "srcA==0")) return;
    if (call.bad(!srcB, "srcB==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().add3(reals(srcA), reals(srcB), reals(dst), realCount<T>(n));
}

// x - val and x + -val are the same in binary floating point, signed zeros and infinities included.
template <class T>
void sub1(const char* name, T val, T* dst, int n) {
    if constexpr (isComplex<T>)
        add1(name, T{-val.re, -val.im}, dst, n);
    else
        add1(name, -val, dst, n);
}

template <class T>
void sub2(const char* name, const T* val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!val, "val==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().sub3(reals(dst), reals(val), reals(dst), realCount<T>(n));
}

template <class T>
void sub3(const char* name, const T* src, const T* val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!val, "val==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().sub3(reals(src), reals(val), reals(dst), realCount<T>(n));
}

template <class T>
void mpy1(const char* name, T val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels<T>().complexMpy1(val.re, val.im, reals(dst), n);
    else
        kernels<T>().mpy1(val, dst, n);
}

template <class T>
void mpy2(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels<T>().complexMpy3(reals(dst), reals(src), reals(dst), n);
    else
        kernels<T>().mpy3(dst, src, dst, n);
}

template <class T>
void mpy3(const char* name, const T* srcA, const T* srcB, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!srcA, "srcA==0")) return;
    if (call.bad(!srcB, "srcB==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels<T>().complexMpy3(reals(srcA), reals(srcB), reals(dst), n);
    else
        kernels<T>().mpy3(srcA, srcB, dst, n);
}

// ---- Conjugation --------------------------------------------------------------------------------

template <class T>
void conj1(const char* name, T* vec, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!vec, "vec==0")) return;
    if (call.stopped()) return;
    kernels<T>().conj2(reals(vec), reals(vec), n);
}

template <class T>
void conj2(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().conj2(reals(src), reals(dst), n);
}

template <class T>
void conjFlip2(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().conjFlip2(reals(src), reals(dst), n);
}

// Writes elements n ... 2n - 3 of a conjugate-symmetric vector of length 2n - 2; src holds elements 0 ... n
// - 1.
template <class T>
void mirror(const T* src, T* dst, int n) {
    if (n > 2) kernels<T>().conjFlip2(reals(src + 1), reals(dst + n), n - 2);
}

template <class T>
void conjExtend1(const char* name, T* vec, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!vec, "vec==0")) return;
    if (call.stopped()) return;
    mirror(vec, vec, n);
}

template <class T>
void conjExtend2(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels<T>().copy(reals(src), reals(dst), realCount<T>(n));
    mirror(src, dst, n);
}

// ---- One sample: zero while an earlier failure stands -------------------------------------------

template <class C>
C add(C a, C b) {
    if (stopped()) return {};
    return {a.re + b.re, a.im + b.im};
}

template <class C>
C sub(C a, C b) {
    if (stopped()) return {};
    return {a.re - b.re, a.im - b.im};
}

template <class C>
C mpy(C a, C b) {
    if (stopped()) return {};
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

// In double for both types, without scaling.
template <class C>
C div(const char* name, C a, C b) {
    Call call{module, name};
    if (call.bad(b.re == 0 && b.im == 0, "(b.re==0.0)&&(b.im==0.0)")) return {};
    if (call.stopped()) return {};
    const VekDCplx x = {a.re, a.im};
    const VekDCplx y = {b.re, b.im};
    const double r = 1 / (y.re * y.re + y.im * y.im);
    return {static_cast<Real<C>>(r * (x.re * y.re + x.im * y.im)),
            static_cast<Real<C>>(r * (x.im * y.re - x.re * y.im))};
}

template <class C>
C conj(C a) {
    if (stopped()) return {};
    return {a.re, -a.im};   // the sign of zeros changes too
}

template <class C>
C sample(Real<C> re, Real<C> im) {
    if (stopped()) return {};
    return {re, im};
}

}   // namespace

extern "C" {

void VEKAPI veksbZero(float* dst, int n) { zero("veksbZero", dst, n); }
void VEKAPI veksbSet(float val, float* dst, int n) { set("veksbSet", val, dst, n); }
void VEKAPI veksbCopy(const float* src, float* dst, int n) { copy("veksbCopy", src, dst, n); }
void VEKAPI veksbAdd1(float val, float* dst, int n) { add1("veksbAdd1", val, dst, n); }
void VEKAPI veksbAdd2(const float* src, float* dst, int n) { add2("veksbAdd2", src, dst, n); }
void VEKAPI veksbAdd3(const float* srcA, const float* srcB, float* dst, int n) {
    add3("veksbAdd3", srcA, srcB, dst, n);
}
void VEKAPI veksbSub1(float val, float* dst, int n) { sub1("veksbSub1", val, dst, n); }
void VEKAPI veksbSub2(const float* val, float* dst, int n) { sub2("veksbSub2", val, dst, n); }
void VEKAPI veksbSub3(const float* src, const float* val, float* dst, int n) { sub3("veksbSub3", src, val, dst, n); }
void VEKAPI veksbMpy1(float val, float* dst, int n) { mpy1("veksbMpy1", val, dst, n); }
void VEKAPI veksbMpy2(const float* src, float* dst, int n) { mpy2("veksbMpy2", src, dst, n); }
void VEKAPI veksbMpy3(const float* srcA, const float* srcB, float* dst, int n) {
    mpy3("veksbMpy3", srcA, srcB, dst, n);
}

void VEKAPI vekdbZero(double* dst, int n) { zero("vekdbZero", dst, n); }
void VEKAPI vekdbSet(double val, double* dst, int n) { set("vekdbSet", val, dst, n); }
void VEKAPI vekdbCopy(const double* src, double* dst, int n) { copy("vekdbCopy", src, dst, n); }
void VEKAPI vekdbAdd1(double val, double* dst, int n) { add1("vekdbAdd1", val, dst, n); }
void VEKAPI vekdbAdd2(const double* src, double* dst, int n) { add2("vekdbAdd2", src, dst, n); }
void VEKAPI vekdbAdd3(const double* srcA, const double* srcB, double* dst, int n) {
    add3("vekdbAdd3", srcA, srcB, dst, n);
}
void VEKAPI vekdbSub1(double val, double* dst, int n) { sub1("vekdbSub1", val, dst, n); }
void VEKAPI vekdbSub2(const double* val, double* dst, int n) { sub2("vekdbSub2", val, dst, n); }
void VEKAPI vekdbSub3(const double* src, const double* val, double* dst, int n) { sub3("vekdbSub3", src, val, dst, n); }
void VEKAPI vekdbMpy1(double val, double* dst, int n) { mpy1("vekdbMpy1", val, dst, n); }
void VEKAPI vekdbMpy2(const double* src, double* dst, int n) { mpy2("vekdbMpy2", src, dst, n); }
void VEKAPI vekdbMpy3(const double* srcA, const double* srcB, double* dst, int n) {
    mpy3("vekdbMpy3", srcA, srcB, dst, n);
}

void VEKAPI vekcbZero(VekCplx* dst, int n) { zero("vekcbZero", dst, n); }
void VEKAPI vekcbSet(VekCplx val, VekCplx* dst, int n) { set("vekcbSet", val, dst, n); }
void VEKAPI vekcbCopy(const VekCplx* src, VekCplx* dst, int n) { copy("vekcbCopy", src, dst, n); }
void VEKAPI vekcbAdd1(VekCplx val, VekCplx* dst, int n) { add1("vekcbAdd1", val, dst, n); }
void VEKAPI vekcbAdd2(const VekCplx* src, VekCplx* dst, int n) { add2("vekcbAdd2", src, dst, n); }
void VEKAPI vekcbAdd3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n) {
    add3("vekcbAdd3", srcA, srcB, dst, n);
}
void VEKAPI vekcbSub1(VekCplx val, VekCplx* dst, int n) { sub1("vekcbSub1", val, dst, n); }
void VEKAPI vekcbSub2(const VekCplx* val, VekCplx* dst, int n) { sub2("vekcbSub2", val, dst, n); }
void VEKAPI vekcbSub3(const VekCplx* src, const VekCplx* val, VekCplx* dst, int n) {
    sub3("vekcbSub3", src, val, dst, n);
}
void VEKAPI vekcbMpy1(VekCplx val, VekCplx* dst, int n) { mpy1("vekcbMpy1", val, dst, n); }
void VEKAPI vekcbMpy2(const VekCplx* src, VekCplx* dst, int n) { mpy2("vekcbMpy2", src, dst, n); }
void VEKAPI vekcbMpy3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n) {
    mpy3("vekcbMpy3", srcA, srcB, dst, n);
}

void VEKAPI vekzbZero(VekDCplx* dst, int n) { zero("vekzbZero", dst, n); }
void VEKAPI vekzbSet(VekDCplx val, VekDCplx* dst, int n) { set("vekzbSet", val, dst, n); }
void VEKAPI vekzbCopy(const VekDCplx* src, VekDCplx* dst, int n) { copy("vekzbCopy", src, dst, n); }
void VEKAPI vekzbAdd1(VekDCplx val, VekDCplx* dst, int n) { add1("vekzbAdd1", val, dst, n); }
void VEKAPI vekzbAdd2(const VekDCplx* src, VekDCplx* dst, int n) { add2("vekzbAdd2", src, dst, n); }
void VEKAPI vekzbAdd3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n) {
    add3("vekzbAdd3", srcA, srcB, dst, n);
}
void VEKAPI vekzbSub1(VekDCplx val, VekDCplx* dst, int n) { sub1("vekzbSub1", val, dst, n); }
void VEKAPI vekzbSub2(const VekDCplx* val, VekDCplx* dst, int n) { sub2("vekzbSub2", val, dst, n); }
void VEKAPI vekzbSub3(const VekDCplx* src, const VekDCplx* val, VekDCplx* dst, int n) {
    sub3("vekzbSub3", src, val, dst, n);
}
void VEKAPI vekzbMpy1(VekDCplx val, VekDCplx* dst, int n) { mpy1("vekzbMpy1", val, dst, n); }
void VEKAPI vekzbMpy2(const VekDCplx* src, VekDCplx* dst, int n) { mpy2("vekzbMpy2", src, dst, n); }
void VEKAPI vekzbMpy3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n) {
    mpy3("vekzbMpy3", srcA, srcB, dst, n);
}

void VEKAPI vekcbConj1(VekCplx* vec, int n) { conj1("vekcbConj1", vec, n); }
void VEKAPI vekcbConj2(const VekCplx* src, VekCplx* dst, int n) { conj2("vekcbConj2", src, dst, n); }
void VEKAPI vekcbConjFlip2(const VekCplx* src, VekCplx* dst, int n) { conjFlip2("vekcbConjFlip2", src, dst, n); }
void VEKAPI vekcbConjExtend1(VekCplx* vec, int n) { conjExtend1("vekcbConjExtend1", vec, n); }
void VEKAPI vekcbConjExtend2(const VekCplx* src, VekCplx* dst, int n) { conjExtend2("vekcbConjExtend2", src, dst, n); }

void VEKAPI vekzbConj1(VekDCplx* vec, int n) { conj1("vekzbConj1", vec, n); }
void VEKAPI vekzbConj2(const VekDCplx* src, VekDCplx* dst, int n) { conj2("vekzbConj2", src, dst, n); }
void VEKAPI vekzbConjFlip2(const VekDCplx* src, VekDCplx* dst, int n) { conjFlip2("vekzbConjFlip2", src, dst, n); }
void VEKAPI vekzbConjExtend1(VekDCplx* vec, int n) { conjExtend1("vekzbConjExtend1", vec, n); }
void VEKAPI vekzbConjExtend2(const VekDCplx* src, VekDCplx* dst, int n) {
    conjExtend2("vekzbConjExtend2", src, dst, n);
}

VekCplx VEKAPI vekcAdd(VekCplx a, VekCplx b) { return add(a, b); }
VekCplx VEKAPI vekcSub(VekCplx a, VekCplx b) { return sub(a, b); }
VekCplx VEKAPI vekcMpy(VekCplx a, VekCplx b) { return mpy(a, b); }
VekCplx VEKAPI vekcDiv(VekCplx a, VekCplx b) { return div("vekcDiv", a, b); }
VekCplx VEKAPI vekcConj(VekCplx a) { return conj(a); }
VekCplx VEKAPI vekcSet(float re, float im) { return sample<VekCplx>(re, im); }

VekDCplx VEKAPI vekzAdd(VekDCplx a, VekDCplx b) { return add(a, b); }
VekDCplx VEKAPI vekzSub(VekDCplx a, VekDCplx b) { return sub(a, b); }
VekDCplx VEKAPI vekzMpy(VekDCplx a, VekDCplx b) { return mpy(a, b); }
VekDCplx VEKAPI vekzDiv(VekDCplx a, VekDCplx b) { return div("vekzDiv", a, b); }
VekDCplx VEKAPI vekzConj(VekDCplx a) { return conj(a); }
VekDCplx VEKAPI vekzSet(double re, double im) { return sample<VekDCplx>(re, im); }

}   // extern "C"
