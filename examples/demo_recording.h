// Sound files as one mono signal.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace demo {

struct Clip {
    std::string name;
    std::size_t start;   // first sample in the signal
};

struct Recording {
    std::string title;
    std::string format;           // container and coding, as the sound library names them
    int rate = 0;                 // samples per second
    int channels = 0;             // before they were mixed
    std::vector<float> samples;   // full scale is +-1
    std::vector<Clip> clips;      // one per file
    std::size_t notFinite = 0;    // samples that were no numbers and were set to 0

    double seconds() const { return static_cast<double>(samples.size()) / rate; }
};

// The files of the default recording in the order of their names; empty when they are not installed.
std::vector<std::string> defaultFiles();

// Reads the files one after the other, each mixed to the mean of its channels.
//   Returns: an empty text, or a sentence that says why there is no recording.
std::string readRecording(const std::vector<std::string>& files, Recording& recording);

}   // namespace demo
