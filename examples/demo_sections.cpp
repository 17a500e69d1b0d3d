#include "demo_sections.h"

#include <algorithm>
#include <cmath>

#include "demo_page.h"
#include "demo_picture.h"
#include "vekm6.h"

namespace demo {

namespace {

constexpr int scale = 2;   // pixels of a picture per pixel of the page

// ---- Waveform -------------------------------------------------------------------------------------------------------

// The range of each column, and the root mean square darker within it.
Picture drawWaveform(const std::vector<float>& samples, double reach, int width, int height) {
    Picture picture(width, height);
    const auto row = [&](double value) {
        const double y = 0.5 * (1 - value / reach) * (height - 1);
        return static_cast<int>(std::lround(std::clamp(y, 0.0, height - 1.0)));
    };
    const std::size_t count = samples.size();
    for (int x = 0; x < width; ++x) {
        const auto columns = static_cast<std::size_t>(width);
        const std::size_t begin = static_cast<std::size_t>(x) * count / columns;
        const std::size_t end = std::max((static_cast<std::size_t>(x) + 1) * count / columns, begin + 1);
        const std::size_t joined = begin > 0 ? begin - 1 : 0;   // so that columns meet
        const auto [low, high] = std::minmax_element(samples.begin() + static_cast<std::ptrdiff_t>(joined),
                                                     samples.begin() + static_cast<std::ptrdiff_t>(end));
        double sum = 0;
        for (std::size_t i = begin; i < end; ++i) sum += static_cast<double>(samples[i]) * samples[i];
        const double effective = std::sqrt(sum / static_cast<double>(end - begin));
        const bool sparse = end - begin < 8;   // the samples themselves; their root mean square would say nothing
        picture.at(x, row(0)) = 70;
        for (int y = row(*high); y <= row(*low); ++y) picture.at(x, y) = sparse ? 255 : 130;
        if (sparse) continue;
        for (int y = std::max(row(effective), row(*high)); y <= std::min(row(-effective), row(*low)); ++y)
            picture.at(x, y) = 255;
    }
    return picture;
}

const char* timeLabel(double seconds) {
    if (seconds <= mostPlainSeconds) return "time in s";
    return seconds < 3600 ? "time in min:s" : "time in h:min:s";
}

void markClips(Chart& chart, const Recording& recording) {
    const auto count = static_cast<double>(recording.samples.size());
    for (std::size_t i = 0; recording.clips.size() > 1 && i < recording.clips.size(); ++i) {
        const double at = static_cast<double>(recording.clips[i].start) / count;
        const double end =
            i + 1 < recording.clips.size() ? static_cast<double>(recording.clips[i + 1].start) / count : 1;
        chart.mark(at, recording.clips[i].name, end - at);
    }
}

std::string waveform(const Recording& recording, const Analysis&) {
    double peak = 0;
    for (const float sample : recording.samples) peak = std::max(peak, std::abs(static_cast<double>(sample)));
    double reach = 0.01;   // then 0.02, 0.05, 0.1 ...
    for (int step = 0; reach < peak; ++step) reach *= step % 3 == 1 ? 2.5 : 2;
    constexpr int height = 150;
    Chart chart(height, "Waveform");
    chart.picture(dataUri(drawWaveform(recording.samples, reach, scale * Chart::width, scale * height),
                          blendPalette({255, 255, 255}, {38, 84, 124})));
    chart.vertical(linearTicks(-reach, reach, 4), "amplitude");
    chart.horizontal(timeTicks(recording.seconds()), timeLabel(recording.seconds()));
    markClips(chart, recording);
    return "<p class=\"note\">Range of the samples and, darker, their root mean square; full scale is ±1.</p>\n" +
           chart.finish();
}

// ---- Spectrogram ----------------------------------------------------------------------------------------------------

struct Spectrogram {
    double low, high;    // Hz
    double floor, top;   // dBFS
};

// Decibels of one column at every row, from the top down. Rows that span several bins show the strongest of them;
// rows between two bins a level between theirs.
std::vector<float> levelsOf(const float* power, const Analysis& analysis, const Spectrogram& view, int height) {
    std::vector<float> levels(static_cast<std::size_t>(height));
    const double lastBin = static_cast<double>(analysis.bins - 1);
    const auto binAt = [&](double y) {
        return std::min(view.high * std::pow(view.low / view.high, y / height) / analysis.binWidth, lastBin);
    };
    for (int y = 0; y < height; ++y) {
        const double from = binAt(y + 1), to = binAt(y);
        const auto first = static_cast<std::size_t>(std::ceil(from));
        const auto last = static_cast<std::size_t>(std::floor(to));
        double level;
        if (first < last) {
            level = decibels(*std::max_element(power + first, power + last + 1));
        } else {
            const double middle = 0.5 * (from + to);
            const auto below = std::min(static_cast<std::size_t>(middle), analysis.bins - 2);
            const double part = middle - static_cast<double>(below);
            level = (1 - part) * decibels(power[below]) + part * decibels(power[below + 1]);
        }
        levels[static_cast<std::size_t>(y)] = static_cast<float>(level);
    }
    return levels;
}

Picture drawSpectrogram(const Recording& recording, const Analysis& analysis, const Spectrogram& view, int width,
                        int height) {
    std::vector<std::vector<float>> columns;
    for (std::size_t slot = 0; slot < analysis.slots; ++slot)
        columns.push_back(levelsOf(analysis.power.data() + slot * analysis.bins, analysis, view, height));

    Picture picture(width, height);
    const double framesPerSlot = static_cast<double>(analysis.frames) / static_cast<double>(analysis.slots);
    for (int x = 0; x < width; ++x) {
        const double sample = (x + 0.5) / width * static_cast<double>(recording.samples.size());
        const double frame = (sample - static_cast<double>(analysis.window) / 2) / static_cast<double>(analysis.hop);
        const double slot =
            std::clamp((frame + 0.5) / framesPerSlot - 0.5, 0.0, static_cast<double>(analysis.slots - 1));
        const auto before = static_cast<std::size_t>(slot);
        const std::size_t after = std::min(before + 1, analysis.slots - 1);
        const double part = slot - static_cast<double>(before);
        for (int y = 0; y < height; ++y) {
            const auto row = static_cast<std::size_t>(y);
            const double level = (1 - part) * columns[before][row] + part * columns[after][row];
            const double shade = std::clamp((level - view.floor) / (view.top - view.floor), 0.0, 1.0);
            picture.at(x, y) = static_cast<std::uint8_t>(std::lround(255 * shade));
        }
    }
    return picture;
}

std::string spectrogram(const Recording& recording, const Analysis& analysis) {
    constexpr double range = 90;
    Spectrogram view;
    view.high = recording.rate / 2.0;
    view.low = std::max(50.0 * std::min(1.0, view.high / 4000), analysis.binWidth);
    const double strongest = decibels(*std::max_element(analysis.power.begin(), analysis.power.end()));
    view.top = std::clamp(5 * std::ceil(strongest / 5), -100.0, 20.0);
    view.floor = view.top - range;

    constexpr int height = 340;
    const Palette palette = heatPalette();
    Picture ramp(1, 256);
    for (int y = 0; y < 256; ++y) ramp.at(0, y) = static_cast<std::uint8_t>(255 - y);

    Chart chart(height, "Spectrogram");
    chart.picture(dataUri(drawSpectrogram(recording, analysis, view, scale * Chart::width, scale * height), palette));
    chart.bar(dataUri(ramp, palette), linearTicks(view.floor, view.top, 9), "dBFS");
    chart.vertical(frequencyTicks(view.low, view.high), "frequency in Hz");
    chart.horizontal(timeTicks(recording.seconds()), timeLabel(recording.seconds()));
    markClips(chart, recording);
    std::string note = "Short-time power spectra; 0 dBFS is a sine of full scale. Frequency is logarithmic.";
    if (analysis.slots < analysis.frames) note += " Each column shows the greatest value of the frames it covers.";
    return "<p class=\"note\">" + note + "</p>\n" + chart.finish();
}

// ---- Partials -------------------------------------------------------------------------------------------------------

std::string partials(const Recording& recording, const Analysis& analysis) {
    std::size_t columns = 1;
    for (const Second& second : analysis.seconds) columns = std::max(columns, second.partials.size());
    std::string text =
        "<p class=\"note\">Peaks of the mean power spectrum of each second, the strongest (1) first, within 60 dB "
        "of it. Frequency and level come from a parabola through the three bins around the peak.</p>\n"
        "<div class=\"rows\"><table>\n<thead>\n<tr class=\"over\"><th colspan=\"2\">time</th><th>all</th>";
    for (std::size_t i = 0; i < columns; ++i) text += print("<th class=\"first\" colspan=\"2\">%zu</th>", i + 1);
    text += "</tr>\n<tr><th>from s</th><th>to s</th><th>dBFS</th>";
    for (std::size_t i = 0; i < columns; ++i) text += "<th class=\"first\">Hz</th><th>dBFS</th>";
    text += "</tr></thead>\n<tbody>\n";
    const bool minutes = recording.seconds() > mostPlainSeconds;
    for (const Second& second : analysis.seconds) {
        const auto time = [&](double at) { return minutes ? clock(at, 2) : number(at, 2); };
        const std::string level = second.level > silence ? number(second.level, 1) : "silent";
        text += "<tr><td>" + time(second.start) + "</td><td>" + time(second.end) + "</td><td>" + level + "</td>";
        for (std::size_t i = 0; i < columns; ++i) {
            if (i < second.partials.size())
                text += "<td class=\"first\">" + number(second.partials[i].frequency, 1) + "</td><td class=\"level\">" +
                        number(second.partials[i].level, 1) + "</td>";
            else
                text += "<td class=\"first\">–</td><td class=\"level\">–</td>";
        }
        text += "</tr>\n";
    }
    return text + "</tbody></table></div>\n";
}

// ---- The page -------------------------------------------------------------------------------------------------------

struct Section {
    const char* title;
    std::string (*render)(const Recording&, const Analysis&);   // returns HTML
};

// The page shows these in turn. A new section is a function above and a row here.
constexpr Section sections[] = {
    {"Waveform", waveform},
    {"Spectrogram", spectrogram},
    {"Strongest partials per second", partials},
};

struct Fact {
    const char* label;
    std::string value;   // HTML
};

std::string factTable(const char* title, const std::vector<Fact>& facts) {
    std::string text = print("<section><h3>%s</h3><table>\n", title);
    for (const Fact& fact : facts)
        text += std::string("<tr><td>") + fact.label + "</td><td>" + fact.value + "</td></tr>\n";
    return text + "</table></section>\n";
}

std::string facts(const Recording& recording, const Analysis& analysis) {
    float peak = 0;
    for (const float sample : recording.samples) peak = std::max(peak, std::abs(sample));
    std::vector<Fact> about = {
        {"Format", escaped(recording.format)},
        {"Sample rate", grouped(static_cast<unsigned>(recording.rate)) + " Hz"},
        {"Channels", recording.channels == 1 ? "1" : std::to_string(recording.channels) + ", mixed to their mean"},
        {"Length", (recording.seconds() < 60 ? number(recording.seconds(), 2) + " s" : clock(recording.seconds(), 2)) +
                       ", " + grouped(recording.samples.size()) + " samples"},
        {"Peak", peak > 0 ? number(decibels(static_cast<double>(peak) * peak), 1) + " dBFS" : "silent"},
    };
    if (recording.notFinite != 0) about.push_back({"Not numbers", grouped(recording.notFinite) + " samples, set to 0"});

    const double milli = 1000.0 / recording.rate;
    const std::size_t points = std::size_t{1} << analysis.order;
    const std::vector<Fact> spectra = {
        {"Window", print("Hann, %zu samples (%.1f ms)", analysis.window, static_cast<double>(analysis.window) * milli)},
        {"Hop", print("%zu samples (%.1f ms)", analysis.hop, static_cast<double>(analysis.hop) * milli)},
        {"Transform", print("real, order %d (%zu points), float32", analysis.order, points)},
        {"Bin spacing", number(analysis.binWidth, 2) + " Hz"},
        {"Frames", grouped(analysis.frames)},
    };

    const VekLibVersion* version = vekGetLibVersion();
    const std::vector<Fact> run = {
        {"Library", print("vekm6 %d.%d.%d", version->major, version->minor, version->build)},
        {"Operations", "veksbMpy3, veksRealFftNip"},
        {"Transforms", number(1e6 * analysis.transformSeconds / static_cast<double>(analysis.frames), 2) + " µs each"},
        {"Analysis", number(1e3 * analysis.analysisSeconds, analysis.analysisSeconds < 0.01 ? 2 : 1) + " ms"},
        {"Speed",
         grouped(static_cast<unsigned long long>(recording.seconds() / analysis.analysisSeconds)) + " × real time"},
    };
    return "<div class=\"facts\">\n" + factTable("Recording", about) + factTable("Analysis", spectra) +
           factTable("This run", run) + "</div>\n";
}

}   // namespace

std::string report(const Recording& recording, const Analysis& analysis) {
    std::string body = "<h1>" + escaped(recording.title) + "</h1>\n";
    body += "<p class=\"lead\">Short-time spectra of a recording</p>\n";
    body += facts(recording, analysis);
    for (const Section& section : sections)
        body += print("<h2>%s</h2>\n", section.title) + section.render(recording, analysis);
    body +=
        "<footer>Speed is that of one thread in the run that wrote this page: windows, transforms and powers, "
        "without reading and drawing.</footer>\n";
    return page(recording.title, body);
}

}   // namespace demo
