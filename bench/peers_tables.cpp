// Permutations race a loop over an index table, twiddle tables one of sines and cosines.
#include <cmath>
#include <memory>

#include "peers.h"

namespace bench {

namespace {

template <class T>
void addIndexed() {
    const auto indices = [](const Problem& problem) {
        auto index = std::make_shared<std::vector<std::int32_t>>(problem.n());
        vekCalcBitRevTbl(index->data(), problem.size);
        return index;
    };
    addPeer("index loop", nameOf<T>("bBitRev1"), [indices](const Problem& problem) {
        return [index = indices(problem), out = problem.target<T>(), n = static_cast<std::int32_t>(problem.n())] {
            for (std::int32_t i = 0; i < n; ++i)
                if (const std::int32_t j = (*index)[static_cast<std::size_t>(i)]; i < j) std::swap(out[i], out[j]);
        };
    });
    addPeer("index loop", nameOf<T>("bBitRev2"), [indices](const Problem& problem) {
        return [index = indices(problem), out = problem.target<T>(), in = problem.source<const T>(), n = problem.n()] {
            for (std::size_t i = 0; i < n; ++i) out[i] = in[(*index)[i]];
        };
    });
}

template <class Complex>
void sines(Complex* table, int order) {
    using Real = decltype(Complex::re);
    const int n = 1 << order;
    const double step = -6.283185307179586 / n;
    for (int k = 0; k < n; ++k)
        table[k] = {static_cast<Real>(std::cos(step * k)), static_cast<Real>(std::sin(step * k))};
}

const RegisterPeers tables([] {
    addIndexed<float>();
    addIndexed<double>();
    addIndexed<VekCplx>();
    addIndexed<VekDCplx>();
    addIndexed<std::int16_t>();
    addIndexed<VekWCplx>();
    addPeer("sine loop", "vekcCalcFftTwdTbl", sines<VekCplx>);
    addPeer("sine loop", "vekzCalcFftTwdTbl", sines<VekDCplx>);
});

}   // namespace

}   // namespace bench
