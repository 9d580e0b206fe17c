// SPDX-License-Identifier: MIT
#pragma once

#include <tests/support/TemporaryFile.h>

#include <png.h>

#include <string>
#include <vector>

namespace vx::test {

/// A PNG file of 8 bits a channel: gray, gray and alpha, RGB or RGBA.
inline std::string pngBytes(unsigned channels, unsigned width, unsigned height, const unsigned char* pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    const png_uint_32 formats[] = {PNG_FORMAT_GRAY, PNG_FORMAT_GA, PNG_FORMAT_RGB, PNG_FORMAT_RGBA};
    image.format = formats[channels - 1];
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), 0);
    png_alloc_size_t size = bytes.size();
    png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels, 0, nullptr);
    bytes.resize(size);
    return bytes;
}

/// A TGA file of 16 bits a pixel, 5 for each channel, the top row first.
inline std::string tgaBytes(unsigned width, unsigned height, const std::vector<unsigned char>& pixels) {
    std::string bytes = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, char(width), 0, char(height), 0, 16, 0x20};
    bytes.append(pixels.begin(), pixels.end());
    return bytes;
}

/// `count` bytes that look like nothing.
inline std::vector<unsigned char> noise(std::size_t count) {
    std::vector<unsigned char> bytes;
    for (unsigned state = 12345; bytes.size() < count; state = state * 1664525 + 1013904223)
        bytes.push_back(static_cast<unsigned char>(state >> 24));
    return bytes;
}

} // namespace vx::test
