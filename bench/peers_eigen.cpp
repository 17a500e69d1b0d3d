// Compiled twice: WIDTH is that of the vectors, and Eigen itself is renamed, so that both copies can stand in one
// program.
#include <Eigen/Core>

#include <complex>

#include "peers.h"

namespace bench {

namespace {

template <class T>
struct ScalarOf {
    using type = T;
};
template <>
struct ScalarOf<VekCplx> {
    using type = std::complex<float>;
};
template <>
struct ScalarOf<VekDCplx> {
    using type = std::complex<double>;
};
template <class T>
using Scalar = typename ScalarOf<T>::type;

template <class T>
auto vector(T* data, int n) {
    using S = Scalar<std::remove_const_t<T>>;
    using Vector = Eigen::Array<S, Eigen::Dynamic, 1>;
    if constexpr (std::is_const_v<T>)
        return Eigen::Map<const Vector>(reinterpret_cast<const S*>(data), n);
    else
        return Eigen::Map<Vector>(reinterpret_cast<S*>(data), n);
}

// A function for each form of arguments.
template <class T, auto F>
void fill(T* out, int n) {
    F(vector(out, n));
}
template <class T, auto F>
void fillWith(T value, T* out, int n) {
    Scalar<T> scalar;
    std::memcpy(&scalar, &value, sizeof value);
    F(vector(out, n), scalar);
}
template <class T, auto F>
void one(const T* a, T* out, int n) {
    F(vector(out, n), vector(a, n));
}
template <class T, auto F>
void two(const T* a, const T* b, T* out, int n) {
    F(vector(out, n), vector(a, n), vector(b, n));
}
template <class T>
void limited(const T* a, T* out, int n, T limit, int) {
    vector(out, n) = vector(a, n).max(limit);
}

template <class T>
T dot(const T* a, const T* b, int n) {
    const Scalar<T> sum = (vector(a, n) * vector(b, n)).sum();
    T result;
    std::memcpy(&result, &sum, sizeof result);
    return result;
}

#define TEXT_OF(bits) #bits
#define TEXT(bits) TEXT_OF(bits)

template <class T>
void add() {
    const auto peer = [](const char* operation, auto* function) {
        addPeer("Eigen " TEXT(WIDTH), nameOf<T>(operation), function);
    };
    peer("bZero", fill<T, [](auto to) { to.setZero(); }>);
    peer("bSet", fillWith<T, [](auto to, auto value) { to.setConstant(value); }>);
    peer("bCopy", one<T, [](auto to, auto x) { to = x; }>);
    peer("bAdd1", fillWith<T, [](auto to, auto value) { to += value; }>);
    peer("bSub1", fillWith<T, [](auto to, auto value) { to -= value; }>);
    peer("bMpy1", fillWith<T, [](auto to, auto value) { to *= value; }>);
    peer("bAdd3", two<T, [](auto to, auto x, auto y) { to = x + y; }>);
    peer("bSub3", two<T, [](auto to, auto x, auto y) { to = x - y; }>);
    peer("bMpy3", two<T, [](auto to, auto x, auto y) { to = x * y; }>);
    peer("DotProd", dot<T>);
    peer("bSqr2", one<T, [](auto to, auto x) { to = x.square(); }>);
    peer("bSqrt2", one<T, [](auto to, auto x) { to = x.sqrt(); }>);
    if constexpr (Eigen::NumTraits<Scalar<T>>::IsComplex) {
        peer("bConj2", one<T, [](auto to, auto x) { to = x.conjugate(); }>);
        peer("bConjFlip2", one<T, [](auto to, auto x) { to = x.conjugate().reverse(); }>);
    } else {
        peer("bAbs2", one<T, [](auto to, auto x) { to = x.abs(); }>);
        peer("bThresh2", limited<T>);
    }
}

const RegisterPeers eigen([] {
    add<float>();
    add<double>();
    add<VekCplx>();
    add<VekDCplx>();
});

}   // namespace

}   // namespace bench
