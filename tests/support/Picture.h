// SPDX-License-Identifier: MIT
#pragma once

#include <png.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace vx::test {

/// A PNG file's pixels as 0xRRGGBBAA, the top row first; 0 x 0 when it cannot be read.
struct Picture {
    explicit Picture(const std::string& path) {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        if (!png_image_begin_read_from_file(&image, path.c_str()))
            return;
        image.format = PNG_FORMAT_ABGR;
        width = static_cast<int>(image.width);
        height = static_cast<int>(image.height);
        pixels.resize(std::size_t(image.width) * image.height);
        png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr);
    }
    std::uint32_t at(int x, int y) const {
        return pixels.at(std::size_t(y) * std::size_t(width) + std::size_t(x));
    }
    std::size_t colours() const { return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size(); }
    bool borderIsOneColour() const {
        for (int i = 0; i < width * height; ++i) {
            const int x = i % width, y = i / width;
            if ((x == 0 || y == 0 || x == width - 1 || y == height - 1) &&
                pixels[std::size_t(i)] != pixels[0])
                return false;
        }
        return true;
    }
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

} // namespace vx::test
