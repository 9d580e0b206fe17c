// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/private/OffscreenPicture.h>

#include <VX_OpenGL64/textures/VX_GLUtility.h>
#include <VX_Platform/AppKit/NSGraphicsContext.h>
#include <VX_Platform/AppKit/NSImage.h>

#include <epoxy/gl.h>

#include <limits>

namespace vx {

namespace {

class Focus {
public:
    Focus(NSImage* image, bool flipped) : m_Image(image) { image->lockFocusFlipped(flipped); }
    ~Focus() { m_Image->unlockFocus(); }
    Focus(const Focus&) = delete;
    Focus& operator=(const Focus&) = delete;

private:
    NSImage* m_Image;
};

unsigned makeTexture(GLenum target) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(target, name);
    return name;
}

} // namespace

NSRef<NSBitmapImageRep> paintOffscreen(CGSize size, bool flipped, const std::function<void()>& paint) {
    const auto image = NSInit(new NSImage, size);
    const Focus focus(image.get(), flipped);
    NSGraphicsContext::currentContext()->setShouldAntialias(true);
    paint();
    return NSInit(new NSBitmapImageRep, CGRect{{}, size});
}

TexturePixels::TexturePixels(const NSBitmapImageRep* bitmap) {
    if (!bitmap)
        return;
    width = bitmap->pixelsWide();
    height = bitmap->pixelsHigh();
    hasAlpha = bitmap->hasAlpha();
    data = bitmap->bitmapData();
}

void setUnpackingOf(const TexturePixels& pixels) {
    glPixelStorei(GL_UNPACK_ROW_LENGTH, pixels.width);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
}

unsigned makeRectangleTexture() {
    const unsigned name = makeTexture(GL_TEXTURE_RECTANGLE_ARB);
    glTexParameteri(GL_TEXTURE_RECTANGLE_ARB, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_RECTANGLE_ARB, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    return name;
}

unsigned makeMipmapTexture() {
    const unsigned name = makeTexture(GL_TEXTURE_2D);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, 1);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    return name;
}

int powerOfTwoFor(double length) {
    constexpr int most = std::numeric_limits<int>::max();
    const int whole = length > 0.0 ? (length < most ? static_cast<int>(length) : most) : 0;
    return VX_GLUtility_NextHighestPowerOf2FromInt(whole);
}

} // namespace vx
