#include <cmath>
#include <cstdint>
#include <memory>

#include "peers.h"
#include "plain_loops.h"

namespace bench {

namespace {

template <class T>
void add(const char* name, PlainLoop<T> loop, const Problem& problem, Peers& peers) {
    if (loop == nullptr) return;
    const auto operand = [&problem](std::size_t i) {
        return static_cast<const T*>(i < problem.in.size() ? problem.in[i] : problem.out);
    };
    struct Pair {
        T re, im;
    };
    peers.push_back(
        peerOf(name, [loop, a = operand(0), b = operand(1), out = static_cast<T*>(problem.out), n = problem.n,
                      scalar = problem.scalar.get<Pair>()] { loop(a, b, out, n, scalar.re, scalar.im); }));
}

template <class T>
void addIndexed(const Problem& problem, Peers& peers) {
    auto index = std::make_shared<std::vector<std::int32_t>>(problem.n);
    vekCalcBitRevTbl(index->data(), problem.size);
    auto* out = static_cast<T*>(problem.out);
    if (problem.inPlace) {
        peers.push_back(peerOf("index loop", [index, out, n = static_cast<std::int32_t>(problem.n)] {
            for (std::int32_t i = 0; i < n; ++i)
                if (const std::int32_t j = (*index)[static_cast<std::size_t>(i)]; i < j) std::swap(out[i], out[j]);
        }));
    } else {
        peers.push_back(peerOf("index loop", [index, out, in = static_cast<const T*>(problem.in[0]), n = problem.n] {
            for (std::size_t i = 0; i < n; ++i) out[i] = in[(*index)[i]];
        }));
    }
}

template <class Complex>
void addSines(const Problem& problem, Peers& peers) {
    using Real = decltype(Complex::re);
    peers.push_back(peerOf("sine loop", [out = static_cast<Complex*>(problem.out), n = problem.n] {
        const double step = -6.283185307179586 / static_cast<double>(n);
        for (std::size_t k = 0; k < n; ++k) {
            const double angle = step * static_cast<double>(k);
            out[k] = {static_cast<Real>(std::cos(angle)), static_cast<Real>(std::sin(angle))};
        }
    }));
}

}   // namespace

void addPlainLoops(const Problem& problem, Peers& peers) {
    if (problem.isDouble()) {
        add("plain 256", plain256::find<double>(problem.operation, problem.isComplex()), problem, peers);
        add("plain 512", plain512::find<double>(problem.operation, problem.isComplex()), problem, peers);
    } else {
        add("plain 256", plain256::find<float>(problem.operation, problem.isComplex()), problem, peers);
        add("plain 512", plain512::find<float>(problem.operation, problem.isComplex()), problem, peers);
    }
}

void addTableLoops(const Problem& problem, Peers& peers) {
    if (problem.operation == "CalcFftTwdTbl" && problem.type == 'c') return addSines<VekCplx>(problem, peers);
    if (problem.operation == "CalcFftTwdTbl" && problem.type == 'z') return addSines<VekDCplx>(problem, peers);
    if (problem.operation != "BitRev") return;
    switch (problem.type) {
        case 's': return addIndexed<float>(problem, peers);
        case 'd': return addIndexed<double>(problem, peers);
        case 'c': return addIndexed<VekCplx>(problem, peers);
        case 'z': return addIndexed<VekDCplx>(problem, peers);
        case 'w': return addIndexed<std::int16_t>(problem, peers);
        case 'v': return addIndexed<VekWCplx>(problem, peers);
    }
}

}   // namespace bench
