// The Goertzel filter of int16 and its complex form: the state is float.
#include "core/shorts.h"
#include "vekgoertz.h"

namespace {

using namespace vek::goertz;

constexpr const char* module = "vekgrtzw";

constexpr int largestFactor = 14;

VEK_STEPS bool badScaling(Call& call, int scaleMode, const int* scaleFactor, int line = __builtin_LINE()) {
    return call.bad(scaleFactor == nullptr, "Zero scale factor pointer", line) ||
           call.bad(*scaleFactor < -largestFactor || *scaleFactor > largestFactor, "Too large scale factor", line) ||
           call.bad(scaleMode > 4, "Erroneus scale mode", line);
}

// To the nearest integer; NaN to 0, and what is beyond 62 bits to their ends.
std::int64_t nearest(float value) {
    if (value != value) return 0;
    constexpr float end = 0x1p62F;
    return std::llrint(value < -end ? -end : value > end ? end : value);
}

template <class State>
VekWCplx scaledBin(const State& state, int scaleMode, int* scaleFactor) {
    const auto value = bin<VekCplx>(state);
    const std::int64_t wide[2] = {nearest(value.re), nearest(value.im)};
    std::int16_t parts[2];
    vek::core::toShorts(wide, 2, parts, scaleMode, scaleFactor);
    return {parts[0], parts[1]};
}

template <class State, class Sample>
VekWCplx one(const char* name, State* state, Sample sample, int scaleMode, int* scaleFactor) {
    Call call{module, name};
    if (badState(call, state)) return {};
    if (badScaling(call, scaleMode, scaleFactor)) return {};
    if (call.stopped()) return {};
    advance<std::int16_t>(state, &sample, 1);
    return scaledBin(*state, scaleMode, scaleFactor);
}

template <class State, class Sample>
VekWCplx block(const char* name, State* state, const Sample* samples, int len, int scaleMode, int* scaleFactor) {
    Call call{module, name};
    if (badBlock(call, state, samples, len)) return {};
    if (badScaling(call, scaleMode, scaleFactor)) return {};
    if (call.stopped()) return {};
    advance<std::int16_t>(state, samples, len);
    return scaledBin(*state, scaleMode, scaleFactor);
}

}   // namespace

extern "C" {

VekStatus VEKAPI vekwGoertzInit(float freq, VekGoertzState* state) {
    return init(module, "vekwGoertzInit", freq, state);
}
void VEKAPI vekwGoertzReset(VekGoertzState* state) { reset(module, "vekwGoertzReset", state); }
VekWCplx VEKAPI vekwGoertz(VekGoertzState* state, int16_t sample, int scaleMode, int* scaleFactor) {
    return one("vekwGoertz", state, sample, scaleMode, scaleFactor);
}
VekStatus VEKAPI vekvGoertzInit(float freq, VekCGoertzState* state) {
    return init(module, "vekvGoertzInit", freq, state);
}
void VEKAPI vekvGoertzReset(VekCGoertzState* state) { reset(module, "vekvGoertzReset", state); }
VekWCplx VEKAPI vekvGoertz(VekCGoertzState* state, VekWCplx sample, int scaleMode, int* scaleFactor) {
    return one("vekvGoertz", state, sample, scaleMode, scaleFactor);
}

VekWCplx VEKAPI vekwbGoertz(VekGoertzState* state, const int16_t* samples, int len, int scaleMode, int* scaleFactor) {
    return block("vekwbGoertz", state, samples, len, scaleMode, scaleFactor);
}
VekWCplx VEKAPI vekvbGoertz(VekCGoertzState* state, const VekWCplx* samples, int len, int scaleMode, int* scaleFactor) {
    return block("vekvbGoertz", state, samples, len, scaleMode, scaleFactor);
}

}   // extern "C"
