// The Goertzel filter over all types: vekgrtzl.cpp and vekgrtzw.cpp hold the exports over these operations.
//
// One sample is a block of one, and results are formed from the stored state, so that both forms agree to the bit.
#pragma once

#include <cmath>

#include "core/call.h"
#include "kernels/goertz.h"
#include "kernels/level/levels.h"
#include "vekm6/goertz.h"

namespace vek::goertz {

using core::Call;

template <class State>
using RealOf = decltype(State::freq);
template <class State>
inline constexpr int partsOf = sizeof(State::prev1) / sizeof(RealOf<State>);

template <class State>
VekStatus init(const char* module, const char* name, RealOf<State> freq, State* state) {
    using T = RealOf<State>;
    Call call{module, name};
    if (call.bad(state == nullptr, "Null state pointer")) return call.result;
    const bool valid = std::isgreaterequal(freq, T{0}) && std::isless(freq, T{1});   // no NaN
    if (call.bad(!valid, "Invalid frequency value")) return call.result;
    if (call.stopped()) return VEK_StsOk;
    constexpr double twoPi = 6.283185307179586;
    const double angle = twoPi * static_cast<double>(freq);
    const double cosine = std::cos(angle);
    *state = {freq, static_cast<T>(cosine), static_cast<T>(std::sin(angle)), static_cast<T>(2 * cosine), {}, {}};
    return VEK_StsOk;
}

template <class State>
void reset(const char* module, const char* name, State* state) {
    Call call{module, name};
    if (call.bad(state == nullptr, "Null state pointer")) return;
    if (call.stopped()) return;
    state->prev2 = state->prev1 = {};
}

template <class State>
VEK_STEPS bool badState(Call& call, const State* state, int line = __builtin_LINE()) {
    return call.bad(state == nullptr, "Null state pointer", line);
}
template <class State, class X>
VEK_STEPS bool badBlock(Call& call, const State* state, const X* samples, int len, int line = __builtin_LINE()) {
    return badState(call, state, line) || call.bad(samples == nullptr, "Null buffer pointer", line) ||
           call.bad(len < 1, "Invalid array length", line);
}

// X: what samples are made of.
template <class X, class State, class Sample>
VEK_STEPS void advance(State* state, const Sample* samples, int len) {
    using T = RealOf<State>;
    const auto& kernel = oneOf<kernels::GoertzOf<T, X, partsOf<State>>>(kernelsNow().goertz);
    kernel.run(state->cos2V, reinterpret_cast<const X*>(samples), static_cast<std::size_t>(len),
               reinterpret_cast<T*>(&state->prev2), reinterpret_cast<T*>(&state->prev1));
}

// exp(2 pi i f) s[n] - s[n-1].
template <class Result, class State>
VEK_STEPS Result bin(const State& state) {
    using T = decltype(Result::re);
    const double c = state.cosV;
    const double s = state.sinV;
    if constexpr (partsOf<State> == 1) {
        const double last = state.prev1;
        return {static_cast<T>(c * last - state.prev2), static_cast<T>(s * last)};
    } else {
        const double re = state.prev1.re;
        const double im = state.prev1.im;
        return {static_cast<T>(c * re - s * im - state.prev2.re), static_cast<T>(c * im + s * re - state.prev2.im)};
    }
}

}   // namespace vek::goertz
