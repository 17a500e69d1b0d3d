// Fast Fourier transforms of complex and of real signals, and products of packed spectra. Reports name the
// module vekffts for the float members and vekfftd for the double ones.
//
// Throughout, N = 2^order, 0 <= order <= 31, M = N / 2. Flags combine by or; exactly one direction
// must be given:
//   VEK_Forw      X[k] = sum over n of x[n] exp(-2 pi i n k / N)
//   VEK_Inv       the opposite sign of the exponent, the result times 1/N
//   VEK_NoScale   with VEK_Inv: without the factor 1/N
//   VEK_Init      builds the calling thread's tables for transforms with the same order and flags, and
//                 returns; the data are not looked at. Optional: the first transform builds them too.
//   VEK_Free      releases the calling thread's tables of the order and returns. Comes before every check,
//                 reports nothing, and works under a negative status too; an order outside 0 ... 31 releases
//                 nothing.
// Flags that a member does not use are ignored.
//
// Once its tables stand, a transform allocates nothing until tables are released again: by VEK_Free, by the
// type's FreeTwdTbls, or at the thread's end. When memory runs out while tables are built, the thread's
// tables of that precision are released for all orders, and the build is tried once more.
//
// Accuracy: relative L2 error at most 0.35 eps sqrt(order) + 0.1 eps, eps = 2^-23 for float and 2^-52 for
// double.
//
// Source: autosorting transform (Stockham; W. T. Cochran et al., "What is the fast Fourier transform?", 1967)
// of mixed radix 4, 8 and 16. Large orders by the four-step method (W. M. Gentleman, G. Sande, "Fast Fourier
// transforms: for fun and profit", 1966; D. H. Bailey, "FFTs in external or hierarchical memory", 1990).
// Twiddles are computed in double precision with arguments reduced to an eighth of the circle.
#ifndef VEKM6_FFT_H
#define VEKM6_FFT_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Complex transforms. Fft works in place on pairs, rFft in place on separate real and imaginary parts; the
// Nip forms leave their input as it is and write to separate output.
//   Formula:   as VEK_Forw and VEK_Inv say. Order 0 leaves (Nip: copies) the one element.
//              VEK_InBitRev: the input stands in bit-reversed order. VEK_OutBitRev: leaves the output in
//              bit-reversed order. VEK_NoBitRev: accepted, changes nothing. The transform sorts itself, so natural
//              order is the fastest: the others add the permutation that BitRev1 and BitRev2 do.
//   Arguments: N elements in each array; order; flags: direction, VEK_NoScale, one of the three orders of
//              data, VEK_Init, VEK_Free.
//   Scaling:   1/N with VEK_Inv, none with VEK_NoScale or VEK_Forw.
//   Aliasing:  inputs and outputs must not overlap, nor real and imaginary parts.
//   Errors:    VEK_StsBadArg: "order<0", "order>31".
//              VEK_StsNoMemory: "No working Twd memory". Here VEK_Init returns.
//              VEK_StsBadArg: "samps==0", or "inSamps==0", "outSamps==0", or "reSamps==0", "imSamps==0", or
//              "reInSamps==0", "imInSamps==0", "reOutSamps==0", "imOutSamps==0"; then
//              "(flags & 1) && (flags & 2)", "(flags & 1)==0 && (flags & 2)==0",
//              "(flags & 64) && (flags & 128)", "(flags & 64) && (flags & 32)",
//              "(flags & 32) && (flags & 128)".
//              A failed call leaves the data as they were.
void VEKAPI vekcFft(VekCplx* samps, int order, int flags);
void VEKAPI vekcFftNip(const VekCplx* inSamps, VekCplx* outSamps, int order, int flags);
void VEKAPI vekcrFft(float* reSamps, float* imSamps, int order, int flags);
void VEKAPI vekcrFftNip(const float* reInSamps, const float* imInSamps, float* reOutSamps, float* imOutSamps, int order,
                        int flags);

// The same for double.
void VEKAPI vekzFft(VekDCplx* samps, int order, int flags);
void VEKAPI vekzFftNip(const VekDCplx* inSamps, VekDCplx* outSamps, int order, int flags);
void VEKAPI vekzrFft(double* reSamps, double* imSamps, int order, int flags);
void VEKAPI vekzrFftNip(const double* reInSamps, const double* imInSamps, double* reOutSamps, double* imOutSamps,
                        int order, int flags);

// Real transforms. X[k], 0 <= k <= M, is the half spectrum of N real samples; R[k] and I[k] are its real and
// imaginary parts. I[0] and I[M] are 0 and not kept, except in CCS. Layouts, as reals from position 0:
//   CCS     N + 2   R[0], 0, R[1], I[1], ... R[M-1], I[M-1], R[M], 0
//   RCPack  N       R[0], R[1], I[1], ... R[M-1], I[M-1], R[M]
//   RCPerm  N       R[0], R[M], R[1], I[1], ... R[M-1], I[M-1]
// For N = 2 the packed layouts are the same: R[0], R[1]. For N = 1 CCS holds R[0], 0, the packed layouts
// R[0].
//
// From the signal to its spectrum (RealFft) and back (CcsFft), in place or, as Nip, to separate output.
//   Formula:   RealFft, RealFftNip    signal of N samples to CCS
//              RealFftl, RealFftlNip  signal of N samples to RCPack or RCPerm
//              CcsFft, CcsFftNip      CCS to the signal of N samples; positions 1 and N + 1 are not read
//              CcsFftl, CcsFftlNip    RCPack or RCPerm to the signal of N samples
//              Real2Fft, Real2FftNip  RealFft, RealFftNip on two signals, one after the other
//              Ccs2Fft, Ccs2FftNip    CcsFft, CcsFftNip on two spectra, one after the other
//              VEK_Forw with RealFft and VEK_Inv with CcsFft undo each other. The other direction takes the
//              other sign of the exponent: a real signal's spectrum comes out conjugated, a spectrum is read
//              as its conjugate.
//   Arguments: arrays of N elements for signals and packed spectra, of N + 2 for CCS; in place, for the
//              larger of the two; order; flags: direction, VEK_NoScale, VEK_Init, VEK_Free, and exactly one
//              of VEK_OutRCPack and VEK_OutRCPerm in RealFftl, of VEK_InRCPack and VEK_InRCPerm in CcsFftl.
//   Scaling:   1/N with VEK_Inv, none with VEK_NoScale or VEK_Forw.
//   Aliasing:  inputs and outputs must not overlap, nor the two signals' arrays.
//   Errors:    VEK_StsBadArg: "order<0", "order>31".
//              VEK_StsNoMemory: "No working Twd memory". Here VEK_Init returns.
//              VEK_StsBadArg: "samps==0", or "inSamps==0", "outSamps==0"; then
//              "(flags & 1) && (flags & 2)", "(flags & 1)==0 && (flags & 2)==0"; then
//              in RealFftl "(flags & 256) && (flags & 512)", "(flags & 256)==0 && (flags & 512)==0",
//              in CcsFftl "(flags & 1024) && (flags & 4096)", "(flags & 1024)==0 && (flags & 4096)==0".
//              A failed call leaves the data as they were.
//              The members for two signals: the member for one reports under its name; then, when the
//              thread's status is negative, VEK_StsBacktrace under their own, "out veksRealFft",
//              "out veksRealFftNip", "out veksCcsFft" or "out veksCcsFftNip", for double "out vekdRealFft"
//              and so on. With VEK_Init or VEK_Free they make the call for the first signal only.
//   Returns:   the members for two signals: the thread's status when it is not negative, else what the report
//              handler returned for the backtrace, also when the status was negative before the call.
//   Source:    the transform of the M pairs (x[2n], x[2n+1]) as complex samples, split by the symmetry of
//              real signals (J. W. Cooley, P. A. W. Lewis, P. D. Welch, "The fast Fourier transform
//              algorithm", 1970).

// float
void VEKAPI veksRealFft(float* samps, int order, int flags);
void VEKAPI veksRealFftNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI veksRealFftl(float* samps, int order, int flags);
void VEKAPI veksRealFftlNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI veksCcsFft(float* samps, int order, int flags);
void VEKAPI veksCcsFftNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI veksCcsFftl(float* samps, int order, int flags);
void VEKAPI veksCcsFftlNip(const float* inSamps, float* outSamps, int order, int flags);
VekStatus VEKAPI veksReal2Fft(float* samps1, float* samps2, int order, int flags);
VekStatus VEKAPI veksReal2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags);
VekStatus VEKAPI veksCcs2Fft(float* samps1, float* samps2, int order, int flags);
VekStatus VEKAPI veksCcs2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags);

// double
void VEKAPI vekdRealFft(double* samps, int order, int flags);
void VEKAPI vekdRealFftNip(const double* inSamps, double* outSamps, int order, int flags);
void VEKAPI vekdRealFftl(double* samps, int order, int flags);
void VEKAPI vekdRealFftlNip(const double* inSamps, double* outSamps, int order, int flags);
void VEKAPI vekdCcsFft(double* samps, int order, int flags);
void VEKAPI vekdCcsFftNip(const double* inSamps, double* outSamps, int order, int flags);
void VEKAPI vekdCcsFftl(double* samps, int order, int flags);
void VEKAPI vekdCcsFftlNip(const double* inSamps, double* outSamps, int order, int flags);
VekStatus VEKAPI vekdReal2Fft(double* samps1, double* samps2, int order, int flags);
VekStatus VEKAPI vekdReal2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order,
                                 int flags);
VekStatus VEKAPI vekdCcs2Fft(double* samps1, double* samps2, int order, int flags);
VekStatus VEKAPI vekdCcs2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order, int flags);

// Products of packed spectra, bin by bin: the spectrum of the circular convolution of two signals.
//   Formula:   2  dst = dst * src
//              3  dst = srcA * srcB
//              R[0] and, for N >= 2, R[M] as reals, the bins between as complex numbers.
//   Arguments: N elements in each array, all in RCPack or all in RCPerm; order.
//   Scaling:   none. Complex products as in vekcbMpy3, for double as in vekzbMpy3.
//   Aliasing:  dst may be one of the sources; arrays must not overlap otherwise.
//   Errors:    VEK_StsBadArg: "order<0", "order>31"; then "src==0", "dst==0", or "srcA==0", "srcB==0",
//              "dst==0".
void VEKAPI veksMpyRCPack2(const float* src, float* dst, int order);
void VEKAPI veksMpyRCPack3(const float* srcA, const float* srcB, float* dst, int order);
void VEKAPI veksMpyRCPerm2(const float* src, float* dst, int order);
void VEKAPI veksMpyRCPerm3(const float* srcA, const float* srcB, float* dst, int order);

// The same for double.
void VEKAPI vekdMpyRCPack2(const double* src, double* dst, int order);
void VEKAPI vekdMpyRCPack3(const double* srcA, const double* srcB, double* dst, int order);
void VEKAPI vekdMpyRCPerm2(const double* src, double* dst, int order);
void VEKAPI vekdMpyRCPerm3(const double* srcA, const double* srcB, double* dst, int order);

VEK_DECLARATIONS_END

#endif
