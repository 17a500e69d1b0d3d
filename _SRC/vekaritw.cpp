// Initialisation, arithmetic and conjugation of int16 vectors and their complex form; complex arithmetic on one sample.
#include "vekm6/aritw.h"

#include "core/call.h"
#include "core/elements.h"
#include "core/scaling.h"
#include "kernels/aritw.h"
#include "kernels/level/levels.h"

namespace {

using vek::Scaling;
using vek::core::Call;
using vek::core::isComplex;
using vek::core::lacksFactor;
using vek::core::Real;
using vek::core::realCount;
using vek::core::reals;
using vek::core::scalingOf;
using vek::core::stopped;
using vek::kernels::AritwTable;

constexpr const char* module = "vekaritw";

const AritwTable& kernels() { return *vek::kernelsNow().aritw; }

vek::kernels::Complex16 packed(VekWCplx value) { return {value.re, value.im}; }
int16_t packed(int16_t value) { return value; }

// ---- Filling and copying --------------------------------------------------------------------------------------------

template <class T>
void zero(const char* name, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().set(0, reals(dst), realCount<T>(n));
}

template <class T>
void set(const char* name, T val, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    if constexpr (isComplex<T>)
        kernels().complexSet(packed(val), reals(dst), realCount<T>(n));
    else
        kernels().set(val, dst, realCount<T>(n));
}

template <class T>
void copy(const char* name, const T* src, T* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().copy(reals(src), reals(dst), realCount<T>(n));
}

// ---- Sums, differences, products ------------------------------------------------------------------------------------

// The kernels of each, for a scalar operand and for a vector.
struct Add {
    static const auto& of(int16_t) { return kernels().add1; }
    static const auto& of(VekWCplx) { return kernels().complexAdd1; }
    static const auto& of(const int16_t*) { return kernels().add3; }
    static const auto& of(const VekWCplx*) { return kernels().add3; }
};
struct Sub {
    static const auto& of(int16_t) { return kernels().sub1; }
    static const auto& of(VekWCplx) { return kernels().complexSub1; }
    static const auto& of(const int16_t*) { return kernels().sub3; }
    static const auto& of(const VekWCplx*) { return kernels().sub3; }
};
struct Mpy {
    static const auto& of(int16_t) { return kernels().mpy1; }
    static const auto& of(VekWCplx) { return kernels().complexMpy1; }
    static const auto& of(const int16_t*) { return kernels().mpy3; }
    static const auto& of(const VekWCplx*) { return kernels().complexMpy3; }
};

// dst = a (operation) b by the kernels of both, in any mode.
template <class Kernels, class Operand>
[[gnu::noinline]] void runScaled(const Kernels& of, const int16_t* a, Operand b, int16_t* dst, std::size_t count,
                                 int scaleMode, int* scaleFactor) {
    const Scaling scaling = scalingOf(scaleMode, scaleFactor, [&] { return of.places(a, b, count); });
    of.run[scaling.fit](a, b, dst, count, scaling.right);
    if (scaling.left != 0) kernels().left[scaling.fit](dst, count, scaling.left);
}

// The modes without a factor take the shortest way, which needs no frame.
template <class Kernels, class Operand>
VEK_STEPS void run(const Kernels& of, const int16_t* a, Operand b, int16_t* dst, std::size_t count, int scaleMode,
                   int* scaleFactor) {
    static_assert(vek::fitWraps == static_cast<int>(VEK_NO_SCALE) &&
                  vek::fitSaturates == static_cast<int>(VEK_SATURATE));
    if (scaleMode == VEK_NO_SCALE || scaleMode == VEK_SATURATE) [[likely]]
        of.run[scaleMode](a, b, dst, count, 0);
    else
        runScaled(of, a, b, dst, count, scaleMode, scaleFactor);
}

template <class Operation, class T>
VEK_STEPS void withScalar(const char* name, T val, T* dst, int n, int scaleMode, int* scaleFactor) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.bad(lacksFactor(scaleMode, scaleFactor), "scalefactor==0")) return;
    if (call.stopped()) return;
    run(Operation::of(val), reals(dst), packed(val), reals(dst), realCount<T>(n), scaleMode, scaleFactor);
}

// `message` names the second operand.
template <class Operation, class T>
VEK_STEPS void inPlace(const char* name, const char* message, const T* src, T* dst, int n, int scaleMode,
                       int* scaleFactor) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, message)) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.bad(lacksFactor(scaleMode, scaleFactor), "scalefactor==0")) return;
    if (call.stopped()) return;
    run(Operation::of(src), reals(dst), reals(src), reals(dst), realCount<T>(n), scaleMode, scaleFactor);
}

template <class Operation, class T>
VEK_STEPS void apart(const char* name, const char* messageA, const char* messageB, const T* a, const T* b, T* dst,
                     int n, int scaleMode, int* scaleFactor) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!a, messageA)) return;
    if (call.bad(!b, messageB)) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.bad(lacksFactor(scaleMode, scaleFactor), "scalefactor==0")) return;
    if (call.stopped()) return;
    run(Operation::of(b), reals(a), reals(b), reals(dst), realCount<T>(n), scaleMode, scaleFactor);
}

template <class T>
void add1(const char* name, T val, T* dst, int n, int scaleMode, int* scaleFactor) {
    withScalar<Add>(name, val, dst, n, scaleMode, scaleFactor);
}
template <class T>
void add2(const char* name, const T* src, T* dst, int n, int scaleMode, int* scaleFactor) {
    inPlace<Add>(name, "src==0", src, dst, n, scaleMode, scaleFactor);
}
template <class T>
void add3(const char* name, const T* srcA, const T* srcB, T* dst, int n, int scaleMode, int* scaleFactor) {
    apart<Add>(name, "srcA==0", "srcB==0", srcA, srcB, dst, n, scaleMode, scaleFactor);
}
template <class T>
void sub1(const char* name, T val, T* dst, int n, int scaleMode, int* scaleFactor) {
    withScalar<Sub>(name, val, dst, n, scaleMode, scaleFactor);
}
template <class T>
void sub2(const char* name, const T* val, T* dst, int n, int scaleMode, int* scaleFactor) {
    inPlace<Sub>(name, "val==0", val, dst, n, scaleMode, scaleFactor);
}
template <class T>
void sub3(const char* name, const T* src, const T* val, T* dst, int n, int scaleMode, int* scaleFactor) {
    apart<Sub>(name, "src==0", "val==0", src, val, dst, n, scaleMode, scaleFactor);
}
template <class T>
void mpy1(const char* name, T val, T* dst, int n, int scaleMode, int* scaleFactor) {
    withScalar<Mpy>(name, val, dst, n, scaleMode, scaleFactor);
}
template <class T>
void mpy2(const char* name, const T* src, T* dst, int n, int scaleMode, int* scaleFactor) {
    inPlace<Mpy>(name, "src==0", src, dst, n, scaleMode, scaleFactor);
}
template <class T>
void mpy3(const char* name, const T* srcA, const T* srcB, T* dst, int n, int scaleMode, int* scaleFactor) {
    apart<Mpy>(name, "srcA==0", "srcB==0", srcA, srcB, dst, n, scaleMode, scaleFactor);
}

// ---- Conjugation ----------------------------------------------------------------------------------------------------

void conj1(const char* name, VekWCplx* vec, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!vec, "vec==0")) return;
    if (call.stopped()) return;
    kernels().conj2(reals(vec), reals(vec), realCount<VekWCplx>(n));
}

void conj2(const char* name, const VekWCplx* src, VekWCplx* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().conj2(reals(src), reals(dst), realCount<VekWCplx>(n));
}

void conjFlip2(const char* name, const VekWCplx* src, VekWCplx* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().conjFlip2(reals(src), reals(dst), realCount<VekWCplx>(n));
}

// Writes elements n ... 2n - 3 of a conjugate-symmetric vector of length 2n - 2; src holds elements 0 ... n - 1.
void mirror(const VekWCplx* src, VekWCplx* dst, int n) {
    if (n > 2) kernels().conjFlip2(reals(src + 1), reals(dst + n), realCount<VekWCplx>(n - 2));
}

void conjExtend1(const char* name, VekWCplx* vec, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!vec, "vec==0")) return;
    if (call.stopped()) return;
    mirror(vec, vec, n);
}

void conjExtend2(const char* name, const VekWCplx* src, VekWCplx* dst, int n) {
    Call call{module, name};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().copy(reals(src), reals(dst), realCount<VekWCplx>(n));
    mirror(src, dst, n);
}

// ---- One sample: zero while a failure stands ------------------------------------------------------------------------

// The vector operation on one element: it reports first, what it reports is traced back.
template <class Vector>
VekWCplx one(const char* name, VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor, Vector vector) {
    Call call{module, name};
    VekWCplx result = {};
    vector(&a, &b, &result, 1, scaleMode, scaleFactor);
    call.backtrace();
    return result;
}

int16_t saturated(std::int64_t value) {
    return static_cast<int16_t>(value < INT16_MIN ? INT16_MIN : value > INT16_MAX ? INT16_MAX : value);
}

// The integer nearest to the quotient, the even one of two; the divisor is positive.
std::int64_t nearest(std::int64_t dividend, std::int64_t divisor) {
    std::int64_t quotient = dividend / divisor;
    std::int64_t rest = dividend % divisor;
    if (rest < 0) {
        --quotient;
        rest += divisor;
    }
    const std::int64_t beyondHalf = 2 * rest - divisor;
    return beyondHalf > 0 || (beyondHalf == 0 && quotient % 2 != 0) ? quotient + 1 : quotient;
}

VekWCplx div(const char* name, VekWCplx a, VekWCplx b) {
    Call call{module, name};
    if (call.bad(b.re == 0 && b.im == 0, "(b.re==0.0)&&(b.im==0.0)")) return {};
    if (call.stopped()) return {};
    const std::int64_t x[] = {a.re, a.im};
    const std::int64_t y[] = {b.re, b.im};
    const std::int64_t square = y[0] * y[0] + y[1] * y[1];
    return {saturated(nearest(x[0] * y[0] + x[1] * y[1], square)),
            saturated(nearest(x[1] * y[0] - x[0] * y[1], square))};
}

VekWCplx conj(VekWCplx a) {
    if (stopped()) return {};
    return {a.re, saturated(-std::int64_t{a.im})};
}

VekWCplx sample(int16_t re, int16_t im) {
    if (stopped()) return {};
    return {re, im};
}

}   // namespace

extern "C" {

void VEKAPI vekwbZero(int16_t* dst, int n) { zero("vekwbZero", dst, n); }
void VEKAPI vekwbSet(int16_t val, int16_t* dst, int n) { set("vekwbSet", val, dst, n); }
void VEKAPI vekwbCopy(const int16_t* src, int16_t* dst, int n) { copy("vekwbCopy", src, dst, n); }
void VEKAPI vekwbAdd1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    add1("vekwbAdd1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbAdd2(const int16_t* src, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    add2("vekwbAdd2", src, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbAdd3(const int16_t* srcA, const int16_t* srcB, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    add3("vekwbAdd3", srcA, srcB, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbSub1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    sub1("vekwbSub1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbSub2(const int16_t* val, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    sub2("vekwbSub2", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbSub3(const int16_t* src, const int16_t* val, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    sub3("vekwbSub3", src, val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbMpy1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    mpy1("vekwbMpy1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbMpy2(const int16_t* src, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    mpy2("vekwbMpy2", src, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekwbMpy3(const int16_t* srcA, const int16_t* srcB, int16_t* dst, int n, int scaleMode, int* scaleFactor) {
    mpy3("vekwbMpy3", srcA, srcB, dst, n, scaleMode, scaleFactor);
}

void VEKAPI vekvbZero(VekWCplx* dst, int n) { zero("vekvbZero", dst, n); }
void VEKAPI vekvbSet(VekWCplx val, VekWCplx* dst, int n) { set("vekvbSet", val, dst, n); }
void VEKAPI vekvbCopy(const VekWCplx* src, VekWCplx* dst, int n) { copy("vekvbCopy", src, dst, n); }
void VEKAPI vekvbAdd1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    add1("vekvbAdd1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbAdd2(const VekWCplx* src, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    add2("vekvbAdd2", src, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbAdd3(const VekWCplx* srcA, const VekWCplx* srcB, VekWCplx* dst, int n, int scaleMode,
                      int* scaleFactor) {
    add3("vekvbAdd3", srcA, srcB, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbSub1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    sub1("vekvbSub1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbSub2(const VekWCplx* val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    sub2("vekvbSub2", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbSub3(const VekWCplx* src, const VekWCplx* val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    sub3("vekvbSub3", src, val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbMpy1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    mpy1("vekvbMpy1", val, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbMpy2(const VekWCplx* src, VekWCplx* dst, int n, int scaleMode, int* scaleFactor) {
    mpy2("vekvbMpy2", src, dst, n, scaleMode, scaleFactor);
}
void VEKAPI vekvbMpy3(const VekWCplx* srcA, const VekWCplx* srcB, VekWCplx* dst, int n, int scaleMode,
                      int* scaleFactor) {
    mpy3("vekvbMpy3", srcA, srcB, dst, n, scaleMode, scaleFactor);
}

void VEKAPI vekvbConj1(VekWCplx* vec, int n) { conj1("vekvbConj1", vec, n); }
void VEKAPI vekvbConj2(const VekWCplx* src, VekWCplx* dst, int n) { conj2("vekvbConj2", src, dst, n); }
void VEKAPI vekvbConjFlip2(const VekWCplx* src, VekWCplx* dst, int n) { conjFlip2("vekvbConjFlip2", src, dst, n); }
void VEKAPI vekvbConjExtend1(VekWCplx* vec, int n) { conjExtend1("vekvbConjExtend1", vec, n); }
void VEKAPI vekvbConjExtend2(const VekWCplx* src, VekWCplx* dst, int n) {
    conjExtend2("vekvbConjExtend2", src, dst, n);
}

VekWCplx VEKAPI vekvAdd(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor) {
    return one("vekvAdd", a, b, scaleMode, scaleFactor, vekvbAdd3);
}
VekWCplx VEKAPI vekvSub(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor) {
    return one("vekvSub", a, b, scaleMode, scaleFactor, vekvbSub3);
}
VekWCplx VEKAPI vekvMpy(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor) {
    return one("vekvMpy", a, b, scaleMode, scaleFactor, vekvbMpy3);
}
VekWCplx VEKAPI vekvDiv(VekWCplx a, VekWCplx b) { return div("vekvDiv", a, b); }
VekWCplx VEKAPI vekvConj(VekWCplx a) { return conj(a); }
VekWCplx VEKAPI vekvSet(int16_t re, int16_t im) { return sample(re, im); }

}   // extern "C"
