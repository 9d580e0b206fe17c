// SPDX-License-Identifier: MIT
// A texture as an image.
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/private/MainViewInternals.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSImage.h>
#include <VX_Platform/CoreImage/CIContext.h>
#include <VX_Platform/CoreImage/private/TextureImage.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

namespace {

NSRect fittedRect(float width, float height, float aspect) {
    const bool fillsHeight = aspect * width > height;
    const float fittedWidth = fillsHeight ? height / aspect : width;
    const float fittedHeight = fillsHeight ? height : aspect * width;
    return CGRectMake((width - fittedWidth) * 0.5f, (height - fittedHeight) * 0.5f, fittedWidth,
                      fittedHeight);
}

} // namespace

// Under the render lock. Null when there is no such texture, or its context is not to be had.
NSRef<NSImage> VX_GLMainView::readTexture(unsigned int texture) {
    const vx::FormerContext former;
    NSRef<NSImage> image;
    if (m_ciContext->CGLContext()->makeCurrentContext())
        image = vx::imageOfTexture(texture);
    former.restore();
    if (!image)
        NSLog("VX_GLMainView::CreateNSImageFromTexture: %u is no 2D or rectangle texture with a picture",
              texture);
    return image;
}

NSImage* VX_GLMainView::CreateNSImageFromTexture(unsigned int texture, float width, float height) {
    if (!texture)
        return nullptr;
    const Hold hold(this);
    const bool hasImageContext = m_ciContext && m_ciContext->CGLContext();
    const NSRef<NSImage> source = hasImageContext ? readTexture(texture) : nullptr;
    if (hasImageContext && !source)
        return nullptr;
    NSImage* image = (new NSImage)->initWithSize(CGSizeMake(width, height))->autorelease();
    image->lockFocus();
    NSColor::blackColor()->set();
    NSRectFill(CGRectMake(0, 0, width, height));
    if (source)
        source->drawInRect(fittedRect(width, height, m_Height / m_Width), {{}, source->size()},
                           NSCompositeSourceOver, 1.0);
    image->unlockFocus();
    return image;
}
