// Auto- and cross-correlation. Reports name the module vekcorr, those of int16 vekcorrw.
//
// Of complex data the first operand is conjugated, so that lag 0 of an autocorrelation is the energy. Long correlations
// of floating-point data go over transforms, which takes less time; where memory for them is short, they are summed
// directly, without a report. Either way the error of a lag is at most (8 + 2 log2(n)) eps times the product of the
// vectors' norms for ordinary data of n samples up to 2^20, eps being 2^-23 and 2^-52. An element that is infinite or a
// NaN may make any result a NaN. Transforms keep their tables for the thread, as those of vekm6/fft.h do.
#ifndef VEKM6_CORR_H
#define VEKM6_CORR_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Autocorrelation.
//   Formula:   dst[k] = the sum of conj(src[n]) src[n+k] over n = 0 ... len-1-k, for the lags k = 0 ... nLags-1
//   Arguments: len elements in src, len >= 1; nLags in dst, 1 <= nLags <= len; type 0, 1 or 2.
//   Scaling:   by type: 0 none; 1 times 1/len, the biased estimate; 2 divided by len-k, the unbiased one. The sums of
//              int16 are exact; what they are scaled to is rounded to the nearest integer, the even one of two, and is
//              then at most 32767 and at least -32768.
//   Aliasing:  dst must not overlap src.
//   Errors:    VEK_StsBadArg: "Null SRC buffer pointer"; "Null DST buffer pointer"; "Invalid SRC buffer length";
//              "Invalid LAG value" if nLags < 1 or nLags > len; "Invalid auto-corr type".
void VEKAPI veksAutoCorr(const float* src, int len, float* dst, int nLags, int type);
void VEKAPI vekcAutoCorr(const VekCplx* src, int len, VekCplx* dst, int nLags, int type);
void VEKAPI vekdAutoCorr(const double* src, int len, double* dst, int nLags, int type);
void VEKAPI vekzAutoCorr(const VekDCplx* src, int len, VekDCplx* dst, int nLags, int type);
void VEKAPI vekwAutoCorr(const int16_t* src, int len, int16_t* dst, int nLags, int type);
void VEKAPI vekvAutoCorr(const VekWCplx* src, int len, VekWCplx* dst, int nLags, int type);

// Cross-correlation.
//   Formula:   dst[j] = r(loLag + j), 0 <= j <= hiLag - loLag, where r(lag) is the sum of conj(srcA[n]) srcB[n+lag]
//   over
//              all n with 0 <= n < lenA and 0 <= n+lag < lenB; 0 where there are none. So srcB may be srcA delayed by
//              the lag with the largest result.
//   Arguments: lenA and lenB elements in srcA and srcB, each >= 1; hiLag - loLag + 1 in dst, loLag <= hiLag. The
//   letters
//              are those of srcA and srcB; one letter stands for both.
//   Scaling:   none; the sums of int16 are exact, then at most 32767 and at least -32768.
//   Aliasing:  dst must overlap neither source; these may be the same.
//   Errors:    VEK_StsBadArg: "Null SRC buffer pointer" for srcA or srcB; "Null DST buffer pointer";
//              "Invalid SRC buffer length" for lenA or lenB; "Invalid LAG value" if loLag > hiLag.
void VEKAPI veksCrossCorr(const float* srcA, int lenA, const float* srcB, int lenB, float* dst, int loLag, int hiLag);
void VEKAPI vekcCrossCorr(const VekCplx* srcA, int lenA, const VekCplx* srcB, int lenB, VekCplx* dst, int loLag,
                          int hiLag);
void VEKAPI vekdCrossCorr(const double* srcA, int lenA, const double* srcB, int lenB, double* dst, int loLag,
                          int hiLag);
void VEKAPI vekzCrossCorr(const VekDCplx* srcA, int lenA, const VekDCplx* srcB, int lenB, VekDCplx* dst, int loLag,
                          int hiLag);
void VEKAPI vekscCrossCorr(const float* srcA, int lenA, const VekCplx* srcB, int lenB, VekCplx* dst, int loLag,
                           int hiLag);
void VEKAPI vekcsCrossCorr(const VekCplx* srcA, int lenA, const float* srcB, int lenB, VekCplx* dst, int loLag,
                           int hiLag);
void VEKAPI vekdzCrossCorr(const double* srcA, int lenA, const VekDCplx* srcB, int lenB, VekDCplx* dst, int loLag,
                           int hiLag);
void VEKAPI vekzdCrossCorr(const VekDCplx* srcA, int lenA, const double* srcB, int lenB, VekDCplx* dst, int loLag,
                           int hiLag);
void VEKAPI vekwCrossCorr(const int16_t* srcA, int lenA, const int16_t* srcB, int lenB, int16_t* dst, int loLag,
                          int hiLag);
void VEKAPI vekvCrossCorr(const VekWCplx* srcA, int lenA, const VekWCplx* srcB, int lenB, VekWCplx* dst, int loLag,
                          int hiLag);
void VEKAPI vekwvCrossCorr(const int16_t* srcA, int lenA, const VekWCplx* srcB, int lenB, VekWCplx* dst, int loLag,
                           int hiLag);
void VEKAPI vekvwCrossCorr(const VekWCplx* srcA, int lenA, const int16_t* srcB, int lenB, VekWCplx* dst, int loLag,
                           int hiLag);

VEK_DECLARATIONS_END

#endif
