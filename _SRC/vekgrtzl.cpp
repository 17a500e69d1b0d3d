// The Goertzel filter of float, double and their complex forms.
#include "vekgoertz.h"

namespace {

using namespace vek::goertz;

constexpr const char* module = "vekgrtzl";

template <class State>
using Result = std::conditional_t<sizeof(RealOf<State>) == sizeof(float), VekCplx, VekDCplx>;

template <class State, class Sample>
Result<State> one(const char* name, State* state, Sample sample) {
    Call call{module, name};
    if (badState(call, state)) return {};
    if (call.stopped()) return {};
    advance<RealOf<State>>(state, &sample, 1);
    return bin<Result<State>>(*state);
}

template <class State, class Sample>
Result<State> block(const char* name, State* state, const Sample* samples, int len) {
    Call call{module, name};
    if (badBlock(call, state, samples, len)) return {};
    if (call.stopped()) return {};
    advance<RealOf<State>>(state, samples, len);
    return bin<Result<State>>(*state);
}

}   // namespace

extern "C" {

VekStatus VEKAPI veksGoertzInit(float freq, VekGoertzState* state) {
    return init(module, "veksGoertzInit", freq, state);
}
void VEKAPI veksGoertzReset(VekGoertzState* state) { reset(module, "veksGoertzReset", state); }
VekCplx VEKAPI veksGoertz(VekGoertzState* state, float sample) { return one("veksGoertz", state, sample); }
VekStatus VEKAPI vekdGoertzInit(double freq, VekDGoertzState* state) {
    return init(module, "vekdGoertzInit", freq, state);
}
void VEKAPI vekdGoertzReset(VekDGoertzState* state) { reset(module, "vekdGoertzReset", state); }
VekDCplx VEKAPI vekdGoertz(VekDGoertzState* state, double sample) { return one("vekdGoertz", state, sample); }
VekStatus VEKAPI vekcGoertzInit(float freq, VekCGoertzState* state) {
    return init(module, "vekcGoertzInit", freq, state);
}
void VEKAPI vekcGoertzReset(VekCGoertzState* state) { reset(module, "vekcGoertzReset", state); }
VekCplx VEKAPI vekcGoertz(VekCGoertzState* state, VekCplx sample) { return one("vekcGoertz", state, sample); }
VekStatus VEKAPI vekzGoertzInit(double freq, VekZGoertzState* state) {
    return init(module, "vekzGoertzInit", freq, state);
}
void VEKAPI vekzGoertzReset(VekZGoertzState* state) { reset(module, "vekzGoertzReset", state); }
VekDCplx VEKAPI vekzGoertz(VekZGoertzState* state, VekDCplx sample) { return one("vekzGoertz", state, sample); }

VekCplx VEKAPI veksbGoertz(VekGoertzState* state, const float* samples, int len) {
    return block("veksbGoertz", state, samples, len);
}
VekDCplx VEKAPI vekdbGoertz(VekDGoertzState* state, const double* samples, int len) {
    return block("vekdbGoertz", state, samples, len);
}
VekCplx VEKAPI vekcbGoertz(VekCGoertzState* state, const VekCplx* samples, int len) {
    return block("vekcbGoertz", state, samples, len);
}
VekDCplx VEKAPI vekzbGoertz(VekZGoertzState* state, const VekDCplx* samples, int len) {
    return block("vekzbGoertz", state, samples, len);
}

}   // extern "C"
