// Bit reversal: one value, index tables, permutations of vectors.
#ifndef VEKM6_MISC_H
#define VEKM6_MISC_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

int32_t VEKAPI vekBitRev(int32_t value, int order);

void VEKAPI vekCalcBitRevTbl(int32_t* tbl, int order);

const int32_t* VEKAPI vekGetBitRevTbl(int order);

void VEKAPI vekFreeBitRevTbls(void);

void VEKAPI veksbBitRev1(float* vec, int order);
void VEKAPI vekdbBitRev1(double* vec, int order);
void VEKAPI vekcbBitRev1(VekCplx* vec, int order);
void VEKAPI vekzbBitRev1(VekDCplx* vec, int order);
void VEKAPI vekwbBitRev1(int16_t* vec, int order);
void VEKAPI vekvbBitRev1(VekWCplx* vec, int order);

void VEKAPI veksbBitRev2(const float* src, float* dst, int order);
void VEKAPI vekdbBitRev2(const double* src, double* dst, int order);
void VEKAPI vekcbBitRev2(const VekCplx* src, VekCplx* dst, int order);
void VEKAPI vekzbBitRev2(const VekDCplx* src, VekDCplx* dst, int order);
void VEKAPI vekwbBitRev2(const int16_t* src, int16_t* dst, int order);
void VEKAPI vekvbBitRev2(const VekWCplx* src, VekWCplx* dst, int order);

#ifdef __cplusplus
}
#endif

#endif
