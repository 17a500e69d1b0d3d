// demo [file]: reads a recording and writes out/report.html, a page with its waveform, its spectrogram and its
// strongest partials. Without a file it reads the voices of Debian's alsa-utils where they lie.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "demo_analysis.h"
#include "demo_recording.h"
#include "demo_sections.h"
#include "vekm6.h"

namespace {

// What the library finds wrong goes to the standard error stream; the caller then sees a negative status.
VekStatus VEKAPI reportError(VekStatus status, const char* name, const char* message, const char* file, int) {
    std::fprintf(stderr, "demo: %s (%d) in %s %s: %s\n", vekErrorStr(status), status, file != nullptr ? file : "?",
                 name != nullptr ? name : "?", message != nullptr ? message : "");
    return status;
}

int fail(const std::string& sentence) {
    std::fprintf(stderr, "demo: %s\n", sentence.c_str());
    return 1;
}

}   // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount > 2) return fail("usage: demo [file]");
    vekSetErrMode(VEK_ErrModeParent);
    vekRedirectError(reportError);

    const std::vector<std::string> files =
        argumentCount == 2 ? std::vector<std::string>{arguments[1]} : demo::defaultFiles();
    if (files.empty()) return fail("the voices of alsa-utils are not installed; name a sound file.");

    demo::Recording recording;
    std::string problem = demo::readRecording(files, recording);
    if (!problem.empty()) return fail(problem);

    demo::Analysis analysis;
    analysis.order = demo::orderFor(recording.rate);
    const std::size_t shortest = (std::size_t{1} << analysis.order) / 2;
    if (recording.samples.size() < shortest)
        return fail(files.front() + ": is too short, " + std::to_string(recording.samples.size()) +
                    " samples; one window takes " + std::to_string(shortest) + ".");
    problem = demo::analyse(recording, analysis);
    if (!problem.empty()) return fail(problem);

    const std::string path = "out/report.html";
    std::error_code failure;
    std::filesystem::create_directories("out", failure);
    std::ofstream page(path, std::ios::binary);
    page << demo::report(recording, analysis);
    page.close();
    if (!page) return fail(path + ": cannot be written.");
    std::printf("%s\n", path.c_str());
    return 0;
}
