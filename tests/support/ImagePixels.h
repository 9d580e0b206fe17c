// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSBitmapImageRep.h>
#include <VX_Platform/AppKit/NSImage.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vx::test {

/// The pixels of an image as 0xRRGGBBAA, the top row first.
struct ImagePixels {
    explicit ImagePixels(NSImage* image) {
        image->lockFocus();
        const auto bitmap = NSInit(new NSBitmapImageRep, NSRect{{}, image->size()});
        image->unlockFocus();
        width = bitmap->pixelsWide();
        height = bitmap->pixelsHigh();
        const unsigned char* bytes = bitmap->bitmapData();
        for (int i = 0; i < width * height; ++i, bytes += 4)
            pixels.push_back(unsigned(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3]);
    }
    unsigned at(int x, int y) const { return pixels.at(std::size_t(y) * width + x); }
    /// Rows (or columns) with anything in them: the first, and the one behind the last.
    std::pair<int, int> inked(bool rows = true) const {
        int first = 1 << 20, last = 0;
        for (int i = 0; i < width * height; ++i)
            if (const int at = rows ? i / width : i % width; pixels[i])
                first = std::min(first, at), last = std::max(last, at + 1);
        return {first, last};
    }
    bool operator==(const ImagePixels&) const = default;

    int width, height;
    std::vector<unsigned> pixels;
};

} // namespace vx::test
