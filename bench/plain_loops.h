// The loops that a program would write itself, made into vectors by the compiler; once with vectors of 256 bits and
// once with 512.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

// a and b are sources, re (and im) the scalar or the threshold. Elements are pairs of T for complex operations.
template <class T>
using PlainLoop = void (*)(const T* a, const T* b, T* out, std::size_t n, T re, T im);

namespace plain256 {
template <class T>
PlainLoop<T> find(const std::string& operation, bool complex);   // null: none
}
namespace plain512 {
template <class T>
PlainLoop<T> find(const std::string& operation, bool complex);
}

}   // namespace bench
