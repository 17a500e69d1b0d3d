// Bins by their definitions, as a program would write them: transforms race a loop over all products, with the roots of
// a table by an index that advances; Goertzel blocks one that calls a function for each sample, which keeps the state
// in its record and returns the bin, and one that keeps the state in variables.
#include <cmath>
#include <memory>

#include "peers.h"

namespace bench {

namespace {

template <class C, class Wide, class Root>
void sums(const C* in, C* out, int n, const std::vector<Root>& roots, Wide (*finished)(Wide)) {
    for (int k = 0; k < n; ++k) {
        Wide re = 0, im = 0;
        int at = 0;
        for (int i = 0; i < n; ++i) {
            const Root root = roots[static_cast<std::size_t>(at)];
            re += static_cast<Wide>(in[i].re) * root.re - static_cast<Wide>(in[i].im) * root.im;
            im += static_cast<Wide>(in[i].re) * root.im + static_cast<Wide>(in[i].im) * root.re;
            at += k;
            if (at >= n) at -= n;
        }
        out[k] = {static_cast<decltype(C::re)>(finished(re)), static_cast<decltype(C::re)>(finished(im))};
    }
}

template <class C, class Wide>
void addSums(void (*calcTable)(C*, int), Wide (*finished)(Wide)) {
    addPeer("plain sum", nameOf<C>("Dft"), [=](const Problem& problem) {
        auto roots = std::make_shared<std::vector<C>>(problem.n());
        calcTable(roots->data(), problem.size);
        return [=, in = problem.source<const C>(), out = problem.target<C>(), n = problem.size] {
            sums<C, Wide, C>(in, out, n, *roots, finished);
        };
    });
}

// One part of the recurrence.
template <class T>
T step(double x, double cos2, T& prev2, T& prev1) {
    const T s = static_cast<T>(x + cos2 * prev1 - prev2);
    prev2 = prev1;
    prev1 = s;
    return s;
}

template <class Result, class State>
Result binOf(const State& state) {
    using T = decltype(Result::re);
    const double c = state.cosV, s = state.sinV;
    if constexpr (requires { state.prev1.re; }) {
        return {static_cast<T>(c * state.prev1.re - s * state.prev1.im - state.prev2.re),
                static_cast<T>(c * state.prev1.im + s * state.prev1.re - state.prev2.im)};
    } else {
        return {static_cast<T>(c * state.prev1 - state.prev2), static_cast<T>(s * state.prev1)};
    }
}

template <class State, class X>
void advance(State& state, X x) {
    if constexpr (requires { x.re; }) {
        step(x.re, state.cos2V, state.prev2.re, state.prev1.re);
        step(x.im, state.cos2V, state.prev2.im, state.prev1.im);
    } else {
        step(x, state.cos2V, state.prev2, state.prev1);
    }
}

template <class Result, class State, class X>
[[gnu::noinline]] Result one(State* state, X x) {
    advance(*state, x);
    return binOf<Result>(*state);
}

template <class Result, class State, class X>
Result singles(State* state, const X* x, int n) {
    Result bin = {};
    for (int i = 0; i < n; ++i) bin = one<Result>(state, x[i]);
    return bin;
}
template <class Result, class State, class X>
Result block(State* state, const X* x, int n) {
    State kept = *state;
    for (int i = 0; i < n; ++i) advance(kept, x[i]);
    *state = kept;
    return binOf<Result>(kept);
}

template <class State, class X, class Result>
void addGoertzel() {
    addPeer("single samples", nameOf<X>("bGoertz"), singles<Result, State, X>);
    addPeer("plain loop", nameOf<X>("bGoertz"), block<Result, State, X>);
}

const RegisterPeers bins([] {
    addSums<VekCplx, float>(vekcCalcDftTwdTbl, [](float sum) { return sum; });
    addSums<VekDCplx, double>(vekzCalcDftTwdTbl, [](double sum) { return sum; });
    addSums<VekWCplx, std::int64_t>(vekvCalcDftTwdTbl, [](std::int64_t sum) { return (sum + 8192) >> 14; });
    addGoertzel<VekGoertzState, float, VekCplx>();
    addGoertzel<VekDGoertzState, double, VekDCplx>();
    addGoertzel<VekCGoertzState, VekCplx, VekCplx>();
    addGoertzel<VekZGoertzState, VekDCplx, VekDCplx>();
});

}   // namespace

}   // namespace bench
