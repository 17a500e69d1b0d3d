// Convolution of two finite sequences. Reports name the module vekconvs for the float members, vekconvd for the
// double ones and vekconvw for int16.
#ifndef VEKM6_CONV_H
#define VEKM6_CONV_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Full linear convolution.
//   Formula:   y[n] = sum over k of x[k] h[n-k], 0 <= n <= xLen+hLen-2, over all k with 0 <= k < xLen and
//              0 <= n-k < hLen
//   Arguments: x of xLen elements, h of hLen, both at least 1; y of xLen+hLen-1. The letters are those of x and h:
//              two where they differ. y is complex as soon as one of them is.
//   Scaling:   none.
//   Aliasing:  y must not overlap x or h, which may be one array.
//   Method:    chosen from the two lengths alone, by tables. S is the shorter length, in the mixed members (cs, sc, zd,
//              dz) always hLen. Where S is small, up to some tens and the other operand not too long, every product is
//              taken. Otherwise transforms: one of each operand, as long as the result (rounded up to a power of two),
//              or one operand in sections of two to eight times the other's length (overlap-save), whichever the
//              tables say costs less. Results differ by rounding only. Where transforms are used, rounding is relative
//              to the largest results, and an infinity or a NaN in an operand may make all results near it NaN.
//   Cost:      direct xLen hLen multiply-adds; by transforms about log2 S times a constant for each result.
//   Memory:    direct none; one transform two buffers of its size; in sections two buffers of a section, whatever the
//              length of x. They are released before the return; the transforms' tables stay with the thread (see
//              VEK_Free in vekm6/fft.h).
//   Errors:    VEK_StsBadArg: "x==0", "xLen<=0", "h==0", "hLen<=0", "y==0".
//              VEK_StsNoMemory: "NULL Pointer" in the name of the method's routine (veksConv1 or veksConvm), or what
//              the transform reports in its own; then VEK_StsBacktrace without a message in the names that are left:
//              the routine's and the operation's. y is left as it was.
//   Returns:   the status that the thread is left with: negative after an error, and where it was so before.
VekStatus VEKAPI veksConv(const float* x, int xLen, const float* h, int hLen, float* y);
VekStatus VEKAPI vekcConv(const VekCplx* x, int xLen, const VekCplx* h, int hLen, VekCplx* y);
VekStatus VEKAPI vekcsConv(const VekCplx* x, int xLen, const float* h, int hLen, VekCplx* y);
VekStatus VEKAPI vekscConv(const float* x, int xLen, const VekCplx* h, int hLen, VekCplx* y);

// The same for double.
VekStatus VEKAPI vekdConv(const double* x, int xLen, const double* h, int hLen, double* y);
VekStatus VEKAPI vekzConv(const VekDCplx* x, int xLen, const VekDCplx* h, int hLen, VekDCplx* y);
VekStatus VEKAPI vekzdConv(const VekDCplx* x, int xLen, const double* h, int hLen, VekDCplx* y);
VekStatus VEKAPI vekdzConv(const double* x, int xLen, const VekDCplx* h, int hLen, VekDCplx* y);

// The same for int16.
//   Scaling:   by scaleMode and scaleFactor, as in vekm6/aritw.h, of sums in 64 bits, so that none wraps before.
//   Method:    exact sums, except where S >= 256, S >= 128 and the longer operand has at least 512 elements, or S >= 64
//              and it has at least 8192. There the operands are convolved as floats by veksConv, and its results,
//              rounded to the nearest integer, the even one of two, are scaled: they may differ from the exact ones by
//              about a millionth of the largest.
//   Memory:    none for exact sums; otherwise, beside that of veksConv, float copies of x, h and y.
//   Errors:    VEK_StsBadArg: "x==0", "xLen<=0", "h==0", "hLen<=0", "y==0", with VEK_AUTO_SCALE "scalefactor==0".
//              VEK_StsNoMemory: "NULL pointer to float copy x", "NULL pointer to float copy h", "NULL pointer to
//              float copy y". When veksConv fails: VEK_StsBacktrace without a message. y and the factor are left as
//              they were.
void VEKAPI vekwConv(const int16_t* x, int xLen, const int16_t* h, int hLen, int16_t* y, int scaleMode,
                     int* scaleFactor);

VEK_DECLARATIONS_END

#endif
