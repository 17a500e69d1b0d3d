// Initialisation, arithmetic and conjugation of floating-point vectors; complex arithmetic on one sample.
#ifndef VEKM6_ARITH_H
#define VEKM6_ARITH_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

void VEKAPI veksbZero(float* dst, int n);
void VEKAPI vekdbZero(double* dst, int n);
void VEKAPI vekcbZero(VekCplx* dst, int n);
void VEKAPI vekzbZero(VekDCplx* dst, int n);

void VEKAPI veksbSet(float val, float* dst, int n);
void VEKAPI vekdbSet(double val, double* dst, int n);
void VEKAPI vekcbSet(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekzbSet(VekDCplx val, VekDCplx* dst, int n);

void VEKAPI veksbCopy(const float* src, float* dst, int n);
void VEKAPI vekdbCopy(const double* src, double* dst, int n);
void VEKAPI vekcbCopy(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbCopy(const VekDCplx* src, VekDCplx* dst, int n);

void VEKAPI veksbAdd1(float val, float* dst, int n);
void VEKAPI vekdbAdd1(double val, double* dst, int n);
void VEKAPI vekcbAdd1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekzbAdd1(VekDCplx val, VekDCplx* dst, int n);

void VEKAPI veksbAdd2(const float* src, float* dst, int n);
void VEKAPI vekdbAdd2(const double* src, double* dst, int n);
void VEKAPI vekcbAdd2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbAdd2(const VekDCplx* src, VekDCplx* dst, int n);

void VEKAPI veksbAdd3(const float* srcA, const float* srcB, float* dst, int n);
void VEKAPI vekdbAdd3(const double* srcA, const double* srcB, double* dst, int n);
void VEKAPI vekcbAdd3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n);
void VEKAPI vekzbAdd3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n);

void VEKAPI veksbSub1(float val, float* dst, int n);
void VEKAPI vekdbSub1(double val, double* dst, int n);
void VEKAPI vekcbSub1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekzbSub1(VekDCplx val, VekDCplx* dst, int n);

void VEKAPI veksbSub2(const float* val, float* dst, int n);
void VEKAPI vekdbSub2(const double* val, double* dst, int n);
void VEKAPI vekcbSub2(const VekCplx* val, VekCplx* dst, int n);
void VEKAPI vekzbSub2(const VekDCplx* val, VekDCplx* dst, int n);

void VEKAPI veksbSub3(const float* src, const float* val, float* dst, int n);
void VEKAPI vekdbSub3(const double* src, const double* val, double* dst, int n);
void VEKAPI vekcbSub3(const VekCplx* src, const VekCplx* val, VekCplx* dst, int n);
void VEKAPI vekzbSub3(const VekDCplx* src, const VekDCplx* val, VekDCplx* dst, int n);

void VEKAPI veksbMpy1(float val, float* dst, int n);
void VEKAPI vekdbMpy1(double val, double* dst, int n);
void VEKAPI vekcbMpy1(VekCplx val, VekCplx* dst, int n);
void VEKAPI vekzbMpy1(VekDCplx val, VekDCplx* dst, int n);

void VEKAPI veksbMpy2(const float* src, float* dst, int n);
void VEKAPI vekdbMpy2(const double* src, double* dst, int n);
void VEKAPI vekcbMpy2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbMpy2(const VekDCplx* src, VekDCplx* dst, int n);

void VEKAPI veksbMpy3(const float* srcA, const float* srcB, float* dst, int n);
void VEKAPI vekdbMpy3(const double* srcA, const double* srcB, double* dst, int n);
void VEKAPI vekcbMpy3(const VekCplx* srcA, const VekCplx* srcB, VekCplx* dst, int n);
void VEKAPI vekzbMpy3(const VekDCplx* srcA, const VekDCplx* srcB, VekDCplx* dst, int n);

void VEKAPI vekcbConj1(VekCplx* vec, int n);
void VEKAPI vekzbConj1(VekDCplx* vec, int n);

void VEKAPI vekcbConj2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbConj2(const VekDCplx* src, VekDCplx* dst, int n);

void VEKAPI vekcbConjFlip2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbConjFlip2(const VekDCplx* src, VekDCplx* dst, int n);

void VEKAPI vekcbConjExtend1(VekCplx* vec, int n);
void VEKAPI vekzbConjExtend1(VekDCplx* vec, int n);

void VEKAPI vekcbConjExtend2(const VekCplx* src, VekCplx* dst, int n);
void VEKAPI vekzbConjExtend2(const VekDCplx* src, VekDCplx* dst, int n);

VekCplx VEKAPI vekcAdd(VekCplx a, VekCplx b);
VekDCplx VEKAPI vekzAdd(VekDCplx a, VekDCplx b);

VekCplx VEKAPI vekcSub(VekCplx a, VekCplx b);
VekDCplx VEKAPI vekzSub(VekDCplx a, VekDCplx b);

VekCplx VEKAPI vekcMpy(VekCplx a, VekCplx b);
VekDCplx VEKAPI vekzMpy(VekDCplx a, VekDCplx b);

VekCplx VEKAPI vekcDiv(VekCplx a, VekCplx b);
VekDCplx VEKAPI vekzDiv(VekDCplx a, VekDCplx b);

VekCplx VEKAPI vekcConj(VekCplx a);
VekDCplx VEKAPI vekzConj(VekDCplx a);

VekCplx VEKAPI vekcSet(float re, float im);
VekDCplx VEKAPI vekzSet(double re, double im);

#ifdef __cplusplus
}
#endif

#endif
