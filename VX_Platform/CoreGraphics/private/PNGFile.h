// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// Writes width x height pixels of 3 (RGB) or 4 (RGBA, not premultiplied) bytes, the bottom row first and
/// without gaps, as a PNG file. Any thread. False, with one line in the log, when the file cannot be written.
bool writePNGFile(const char* path, int width, int height, int channels, const std::uint8_t* pixels);

} // namespace vx
