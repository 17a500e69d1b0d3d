// float64 transforms: complex, real, and products of packed spectra.
#include "vekfft.h"

#include "vekm6/fft.h"

namespace fft = vek::fft;
using fft::Layout;

extern "C" {

void VEKAPI vekzFft(VekDCplx* samps, int order, int flags) { fft::interleaved("vekzFft", samps, order, flags); }
void VEKAPI vekzFftNip(const VekDCplx* inSamps, VekDCplx* outSamps, int order, int flags) {
    fft::interleavedNip("vekzFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI vekzrFft(double* reSamps, double* imSamps, int order, int flags) {
    fft::split("vekzrFft", reSamps, imSamps, order, flags);
}
void VEKAPI vekzrFftNip(const double* reInSamps, const double* imInSamps, double* reOutSamps, double* imOutSamps,
                        int order, int flags) {
    fft::splitNip("vekzrFftNip", reInSamps, imInSamps, reOutSamps, imOutSamps, order, flags);
}

void VEKAPI vekdRealFft(double* samps, int order, int flags) { fft::realFft("vekdRealFft", samps, order, flags); }
void VEKAPI vekdRealFftNip(const double* inSamps, double* outSamps, int order, int flags) {
    fft::realFftNip("vekdRealFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI vekdRealFftl(double* samps, int order, int flags) { fft::realFftl("vekdRealFftl", samps, order, flags); }
void VEKAPI vekdRealFftlNip(const double* inSamps, double* outSamps, int order, int flags) {
    fft::realFftlNip("vekdRealFftlNip", inSamps, outSamps, order, flags);
}
void VEKAPI vekdCcsFft(double* samps, int order, int flags) { fft::ccsFft("vekdCcsFft", samps, order, flags); }
void VEKAPI vekdCcsFftNip(const double* inSamps, double* outSamps, int order, int flags) {
    fft::ccsFftNip("vekdCcsFftNip", inSamps, outSamps, order, flags);
}
void VEKAPI vekdCcsFftl(double* samps, int order, int flags) { fft::ccsFftl("vekdCcsFftl", samps, order, flags); }
void VEKAPI vekdCcsFftlNip(const double* inSamps, double* outSamps, int order, int flags) {
    fft::ccsFftlNip("vekdCcsFftlNip", inSamps, outSamps, order, flags);
}

VekStatus VEKAPI vekdReal2Fft(double* samps1, double* samps2, int order, int flags) {
    return fft::twice<double>(
        "vekdReal2Fft", "out vekdRealFft", flags, [=] { vekdRealFft(samps1, order, flags); },
        [=] { vekdRealFft(samps2, order, flags); });
}
VekStatus VEKAPI vekdReal2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order,
                                 int flags) {
    return fft::twice<double>(
        "vekdReal2FftNip", "out vekdRealFftNip", flags, [=] { vekdRealFftNip(in1, out1, order, flags); },
        [=] { vekdRealFftNip(in2, out2, order, flags); });
}
VekStatus VEKAPI vekdCcs2Fft(double* samps1, double* samps2, int order, int flags) {
    return fft::twice<double>(
        "vekdCcs2Fft", "out vekdCcsFft", flags, [=] { vekdCcsFft(samps1, order, flags); },
        [=] { vekdCcsFft(samps2, order, flags); });
}
VekStatus VEKAPI vekdCcs2FftNip(const double* in1, const double* in2, double* out1, double* out2, int order,
                                int flags) {
    return fft::twice<double>(
        "vekdCcs2FftNip", "out vekdCcsFftNip", flags, [=] { vekdCcsFftNip(in1, out1, order, flags); },
        [=] { vekdCcsFftNip(in2, out2, order, flags); });
}

void VEKAPI vekdMpyRCPack2(const double* src, double* dst, int order) {
    fft::mpy2("vekdMpyRCPack2", src, dst, order, Layout::rcPack);
}
void VEKAPI vekdMpyRCPack3(const double* srcA, const double* srcB, double* dst, int order) {
    fft::mpy3("vekdMpyRCPack3", srcA, srcB, dst, order, Layout::rcPack);
}
void VEKAPI vekdMpyRCPerm2(const double* src, double* dst, int order) {
    fft::mpy2("vekdMpyRCPerm2", src, dst, order, Layout::rcPerm);
}
void VEKAPI vekdMpyRCPerm3(const double* srcA, const double* srcB, double* dst, int order) {
    fft::mpy3("vekdMpyRCPerm3", srcA, srcB, dst, order, Layout::rcPerm);
}

}   // extern "C"
