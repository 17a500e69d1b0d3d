// Arithmetic of int16 vectors. Every loop loads a step's sources before it stores its results, so dst may equal a
// source.
#include "aritw.h"

#include "integers.h"

namespace vek::VEK_LEVEL {
namespace {

void set(int16_t value, int16_t* dst, size_t n) {
    mapReals<Bound::byStores>(dst, n, [=](auto w, size_t) { return splat<w>(value); });
}

void copy(const int16_t* src, int16_t* dst, size_t n) {
    mapReals(dst, n, [=](auto w, size_t i) { return load<w>(src + i); });
}

}   // namespace

extern const kernels::AritwTable aritw;
const kernels::AritwTable aritw = {set, copy};

}   // namespace vek::VEK_LEVEL
