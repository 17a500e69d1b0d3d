#include "demo_analysis.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <numbers>

#include "demo_progress.h"
#include "vekm6.h"

namespace demo {

namespace {

constexpr std::size_t mostSlots = 1800;   // more than a picture has columns of use
constexpr std::size_t batch = 32;         // frames that are transformed in one go
constexpr std::size_t partialCount = 5;
constexpr double partialRange = 60;     // dB below the strongest one
constexpr double partialFloor = -100;   // dBFS

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Release {
    void operator()(float* block) const { vekFree(block); }
};
using Block = std::unique_ptr<float[], Release>;

Block zeroed(std::size_t count) {
    Block block(veksMalloc(static_cast<std::uint32_t>(count)));
    if (block != nullptr) veksbZero(block.get(), static_cast<int>(count));
    return block;
}

// Periodic Hann window, scaled so that a sine of amplitude 1 gives a peak of 1.
void fillHann(float* window, std::size_t length) {
    const double scale = 2.0 / (0.5 * static_cast<double>(length));
    for (std::size_t n = 0; n < length; ++n) {
        const double phase = 2 * std::numbers::pi * static_cast<double>(n) / static_cast<double>(length);
        window[n] = static_cast<float>(scale * (0.5 - 0.5 * std::cos(phase)));
    }
}

// The strongest peaks of a mean power spectrum. Position and level of each come from the parabola through the
// greatest bin and its neighbours, in decibels.
std::vector<Partial> strongest(const std::vector<double>& power, const Analysis& analysis) {
    std::vector<double> level(power.size());
    std::transform(power.begin(), power.end(), level.begin(), decibels);
    // Two windows' peaks blend below the width of the main lobe, four bins of the window's own length.
    const std::size_t reach = 2 * ((std::size_t{1} << analysis.order) / analysis.window);
    std::vector<Partial> found;
    for (std::size_t k = reach; k + reach < level.size(); ++k) {
        const auto around = level.begin() + static_cast<std::ptrdiff_t>(k - reach);
        const auto top = std::max_element(around, around + static_cast<std::ptrdiff_t>(2 * reach + 1));
        if (top - level.begin() != static_cast<std::ptrdiff_t>(k) || level[k] < partialFloor) continue;
        const double left = level[k - 1], mid = level[k], right = level[k + 1];
        const double curve = left - 2 * mid + right;
        const double shift = curve < 0 ? 0.5 * (left - right) / curve : 0;
        found.push_back({(static_cast<double>(k) + shift) * analysis.binWidth, mid - 0.25 * (left - right) * shift});
    }
    std::sort(found.begin(), found.end(), [](const Partial& a, const Partial& b) { return a.level > b.level; });
    std::size_t keep = 0;
    while (keep < std::min(found.size(), partialCount) && found[keep].level >= found[0].level - partialRange) ++keep;
    found.resize(keep);
    return found;
}

double levelOf(const float* samples, std::size_t count) {
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += static_cast<double>(samples[i]) * samples[i];
    return decibels(2 * sum / static_cast<double>(count));   // a sine's mean square is half its squared amplitude
}

}   // namespace

double decibels(double power) { return power > 1e-20 ? 10 * std::log10(power) : silence; }

int orderFor(int rate) {
    const int order = static_cast<int>(std::lround(std::log2(0.085 * rate)));
    return std::clamp(order, 8, 14);
}

std::string analyse(const Recording& recording, Analysis& analysis) {
    const std::size_t points = std::size_t{1} << analysis.order;
    const std::size_t count = recording.samples.size();
    const auto rate = static_cast<std::size_t>(recording.rate);
    analysis.window = points / 2;
    analysis.hop = analysis.window / 4;
    analysis.frames = (count - analysis.window) / analysis.hop + 1;
    analysis.slots = std::min(analysis.frames, mostSlots);
    analysis.bins = points / 2 + 1;
    analysis.binWidth = static_cast<double>(rate) / static_cast<double>(points);
    analysis.power.assign(analysis.slots * analysis.bins, 0);

    const std::size_t spectrum = points + 2;   // reals of a half spectrum, first to last bin
    const Block window = zeroed(analysis.window);
    const Block input = zeroed(batch * points);
    const Block output = zeroed(batch * spectrum);
    if (window == nullptr || input == nullptr || output == nullptr) return "There is not enough memory.";
    fillHann(window.get(), analysis.window);
    veksRealFftNip(input.get(), output.get(), analysis.order, VEK_Forw | VEK_Init);

    const std::size_t secondCount = (count + rate - 1) / rate;
    std::vector<double> sum(analysis.bins, 0);
    std::size_t summed = 0, second = 0;
    const auto closeSecond = [&] {
        for (double& value : sum) value /= static_cast<double>(std::max<std::size_t>(summed, 1));
        const std::size_t first = second * rate, last = std::min(first + rate, count);
        analysis.seconds.push_back({static_cast<double>(first) / recording.rate,
                                    static_cast<double>(last) / recording.rate,
                                    levelOf(recording.samples.data() + first, last - first), strongest(sum, analysis)});
        std::fill(sum.begin(), sum.end(), 0.0);
        summed = 0;
        ++second;
    };

    Progress progress("analysing");
    for (std::size_t frame = 0; frame < analysis.frames; frame += batch) {
        const std::size_t inBatch = std::min(batch, analysis.frames - frame);
        const double begin = secondsNow();
        for (std::size_t i = 0; i < inBatch; ++i)
            veksbMpy3(recording.samples.data() + (frame + i) * analysis.hop, window.get(), input.get() + i * points,
                      static_cast<int>(analysis.window));
        const double windowed = secondsNow();
        for (std::size_t i = 0; i < inBatch; ++i)
            veksRealFftNip(input.get() + i * points, output.get() + i * spectrum, analysis.order, VEK_Forw);
        analysis.transformSeconds += secondsNow() - windowed;
        if (vekGetErrStatus() < 0) return std::string("The library reports: ") + vekErrorStr(vekGetErrStatus()) + ".";
        for (std::size_t i = 0; i < inBatch; ++i) {
            const std::size_t centre = (frame + i) * analysis.hop + analysis.window / 2;
            while (centre >= (second + 1) * rate) closeSecond();
            const float* bins = output.get() + i * spectrum;
            float* slot = analysis.power.data() + (frame + i) * analysis.slots / analysis.frames * analysis.bins;
            for (std::size_t k = 0; k < analysis.bins; ++k) {
                const float power = bins[2 * k] * bins[2 * k] + bins[2 * k + 1] * bins[2 * k + 1];
                slot[k] = std::max(slot[k], power);
                sum[k] += power;
            }
            ++summed;
        }
        analysis.analysisSeconds += secondsNow() - begin;
        progress.at(static_cast<double>(frame) / static_cast<double>(analysis.frames));
    }
    while (second < secondCount) closeSecond();
    veksRealFftNip(nullptr, nullptr, analysis.order, VEK_Free);
    return {};
}

}   // namespace demo
