// The element types as the reals they are made of.
#pragma once

#include <cstddef>

#include "vekm6/types.h"

namespace vek::core {

template <class T>
struct Element {
    typedef T Real;
    static constexpr bool complex = false;
};
template <>
struct Element<VekCplx> {
    typedef float Real;
    static constexpr bool complex = true;
};
template <>
struct Element<VekDCplx> {
    typedef double Real;
    static constexpr bool complex = true;
};

template <>
struct Element<VekWCplx> {
    typedef int16_t Real;
    static constexpr bool complex = true;
};

template <class T>
using Real = typename Element<T>::Real;
template <class T>
inline constexpr bool isComplex = Element<T>::complex;

// Reals in n elements; the product may exceed an int.
template <class T>
constexpr std::size_t realCount(int n) {
    return static_cast<std::size_t>(n) * (isComplex<T> ? 2 : 1);
}

// A vector as its reals: of complex elements re, im, re, im ...
template <class T>
Real<T>* reals(T* elements) {
    return reinterpret_cast<Real<T>*>(elements);
}
template <class T>
const Real<T>* reals(const T* elements) {
    return reinterpret_cast<const Real<T>*>(elements);
}

}   // namespace vek::core
