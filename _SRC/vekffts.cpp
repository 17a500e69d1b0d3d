// float32 transforms: complex, real, and products of packed spectra.
#include "vekfft.h"

#include "vekm6/fft.h"

namespace fft = vek::fft;
using fft::Layout;

namespace {

constexpr vek::core::Call call(const char* name) { return {"vekffts", name}; }

}   // namespace

extern "C" {

void VEKAPI vekcFft(VekCplx* samps, int order, int flags) { fft::interleaved(call("vekcFft"), samps, order, flags); }
void VEKAPI vekcFftNip(const VekCplx* inSamps, VekCplx* outSamps, int order, int flags) {
    fft::interleavedNip(call("vekcFftNip"), inSamps, outSamps, order, flags);
}
void VEKAPI vekcrFft(float* reSamps, float* imSamps, int order, int flags) {
    fft::split(call("vekcrFft"), reSamps, imSamps, order, flags);
}
void VEKAPI vekcrFftNip(const float* reInSamps, const float* imInSamps, float* reOutSamps, float* imOutSamps, int order,
                        int flags) {
    fft::splitNip(call("vekcrFftNip"), reInSamps, imInSamps, reOutSamps, imOutSamps, order, flags);
}

void VEKAPI veksRealFft(float* samps, int order, int flags) { fft::realFft(call("veksRealFft"), samps, order, flags); }
void VEKAPI veksRealFftNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::realFftNip(call("veksRealFftNip"), inSamps, outSamps, order, flags);
}
void VEKAPI veksRealFftl(float* samps, int order, int flags) { fft::realFftl(call("veksRealFftl"), samps, order, flags); }
void VEKAPI veksRealFftlNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::realFftlNip(call("veksRealFftlNip"), inSamps, outSamps, order, flags);
}
void VEKAPI veksCcsFft(float* samps, int order, int flags) { fft::ccsFft(call("veksCcsFft"), samps, order, flags); }
void VEKAPI veksCcsFftNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::ccsFftNip(call("veksCcsFftNip"), inSamps, outSamps, order, flags);
}
void VEKAPI veksCcsFftl(float* samps, int order, int flags) { fft::ccsFftl(call("veksCcsFftl"), samps, order, flags); }
void VEKAPI veksCcsFftlNip(const float* inSamps, float* outSamps, int order, int flags) {
    fft::ccsFftlNip(call("veksCcsFftlNip"), inSamps, outSamps, order, flags);
}

VekStatus VEKAPI veksReal2Fft(float* samps1, float* samps2, int order, int flags) {
    return fft::twice(
        call("veksReal2Fft"), "out veksRealFft", flags, [=] { veksRealFft(samps1, order, flags); },
        [=] { veksRealFft(samps2, order, flags); });
}
VekStatus VEKAPI veksReal2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags) {
    return fft::twice(
        call("veksReal2FftNip"), "out veksRealFftNip", flags, [=] { veksRealFftNip(in1, out1, order, flags); },
        [=] { veksRealFftNip(in2, out2, order, flags); });
}
VekStatus VEKAPI veksCcs2Fft(float* samps1, float* samps2, int order, int flags) {
    return fft::twice(
        call("veksCcs2Fft"), "out veksCcsFft", flags, [=] { veksCcsFft(samps1, order, flags); },
        [=] { veksCcsFft(samps2, order, flags); });
}
VekStatus VEKAPI veksCcs2FftNip(const float* in1, const float* in2, float* out1, float* out2, int order, int flags) {
    return fft::twice(
        call("veksCcs2FftNip"), "out veksCcsFftNip", flags, [=] { veksCcsFftNip(in1, out1, order, flags); },
        [=] { veksCcsFftNip(in2, out2, order, flags); });
}

void VEKAPI veksMpyRCPack2(const float* src, float* dst, int order) {
    fft::mpy2(call("veksMpyRCPack2"), src, dst, order, Layout::rcPack);
}
void VEKAPI veksMpyRCPack3(const float* srcA, const float* srcB, float* dst, int order) {
    fft::mpy3(call("veksMpyRCPack3"), srcA, srcB, dst, order, Layout::rcPack);
}
void VEKAPI veksMpyRCPerm2(const float* src, float* dst, int order) {
    fft::mpy2(call("veksMpyRCPerm2"), src, dst, order, Layout::rcPerm);
}
void VEKAPI veksMpyRCPerm3(const float* srcA, const float* srcB, float* dst, int order) {
    fft::mpy3(call("veksMpyRCPerm3"), srcA, srcB, dst, order, Layout::rcPerm);
}

}   // extern "C"
