// SPDX-License-Identifier: MIT
#pragma once

#include <tests/support/TemporaryFile.h>

#include <png.h>

#include <string>
#include <vector>

namespace vx::test {

using Bytes = std::vector<unsigned char>;

/// A PNG file of 8 bits a channel: gray, gray and alpha, RGB or RGBA.
inline std::string pngBytes(unsigned channels, unsigned width, unsigned height, const Bytes& pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    const png_uint_32 formats[] = {PNG_FORMAT_GRAY, PNG_FORMAT_GA, PNG_FORMAT_RGB, PNG_FORMAT_RGBA};
    image.format = formats[channels - 1];
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), 0);
    png_alloc_size_t size = bytes.size();
    png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr);
    return bytes.substr(0, size);
}

inline Bytes noise(std::size_t count) {
    Bytes bytes;
    for (unsigned state = 12345; bytes.size() < count; state = state * 1664525 + 1013904223)
        bytes.push_back(static_cast<unsigned char>(state >> 24));
    return bytes;
}

/// The steps from a straight pixel to what is kept of it, one at a time.
inline unsigned char premultiplied(unsigned value, unsigned alpha) {
    return static_cast<unsigned char>(value * alpha / 255.0 + 0.5);
}
inline unsigned char undone(unsigned value, unsigned alpha) {
    const float part = static_cast<float>(alpha) / 255.0f;
    const float divided = part > 0.0f && part < 1.0f ? static_cast<float>(value) / part : float(value);
    return static_cast<unsigned char>(static_cast<int>(divided));
}

} // namespace vx::test
