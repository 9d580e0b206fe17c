// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSImage.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/drawing/Canvas.h>

namespace vx {

/// Where drawing on the calling thread goes: the canvas of the image that was locked last and is locked
/// still, or an empty one.
Canvas& focusedCanvas();
bool hasFocus();

/// Makes a canvas over the image's pixels the calling thread's, which retains the image.
void pushFocus(NSImage* image, Canvas canvas);
/// Takes the image's latest canvas out; nothing if it has none on this thread.
void popFocus(NSImage* image);

inline Canvas::Area areaOf(const CGRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

} // namespace vx
