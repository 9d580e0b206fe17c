// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSBitmapImageRep.h>
#include <VX_Platform/AppKit/NSImage.h>

#include <algorithm>
#include <vector>

namespace vx::test {

/// Pixels as 0xRRGGBBAA, the top row first.
struct PixelRows {
    unsigned at(int x, int y) const { return pixels.at(std::size_t(y) * width + x); }
    /// First and last column and row with a pixel that is not like the first one.
    std::vector<int> inked() const {
        std::vector<int> box = {width, -1, height, -1};
        for (int i = 0; i < width * height; ++i)
            if (pixels[i] != pixels[0])
                box = {std::min(box[0], i % width), std::max(box[1], i % width), std::min(box[2], i / width),
                       i / width};
        return box;
    }

    int width = 0, height = 0;
    std::vector<unsigned> pixels;
};

inline PixelRows pixelsOf(NSImage* image) {
    image->lockFocus();
    const auto bitmap = NSInit(new NSBitmapImageRep, NSRect{{}, image->size()});
    image->unlockFocus();
    PixelRows rows = {bitmap->pixelsWide(), bitmap->pixelsHigh(), {}};
    const unsigned char* bytes = bitmap->bitmapData();
    for (int i = 0; i < rows.width * rows.height; ++i, bytes += 4)
        rows.pixels.push_back(unsigned(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3]);
    return rows;
}

} // namespace vx::test
