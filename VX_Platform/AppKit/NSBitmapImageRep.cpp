// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSBitmapImageRep.h>

#include <VX_Platform/AppKit/private/Focus.h>
#include <VX_Platform/drawing/PixelMemory.h>

#include <cstring>

struct NSBitmapImageRep::Memory {
    vx::PixelMemory pixels;
};

NSBitmapImageRep::NSBitmapImageRep() : m_Memory(std::make_unique<Memory>()) {}
NSBitmapImageRep::~NSBitmapImageRep() = default;

unsigned char* NSBitmapImageRep::bitmapData() const {
    return m_Memory->pixels.bytes();
}

bool NSBitmapImageRep::take(int width, int height, bool hasAlpha) {
    const std::size_t size = std::size_t(width) * std::size_t(height) * (hasAlpha ? 4 : 3);
    m_HasAlpha = hasAlpha;
    m_Memory->pixels = vx::PixelMemory(size);
    if (m_Memory->pixels.size() != size)
        return false;
    m_PixelsWide = width;
    m_PixelsHigh = height;
    return true;
}

NSBitmapImageRep* NSBitmapImageRep::initWithFocusedViewRect(NSRect rect) {
    if (!vx::hasFocus()) {
        release();
        return nullptr;
    }
    vx::Canvas& canvas = vx::focusedCanvas();
    const vx::Canvas::PixelArea area = canvas.touchedBy(vx::areaOf(rect));
    if (take(area.width, area.height, true) && bitmapData())
        canvas.readPixels(area, bitmapData());
    return this;
}

NSBitmapImageRep* NSBitmapImageRep::initWithBitmapDataPlanes(const unsigned char* const* planes,
                                                             int pixelsWide, int pixelsHigh,
                                                             int bitsPerSample, int samplesPerPixel,
                                                             bool hasAlpha, bool isPlanar, const char*,
                                                             int bytesPerRow, int bitsPerPixel) {
    const long long row = 1LL * pixelsWide * samplesPerPixel;
    const long long stride = bytesPerRow == 0 ? row : bytesPerRow;
    const bool isServed = bitsPerSample == 8 && samplesPerPixel == (hasAlpha ? 4 : 3) && !isPlanar &&
                          (bitsPerPixel == 0 || bitsPerPixel == 8 * samplesPerPixel);
    const bool fits = pixelsWide > 0 && pixelsHigh > 0 && stride >= row && (!planes || planes[0]);
    if (!isServed || !fits || !take(pixelsWide, pixelsHigh, hasAlpha)) {
        release();
        return nullptr;
    }
    if (!planes)
        m_Memory->pixels.clear();
    for (long long y = 0; planes && y < pixelsHigh; ++y)
        std::memcpy(bitmapData() + y * row, planes[0] + y * stride, std::size_t(row));
    return this;
}
