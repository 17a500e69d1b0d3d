// Twiddle tables.
#ifndef VEKM6_TWD_H
#define VEKM6_TWD_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

const VekCplx* VEKAPI vekcGetDftTwdTbl(int length);
const VekDCplx* VEKAPI vekzGetDftTwdTbl(int length);
const VekWCplx* VEKAPI vekvGetDftTwdTbl(int length);

const VekCplx* VEKAPI vekcGetFftTwdTbl(int order);
const VekDCplx* VEKAPI vekzGetFftTwdTbl(int order);
const VekWCplx* VEKAPI vekvGetFftTwdTbl(int order);

void VEKAPI vekcCalcDftTwdTbl(VekCplx* tbl, int length);
void VEKAPI vekzCalcDftTwdTbl(VekDCplx* tbl, int length);
void VEKAPI vekvCalcDftTwdTbl(VekWCplx* tbl, int length);

void VEKAPI vekcCalcFftTwdTbl(VekCplx* tbl, int order);
void VEKAPI vekzCalcFftTwdTbl(VekDCplx* tbl, int order);
void VEKAPI vekvCalcFftTwdTbl(VekWCplx* tbl, int order);

void VEKAPI vekcFreeTwdTbls(void);
void VEKAPI vekzFreeTwdTbls(void);
void VEKAPI vekvFreeTwdTbls(void);

#ifdef __cplusplus
}
#endif

#endif
