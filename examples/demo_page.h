// The page: text in HTML, and charts whose data are pictures and whose axes are drawn around them.
#pragma once

#include <string>
#include <vector>

namespace demo {

// printf to a string.
[[gnu::format(printf, 1, 2)]] std::string print(const char* format, ...);

std::string escaped(const std::string& text);          // for HTML text and attributes
std::string number(double value, int decimals);        // with a minus sign as long as a digit is wide
std::string grouped(unsigned long long value);         // 1 234 567
std::string clock(double seconds, int decimals = 0);   // 83 -> 1:23

struct Tick {
    double at;   // 0 ... 1 along the axis
    std::string label;
};

inline constexpr double mostPlainSeconds = 90;   // longer times read as minutes

// Round values on an axis from low to high, some `wanted` of them; labels carry as many decimals as the step.
std::vector<Tick> linearTicks(double low, double high, int wanted);
std::vector<Tick> timeTicks(double seconds);
std::vector<Tick> frequencyTicks(double low, double high);   // logarithmic

// A chart: lengths in pixels of the page. All charts have the same width and time axis.
class Chart {
public:
    static constexpr int left = 58, width = 852, right = 80, top = 24, bottom = 40;

    Chart(int height, const char* title);

    void picture(const std::string& uri);
    void bar(const std::string& uri, const std::vector<Tick>& ticks, const char* label);   // right of the plot
    void horizontal(const std::vector<Tick>& ticks, const char* label);
    void vertical(const std::vector<Tick>& ticks, const char* label);
    void mark(double at, const std::string& label, double room);   // a time of note; room: 0 ... 1 for its label
    std::string finish() const;

private:
    int height;
    std::string text;
};

// The page around the sections.
std::string page(const std::string& title, const std::string& body);

}   // namespace demo
