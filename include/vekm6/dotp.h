// Dot products. Reports name the module vekdotp, those of int16 vekdotpw.
#ifndef VEKM6_DOTP_H
#define VEKM6_DOTP_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Of floating-point vectors.
//   Formula:   the sum of a[n] b[n], 0 <= n < len; nothing is conjugated
//   Arguments: len elements in each vector, len >= 0. The letters are those of a and b; one letter stands for both.
//   Scaling:   none. Accumulated in the element type, by halves down to blocks of fixed size, so that the error grows
//              with the logarithm of len: it is at most (70 + log2(len)) eps/2 times the sum of |a[n]| |b[n]|, eps
//              being 2^-23 and 2^-52. The last bits may differ between processors, never with where the vectors lie.
//   Aliasing:  nothing is written.
//   Errors:    VEK_StsBadArg: "Null buffer pointer" for a or b; "Invalid value" if len < 0.
//   Returns:   the sum; 0 for no elements, after an error and under a negative status.
float VEKAPI veksDotProd(const float* a, const float* b, int len);
VekCplx VEKAPI vekcDotProd(const VekCplx* a, const VekCplx* b, int len);
double VEKAPI vekdDotProd(const double* a, const double* b, int len);
VekDCplx VEKAPI vekzDotProd(const VekDCplx* a, const VekDCplx* b, int len);
VekCplx VEKAPI vekscDotProd(const float* a, const VekCplx* b, int len);
VekCplx VEKAPI vekcsDotProd(const VekCplx* a, const float* b, int len);
VekDCplx VEKAPI vekdzDotProd(const double* a, const VekDCplx* b, int len);
VekDCplx VEKAPI vekzdDotProd(const VekDCplx* a, const double* b, int len);

// Of int16 vectors.
//   Formula:   the same sum, exact in 64 bits, then scaled
//   Arguments: as above; scaleMode any value; scaleFactor one int, or null but in mode VEK_AUTO_SCALE.
//   Scaling:   the sum times 2^-factor, rounded towards minus infinity, in 16 bits:
//                VEK_SATURATE                    factor 0; at most 32767 and at least -32768
//                VEK_FIXED_SCALE                 by *scaleFactor; the low 16 bits
//                VEK_FIXED_SCALE | VEK_SATURATE  by *scaleFactor; at most 32767 and at least -32768
//                VEK_AUTO_SCALE                  by the factor that is stored to *scaleFactor: 0 where the sum fits;
//                                                else the place of its magnitude's highest bit less 14
//                any other mode                  factor 0; the low 16 bits
//              Given factors shift by at most 63 places to the right and 15 to the left; a null one counts as 0. Both
//              parts of a complex sum have the same factor, that of the larger one.
//   Aliasing:  scaleFactor must lie in neither vector.
//   Errors:    those above; then, in mode VEK_AUTO_SCALE, "Null scale factor pointer".
//   Returns:   as above; the complex sum of int16 in 32 bits, the real part in the low half.
int16_t VEKAPI vekwDotProd(const int16_t* a, const int16_t* b, int len, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvDotProd(const VekWCplx* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekwvDotProd(const int16_t* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvwDotProd(const VekWCplx* a, const int16_t* b, int len, int scaleMode, int* scaleFactor);

// The same in 32 bits: the limits are those of int32, the automatic factor is the place of the highest bit less 30, and
// given ones shift by at most 31 places to the left.
int32_t VEKAPI vekwDotProdExt(const int16_t* a, const int16_t* b, int len, int scaleMode, int* scaleFactor);
VekICplx VEKAPI vekvDotProdExt(const VekWCplx* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor);
VekICplx VEKAPI vekwvDotProdExt(const int16_t* a, const VekWCplx* b, int len, int scaleMode, int* scaleFactor);
VekICplx VEKAPI vekvwDotProdExt(const VekWCplx* a, const int16_t* b, int len, int scaleMode, int* scaleFactor);

VEK_DECLARATIONS_END

#endif
