// The discrete Fourier transform of any length, by its definition. Reports name the module vekdft.
//
// The time grows with the square of the length; where it is a power of two, vekm6/fft.h is faster. Flags combine by or:
//   VEK_Forw          X[k] = sum over n of x[n] exp(-2 pi i n k / length)
//   VEK_Inv           the opposite sign of the exponent, the result times 1/length
//   VEK_NoScale       with VEK_Inv: without the factor 1/length
//   VEK_Init          builds the calling thread's table of the length and the scratch area, and returns; the data are
//                     not looked at. Optional: the first transform builds them too.
//   VEK_Free          releases memory and returns, see below
//   VEK_DoIntCore     vekvDft: in integers
//   VEK_DoFloatCore   vekvDft: in float
// Exactly one direction must be given. Flags that a member does not use are ignored.
//
// Tables are those of vekm6/twd.h: a thread keeps 32 lengths of each type, until the type's FreeTwdTbls or the
// thread's end.
#ifndef VEKM6_DFT_H
#define VEKM6_DFT_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Transforms of float and double.
//   Formula:   as VEK_Forw and VEK_Inv say. Length 1 copies the element.
//   Arguments: src, dst: length elements; length >= 1; flags: direction, VEK_NoScale, VEK_Init, VEK_Free. VEK_Free
//              makes table and scratch area, if they are missing, and releases the scratch area; the table stays.
//   Scaling:   1/length with VEK_Inv, none with VEK_NoScale or VEK_Forw.
//   Aliasing:  dst may be src, or overlap it.
//   Errors:    VEK_StsBadArg: "length<=0"; "TwdTbl==0", the table could not be obtained, where the thread keeps 32
//              other lengths after VEK_StsNoMemory "Full Table" from vekcGetDftTwdTbl or vekzGetDftTwdTbl in vektwd;
//              "buff==0", no memory for the scratch area. Here VEK_Init and VEK_Free return. "src==0"; "dst==0";
//              "VEK_Forw or VEK_Inv must be as a flag", both or none is. A failed call leaves dst as it was.
//   Accuracy:  relative L2 error at most 4 eps sqrt(log2(length)) up to length 4096, eps = 2^-23 for float and 2^-52
//              for double.
//   Source:    the definition over half sums, x[n] + x[length-n] and x[n] - x[length-n], from which bins k and
//              length - k come together, as do elements at both sides of a block's centre.
void VEKAPI vekcDft(const VekCplx* src, VekCplx* dst, int length, int flags);
void VEKAPI vekzDft(const VekDCplx* src, VekDCplx* dst, int length, int flags);

// The same for complex int16.
//   Formula:   as above, in integers with VEK_DoIntCore, and below length 129 unless VEK_DoFloatCore is given; else
//              in float. In integers: the sum with roots of vekvGetDftTwdTbl in Q14, exact up to eight million
//              elements, the same bits on all processors. In float: vekcDft. Both to the nearest integer, ties to
//              even, with 1/length where that is asked for; then scaled. Length 1 copies the element, unscaled.
//   Arguments: as above; VEK_Free, which looks at no other argument, releases all that vekcFreeTwdTbls and
//              vekvFreeTwdTbls do. scaleMode: its bits VEK_AUTO_SCALE, VEK_FIXED_SCALE and VEK_SATURATE; scaleFactor:
//              may be null without VEK_AUTO_SCALE.
//   Scaling:   by mode and factor, one factor for all results. With VEK_AUTO_SCALE the factor is chosen and returned: 0
//              where all results fit, else the place of the largest magnitude's highest bit minus 14. With
//              VEK_FIXED_SCALE the factor, -15 ... 31, is given, null being 0. Results are shifted right by the factor,
//              or left by its magnitude; with VEK_SATURATE clamped to int16, else wrapped.
//   Aliasing:  dst may be src, or overlap it.
//   Errors:    VEK_StsBadArg: "length<=0"; "TwidleTbl==0", of the roots in Q14 with VEK_DoIntCore or below length
//              129, else of those in float; in integers "buff==0". In float, when memory for the scratch area runs
//              out, all is released as by VEK_Free and asked for again; VEK_StsNoMemory: "No working memory". Here
//              VEK_Init returns. VEK_StsBadArg: "src==0"; "dst==0"; "VEK_Forw or VEK_Inv must be as a flag";
//              "VEK_FIXED_SCALE and VEK_AUTO_SCALE"; "VEK_AUTO_SCALE and ScaleFactor==NULL". After a report of vekcDft
//              VEK_StsBacktrace: "vekvDft float core error". A failed call leaves dst and the factor as they were.
void VEKAPI vekvDft(const VekWCplx* src, VekWCplx* dst, int length, int flags, int scaleMode, int* scaleFactor);

VEK_DECLARATIONS_END

#endif
