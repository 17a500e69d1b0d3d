// Pictures of up to 256 colours, as PNG data for a page.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace demo {

using Palette = std::array<std::array<std::uint8_t, 3>, 256>;   // sRGB

// From dark violet over red to light yellow; lightness rises evenly with the index.
Palette heatPalette();

// From one colour to another, evenly.
Palette blendPalette(const std::array<std::uint8_t, 3>& from, const std::array<std::uint8_t, 3>& to);

struct Picture {
    Picture(int width, int height)
        : width(width), height(height), pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    std::uint8_t& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    int width, height;
    std::vector<std::uint8_t> pixels;   // palette indices, rows from the top
};

// The picture as a PNG in the form of a data URI; empty when it could not be encoded.
std::string dataUri(const Picture& picture, const Palette& palette);

}   // namespace demo
