// Initialisation, arithmetic and conjugation of floating-point vectors; complex arithmetic on one sample.
// Reports name the module vekarith.
#ifndef VEKM6_ARITH_H
#define VEKM6_ARITH_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Initialisation and arithmetic. For 0 <= i < n:
//   Formula:   dst[i] becomes
//              Zero  0              Set   val               Copy  src[i]
//              Add1  dst[i] + val   Add2  dst[i] + src[i]   Add3  srcA[i] + srcB[i]
//              Sub1  dst[i] - val   Sub2  dst[i] - val[i]   Sub3  src[i] - val[i]
//              Mpy1  dst[i] * val   Mpy2  dst[i] * src[i]   Mpy3  srcA[i] * srcB[i]
//              The complex product is (a.re b.re - a.im b.im, a.re b.im + a.im b.re).
//   Arguments: n elements in each vector, n >= 1; val is one element, but in Sub2 and Sub3 the vector
//              of n elements that is subtracted.
//   Scaling:   none. Real results and complex sums are rounded once and are the same numbers on every
//              processor; complex products may differ in their last bits, where a processor fuses a product
//              and a sum.
//   Aliasing:  dst may be one of the sources; vectors must not overlap otherwise.
//   Errors:    VEK_StsBadArg: "n<=0", then the null vectors in the order of the arguments:
//              "src==0", "srcA==0", "srcB==0", "val==0", "dst==0".
void VEKAPI veksbZero(float* dst, int n);
void VEKAPI veksbSet(float val, float* dst, int n);
void VEKAPI veksbCopy(const float* src, float* dst, int n);
void VEKAPI veksbAdd1(float val, float* dst, int n);
void VEKAPI veksbAdd2(const float* src, float* dst, int n);
void VEKAPI veksbAdd3(const float* srcA, const float* srcB, float* dst, int n);
void VEKAPI veksbSub1(float val, float* dst, int n);
void VEKAPI veksbSub2(const float* val, float* dst, int n);
void VEKAPI veksbSub3(const float* src, const float* val, float* dst, int n);
void VEKAPI veksbMpy1(float val, float* dst, int n);
void VEKAPI veksbMpy2(const float* src, float* dst, int n);
void VEKAPI veksbMpy3(const float* srcA, const float* srcB, float* dst, int n);

// The same for double.
void VEKAPI vekdbZero(double* dst, int n);
void VEKAPI vekdbSet(double val, double* dst, int n);
void VEKAPI vekdbCopy(const double* src, double* dst, int n);
void VEKAPI vekdbAdd1(double val, double* dst, int n);
void VEKAPI vekdbAdd2(const double* src, double* dst, int n);
void VEKAPI vekdbAdd3(const double* srcA, const double* srcB, double* dst, int n);
void VEKAPI vekdbSub1(double val, double* dst, int n);
void VEKAPI vekdbSub2(const double* val, double* dst, int n);
void VEKAPI vekdbSub3(const double* src, const double* val, double* dst, int n);
void VEKAPI vekdbMpy1(double val, double* dst, int n);
void VEKAPI vekdbMpy2(const double* src, double* dst, int n);
void VEKAPI vekdbMpy3(const double* srcA, const double* srcB, double* dst, int n);

// The same for complex float.
void VEKAPI vekcbZero(VekCplx* dst, int n);
void VEKAPI vekcbSet(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekcbCopy(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekcbAdd1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekcbAdd2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekcbAdd3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n);
void VEKAPI vekcbSub1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekcbSub2(const VekCplx* val, VekCplx* dst, int n);
void VEKAPI vekcbSub3(const VekCplx* src, const VekCplx* val, VekCplx* dst, int n);
void VEKAPI vekcbMpy1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekcbMpy2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekcbMpy3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n);

// The same for complex double.
void VEKAPI vekzbZero(VekDCplx* dst, int n);
void VEKAPI vekzbSet(VekDCplx val, VekDCplx* dst, int n);
void VEKAPI vekzbCopy(const VekDCplx* src, VekDCplx* dst, int n);
void VEKAPI vekzbAdd1(VekDCplx val, VekDCplx* dst, int n);
void VEKAPI vekzbAdd2(const VekDCplx* src, VekDCplx* dst, int n);
void VEKAPI vekzbAdd3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n);
void VEKAPI vekzbSub1(VekDCplx val, VekDCplx* dst, int n);
void VEKAPI vekzbSub2(const VekDCplx* val, VekDCplx* dst, int n);
void VEKAPI vekzbSub3(const VekDCplx* src, const VekDCplx* val, VekDCplx* dst, int n);
void VEKAPI vekzbMpy1(VekDCplx val, VekDCplx* dst, int n);
void VEKAPI vekzbMpy2(const VekDCplx* src, VekDCplx* dst, int n);
void VEKAPI vekzbMpy3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n);

// Conjugation and conjugate symmetry.
//   Formula:   Conj1        vec[k] = conj(vec[k]), 0 <= k < n
//              Conj2        dst[k] = conj(src[k]), 0 <= k < n
//              ConjFlip2    dst[n-1-k] = conj(src[k]), 0 <= k < n
//              ConjExtend1  vec[2n-2-k] = conj(vec[k]), 1 <= k <= n-2
//              ConjExtend2  dst[k] = src[k], 0 <= k < n; dst[2n-2-k] = conj(src[k]), 1 <= k <= n-2
//              A conjugate flips the sign bit of the imaginary part: +0.0 becomes -0.0. The extensions make
//              the spectrum of a real signal of 2n-2 samples from its first n bins; with n <= 2 nothing is
//              added.
//   Arguments: n elements in each vector, n >= 1; in ConjExtend1 vec, in ConjExtend2 dst holds max(n, 2n-2)
//              elements.
//   Scaling:   none; the same bits on every processor.
//   Aliasing:  dst may be src in Conj2 and ConjExtend2. In ConjFlip2 they must not overlap.
//   Errors:    VEK_StsBadArg: "n<=0"; then "vec==0", or "src==0", "dst==0".
void VEKAPI vekcbConj1(VekCplx* vec, int n);
void VEKAPI vekcbConj2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekcbConjFlip2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekcbConjExtend1(VekCplx* vec, int n);
void VEKAPI vekcbConjExtend2(const VekCplx* src, VekCplx* dst, int n);

// The same for complex double.
void VEKAPI vekzbConj1(VekDCplx* vec, int n);
void VEKAPI vekzbConj2(const VekDCplx* src, VekDCplx* dst, int n);
void VEKAPI vekzbConjFlip2(const VekDCplx* src, VekDCplx* dst, int n);
void VEKAPI vekzbConjExtend1(VekDCplx* vec, int n);
void VEKAPI vekzbConjExtend2(const VekDCplx* src, VekDCplx* dst, int n);

// Complex arithmetic on one sample, by value.
//   Formula:   Add  a + b
//              Sub  a - b
//              Mpy  (a.re b.re - a.im b.im, a.re b.im + a.im b.re)
//              Div  (r (a.re b.re + a.im b.im), r (a.im b.re - a.re b.im)), r = 1 / (b.re b.re + b.im b.im).
//                   r is formed in double precision: in vekzDiv it overflows or underflows when |b| is
//                   outside about 1e-154 ... 1e154, and raises the exceptions of that.
//              Conj (a.re, -a.im), by the sign bit
//              Set  (re, im)
//   Arguments: any values.
//   Scaling:   none.
//   Errors:    Div only, VEK_StsBadArg: "(b.re==0.0)&&(b.im==0.0)", for zeros of either sign.
//   Returns:   the result; (0, 0) after the error and under a negative status.
VekCplx VEKAPI vekcAdd(VekCplx a, VekCplx b);
VekCplx VEKAPI vekcSub(VekCplx a, VekCplx b);
VekCplx VEKAPI vekcMpy(VekCplx a, VekCplx b);
VekCplx VEKAPI vekcDiv(VekCplx a, VekCplx b);
VekCplx VEKAPI vekcConj(VekCplx a);
VekCplx VEKAPI vekcSet(float re, float im);

// The same for complex double.
VekDCplx VEKAPI vekzAdd(VekDCplx a, VekDCplx b);
VekDCplx VEKAPI vekzSub(VekDCplx a, VekDCplx b);
VekDCplx VEKAPI vekzMpy(VekDCplx a, VekDCplx b);
VekDCplx VEKAPI vekzDiv(VekDCplx a, VekDCplx b);
VekDCplx VEKAPI vekzConj(VekDCplx a);
VekDCplx VEKAPI vekzSet(double re, double im);

VEK_DECLARATIONS_END

#endif
