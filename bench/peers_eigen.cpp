// Compiled twice: BITS is the width of the vectors, and Eigen itself is renamed, so that both copies can stand in one
// program.
#include <Eigen/Core>

#include <complex>

#include "peers.h"

namespace bench {

namespace {

#define TEXT_OF(bits) #bits
#define TEXT(bits) TEXT_OF(bits)
#define JOIN_OF(a, b) a##b
#define JOIN(a, b) JOIN_OF(a, b)

template <class S>
void addFor(const Problem& problem, Peers& peers) {
    using Vector = Eigen::Array<S, Eigen::Dynamic, 1>;
    using Real = typename Eigen::NumTraits<S>::Real;
    const auto n = static_cast<Eigen::Index>(problem.n);
    auto* out = static_cast<S*>(problem.out);
    const auto* a = static_cast<const S*>(problem.in.empty() ? problem.out : problem.in[0]);
    const auto* b = static_cast<const S*>(problem.in.size() < 2 ? problem.out : problem.in[1]);
    const auto value = problem.scalar.get<S>();
    [[maybe_unused]] const Real thresh = problem.scalar.get<Real>();

    const auto add = [&](const char* operation, auto compute) {
        if (problem.operation != operation) return;
        peers.push_back(peerOf("Eigen " TEXT(BITS), [=] {
            Eigen::Map<Vector> to(out, n);
            const Eigen::Map<const Vector> first(a, n);
            const Eigen::Map<const Vector> second(b, n);
            compute(to, first, second);
        }));
    };
    add("Zero", [](auto& to, auto&, auto&) { to.setZero(); });
    add("Set", [=](auto& to, auto&, auto&) { to.setConstant(value); });
    add("Copy", [](auto& to, auto& x, auto&) { to = x; });
    add("Add1", [=](auto& to, auto& x, auto&) { to = x + value; });
    add("Sub1", [=](auto& to, auto& x, auto&) { to = x - value; });
    add("Mpy1", [=](auto& to, auto& x, auto&) { to = x * value; });
    add("Add", [](auto& to, auto& x, auto& y) { to = x + y; });
    add("Sub", [](auto& to, auto& x, auto& y) { to = x - y; });
    add("Mpy", [](auto& to, auto& x, auto& y) { to = x * y; });
    add("Sqr", [](auto& to, auto& x, auto&) { to = x.square(); });
    add("Sqrt", [](auto& to, auto& x, auto&) { to = x.sqrt(); });
    if constexpr (Eigen::NumTraits<S>::IsComplex) {
        add("Conj", [](auto& to, auto& x, auto&) { to = x.conjugate(); });
        add("ConjFlip", [](auto& to, auto& x, auto&) { to = x.conjugate().reverse(); });
    } else {
        add("Abs", [](auto& to, auto& x, auto&) { to = x.abs(); });
        add("Thresh", [=](auto& to, auto& x, auto&) { to = x.max(thresh); });
    }
}

}   // namespace

void JOIN(addEigen, BITS)(const Problem& problem, Peers& peers) {
    switch (problem.type) {
        case 's': return addFor<float>(problem, peers);
        case 'd': return addFor<double>(problem, peers);
        case 'c': return addFor<std::complex<float>>(problem, peers);
        case 'z': return addFor<std::complex<double>>(problem, peers);
    }
}

}   // namespace bench
