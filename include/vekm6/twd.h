// Twiddle tables: the powers of a root of unity. Reports name the module vektwd.
#ifndef VEKM6_TWD_H
#define VEKM6_TWD_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Twiddle tables: Calc fills the caller's, Get hands out one that the calling thread keeps, built on first
// request.
//   Formula:   tbl[k] = exp(-2 pi i k / N) = (cos(2 pi k / N), -sin(2 pi k / N)), 0 <= k < N; N = length for
//              Dft, N = 2^order for Fft.
//   Arguments: tbl, N elements; length >= 1; 0 <= order <= 31.
//   Scaling:   c and z: computed in double precision with arguments reduced to an eighth of the circle, then
//              rounded to the element. v: times 16384 (Q14), truncated toward zero.
//   Errors:    Calc, VEK_StsBadArg: "tbl==0"; then "length<=0", or "order<0", "order>31".
//              Get, VEK_StsBadArg: "length<=0", or "order<0", "order>31". VEK_StsNoMemory: "Full Table" for a
//              33rd length of one type in one thread, while the first 32 can still be had; "NULL Pointer".
//   Returns:   Get: N elements that belong to the library and last until the type's Free below or the
//              thread's end; null after an error and under a negative status.
const VekCplx* VEKAPI vekcGetDftTwdTbl(int length);
const VekCplx* VEKAPI vekcGetFftTwdTbl(int order);
void VEKAPI vekcCalcDftTwdTbl(VekCplx* tbl, int length);
void VEKAPI vekcCalcFftTwdTbl(VekCplx* tbl, int order);

// The same for complex double.
const VekDCplx* VEKAPI vekzGetDftTwdTbl(int length);
const VekDCplx* VEKAPI vekzGetFftTwdTbl(int order);
void VEKAPI vekzCalcDftTwdTbl(VekDCplx* tbl, int length);
void VEKAPI vekzCalcFftTwdTbl(VekDCplx* tbl, int order);

// The same for complex int16.
const VekWCplx* VEKAPI vekvGetDftTwdTbl(int length);
const VekWCplx* VEKAPI vekvGetFftTwdTbl(int order);
void VEKAPI vekvCalcDftTwdTbl(VekWCplx* tbl, int length);
void VEKAPI vekvCalcFftTwdTbl(VekWCplx* tbl, int order);

// Releases the calling thread's tables of one type: what Get handed out, and what the transforms of that type
// work with, for all orders and lengths; c and v also the lists by which permutations swap. They are built
// again when needed.
//   Errors:    none. Works under a negative status too.
void VEKAPI vekcFreeTwdTbls(void);
void VEKAPI vekzFreeTwdTbls(void);
void VEKAPI vekvFreeTwdTbls(void);

VEK_DECLARATIONS_END

#endif
