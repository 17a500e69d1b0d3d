// Convolution of int16 vectors.
#include <algorithm>
#include <utility>

#include "core/call.h"
#include "core/memory.h"
#include "core/scaling.h"
#include "kernels/aritw.h"
#include "kernels/conv.h"
#include "kernels/level/levels.h"

#include "vekm6/conv.h"

namespace {

using vek::core::Call;

constexpr const char* module = "vekconvw";
constexpr int exactBits = 63;   // of a result, beside its sign

const vek::kernels::ConvShortsTable& kernels() { return *vek::kernelsNow().conv_w; }

struct FloatCopy {
    float* samps = nullptr;

    FloatCopy() = default;
    FloatCopy(const FloatCopy&) = delete;
    FloatCopy& operator=(const FloatCopy&) = delete;
    ~FloatCopy() { vek::core::release(samps); }

    bool missing(Call& call, std::size_t count, const char* message) {
        samps = static_cast<float*>(vek::core::allocateArray(count, sizeof(float)));
        return call.noMemory(samps == nullptr, message);
    }
};

// Of the first row whose bound the shorter length reaches, the longer one decides.
bool goesByFloats(int shorter, int longer) {
    if (shorter >= 256) return longer >= 256;
    if (shorter >= 128) return longer >= 512;
    return shorter >= 64 && longer >= 8192;
}

void shiftLeft(vek::Scaling scaling, int16_t* y, std::size_t count) {
    if (scaling.left != 0) vek::kernelsNow().aritw->left[scaling.fit](y, count, scaling.left);
}

void byFloats(Call& call, const int16_t* x, int xLen, const int16_t* h, int hLen, int16_t* y, int scaleMode,
              int* scaleFactor) {
    const auto xCount = static_cast<std::size_t>(xLen), hCount = static_cast<std::size_t>(hLen);
    const std::size_t count = xCount + hCount - 1;
    FloatCopy xCopy, hCopy, yCopy;
    if (xCopy.missing(call, xCount, "NULL pointer to float copy x")) return;
    if (hCopy.missing(call, hCount, "NULL pointer to float copy h")) return;
    if (yCopy.missing(call, count, "NULL pointer to float copy y")) return;
    kernels().toFloats(x, xCopy.samps, xCount);
    kernels().toFloats(h, hCopy.samps, hCount);
    veksConv(xCopy.samps, xLen, hCopy.samps, hLen, yCopy.samps);
    if (call.backtrace()) return;
    const vek::Scaling scaling = vek::core::scalingOf(
        scaleMode, scaleFactor, [&] { return kernels().floatPlaces(yCopy.samps, count); }, exactBits);
    kernels().fromFloats[scaling.fit](yCopy.samps, y, count, scaling.right);
    shiftLeft(scaling, y, count);
}

void exactly(const int16_t* signal, int length, const int16_t* taps, int tapCount, int16_t* y, int scaleMode,
             int* scaleFactor) {
    const auto samples = static_cast<std::size_t>(length), count = static_cast<std::size_t>(tapCount);
    const vek::Scaling scaling = vek::core::scalingOf(
        scaleMode, scaleFactor, [&] { return kernels().places(signal, samples, taps, count); }, exactBits);
    kernels().direct[scaling.fit](signal, samples, taps, count, y, scaling.right);
    shiftLeft(scaling, y, samples + count - 1);
}

void convolve(const char* name, const int16_t* x, int xLen, const int16_t* h, int hLen, int16_t* y, int scaleMode,
              int* scaleFactor) {
    Call call{module, name};
    if (call.bad(x == nullptr, "x==0")) return;
    if (call.bad(xLen <= 0, "xLen<=0")) return;
    if (call.bad(h == nullptr, "h==0")) return;
    if (call.bad(hLen <= 0, "hLen<=0")) return;
    if (call.bad(y == nullptr, "y==0")) return;
    if (call.bad(vek::core::lacksFactor(scaleMode, scaleFactor), "scalefactor==0")) return;
    if (call.stopped()) return;
    if (goesByFloats(std::min(xLen, hLen), std::max(xLen, hLen)))
        byFloats(call, x, xLen, h, hLen, y, scaleMode, scaleFactor);
    else if (xLen < hLen)
        exactly(h, hLen, x, xLen, y, scaleMode, scaleFactor);
    else
        exactly(x, xLen, h, hLen, y, scaleMode, scaleFactor);
}

}   // namespace

extern "C" {

void VEKAPI vekwConv(const int16_t* x, int xLen, const int16_t* h, int hLen, int16_t* y, int scaleMode,
                     int* scaleFactor) {
    convolve("vekwConv", x, xLen, h, hLen, y, scaleMode, scaleFactor);
}

}   // extern "C"
