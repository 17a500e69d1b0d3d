// Convolution of float vectors and their complex form.
#include "vekconv.h"

#include "vekm6/conv.h"

using vek::conv::convolve;

extern "C" {

VekStatus VEKAPI veksConv(const float* x, int xLen, const float* h, int hLen, float* y) {
    return convolve("veksConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekcConv(const VekCplx* x, int xLen, const VekCplx* h, int hLen, VekCplx* y) {
    return convolve("vekcConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekcsConv(const VekCplx* x, int xLen, const float* h, int hLen, VekCplx* y) {
    return convolve("vekcsConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekscConv(const float* x, int xLen, const VekCplx* h, int hLen, VekCplx* y) {
    return convolve("vekscConv", x, xLen, h, hLen, y);
}

}   // extern "C"
