// float32 transforms: complex, real, and products of packed spectra.
#include "vekfft.h"

#include "vekm6/fft.h"

namespace fft = vek::fft;
using fft::Layout;

extern "C" {

void VEKAPI vekcFft(VekCplx* samps, int order, int flags) { fft::interleaved("vekcFft", samps, order, flags); }
void VEKAPI vekcFftNip(const VekCplx* inSamps, VekCplx* outSamps, int order, int flags) {
    fft::interleavedNip("vekcFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI vekcrFft(float* reSamps, float* imSamps, int order, int flags) {
    fft::split("vekcrFft", reSamps, imSamps, order, flags);
}
void VEKAPI vekcrFftNip(const float* reInSamps, const float* imInSamps, float* reOutSamps, float* imOutSamps, int order,
                        int flags) {
    fft::splitNip("vekcrFftNip", reInSamps, imInSamps, reOutSamps, imOutSamps, order, flags);
}

void VEKAPI veksRealFft(float* samps, int order, int flags) { fft::realFft("veksRealFft", samps, order, flags); }
void VEKAPI veksRealFftNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::realFftNip("veksRealFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI veksRealFftl(float* samps, int order, int flags) { fft::realFftl("veksRealFftl", samps, order, flags); }
void VEKAPI veksRealFftlNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::realFftlNip("veksRealFftlNip", inSamps, outSamps, order, flags);
}
void VEKAPI veksCcsFft(float* samps, int order, int flags) { fft::ccsFft("veksCcsFft", samps, order, flags); }
void VEKAPI veksCcsFftNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::ccsFftNip("veksCcsFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI veksCcsFftl(float* samps, int order, int flags) { fft::ccsFftl("veksCcsFftl", samps, order, flags); }
void VEKAPI veksCcsFftlNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::ccsFftlNip("veksCcsFftlNip", inSamps, outSamps, order, flags);
}

VekStatus VEKAPI veksReal2Fft(float* samps1, float* samps2, int order, int flags) {
    return fft::twice<float>(
        "veksReal2Fft", "out veksRealFft", flags, [=] { veksRealFft(samps1, order, flags); },
        [=] { veksRealFft(samps2, order, flags); });
}
VekStatus VEKAPI veksReal2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags) {
    return fft::twice<float>(
        "veksReal2FftNip", "out veksRealFftNip", flags, [=] { veksRealFftNip(in1, out1, order, flags); },
        [=] { veksRealFftNip(in2, out2, order, flags); });
}
VekStatus VEKAPI veksCcs2Fft(float* samps1, float* samps2, int order, int flags) {
    return fft::twice<float>(
        "veksCcs2Fft", "out veksCcsFft", flags, [=] { veksCcsFft(samps1, order, flags); },
        [=] { veksCcsFft(samps2, order, flags); });
}
VekStatus VEKAPI veksCcs2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags) {
    return fft::twice<float>(
        "veksCcs2FftNip", "out veksCcsFftNip", flags, [=] { veksCcsFftNip(in1, out1, order, flags); },
        [=] { veksCcsFftNip(in2, out2, order, flags); });
}

void VEKAPI veksMpyRCPack2(const float* src, float* dst, int order) {
    fft::mpy2("veksMpyRCPack2", src, dst, order, Layout::rcPack);
}
void VEKAPI veksMpyRCPack3(const float* srcA, const float* srcB, float* dst, int order) {
    fft::mpy3("veksMpyRCPack3", srcA, srcB, dst, order, Layout::rcPack);
}
void VEKAPI veksMpyRCPerm2(const float* src, float* dst, int order) {
    fft::mpy2("veksMpyRCPerm2", src, dst, order, Layout::rcPerm);
}
void VEKAPI veksMpyRCPerm3(const float* srcA, const float* srcB, float* dst, int order) {
    fft::mpy3("veksMpyRCPerm3", srcA, srcB, dst, order, Layout::rcPerm);
}

}   // extern "C"
