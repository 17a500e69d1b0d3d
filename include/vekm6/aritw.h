// Initialisation, arithmetic and conjugation of int16 vectors and their complex form; complex arithmetic on one sample.
// Reports name the module vekaritw.
//
// Scaling. Sums, differences and products are exact; then they become int16 as a mode and a factor say. The result that
// is stored is the exact one times 2^-factor, rounded towards minus infinity: a positive factor is a shift to the
// right, a negative one a shift to the left. Both parts of a complex result, and all results of a vector, have the same
// factor.
//
//   VEK_NO_SCALE                    0      the low 16 bits of the exact result, which wraps round
//   VEK_SATURATE                    1      the exact result, at most 32767 and at least -32768
//   VEK_FIXED_SCALE                 2      by *scaleFactor; the low 16 bits of the shifted result
//   VEK_FIXED_SCALE | VEK_SATURATE  3      by *scaleFactor; the shifted result, at most 32767 and at least -32768
//   VEK_AUTO_SCALE                  4      by the least factor, 0 or more, that makes all results of the call fit; it
//                                          is stored to *scaleFactor: up to 1 of sums and differences, 16 of products,
//                                          17 of complex products
//
// The mode's whole value counts: every other one is VEK_FIXED_SCALE. Modes 0 and 1 never read scaleFactor; the fixed
// ones take a null scaleFactor as factor 0. Factors from -15 to 31 are meaningful; any other is legal and does what the
// formula says: the sign alone is left of results shifted far to the right, nothing of those shifted far to the left,
// or the limit where they saturate. The same bits on every processor.
#ifndef VEKM6_ARITW_H
#define VEKM6_ARITW_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Initialisation and arithmetic. For 0 <= i < n:
//   Formula:   dst[i] becomes
//              Zero  0              Set   val               Copy  src[i]
//              Add1  dst[i] + val   Add2  dst[i] + src[i]   Add3  srcA[i] + srcB[i]
//              Sub1  dst[i] - val   Sub2  dst[i] - val[i]   Sub3  src[i] - val[i]
//              Mpy1  dst[i] * val   Mpy2  dst[i] * src[i]   Mpy3  srcA[i] * srcB[i]
//   Arguments: n elements in each vector, n >= 1; val is one element, but in Sub2 and Sub3 the vector of n elements to
//              be subtracted; scaleMode any value; scaleFactor one int, or null but in mode VEK_AUTO_SCALE.
//   Scaling:   see above; Zero, Set and Copy none.
//   Aliasing:  dst may be one of the sources; vectors must not overlap otherwise, nor scaleFactor with any.
//   Errors:    VEK_StsBadArg: "n<=0", then the null vectors in the order of the arguments: "src==0", "srcA==0",
//              "srcB==0", "val==0", "dst==0"; then in mode VEK_AUTO_SCALE "scalefactor==0".
void VEKAPI vekwbZero(int16_t* dst, int n);
void VEKAPI vekwbSet(int16_t val, int16_t* dst, int n);
void VEKAPI vekwbCopy(const int16_t* src, int16_t* dst, int n);
void VEKAPI vekwbAdd1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbAdd2(const int16_t* src, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbAdd3(const int16_t* srcA, const int16_t* srcB, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbSub1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbSub2(const int16_t* val, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbSub3(const int16_t* src, const int16_t* val, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbMpy1(int16_t val, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbMpy2(const int16_t* src, int16_t* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekwbMpy3(const int16_t* srcA, const int16_t* srcB, int16_t* dst, int n, int scaleMode, int* scaleFactor);

// The same for complex int16.
//   Formula:   the complex product is (a.re b.re - a.im b.im, a.re b.im + a.im b.re); it is exact before it is scaled,
//              also where it takes 33 bits.
void VEKAPI vekvbZero(VekWCplx* dst, int n);
void VEKAPI vekvbSet(VekWCplx val, VekWCplx* dst, int n);
void VEKAPI vekvbCopy(const VekWCplx* src, VekWCplx* dst, int n);
void VEKAPI vekvbAdd1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbAdd2(const VekWCplx* src, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbAdd3(const VekWCplx* srcA, const VekWCplx* srcB, VekWCplx* dst, int n, int scaleMode,
                      int* scaleFactor);
void VEKAPI vekvbSub1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbSub2(const VekWCplx* val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbSub3(const VekWCplx* src, const VekWCplx* val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbMpy1(VekWCplx val, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbMpy2(const VekWCplx* src, VekWCplx* dst, int n, int scaleMode, int* scaleFactor);
void VEKAPI vekvbMpy3(const VekWCplx* srcA, const VekWCplx* srcB, VekWCplx* dst, int n, int scaleMode,
                      int* scaleFactor);

// Conjugation and conjugate symmetry.
//   Formula:   Conj1        vec[k] = conj(vec[k]), 0 <= k < n
//              Conj2        dst[k] = conj(src[k]), 0 <= k < n
//              ConjFlip2    dst[n-1-k] = conj(src[k]), 0 <= k < n
//              ConjExtend1  vec[2n-2-k] = conj(vec[k]), 1 <= k <= n-2
//              ConjExtend2  dst[k] = src[k], 0 <= k < n; dst[2n-2-k] = conj(src[k]), 1 <= k <= n-2
//              The extensions make the spectrum of a real signal of 2n-2 samples from its first n bins; with n <= 2
//              nothing is added.
//   Arguments: n elements in each vector, n >= 1; in ConjExtend1 vec, in ConjExtend2 dst holds max(n, 2n-2) elements.
//   Scaling:   none; the conjugate of an imaginary part of -32768 has 32767.
//   Aliasing:  dst may be src in Conj2 and ConjExtend2. In ConjFlip2 they must not overlap.
//   Errors:    VEK_StsBadArg: "n<=0"; then "vec==0", or "src==0", "dst==0".
void VEKAPI vekvbConj1(VekWCplx* vec, int n);
void VEKAPI vekvbConj2(const VekWCplx* src, VekWCplx* dst, int n);
void VEKAPI vekvbConjFlip2(const VekWCplx* src, VekWCplx* dst, int n);
void VEKAPI vekvbConjExtend1(VekWCplx* vec, int n);
void VEKAPI vekvbConjExtend2(const VekWCplx* src, VekWCplx* dst, int n);

// Complex arithmetic on one sample, by value: the parts in 32 bits, the real one in the low half.
//   Formula:   Add  a + b
//              Sub  a - b
//              Mpy  (a.re b.re - a.im b.im, a.re b.im + a.im b.re)
//              Div  (r (a.re b.re + a.im b.im), r (a.im b.re - a.re b.im)), r = 1 / (b.re b.re + b.im b.im); each part
//                   is the integer nearest to the exact quotient, the even one of two
//              Conj (a.re, -a.im)
//              Set  (re, im)
//   Arguments: as in the vector operations.
//   Scaling:   Add, Sub and Mpy as vectors of one element; Div and Conj saturate.
//   Errors:    Add, Sub, Mpy: "scalefactor==0" in the name of vekvbAdd3, vekvbSub3, vekvbMpy3, which do their work;
//              then, and whenever the thread's status is negative, VEK_StsBacktrace under their own, without a message.
//              Div: VEK_StsBadArg, "(b.re==0.0)&&(b.im==0.0)".
//   Returns:   the result; (0, 0) after an error and under a negative status.
VekWCplx VEKAPI vekvAdd(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvSub(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvMpy(VekWCplx a, VekWCplx b, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvDiv(VekWCplx a, VekWCplx b);
VekWCplx VEKAPI vekvConj(VekWCplx a);
VekWCplx VEKAPI vekvSet(int16_t re, int16_t im);

VEK_DECLARATIONS_END

#endif
