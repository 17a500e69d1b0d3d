// Squares, square roots, absolute values and thresholds of floating-point vectors.
#ifndef VEKM6_VEC_H
#define VEKM6_VEC_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

VekStatus VEKAPI veksbSqr1(float* vec, int len);
VekStatus VEKAPI vekdbSqr1(double* vec, int len);
VekStatus VEKAPI vekcbSqr1(VekCplx* vec, int len);
VekStatus VEKAPI vekzbSqr1(VekDCplx* vec, int len);

VekStatus VEKAPI veksbSqr2(const float* src, float* dst, int len);
VekStatus VEKAPI vekdbSqr2(const double* src, double* dst, int len);
VekStatus VEKAPI vekcbSqr2(const VekCplx* src, VekCplx* dst, int len);
VekStatus VEKAPI vekzbSqr2(const VekDCplx* src, VekDCplx* dst, int len);

VekStatus VEKAPI veksbSqrt1(float* vec, int len);
VekStatus VEKAPI vekdbSqrt1(double* vec, int len);
VekStatus VEKAPI vekcbSqrt1(VekCplx* vec, int len);
VekStatus VEKAPI vekzbSqrt1(VekDCplx* vec, int len);

VekStatus VEKAPI veksbSqrt2(const float* src, float* dst, int len);
VekStatus VEKAPI vekdbSqrt2(const double* src, double* dst, int len);
VekStatus VEKAPI vekcbSqrt2(const VekCplx* src, VekCplx* dst, int len);
VekStatus VEKAPI vekzbSqrt2(const VekDCplx* src, VekDCplx* dst, int len);

VekStatus VEKAPI veksbAbs1(float* vec, int len);
VekStatus VEKAPI vekdbAbs1(double* vec, int len);

VekStatus VEKAPI veksbAbs2(const float* src, float* dst, int len);
VekStatus VEKAPI vekdbAbs2(const double* src, double* dst, int len);

VekStatus VEKAPI veksbThresh1(float* vec, int len, float thresh, int relOp);
VekStatus VEKAPI vekdbThresh1(double* vec, int len, double thresh, int relOp);
VekStatus VEKAPI vekcbThresh1(VekCplx* vec, int len, float thresh, int relOp);
VekStatus VEKAPI vekzbThresh1(VekDCplx* vec, int len, double thresh, int relOp);

VekStatus VEKAPI veksbThresh2(const float* src, float* dst, int len, float thresh, int relOp);
VekStatus VEKAPI vekdbThresh2(const double* src, double* dst, int len, double thresh, int relOp);
VekStatus VEKAPI vekcbThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh, int relOp);
VekStatus VEKAPI vekzbThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh, int relOp);

VekStatus VEKAPI veksbInvThresh1(float* vec, int len, float thresh);
VekStatus VEKAPI vekdbInvThresh1(double* vec, int len, double thresh);
VekStatus VEKAPI vekcbInvThresh1(VekCplx* vec, int len, float thresh);
VekStatus VEKAPI vekzbInvThresh1(VekDCplx* vec, int len, double thresh);

VekStatus VEKAPI veksbInvThresh2(const float* src, float* dst, int len, float thresh);
VekStatus VEKAPI vekdbInvThresh2(const double* src, double* dst, int len, double thresh);
VekStatus VEKAPI vekcbInvThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh);
VekStatus VEKAPI vekzbInvThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh);

#ifdef __cplusplus
}
#endif

#endif
