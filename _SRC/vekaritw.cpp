// Initialisation and arithmetic of int16 vectors.
#include "vekm6/aritw.h"

#include "core/call.h"
#include "core/elements.h"
#include "kernels/aritw.h"
#include "kernels/level/levels.h"

namespace {

using vek::core::Call;
using vek::core::realCount;

constexpr const char* module = "vekaritw";

const vek::kernels::AritwTable& kernels() { return *vek::kernelsNow().aritw; }

}   // namespace

extern "C" {

void VEKAPI vekwbZero(int16_t* dst, int n) {
    Call call{module, "vekwbZero"};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().set(0, dst, realCount<int16_t>(n));
}

void VEKAPI vekwbSet(int16_t val, int16_t* dst, int n) {
    Call call{module, "vekwbSet"};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().set(val, dst, realCount<int16_t>(n));
}

void VEKAPI vekwbCopy(const int16_t* src, int16_t* dst, int n) {
    Call call{module, "vekwbCopy"};
    if (call.bad(n <= 0, "n<=0")) return;
    if (call.bad(!src, "src==0")) return;
    if (call.bad(!dst, "dst==0")) return;
    if (call.stopped()) return;
    kernels().copy(src, dst, realCount<int16_t>(n));
}

}   // extern "C"
