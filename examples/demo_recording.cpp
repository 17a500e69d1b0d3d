#include "demo_recording.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include "demo_progress.h"

namespace demo {

namespace fs = std::filesystem;

namespace {

constexpr const char* defaultFolder = "/usr/share/sounds/alsa";
constexpr std::size_t mostSamples = std::size_t{1} << 30;   // 4 GiB of float32, six hours at 48 kHz

class SoundFile {
public:
    explicit SoundFile(const std::string& path) : handle(sf_open(path.c_str(), SFM_READ, &info)) {}
    ~SoundFile() {
        if (handle != nullptr) sf_close(handle);
    }
    SoundFile(const SoundFile&) = delete;
    SoundFile& operator=(const SoundFile&) = delete;

    SF_INFO info = {};
    SNDFILE* handle;
};

std::string formatName(SNDFILE* handle, int format) {
    std::string text;
    for (const int part : {format & SF_FORMAT_TYPEMASK, format & SF_FORMAT_SUBMASK}) {
        SF_FORMAT_INFO entry = {};
        entry.format = part;
        if (sf_command(handle, SFC_GET_FORMAT_INFO, &entry, sizeof entry) != 0 || entry.name == nullptr) continue;
        if (!text.empty()) text += ", ";
        text += entry.name;
    }
    return text;
}

std::string append(const std::string& path, Recording& recording) {
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (!fs::exists(status)) return path + ": there is no such file.";
    if (fs::is_directory(status)) return path + ": is a folder, not a sound file.";
    if (fs::is_regular_file(status) && fs::file_size(path, failure) == 0) return path + ": the file is empty.";

    SoundFile file(path);
    if (file.handle == nullptr) {
        std::string reason = sf_strerror(nullptr);
        while (!reason.empty() && (reason.back() == '.' || reason.back() == '\n')) reason.pop_back();
        return path + ": cannot be read as sound (" + reason + ").";
    }
    const SF_INFO& info = file.info;
    if (info.samplerate <= 0 || info.channels <= 0) return path + ": states no usable sample rate or channels.";
    if (recording.rate != 0 && recording.rate != info.samplerate)
        return path + ": has another sample rate than the files before it.";

    recording.rate = info.samplerate;
    recording.channels = std::max(recording.channels, info.channels);
    recording.format = formatName(file.handle, info.format);
    recording.clips.push_back({fs::path(path).stem().string(), recording.samples.size()});

    constexpr sf_count_t blockFrames = 16384;
    std::vector<float> block(static_cast<std::size_t>(blockFrames) * static_cast<std::size_t>(info.channels));
    Progress progress("reading");
    double framesRead = 0;
    for (sf_count_t count; (count = sf_readf_float(file.handle, block.data(), blockFrames)) > 0;) {
        if (recording.samples.size() + static_cast<std::size_t>(count) > mostSamples)
            return path + ": is longer than this program reads (six hours at 48 kHz).";
        const float* frame = block.data();
        for (sf_count_t i = 0; i < count; ++i) {
            double sum = 0;
            for (int channel = 0; channel < info.channels; ++channel) sum += *frame++;
            float mean = static_cast<float>(sum / info.channels);
            if (!std::isfinite(mean)) {
                mean = 0;
                ++recording.notFinite;
            }
            recording.samples.push_back(mean);
        }
        framesRead += static_cast<double>(count);
        progress.at(framesRead / static_cast<double>(info.frames));
    }
    if (recording.samples.size() == recording.clips.back().start) return path + ": holds no samples.";
    return {};
}

}   // namespace

std::vector<std::string> defaultFiles() {
    std::vector<std::string> files;
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(defaultFolder, failure)) {
        const fs::path& path = entry.path();
        if (path.extension() == ".wav" && path.stem() != "Noise") files.push_back(path.string());   // voices only
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string readRecording(const std::vector<std::string>& files, Recording& recording) {
    for (const std::string& path : files) {
        std::string problem = append(path, recording);
        if (!problem.empty()) return problem;
    }
    recording.title = files.size() == 1 ? fs::path(files.front()).filename().string()
                                        : std::to_string(files.size()) + " voices from " + defaultFolder;
    return {};
}

}   // namespace demo
