// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <memory>

/// Pixels of 8-bit components, the top row first and rows without gaps. What their order is, and whether the
/// colours are multiplied by alpha, is settled by who made it. Any thread, once it is set up.
class VX_EXPORT NSBitmapImageRep : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSBitmapImageRep)

    NSBitmapImageRep();

    using NSObject::init;
    /// Copies the pixels that the rectangle touches from the image locked on the calling thread: R, G, B and
    /// A, colours multiplied by alpha. The rectangle is in the axes of the focus, and cut to the image; the
    /// first row is the upper one in either. Returns the bitmap; without a focus it releases it and returns
    /// null.
    NSBitmapImageRep* initWithFocusedViewRect(NSRect rect);
    /// As `initWithFocusedViewRect`, for `NSInit`.
    NSBitmapImageRep* init(NSRect rect) { return initWithFocusedViewRect(rect); }

    /// Takes a host's own bytes, whatever the order of their components: `planes[0]` has `pixelsHigh` rows
    /// of `pixelsWide` pixels, `bytesPerRow` from one to the next (0: without gaps), and is copied; with null
    /// for `planes` the bytes are 0, to be written through `bitmapData`. 8 bits a sample, 3 samples, or 4
    /// with alpha; not planar; the colour space is not used; `bitsPerPixel` is that of the samples, or 0.
    /// Returns the bitmap; for anything else, and when memory is short, it releases it and returns null.
    NSBitmapImageRep* initWithBitmapDataPlanes(const unsigned char* const* planes, int pixelsWide,
                                               int pixelsHigh, int bitsPerSample, int samplesPerPixel,
                                               bool hasAlpha, bool isPlanar, const char* colorSpaceName,
                                               int bytesPerRow, int bitsPerPixel);

    /// Size in pixels.
    int pixelsWide() const { return m_PixelsWide; }
    int pixelsHigh() const { return m_PixelsHigh; }
    /// Whether a pixel has 4 components, the last one alpha, and not 3.
    bool hasAlpha() const { return m_HasAlpha; }
    /// Returns the first row; borrowed, as long as the bitmap lives. Null when there are no pixels.
    unsigned char* bitmapData() const;

protected:
    ~NSBitmapImageRep() override;

private:
    struct VX_HIDDEN Memory;

    bool take(int width, int height, bool hasAlpha);

    std::unique_ptr<Memory> m_Memory;
    int m_PixelsWide = 0;
    int m_PixelsHigh = 0;
    bool m_HasAlpha = false;
};
