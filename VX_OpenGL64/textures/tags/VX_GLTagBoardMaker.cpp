// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/private/OffscreenPicture.h>
#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <cmath>
#include <functional>

namespace {

constexpr double kMargin = 5.0;
constexpr double kMipmapMargin = 4.0;

using Text = NSRef<NSAttributedString>;

Text makeText(NSString* text, NSFont* font, NSColor* color, NSMutableParagraphStyle* style = nullptr) {
    const auto attributes = NSInit(new NSMutableDictionary);
    attributes->setObject(font, NSFontAttributeName);
    attributes->setObject(color, NSForegroundColorAttributeName);
    if (style)
        attributes->setObject(style, NSParagraphStyleAttributeName);
    return NSInit(new NSAttributedString, text, attributes.get());
}

/// Null where there is no such font.
Text makeTextIn(NSString* fontName, float size, NSString* text, NSColor* color,
                NSMutableParagraphStyle* style = nullptr) {
    NSFont* font = NSFont::fontWithName(fontName, size);
    return font ? makeText(text, font, color, style) : nullptr;
}

/// The text on a canvas of that size; without a background the canvas stays as it is.
NSRef<NSBitmapImageRep> paint(CGSize canvas, NSColor* background, NSColor* color,
                              const std::function<void()>& draw) {
    return vx::paintOffscreen(canvas, false, [&] {
        if (background) {
            background->set();
            NSRectFill({{}, canvas});
        }
        color->set();
        draw();
    });
}

NSColor* clear() {
    return NSColor::colorWithDeviceWhite(0.0, 0.0);
}

NSColor* orBlack(NSColor* background) {
    return background ? background : NSColor::blackColor();
}

CGSize sizeOf(const vx::TexturePixels& pixels) {
    return CGSizeMake(pixels.width, pixels.height);
}

void upload(GLenum target, int width, int height, const vx::TexturePixels& pixels) {
    glTexImage2D(target, 0, GL_RGBA, width, height, 0, pixels.hasAlpha ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE,
                 pixels.data);
}

VX_GLTagTexture* makeRectangleTag(const NSBitmapImageRep* bitmap) {
    const vx::TexturePixels pixels(bitmap);
    vx::setUnpackingOf(pixels);
    const GLuint texture = vx::makeRectangleTexture();
    upload(GL_TEXTURE_RECTANGLE_ARB, pixels.width, pixels.height, pixels);
    const auto width = static_cast<float>(pixels.width), height = static_cast<float>(pixels.height);
    auto* tag = new VX_GLTagTexture;
    tag->SetTexture(GL_TEXTURE_RECTANGLE_ARB, sizeOf(pixels), sizeOf(pixels), {0.0f, 0.0f, width, height},
                    height / width, texture);
    return tag;
}

/// A picture in the middle of a canvas whose sides are powers of two.
struct MipmapBoard {
    explicit MipmapBoard(CGSize content)
        : width(vx::powerOfTwoFor(content.width)),
          height(vx::powerOfTwoFor(content.height)),
          place{{(width - content.width) * 0.5, (height - content.height) * 0.5}, content} {}

    CGSize canvas() const { return CGSizeMake(width, height); }
    VX_GLTagTexture* makeTag(const NSBitmapImageRep* bitmap) const {
        const vx::TexturePixels pixels(bitmap);
        vx::setUnpackingOf(pixels);
        const GLuint texture = vx::makeMipmapTexture();
        upload(GL_TEXTURE_2D, width, height, pixels);
        auto* tag = new VX_GLTagTexture;
        tag->SetTexture(GL_TEXTURE_2D, canvas(), place.size, texCoords(),
                        static_cast<float>(place.size.height / place.size.width), texture);
        return tag;
    }

    int width, height;
    CGRect place;

private:
    glm::tvec4<float> texCoords() const {
        const auto canvasWidth = static_cast<float>(width), canvasHeight = static_cast<float>(height);
        return {static_cast<float>(place.origin.x) / canvasWidth,
                static_cast<float>(place.origin.y) / canvasHeight,
                static_cast<float>(place.size.width) / canvasWidth,
                static_cast<float>(place.size.height) / canvasHeight};
    }
};

// As many lines as the one line fills widths, and one more: reckoned before the text is wrapped.
CGSize limitedSize(CGSize line, double maxWidth) {
    if (!(line.width > maxWidth))
        return line;
    return CGSizeMake(maxWidth, line.height * (std::trunc(line.width / maxWidth) + 1.0));
}

} // namespace

VX_GLTagBoardMaker::~VX_GLTagBoardMaker() = default;

VX_GLTagBoardMaker* VX_GLTagBoardMaker::init() {
    m_FontName = NSRef<NSString>::adopt((new NSString)->initWithUTF8String("Arial Black"));
    return this;
}

void VX_GLTagBoardMaker::dealloc() {
    m_FontName = nullptr;
    NSObject::dealloc();
}

void VX_GLTagBoardMaker::setFontName(NSString* name) {
    if (name != m_FontName.get())
        m_FontName = NSRef<NSString>::adopt(name ? name->copy() : nullptr);
}

VX_GLTagTexture* VX_GLTagBoardMaker::renderText(NSString* text, float size, NSColor* color) {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    const Text made = makeText(text, NSFont::fontWithName(m_FontName.get(), size), color);
    const CGSize line = made->size();
    const CGSize canvas = {line.width + 2 * kMargin, line.height + 2 * kMargin};
    return makeRectangleTag(paint(canvas, clear(), color, [&] {
                                made->drawAtPoint({kMargin, kMargin});
                            }).get());
}

VX_GLTagTexture* VX_GLTagBoardMaker::renderTextForSingleLine(NSString* text, float size, NSColor* bkColor,
                                                             NSColor* color, float width) {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    const Text made = makeTextIn(m_FontName.get(), size, text, color);
    if (!made)
        return nullptr;
    const CGSize line = made->size();
    return makeRectangleTag(paint({width, line.height}, orBlack(bkColor), color, [&] {
                                made->drawAtPoint({(width - line.width) * 0.5, 0.0});
                            }).get());
}

VX_GLTagTexture* VX_GLTagBoardMaker::renderTextForMipmapLimited(NSString* text, float size, NSColor* color,
                                                                float maxWidth) {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    const Text made = makeTextIn(m_FontName.get(), size, text, color);
    if (!made)
        return nullptr;
    const MipmapBoard board(limitedSize(made->size(), maxWidth));
    return board.makeTag(paint(board.canvas(), clear(), color, [&] { made->drawInRect(board.place); }).get());
}

VX_GLTagTexture* VX_GLTagBoardMaker::renderTextForMipmapLimitedSingleLine(NSString* text, float size,
                                                                          NSColor* bkColor, NSColor* color,
                                                                          float) {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto style = NSInit(new NSMutableParagraphStyle);
    style->setLineBreakMode(NSLineBreakByClipping);
    const Text made = makeTextIn(m_FontName.get(), size, text, color, style.get());
    if (!made)
        return nullptr;
    const MipmapBoard board(made->size());
    return board.makeTag(
        paint(board.canvas(), orBlack(bkColor), color, [&] { made->drawInRect(board.place); }).get());
}

VX_GLTagTexture* VX_GLTagBoardMaker::renderTextForMipmap(NSString* text, float size, NSColor* color) {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    const Text made = makeTextIn(m_FontName.get(), size, text, color);
    if (!made)
        return nullptr;
    const CGSize line = made->size();
    const MipmapBoard board({line.width + 2 * kMipmapMargin, line.height + 2 * kMipmapMargin});
    return board.makeTag(
        paint(board.canvas(), nullptr, color, [&] { made->drawAtPoint(board.place.origin); }).get());
}
