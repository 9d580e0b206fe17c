// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/drawing/Canvas.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vx::test {

/// The pixel as 0xAARRGGBB, y from the top row down.
inline std::uint32_t pixelOf(Canvas& canvas, int x, int y) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, canvas.pixels() + y * canvas.stride() + x * 4, 4);
    return pixel;
}

/// The smallest box with every pixel that is not 0; right and bottom lie behind the last one.
struct InkBox {
    int left = 1 << 20, top = 1 << 20, right = 0, bottom = 0;

    explicit InkBox(Canvas& canvas) {
        for (int y = 0; y < canvas.height(); ++y)
            for (int x = 0; x < canvas.width(); ++x)
                if (pixelOf(canvas, x, y)) {
                    left = std::min(left, x), right = std::max(right, x + 1);
                    top = std::min(top, y), bottom = y + 1;
                }
    }
};

} // namespace vx::test
