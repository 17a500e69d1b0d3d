// Complex and real fast Fourier transforms, products of packed spectra.
#ifndef VEKM6_FFT_H
#define VEKM6_FFT_H

#include "vekm6/types.h"

#ifdef __cplusplus
extern "C" {
#endif

void VEKAPI vekcFft(VekCplx* samps, int order, int flags);
void VEKAPI vekzFft(VekDCplx* samps, int order, int flags);

void VEKAPI vekcFftNip(const VekCplx* inSamps, VekCplx* outSamps, int order, int flags);
void VEKAPI vekzFftNip(const VekDCplx* inSamps, VekDCplx* outSamps, int order, int flags);

void VEKAPI vekcrFft(float* reSamps, float* imSamps, int order, int flags);
void VEKAPI vekzrFft(double* reSamps, double* imSamps, int order, int flags);

void VEKAPI vekcrFftNip(const float* reInSamps, const float* imInSamps, float* reOutSamps, float* imOutSamps, int order,
                          int flags);
void VEKAPI vekzrFftNip(const double* reInSamps, const double* imInSamps, double* reOutSamps, double* imOutSamps, int order,
                          int flags);

void VEKAPI veksRealFft(float* samps, int order, int flags);
void VEKAPI vekdRealFft(double* samps, int order, int flags);

void VEKAPI veksRealFftNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI vekdRealFftNip(const double* inSamps, double* outSamps, int order, int flags);

void VEKAPI veksRealFftl(float* samps, int order, int flags);
void VEKAPI vekdRealFftl(double* samps, int order, int flags);

void VEKAPI veksRealFftlNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI vekdRealFftlNip(const double* inSamps, double* outSamps, int order, int flags);

void VEKAPI veksCcsFft(float* samps, int order, int flags);
void VEKAPI vekdCcsFft(double* samps, int order, int flags);

void VEKAPI veksCcsFftNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI vekdCcsFftNip(const double* inSamps, double* outSamps, int order, int flags);

void VEKAPI veksCcsFftl(float* samps, int order, int flags);
void VEKAPI vekdCcsFftl(double* samps, int order, int flags);

void VEKAPI veksCcsFftlNip(const float* inSamps, float* outSamps, int order, int flags);
void VEKAPI vekdCcsFftlNip(const double* inSamps, double* outSamps, int order, int flags);

VekStatus VEKAPI veksReal2Fft(float* samps1, float* samps2, int order, int flags);
VekStatus VEKAPI vekdReal2Fft(double* samps1, double* samps2, int order, int flags);

VekStatus VEKAPI veksReal2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags);
VekStatus VEKAPI vekdReal2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order, int flags);

VekStatus VEKAPI veksCcs2Fft(float* samps1, float* samps2, int order, int flags);
VekStatus VEKAPI vekdCcs2Fft(double* samps1, double* samps2, int order, int flags);

VekStatus VEKAPI veksCcs2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags);
VekStatus VEKAPI vekdCcs2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order, int flags);

void VEKAPI veksMpyRCPack2(const float* src, float* dst, int order);
void VEKAPI vekdMpyRCPack2(const double* src, double* dst, int order);

void VEKAPI veksMpyRCPack3(const float* srcA, const float* srcB, float* dst, int order);
void VEKAPI vekdMpyRCPack3(const double* srcA, const double* srcB, double* dst, int order);

void VEKAPI veksMpyRCPerm2(const float* src, float* dst, int order);
void VEKAPI vekdMpyRCPerm2(const double* src, double* dst, int order);

void VEKAPI veksMpyRCPerm3(const float* srcA, const float* srcB, float* dst, int order);
void VEKAPI vekdMpyRCPerm3(const double* srcA, const double* srcB, double* dst, int order);

#ifdef __cplusplus
}
#endif

#endif
