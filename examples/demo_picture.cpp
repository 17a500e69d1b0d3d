#include "demo_picture.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace demo {

namespace {

// OKLab (B. Ottosson, 2020), a colour space in which equal steps of lightness look equal, to linear sRGB.
std::array<double, 3> linearRgb(double lightness, double chroma, double hue) {
    const double a = chroma * std::cos(hue), b = chroma * std::sin(hue);
    const double l = std::pow(lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
    const double m = std::pow(lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
    const double s = std::pow(lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

bool displayable(const std::array<double, 3>& rgb) {
    return std::all_of(rgb.begin(), rgb.end(), [](double part) { return part >= 0 && part <= 1; });
}

std::uint8_t encoded(double linear) {
    const double value = linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(value, 0.0, 1.0)));
}

std::string base64(const std::vector<std::uint8_t>& data) {
    constexpr const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((data.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < data.size(); i += 3) {
        const std::size_t rest = std::min<std::size_t>(data.size() - i, 3);
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k) bits = bits << 8 | (k < rest ? data[i + k] : 0u);
        for (std::size_t k = 0; k < 4; ++k) text += k <= rest ? digits[bits >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

}   // namespace

Palette heatPalette() {
    Palette palette;
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const double t = static_cast<double>(i) / 255;
        const double lightness = 0.13 + 0.85 * t;
        const double hue = (285 + 185 * std::pow(t, 0.8)) * std::numbers::pi / 180;   // violet to yellow, past red
        double chroma = 0.05 + 0.15 * std::sin(std::numbers::pi * std::pow(t, 0.9));
        while (!displayable(linearRgb(lightness, chroma, hue)) && chroma > 0) chroma -= 0.002;
        const auto rgb = linearRgb(lightness, std::max(chroma, 0.0), hue);
        palette[i] = {encoded(rgb[0]), encoded(rgb[1]), encoded(rgb[2])};
    }
    return palette;
}

Palette blendPalette(const std::array<std::uint8_t, 3>& from, const std::array<std::uint8_t, 3>& to) {
    Palette palette;
    for (std::size_t i = 0; i < palette.size(); ++i)
        for (std::size_t part = 0; part < 3; ++part)
            palette[i][part] = static_cast<std::uint8_t>(
                std::lround(from[part] + (to[part] - from[part]) * static_cast<double>(i) / 255));
    return palette;
}

std::string dataUri(const Picture& picture, const Palette& palette) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::uint8_t> data(size);
    if (png_image_write_to_memory(&image, data.data(), &size, 0, picture.pixels.data(), 0, palette.data()) == 0)
        return {};
    data.resize(size);
    return "data:image/png;base64," + base64(data);
}

}   // namespace demo
