// Squares, square roots, absolute values and thresholds of floating-point vectors. Reports name the module
// vekvec.
//
// Form 1 works in place on vec, form 2 reads src and writes dst. For all members:
//   Arguments: len elements in each vector, len >= 1.
//   Aliasing:  dst may be src; they must not overlap otherwise.
//   Errors:    VEK_StsBadArg: "len<=0"; then "vec==0", or "src==0", "dst==0"; then those of the group.
//   Returns:   VEK_StsOk; after an error what the report handler returned; VEK_StsOk without computing under
//              a negative status.
// The results of the real members are the same numbers on every processor, bit for bit.
#ifndef VEKM6_VEC_H
#define VEKM6_VEC_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Squares.
//   Formula:   real     x * x
//              complex  ((re - im)(re + im), re im + re im)
//   Scaling:   none.
//   Errors:    those of all members.
//
// Square roots.
//   Formula:   real     sqrt(x), correctly rounded. A negative element is left out: vec keeps it, dst keeps
//                       what it held; -0.0 is not negative and is its own root.
//              complex  the principal root, real part >= 0, free of overflow and underflow within; for
//                       infinities, NaN and signed zeros as csqrt of C99, annex G.
//   Scaling:   none.
//   Errors:    real, after the computation and once per call: "Element of input vector is negative". The
//              other roots stand.
//
// Thresholds: elements beyond the limit become the limit.
//   Formula:   real     relOp VEK_LT: x below thresh becomes thresh; VEK_GT: x above thresh becomes thresh.
//                       The order is that of the bit patterns: -0.0 lies below +0.0, and a NaN beyond the
//                       infinity of its sign.
//              complex  the same on the magnitude, with the phase kept: x becomes thresh x / |x|, and a zero
//                       below the limit becomes (thresh, 0).
//   Arguments: thresh in the element's unit, real: any, complex: thresh >= 0; relOp VEK_LT (0) or VEK_GT (any
//              other value).
//   Scaling:   none.
//   Errors:    complex: "thresh<0.0f" for c, "thresh<0.0" for z.
//
// Inverse thresholds: reciprocals with a bound.
//   Formula:   thresh > 0  real: 1 / x where |x| > thresh, else 1 / thresh with the sign of x, positive for
//                          -0.0
//                          complex: 1 / x where |x| > thresh, else magnitude 1 / thresh with the phase of
//                          1 / x, and (1 / thresh, 0) for a zero
//              thresh = 0  1 / x; a zero of either sign gives 3.4028235e+38 in both precisions, as a complex
//                          element (3.4028235e+38, 0).
//   Arguments: thresh >= 0 in the element's unit.
//   Scaling:   none.
//   Errors:    "thresh<0.0f" for s, c and vekzbInvThresh2; "thresh<0.0" for d and vekzbInvThresh1. After the
//              computation and once per call: "zero element and zero thresh"; the results stand.

// float
VekStatus VEKAPI veksbSqr1(float* vec, int len);
VekStatus VEKAPI veksbSqr2(const float* src, float* dst, int len);
VekStatus VEKAPI veksbSqrt1(float* vec, int len);
VekStatus VEKAPI veksbSqrt2(const float* src, float* dst, int len);
VekStatus VEKAPI veksbThresh1(float* vec, int len, float thresh, int relOp);
VekStatus VEKAPI veksbThresh2(const float* src, float* dst, int len, float thresh, int relOp);
VekStatus VEKAPI veksbInvThresh1(float* vec, int len, float thresh);
VekStatus VEKAPI veksbInvThresh2(const float* src, float* dst, int len, float thresh);

// double
VekStatus VEKAPI vekdbSqr1(double* vec, int len);
VekStatus VEKAPI vekdbSqr2(const double* src, double* dst, int len);
VekStatus VEKAPI vekdbSqrt1(double* vec, int len);
VekStatus VEKAPI vekdbSqrt2(const double* src, double* dst, int len);
VekStatus VEKAPI vekdbThresh1(double* vec, int len, double thresh, int relOp);
VekStatus VEKAPI vekdbThresh2(const double* src, double* dst, int len, double thresh, int relOp);
VekStatus VEKAPI vekdbInvThresh1(double* vec, int len, double thresh);
VekStatus VEKAPI vekdbInvThresh2(const double* src, double* dst, int len, double thresh);

// complex float
VekStatus VEKAPI vekcbSqr1(VekCplx* vec, int len);
VekStatus VEKAPI vekcbSqr2(const VekCplx* src, VekCplx* dst, int len);
VekStatus VEKAPI vekcbSqrt1(VekCplx* vec, int len);
VekStatus VEKAPI vekcbSqrt2(const VekCplx* src, VekCplx* dst, int len);
VekStatus VEKAPI vekcbThresh1(VekCplx* vec, int len, float thresh, int relOp);
VekStatus VEKAPI vekcbThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh, int relOp);
VekStatus VEKAPI vekcbInvThresh1(VekCplx* vec, int len, float thresh);
VekStatus VEKAPI vekcbInvThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh);

// complex double
VekStatus VEKAPI vekzbSqr1(VekDCplx* vec, int len);
VekStatus VEKAPI vekzbSqr2(const VekDCplx* src, VekDCplx* dst, int len);
VekStatus VEKAPI vekzbSqrt1(VekDCplx* vec, int len);
VekStatus VEKAPI vekzbSqrt2(const VekDCplx* src, VekDCplx* dst, int len);
VekStatus VEKAPI vekzbThresh1(VekDCplx* vec, int len, double thresh, int relOp);
VekStatus VEKAPI vekzbThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh, int relOp);
VekStatus VEKAPI vekzbInvThresh1(VekDCplx* vec, int len, double thresh);
VekStatus VEKAPI vekzbInvThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh);

// Absolute values.
//   Formula:   |x|; -0.0 becomes +0.0.
//   Scaling:   none.
//   Errors:    those of all members.
VekStatus VEKAPI veksbAbs1(float* vec, int len);
VekStatus VEKAPI veksbAbs2(const float* src, float* dst, int len);
VekStatus VEKAPI vekdbAbs1(double* vec, int len);
VekStatus VEKAPI vekdbAbs2(const double* src, double* dst, int len);

VEK_DECLARATIONS_END

#endif
