// Short-time spectra of a recording, by the library's real transform.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "demo_recording.h"

namespace demo {

struct Partial {
    double frequency;   // Hz
    double level;       // dBFS
};

struct Second {
    double start, end;               // s
    double level;                    // dBFS
    std::vector<Partial> partials;   // the strongest first
};

// Levels in dBFS refer to a sine of full scale.
struct Analysis {
    int order = 0;            // of the transform: 2^order points
    std::size_t window = 0;   // samples; the rest of the transform's input is zero
    std::size_t hop = 0;      // samples
    std::size_t frames = 0;
    std::size_t slots = 0;   // frames, or groups of them in long recordings
    std::size_t bins = 0;
    double binWidth = 0;        // Hz
    std::vector<float> power;   // [slot][bin], 1 for a sine of full scale; of a group its greatest
    std::vector<Second> seconds;
    double analysisSeconds = 0;    // measured: windowing, transforms, powers
    double transformSeconds = 0;   // measured: the transforms alone
};

inline constexpr double silence = -200;   // dBFS that stand for no signal

// 10 lg of a power, at least `silence`.
double decibels(double power);

// Transform order for a sample rate: windows of some 40 ms, zero-padded to twice their length.
int orderFor(int rate);

//   Returns: an empty text, or what the library reported.
std::string analyse(const Recording& recording, Analysis& analysis);

}   // namespace demo
