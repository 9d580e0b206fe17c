// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSBitmapImageRep.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <functional>

namespace vx {

/// What is painted on a canvas of that size, smoothed; the focus is given back also when `paint` throws.
NSRef<NSBitmapImageRep> paintOffscreen(CGSize size, bool flipped, const std::function<void()>& paint);

/// A bitmap as GL takes it: no pixels for null.
struct TexturePixels {
    explicit TexturePixels(const NSBitmapImageRep* bitmap);

    int width = 0;
    int height = 0;
    bool hasAlpha = false;
    const void* data = nullptr;
};

/// Tells GL how the rows lie. Stays set.
void setUnpackingOf(const TexturePixels& pixels);
/// Makes a texture, binds it and sets the parameters of its kind; returns the name.
unsigned makeRectangleTexture();
unsigned makeMipmapTexture();

/// The power of two for a length, cut to whole pixels first.
int powerOfTwoFor(double length);

} // namespace vx
