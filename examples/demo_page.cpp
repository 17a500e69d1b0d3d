#include "demo_page.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace demo {

std::string print(const char* format, ...) {
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&': result += "&amp;"; break;
            case '<': result += "&lt;"; break;
            case '>': result += "&gt;"; break;
            case '"': result += "&quot;"; break;
            default: result += static_cast<unsigned char>(c) < 32 ? ' ' : c;
        }
    }
    return result;
}

std::string number(double value, int decimals) {
    std::string text = print("%.*f", decimals, value);
    if (text[0] != '-') return text;
    const bool zero = text.find_first_of("123456789") == std::string::npos;
    return (zero ? "" : "\u2212") + text.substr(1);
}

std::string grouped(unsigned long long value) {
    std::string text = std::to_string(value);
    for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, "\u202f");
    return text;
}

std::string clock(double seconds, int decimals) {
    const double unit = std::pow(10, -decimals);
    const double rounded = std::round(seconds / unit) * unit;
    const int minutes = static_cast<int>((rounded + unit / 2) / 60);
    const double rest = std::max(rounded - 60.0 * minutes, 0.0);
    const int digits = decimals > 0 ? decimals + 3 : 2;
    if (minutes < 60) return print("%d:%0*.*f", minutes, digits, decimals, rest);
    return print("%d:%02d:%0*.*f", minutes / 60, minutes % 60, digits, decimals, rest);
}

std::vector<Tick> linearTicks(double low, double high, int wanted) {
    const double rough = (high - low) / wanted;
    const double decade = std::pow(10, std::floor(std::log10(rough)));
    double step = 10 * decade;
    for (const double factor : {5.0, 2.0, 1.0})
        if (factor * decade >= rough) step = factor * decade;
    const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
    std::vector<Tick> ticks;
    for (double k = std::ceil(low / step - 1e-9); k * step <= high + 1e-9 * step; ++k)
        ticks.push_back({(k * step - low) / (high - low), number(k * step, decimals)});
    return ticks;
}

std::vector<Tick> timeTicks(double seconds) {
    if (seconds <= mostPlainSeconds) return linearTicks(0, seconds, 14);
    double step = 36000;
    for (const double candidate : {7200.0, 3600.0, 1800.0, 600.0, 300.0, 120.0, 60.0, 30.0, 10.0})
        if (seconds / candidate <= 14) step = candidate;
    std::vector<Tick> ticks;
    for (double at = 0; at <= seconds; at += step) ticks.push_back({at / seconds, clock(at)});
    return ticks;
}

std::vector<Tick> frequencyTicks(double low, double high) {
    std::vector<Tick> ticks;
    for (double decade = 1; decade <= high; decade *= 10) {
        for (const int factor : {1, 2, 5}) {
            const double value = factor * decade;
            if (value < low || value > high) continue;
            ticks.push_back({std::log(value / low) / std::log(high / low),
                             value < 1000 ? print("%.0f", value) : print("%.0fk", value / 1000)});
        }
    }
    return ticks;
}

Chart::Chart(int height, const char* title) : height(height) {
    text = print("<svg viewBox=\"0 0 %d %d\" role=\"img\" aria-label=\"%s\">\n", left + width + right,
                 top + height + bottom, title);
}

void Chart::picture(const std::string& uri) {
    text += print("<image x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" preserveAspectRatio=\"none\" href=\"", left, top,
                  width, height);
    text += uri + "\"/>\n";
    text += print("<rect class=\"edge\" x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/>\n", left, top, width, height);
}

void Chart::bar(const std::string& uri, const std::vector<Tick>& ticks, const char* label) {
    const int x = left + width + 16, thick = 14;
    text += print("<image x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" preserveAspectRatio=\"none\" href=\"", x, top,
                  thick, height);
    text += uri + "\"/>\n";
    text += print("<rect class=\"edge\" x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\"/>\n", x, top, thick, height);
    for (const Tick& tick : ticks) {
        const double y = top + height * (1 - tick.at);
        text += print(
            "<line x1=\"%d\" x2=\"%d\" y1=\"%.1f\" y2=\"%.1f\"/><text x=\"%d\" y=\"%.1f\" "
            "text-anchor=\"end\">%s</text>\n",
            x + thick, x + thick + 4, y, y, x + thick + 36, y + 4, tick.label.c_str());
    }
    text += print("<text x=\"%d\" y=\"%d\" text-anchor=\"end\">%s</text>\n", x + thick + 36, top - 10, label);
}

void Chart::horizontal(const std::vector<Tick>& ticks, const char* label) {
    const int y = top + height;
    for (const Tick& tick : ticks) {
        const double x = left + width * tick.at;
        text += print(
            "<line x1=\"%.1f\" x2=\"%.1f\" y1=\"%d\" y2=\"%d\"/><text x=\"%.1f\" y=\"%d\" "
            "text-anchor=\"middle\">%s</text>\n",
            x, x, y, y + 5, x, y + 18, tick.label.c_str());
    }
    text += print("<text x=\"%d\" y=\"%d\" text-anchor=\"middle\">%s</text>\n", left + width / 2, y + 35, label);
}

void Chart::vertical(const std::vector<Tick>& ticks, const char* label) {
    for (const Tick& tick : ticks) {
        const double y = top + height * (1 - tick.at);
        text += print(
            "<line x1=\"%d\" x2=\"%d\" y1=\"%.1f\" y2=\"%.1f\"/><text x=\"%d\" y=\"%.1f\" "
            "text-anchor=\"end\">%s</text>\n",
            left - 5, left, y, y, left - 8, y + 4, tick.label.c_str());
    }
    text += print("<text x=\"12\" y=\"%d\" text-anchor=\"middle\" transform=\"rotate(-90 12 %d)\">%s</text>\n",
                  top + height / 2, top + height / 2, label);
}

void Chart::mark(double at, const std::string& label, double room) {
    const double x = left + width * at;
    if (at > 0)
        text +=
            print("<line class=\"mark\" x1=\"%.1f\" x2=\"%.1f\" y1=\"%d\" y2=\"%d\"/>\n", x, x, top - 14, top + height);
    constexpr double glyph = 6.2;
    if (static_cast<double>(label.size()) * glyph < room * width)
        text += print("<text class=\"clip\" x=\"%.1f\" y=\"%d\">%s</text>\n", x + 4, top - 6, escaped(label).c_str());
}

std::string Chart::finish() const { return text + "</svg>\n"; }

std::string page(const std::string& title, const std::string& body) {
    constexpr const char* style = R"(
:root { color-scheme: light; }
body { margin: 0; background: #fff; color: #1d2127; 
  font: 14px/1.5 "Helvetica Neue", Arial, "Liberation Sans", sans-serif;
  font-variant-numeric: tabular-nums; }
main { max-width: 990px; margin: 0 auto; padding: 36px 28px 48px; }
h1 { margin: 0; font-size: 24px; font-weight: 600; }
h2 { margin: 34px 0 6px; padding-top: 10px; border-top: 1px solid #d5d9de; font-size: 16px; font-weight: 600; }
.lead, .note { color: #596069; }
.lead { margin: 2px 0 0; }
.note { margin: 4px 0 8px; font-size: 13px; }
svg { display: block; width: 100%; height: auto; margin-top: 6px; }
svg text { font-size: 11.5px; fill: #40464e; }
svg line { stroke: #6c737c; stroke-width: 1; }
svg line.mark { stroke: #8a919a; stroke-dasharray: 2 3; }
svg .edge { fill: none; stroke: #6c737c; }
svg .clip { font-size: 11px; fill: #596069; }
.facts { display: grid; grid-template-columns: repeat(3, auto); gap: 0 36px; justify-content: space-between;
  margin-top: 22px; }
.facts h3 { margin: 0 0 4px; font-size: 13px; font-weight: 600; color: #596069; }
.facts table { border-collapse: collapse; }
.facts td { padding: 1px 0; vertical-align: top; }
.facts td:first-child { padding-right: 18px; color: #596069; white-space: nowrap; }
.rows { max-height: 620px; overflow: auto; }
.rows table { border-collapse: collapse; width: 100%; }
.rows th, .rows td { padding: 3px 0 3px 14px; text-align: right; white-space: nowrap; }
.rows th { font-weight: 500; font-size: 13px; color: #596069;
  box-shadow: inset 0 -1px #9aa1a9; }
.rows td { border-bottom: 1px solid #eceef1; }
.rows thead { position: sticky; top: 0; background: #fff; }
.rows .over th { padding-top: 0; box-shadow: none; text-align: center; }
.rows .first { border-left: 10px solid transparent; }
.rows .level { color: #596069; }
footer { margin-top: 30px; padding-top: 8px; border-top: 1px solid #d5d9de; font-size: 12px; color: #596069; }
@page { margin: 14mm; }
@media print {
  body { font-size: 10.5px; -webkit-print-color-adjust: exact; print-color-adjust: exact; }
  main { padding: 0; }
  h1 { font-size: 18px; }
  h2 { font-size: 13px; margin-top: 18px; }
  .note, .facts h3, .rows th { font-size: 10.5px; }
  .facts { gap: 0 20px; margin-top: 14px; }
  .facts td:first-child { padding-right: 10px; }
  .rows { max-height: none; overflow: visible; }
  .rows thead { position: static; }
  .rows th, .rows td { padding: 1px 0 1px 10px; }
  svg, tr { break-inside: avoid; }
  h2 { break-after: avoid; }
}
)";
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
           escaped(title) + "</title>\n<style>" + style + "</style>\n</head>\n<body>\n<main>\n" + body +
           "</main>\n</body>\n</html>\n";
}

}   // namespace demo
