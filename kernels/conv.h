// Kernels of the convolution: direct sums, and what brings float results to int16.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "common/scaling.h"
#include "tables.h"

namespace vek::kernels {

// y[n] = sum over k of signal[n - k] taps[k], 0 <= n < signalLength + tapCount - 1. Lengths count elements; complex
// vectors come as their reals. Any lengths from 1 up; long signals and few taps are what the loops are made for. y must
// not overlap the operands.
template <class T>
using Convolve = void (*)(const T* signal, size_t signalLength, const T* taps, size_t tapCount, T* y);

template <class T>
struct ConvOf {
    Convolve<T> direct[2][2];   // [complex signal][complex taps]
};

// The exact sums, of at most maxShortTaps taps, scaled in each way; and the least shift to the right that makes all
// fit.
inline constexpr size_t maxShortTaps = 256;
struct ConvShortsTable {
    void (*direct[fitCount])(const int16_t* signal, size_t signalLength, const int16_t* taps, size_t tapCount,
                             int16_t* y, int places);
    int (*places)(const int16_t* signal, size_t signalLength, const int16_t* taps, size_t tapCount);

    // Whole vectors between int16 and float; floats are finite and below 2^63, and go by the nearest integer, the even
    // one of two.
    void (*toFloats)(const int16_t* src, float* dst, size_t n);
    void (*fromFloats[fitCount])(const float* src, int16_t* dst, size_t n, int places);
    int (*floatPlaces)(const float* src, size_t n);
};

struct ConvFloats : Tables<ConvOf<float>> {};
struct ConvDoubles : Tables<ConvOf<double>> {};

}   // namespace vek::kernels
