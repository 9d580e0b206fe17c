// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/CoreGraphics/private/PNGFile.h>
#include <tests/support/Picture.h>
#include <tests/textures/tags/TagPictures.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

/// One colour, and a mark at the upper left.
class Painted : public VX_GLDynamicTexture {
public:
    using VX_GLDynamicTexture::VX_GLDynamicTexture;

    void Draw() override {
        if (fails)
            throw std::runtime_error("no picture");
        NSColor::colorWithDeviceRed(0, green, 0, 1)->set();
        NSRectFill({{}, contentSize()});
        NSColor::colorWithDeviceRed(1, 0, 0, 0.6)->set();
        NSRectFill(CGRectMake(0, 0, 2, 1));
    }
    double green = 1;
    bool fails = false;
};

/// Of the texture, of the picture, the coordinates and the aspect.
using Sizes = std::vector<double>;
Sizes sizesOf(const VX_GLTagTexture& tag) {
    const glm::tvec4<float> coords = tag.texCoords();
    return {tag.textureSize().width,
            tag.textureSize().height,
            tag.contentSize().width,
            tag.contentSize().height,
            coords[0],
            coords[1],
            coords[2],
            coords[3],
            tag.aspect()};
}

NSRef<NSBitmapImageRep> bitmap(bool alpha, std::vector<unsigned char> bytes) {
    const unsigned char* planes[] = {bytes.data()};
    return NSRef<NSBitmapImageRep>::adopt(
        (new NSBitmapImageRep)
            ->initWithBitmapDataPlanes(planes, 1, 2, 8, alpha ? 4 : 3, alpha, false, nullptr, 0, 0));
}

} // namespace

using DynamicTextureTest = TagTest;

TEST_F(DynamicTextureTest, RectanglesArePaintedMadeOnceAndWrittenOver) {
    Painted texture(100, 50);
    EXPECT_EQ(sizesOf(texture), (Sizes{100, 50, 100, 50, 0, 0, 0, 0, 0.5}));
    texture.fails = true;
    EXPECT_THROW(texture.UpdateRectangleTexture(), std::runtime_error);
    EXPECT_FALSE(NSInit(new NSBitmapImageRep, CGRectMake(0, 0, 1, 1))) << "its focus was left";
    EXPECT_EQ(texture.texture(), 0u);
    texture.fails = false;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    texture.UpdateRectangleTexture();
    const unsigned name = texture.texture();
    EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_RECTANGLE_ARB),
              ints(100, 1, name));
    EXPECT_EQ(sizesOf(texture), (Sizes{100, 50, 100, 50, 0, 0, 100, 50, 0.5}));
    EXPECT_EQ(parametersOf(texture),
              ints(GL_LINEAR, GL_LINEAR, GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, 0, GL_RGBA8));
    texture.green = 0.4;
    texture.UpdateRectangleTexture();
    EXPECT_EQ(ints(texture.target(), texture.texture()), ints(GL_TEXTURE_RECTANGLE_ARB, name));
    const PixelRows rows = picture(texture);
    EXPECT_EQ(rows.at(0, 0), 0x99000099u);
    for (const auto& [x, y] : {std::pair(2, 0), {0, 1}, {99, 49}})
        EXPECT_EQ(rows.at(x, y), 0x006600ffu);

    texture.Resize(7, 14);
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(sizesOf(texture), (Sizes{7, 14, 7, 14, 0, 0, 0, 0, 2}));
    texture.UpdateRectangleTexture();
    EXPECT_EQ(picture(texture).at(6, 13), 0x006600ffu);
    texture.Resize(0, -1);
    texture.UpdateRectangleTexture(); // no pixels, no harm
}

TEST_F(DynamicTextureTest, MipmapsFollowThePictureInTheCornerOfTheirTexture) {
    Painted texture(100, 50);
    texture.UpdateMipmapTexture();
    const unsigned name = texture.texture();
    EXPECT_EQ(sizesOf(texture), (Sizes{128, 64, 100, 50, 0, 0, 100.0 / 128, 50.0 / 64, 0.5}));
    EXPECT_EQ(parametersOf(texture),
              ints(GL_LINEAR, GL_LINEAR_MIPMAP_NEAREST, GL_REPEAT, GL_REPEAT, 1, GL_RGBA));
    texture.green = 0.4;
    // A texture that is made anew would grow.
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 256, 256, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    texture.UpdateMipmapTexture();
    EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_2D), ints(128, 1, name));
    const PixelRows rows = picture(texture), half = picture(texture, 1);
    EXPECT_TRUE(rows.width == 256 && rows.at(0, 0) == 0x99000099u && rows.at(99, 49) == 0x006600ffu);
    EXPECT_TRUE(rows.at(100, 49) == 0 && rows.at(99, 50) == 0);
    EXPECT_TRUE(half.width == 128 && half.at(40, 20) == 0x006600ffu);
}

TEST_F(DynamicTextureTest, BitmapsOfHostsAreTakenBlueFirst) {
    for (const bool alpha : {false, true}) {
        Painted texture(100, 50);
        const auto mine = alpha ? bitmap(true, {1, 2, 3, 4, 5, 6, 7, 8}) : bitmap(false, {1, 2, 3, 5, 6, 7});
        texture.UpdateRectangleTextureByBitmap(mine.get());
        EXPECT_EQ(sizesOf(texture), (Sizes{1, 2, 100, 50, 0, 0, 1, 2, 0.5}));
        EXPECT_EQ(parametersOf(texture)[5], alpha ? GL_RGBA8 : GL_RGB8);
        EXPECT_EQ(picture(texture).at(0, 0), alpha ? 0x03020104u : 0x030201ffu);
        EXPECT_EQ(picture(texture).at(0, 1), alpha ? 0x07060508u : 0x070605ffu);
        texture.UpdateRectangleTextureByBitmap(bitmap(alpha, std::vector<unsigned char>(8, 9)).get());
        EXPECT_EQ(picture(texture).at(0, 1) >> 8, 0x090909u);
        texture.UpdateRectangleTextureByBitmap(nullptr);
        EXPECT_TRUE(sizesOf(texture)[0] == 0 && mine->retainCount() == 1);
    }
}

TEST(DynamicTextureDeathTest, NeedsASizeAndAContext) {
    EXPECT_DEATH(Painted(0, 1), "\\(\\(w>0\\)&&\\(h>0\\)\\)");
    EXPECT_DEATH(Painted(1, -1), "\\(\\(w>0\\)&&\\(h>0\\)\\)");
    EXPECT_DEATH(Painted(1, 1).UpdateMipmapTexture(),
                 "VX_GLDynamicTexture::UpdateMipmapTexture: no OpenGL context");
}

// All but the caption is the same everywhere; fonts differ.
TEST_F(DynamicTextureTest, TheTestPatternIsTheReference) {
    for (const auto& [width, height] : {std::pair(640, 480), {1920, 1080}}) {
        const std::string name =
            "test_pattern_" + std::to_string(width) + "x" + std::to_string(height) + ".png";
        const Picture reference(VX_REFERENCES "/" + name);
        VX_GLTestPattern pattern(width, height);
        pattern.UpdateRectangleTexture();
        const std::vector<unsigned> pixels = picture(pattern).pixels;
        ASSERT_EQ(pixels.size(), reference.pixels.size());
        const int captionTop = height - width * 76 / 640, captionEnd = captionTop + width * 57 / 640;
        int largest = 0, differing = 0, white = 0;
        for (int i = 0; i < width * height; ++i) {
            const bool isCaption = i / width >= captionTop && i / width < captionEnd;
            white += isCaption && pixels[i] == ~0u && i % width % 40 && i / width % 40;
            for (int shift = 0; shift < 32 && !isCaption; shift += 8) {
                const int wanted = reference.pixels[i] >> shift & 255;
                const int difference = std::abs(int(pixels[i] >> shift & 255) - wanted);
                largest = std::max(largest, difference);
                differing += difference > 0;
            }
        }
        RecordProperty(name + " largest difference", largest);
        EXPECT_TRUE(largest <= 16 && differing <= width) << name << ": " << largest << ", " << differing;
        EXPECT_GT(white, width * 2) << "no caption";
        if (HasFailure()) {
            std::vector<unsigned> bytes;
            for (const unsigned pixel : pixels)
                bytes.push_back(__builtin_bswap32(pixel));
            vx::writePNGFile((testing::TempDir() + "upside_down_" + name).c_str(), width, height, 4,
                             reinterpret_cast<const unsigned char*>(bytes.data()));
        }
    }
    for (const auto& [width, expected] : {std::pair(60, 17), {5, 0}}) { // stripes of 3, 2 x 2 and 10 x 1
        VX_GLTestPattern narrow(width, 400);
        narrow.UpdateRectangleTexture();
        const std::vector<unsigned> rows = picture(narrow).pixels;
        EXPECT_EQ(std::count(&rows[60 * width], &rows[61 * width], 0xffu), expected) << width;
    }
}
