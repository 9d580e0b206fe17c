// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSImage.h>

#include <VX_Platform/AppKit/private/Focus.h>
#include <VX_Platform/drawing/PixelMemory.h>

#include <cmath>

using vx::Canvas;

namespace {

long long pixelsFor(double length) {
    return length > 0 && length <= Canvas::kMaxSide ? static_cast<long long>(std::ceil(length)) : 0;
}

} // namespace

struct NSImage::Pixels {
    Pixels(long long width, long long height) : width(width), height(height), memory(width * height * 4) {
        memory.clear();
    }
    Canvas canvas(Canvas::Origin origin) const {
        return Canvas(memory.bytes(), width, height, width * 4, origin);
    }

    long long width, height;
    vx::PixelMemory memory;
};

NSImage::NSImage() = default;
NSImage::~NSImage() = default;

NSImage* NSImage::initWithSize(NSSize size) {
    m_Size = size;
    const long long width = pixelsFor(size.width), height = pixelsFor(size.height);
    if (width > 0 && height > 0)
        m_Pixels = std::make_unique<Pixels>(width, height);
    return this;
}

void NSImage::lockFocusFlipped(bool flipped) {
    const Canvas::Origin origin = flipped ? Canvas::Origin::topLeft : Canvas::Origin::bottomLeft;
    vx::pushFocus(this, m_Pixels ? m_Pixels->canvas(origin) : Canvas());
}

void NSImage::unlockFocus() {
    vx::popFocus(this);
}

void NSImage::drawInRect(NSRect into, NSRect from, NSCompositingOperation operation, double fraction) {
    if (!m_Pixels)
        return;
    Canvas source = m_Pixels->canvas(Canvas::Origin::bottomLeft);
    Canvas& target = vx::focusedCanvas();
    target.save();
    target.setOperator(operation == NSCompositeCopy ? Canvas::Operator::copy : Canvas::Operator::sourceOver);
    target.drawCanvas(source, vx::areaOf(from), vx::areaOf(into), fraction);
    target.restore();
}
