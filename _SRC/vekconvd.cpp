// Convolution of double vectors and their complex form.
#include "vekconv.h"

#include "vekm6/conv.h"

using vek::conv::convolve;

extern "C" {

VekStatus VEKAPI vekdConv(const double* x, int xLen, const double* h, int hLen, double* y) {
    return convolve("vekdConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekzConv(const VekDCplx* x, int xLen, const VekDCplx* h, int hLen, VekDCplx* y) {
    return convolve("vekzConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekzdConv(const VekDCplx* x, int xLen, const double* h, int hLen, VekDCplx* y) {
    return convolve("vekzdConv", x, xLen, h, hLen, y);
}
VekStatus VEKAPI vekdzConv(const double* x, int xLen, const VekDCplx* h, int hLen, VekDCplx* y) {
    return convolve("vekdzConv", x, xLen, h, hLen, y);
}

}   // extern "C"
