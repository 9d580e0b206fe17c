// SPDX-License-Identifier: MIT
// Text, drawn pictures and images of textures, beside the least that the same picture takes.
#include <bench/RatioTable.h>
#include <bench/RunningView.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/textures/tags/VX_GLDynamicTexture.h>
#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSBitmapImageRep.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/AppKit/NSGraphicsContext.h>
#include <VX_Platform/AppKit/NSImage.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using vx::test::HeadlessContext;

constexpr int Width = 1920;
constexpr int Height = 1080;
constexpr const char* Words = "Composition size 1920 x 1080";

NSRef<NSAttributedString> makeText(const char* words) {
    const auto attributes = NSInit(new NSMutableDictionary);
    NSString* family = NSString::stringWithUTF8String("Arial Black");
    attributes->setObject(NSFont::fontWithName(family, 38), NSFontAttributeName);
    attributes->setObject(NSColor::colorWithDeviceRed(1, 0.5, 0, 1), NSForegroundColorAttributeName);
    return NSInit(new NSAttributedString, NSString::stringWithUTF8String(words), attributes.get());
}

/// All of a tag of text but the upload.
NSRef<NSBitmapImageRep> paintText(const char* words) {
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto text = makeText(words);
    const NSSize line = text->size(), size = CGSizeMake(line.width + 10, line.height + 10);
    const auto image = NSInit(new NSImage, size);
    image->lockFocus();
    NSGraphicsContext::currentContext()->setShouldAntialias(true);
    NSColor::colorWithDeviceWhite(0, 0)->set();
    NSRectFill({{}, size});
    text->drawAtPoint(CGPointMake(5, 5));
    auto bitmap = NSInit(new NSBitmapImageRep, CGRect{{}, size});
    image->unlockFocus();
    return bitmap;
}

void textTag(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(paintText(Words)->bitmapData());
}

/// A glyph as it was drawn once, without what is empty around it.
struct Glyph {
    explicit Glyph(const NSBitmapImageRep& bitmap) {
        const int width = bitmap.pixelsWide(), height = bitmap.pixelsHigh();
        const auto* const pixels = reinterpret_cast<const std::uint32_t*>(bitmap.bitmapData());
        int right = 0, bottom = 0;
        left = width, top = height;
        for (int i = 0; i < width * height; ++i)
            if (pixels[i]) {
                left = std::min(left, i % width), right = std::max(right, i % width + 1);
                top = std::min(top, i / width), bottom = std::max(bottom, i / width + 1);
            }
        rowBytes = std::size_t(std::max(right - left, 0)) * 4, rows = std::max(bottom - top, 0);
        for (int y = top; y < bottom; ++y)
            bytes.insert(bytes.end(), bitmap.bitmapData() + (y * width + left) * 4,
                         bitmap.bitmapData() + (y * width + right) * 4);
    }
    int left, top, rows;
    std::size_t rowBytes;
    std::vector<std::uint8_t> bytes;
};

/// Glyphs, and where they lie.
struct Run {
    Run() {
        double x = 0;
        for (const char* letter = Words; *letter; ++letter) {
            const std::string one(letter, 1);
            glyphs.emplace_back(*paintText(one.c_str()));
            places.push_back(int(x));
            x += makeText(one.c_str())->size().width;
        }
        const NSSize size = makeText(Words)->size();
        width = std::size_t(std::ceil(size.width)) + 10, height = std::size_t(std::ceil(size.height)) + 10;
    }
    std::vector<Glyph> glyphs;
    std::vector<int> places;
    std::size_t width, height;
};

void blendGlyphs(benchmark::State& state) {
    const auto pool = NSInit(new NSAutoreleasePool);
    const Run run;
    std::vector<std::uint8_t> pixels(run.width * run.height * 4);
    for (auto _ : state) {
        std::fill(pixels.begin(), pixels.end(), 0);
        for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
            const Glyph& glyph = run.glyphs[i];
            const std::uint8_t* from = glyph.bytes.data();
            std::uint8_t* to = &pixels[(glyph.top * run.width + run.places[i] + glyph.left) * 4];
            for (int y = 0; y < glyph.rows; ++y, from += glyph.rowBytes, to += run.width * 4)
                for (std::size_t x = 0; x < glyph.rowBytes; ++x)
                    to[x] = std::max(to[x], from[x]);
        }
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
}

class OneColor : public VX_GLDynamicTexture {
public:
    OneColor() : VX_GLDynamicTexture(Width, Height) {}
    void Draw() override {
        NSColor::redColor()->set();
        NSRectFill(CGRectMake(0, 0, Width, Height));
    }
};

template <void (VX_GLDynamicTexture::*update)()>
void dynamicTexture(benchmark::State& state) {
    HeadlessContext context(64, 64);
    OneColor texture;
    (texture.*update)(); // makes it
    for (auto _ : state) {
        (texture.*update)();
        glFinish();
    }
}

// Kept pixels, in the order that needs no swap, of the picture alone.
void rawTexture(benchmark::State& state, GLenum target, int width, int height) {
    HeadlessContext context(64, 64);
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(target, name);
    if (target == GL_TEXTURE_2D)
        glTexParameteri(target, GL_GENERATE_MIPMAP, 1);
    std::vector<unsigned> pixels(std::size_t(width) * height);
    glTexImage2D(target, 0, GL_RGBA8, width, height, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, nullptr);
    for (auto _ : state) {
        for (int y = 0; y < Height; ++y)
            std::fill_n(&pixels[std::size_t(y) * width], Width, 0xffff0000u);
        glTexSubImage2D(target, 0, 0, 0, width, height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels.data());
        glFinish();
    }
    glDeleteTextures(1, &name);
}

constexpr int Part = 3; // of the view's size

GLuint makePicture() {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_RECTANGLE, name);
    const std::vector<unsigned> pixels(std::size_t(Width) * Height, 0xff336699);
    glTexImage2D(GL_TEXTURE_RECTANGLE, 0, GL_RGBA8, Width, Height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels.data());
    return name;
}

void imageOfTexture(benchmark::State& state) {
    auto pipeline = NSRef<VX_GLRenderpipeline>::adopt(new VX_GLRenderpipeline);
    pipeline->init();
    vx::bench::RunningView running(Width, Height, pipeline.get());
    if (!running.ok())
        return state.SkipWithError("no view");
    running.stepByHand();
    running.view()->stopRender();
    running.view()->SetNeedCIContext();
    running.view()->prepareOpenGL();
    running.stepByHand();
    running.view()->RenderThreadLock();
    running.view()->makeCurrentContext();
    const GLuint name = makePicture();
    running.view()->RenderThreadUnLock();
    for (auto _ : state) {
        const auto pool = NSInit(new NSAutoreleasePool);
        if (!running.view()->CreateNSImageFromTexture(name, float(Width) / Part, float(Height) / Part))
            state.SkipWithError("no image");
    }
}

// The texture's pixels, and the mean of each nine of them.
void readAndShrink(benchmark::State& state) {
    HeadlessContext context(64, 64);
    makePicture();
    std::vector<std::uint8_t> pixels(std::size_t(Width) * Height * 4), small(pixels.size() / (Part * Part));
    for (auto _ : state) {
        glGetTexImage(GL_TEXTURE_RECTANGLE, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, pixels.data());
        std::vector<std::uint16_t> sums(std::size_t(Width) * 4);
        for (int y = 0; y < Height / Part; ++y) {
            const std::uint8_t* const row = &pixels[std::size_t(y) * Part * Width * 4];
            for (int i = 0; i < Width * 4; ++i)
                sums[i] = std::uint16_t(row[i] + row[i + Width * 4] + row[i + 2 * Width * 4]);
            for (int i = 0; i < Width / Part * 4; ++i) {
                const std::uint16_t* const sum = &sums[i / 4 * 4 * Part + i % 4];
                small[std::size_t(y) * (Width / Part) * 4 + i] = std::uint8_t((sum[0] + sum[4] + sum[8]) / 9);
            }
        }
        benchmark::DoNotOptimize(small.data());
    }
}

const bool registered =
    vx::bench::addRow({.name = "text tag, 28 characters at 38 px, no upload",
                       .limit = blendGlyphs,
                       .ours = textTag,
                       .must = 3.0,
                       .aim = 2.0}) &&
    vx::bench::addRow({.name = "dynamic texture, 1920 x 1080, rectangle",
                       .limit = [](auto& state) { rawTexture(state, GL_TEXTURE_RECTANGLE, Width, Height); },
                       .ours = dynamicTexture<&VX_GLDynamicTexture::UpdateRectangleTexture>}) &&
    vx::bench::addRow({.name = "dynamic texture, 1920 x 1080, mipmapped",
                       .limit = [](auto& state) { rawTexture(state, GL_TEXTURE_2D, 2048, 2048); },
                       .ours = dynamicTexture<&VX_GLDynamicTexture::UpdateMipmapTexture>}) &&
    vx::bench::addRow({.name = "image of a 1920 x 1080 texture, a third in size",
                       .limit = readAndShrink,
                       .ours = imageOfTexture});

} // namespace
