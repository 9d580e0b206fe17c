// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// A device colour with straight alpha, components from 0 to 1.
struct Color {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    /// An opaque colour from 0xRRGGBB.
    static constexpr Color rgb(unsigned value) {
        return {(value >> 16 & 255) / 255.0, (value >> 8 & 255) / 255.0, (value & 255) / 255.0, 1.0};
    }
};

} // namespace vx
