// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <memory>

/// How a picture is laid over another: in its place, alpha included, or over it.
enum NSCompositingOperation { NSCompositeCopy = 1, NSCompositeSourceOver = 2 };

/// A canvas in memory, clear at first, with a pixel for each unit. Its colours are device colours multiplied
/// by alpha.
///
/// Between `lockFocus` and `unlockFocus` all drawing of the calling thread goes to it: `NSRectFill`,
/// `NSBezierPath`, `NSAttributedString` and other images. Each thread has a focus of its own, and images
/// locked inside each other form a stack. Drawing without a focus does nothing. One thread at a time.
class VX_EXPORT NSImage : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSImage)

    NSImage();

    using NSObject::init;
    /// Size in pixels; a fraction makes a whole pixel more. Without any pixels, and harmless, when a side is
    /// not above 0, is above 32767, or memory is short. Returns the image.
    NSImage* initWithSize(NSSize size);
    /// As `initWithSize`, for `NSInit`.
    NSImage* init(NSSize size) { return initWithSize(size); }

    /// Returns the size that it was given.
    NSSize size() const { return m_Size; }

    /// Makes the image the calling thread's drawing target, and retains it until `unlockFocus`. The origin is
    /// the lower left corner, y runs upward; the colour is opaque black. An image may be locked more than
    /// once.
    void lockFocus() { lockFocusFlipped(false); }
    /// The same; when `flipped`, the origin is the upper left corner and y runs downward. Text and images
    /// stand upright in both.
    void lockFocusFlipped(bool flipped);
    /// Takes back the latest `lockFocus` of this image on the calling thread; harmless without one.
    void unlockFocus();

    /// Draws the part `from` of the image, its origin the lower left corner, into the rectangle `into` of the
    /// focused image, scaled and upright, its alpha times `fraction`. Nothing for an image without pixels and
    /// a rectangle without an extent.
    void drawInRect(NSRect into, NSRect from, NSCompositingOperation operation, double fraction);

protected:
    ~NSImage() override;

private:
    struct VX_HIDDEN Pixels;

    NSSize m_Size;
    std::unique_ptr<Pixels> m_Pixels;
};
