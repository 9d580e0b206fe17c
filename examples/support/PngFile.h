// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>
#include <png.h>

#include <vector>

/// Writes the picture in the current context's read buffer, width x height pixels from the lower left, as a
/// PNG file. False when the file cannot be written.
inline bool writeFrameAsPng(const char* file, int width, int height) {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * height * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGB;
    // GL's rows run from the bottom up, a file's from the top down.
    const int upwards = -width * 3;
    return png_image_write_to_file(&image, file, 0, pixels.data(), upwards, nullptr) != 0;
}
