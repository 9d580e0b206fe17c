// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSBitmapImageRep.h>
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

std::vector<double> sizesOf(const VX_GLTagTexture& tag) {
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

int allocations = 0;
auto* allocate = static_cast<decltype(epoxy_glTexImage2D)>(nullptr);

/// How often an update calls glTexImage2D.
template <class Update>
int allocationsOf(const Update& update) {
    allocations = 0;
    glTexImage2D(GL_PROXY_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_BYTE, nullptr); // finds the real one
    allocate = std::exchange(epoxy_glTexImage2D,
                             [](GLenum target, GLint level, GLint internal, GLsizei width, GLsizei height,
                                GLint border, GLenum format, GLenum type, const void* data) {
                                 ++allocations;
                                 allocate(target, level, internal, width, height, border, format, type, data);
                             });
    update();
    epoxy_glTexImage2D = allocate;
    return allocations;
}

NSRef<NSBitmapImageRep> bitmap(int width, int height, bool alpha, std::vector<unsigned char> bytes) {
    const unsigned char* planes[] = {bytes.data()};
    return NSRef<NSBitmapImageRep>::adopt(
        (new NSBitmapImageRep)
            ->initWithBitmapDataPlanes(planes, width, height, 8, alpha ? 4 : 3, alpha, false, nullptr, 0, 0));
}

} // namespace

using DynamicTextureTest = TagTest;

TEST_F(DynamicTextureTest, RectanglesArePaintedMadeOnceAndWrittenOver) {
    Painted texture(100, 50);
    EXPECT_EQ(sizesOf(texture), (std::vector<double>{100, 50, 100, 50, 0, 0, 0, 0, 0.5}));
    texture.fails = true;
    EXPECT_THROW(texture.UpdateRectangleTexture(), std::runtime_error);
    EXPECT_FALSE(NSInit(new NSBitmapImageRep, CGRectMake(0, 0, 1, 1))) << "its focus was left";
    EXPECT_EQ(texture.texture(), 0u);
    texture.fails = false;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    EXPECT_EQ(allocationsOf([&] { texture.UpdateRectangleTexture(); }), 1);
    const unsigned name = texture.texture();
    EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_RECTANGLE_ARB),
              ints(100, 1, name));
    EXPECT_EQ(sizesOf(texture), (std::vector<double>{100, 50, 100, 50, 0, 0, 100, 50, 0.5}));
    EXPECT_EQ(texture.target(), unsigned(GL_TEXTURE_RECTANGLE_ARB));
    EXPECT_EQ(parametersOf(texture),
              ints(GL_LINEAR, GL_LINEAR, GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, 0, GL_RGBA8));
    texture.green = 0.4;
    EXPECT_EQ(allocationsOf([&] { texture.UpdateRectangleTexture(); }), 0);
    EXPECT_EQ(texture.texture(), name);
    const TagPicture picture(texture);
    EXPECT_EQ(picture.at(0, 0), 0x99000099u);
    EXPECT_TRUE(picture.at(2, 0) == 0x006600ffu && picture.at(0, 1) == 0x006600ffu &&
                picture.at(99, 49) == 0x006600ffu);

    texture.Resize(7, 14);
    EXPECT_FALSE(glIsTexture(name));
    EXPECT_EQ(sizesOf(texture), (std::vector<double>{7, 14, 7, 14, 0, 0, 0, 0, 2}));
    texture.UpdateRectangleTexture();
    EXPECT_EQ(TagPicture(texture).at(6, 13), 0x006600ffu);
    texture.Resize(0, -1);
    texture.UpdateRectangleTexture(); // no pixels, no harm
}

TEST_F(DynamicTextureTest, MipmapsFollowThePictureInTheCornerOfTheirTexture) {
    Painted texture(100, 50);
    EXPECT_EQ(allocationsOf([&] { texture.UpdateMipmapTexture(); }), 1);
    const unsigned name = texture.texture();
    EXPECT_EQ(sizesOf(texture), (std::vector<double>{128, 64, 100, 50, 0, 0, 100.0 / 128, 50.0 / 64, 0.5}));
    EXPECT_EQ(parametersOf(texture),
              ints(GL_LINEAR, GL_LINEAR_MIPMAP_NEAREST, GL_REPEAT, GL_REPEAT, 1, GL_RGBA));
    texture.green = 0.4;
    EXPECT_EQ(allocationsOf([&] { texture.UpdateMipmapTexture(); }), 0);
    EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_2D), ints(128, 1, name));
    const TagPicture picture(texture), half(texture, 1);
    EXPECT_EQ(picture.at(0, 0), 0x99000099u);
    EXPECT_TRUE(picture.at(99, 49) == 0x006600ffu && picture.at(100, 49) == 0 && picture.at(99, 50) == 0);
    EXPECT_TRUE(half.width == 64 && half.at(40, 20) == 0x006600ffu);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(DynamicTextureTest, BitmapsOfHostsAreTakenBlueFirst) {
    for (const bool alpha : {false, true}) {
        Painted texture(100, 50);
        const auto mine =
            alpha ? bitmap(1, 2, true, {1, 2, 3, 4, 5, 6, 7, 8}) : bitmap(1, 2, false, {1, 2, 3, 5, 6, 7});
        texture.UpdateRectangleTextureByBitmap(mine.get());
        EXPECT_EQ(sizesOf(texture), (std::vector<double>{1, 2, 100, 50, 0, 0, 1, 2, 0.5}));
        EXPECT_EQ(parametersOf(texture)[5], alpha ? GL_RGBA8 : GL_RGB8);
        EXPECT_EQ(TagPicture(texture).at(0, 0), alpha ? 0x03020104u : 0x030201ffu);
        EXPECT_EQ(TagPicture(texture).at(0, 1), alpha ? 0x07060508u : 0x070605ffu);
        const auto other = bitmap(1, 2, alpha, std::vector<unsigned char>(8, 9));
        EXPECT_EQ(allocationsOf([&] { texture.UpdateRectangleTextureByBitmap(other.get()); }), 0);
        EXPECT_EQ(TagPicture(texture).at(0, 1) >> 8, 0x090909u);
        texture.UpdateRectangleTextureByBitmap(nullptr);
        EXPECT_EQ(sizesOf(texture)[0], 0);
        EXPECT_EQ(mine->retainCount(), 1);
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
        TagPicture picture(pattern);
        ASSERT_EQ(picture.pixels.size(), reference.pixels.size());
        const int captionTop = height - width * 76 / 640, captionEnd = captionTop + width * 57 / 640;
        int largest = 0, differing = 0, white = 0;
        for (int i = 0; i < width * height; ++i) {
            const int y = i / width;
            const bool isCaption = y >= captionTop && y < captionEnd;
            white += isCaption && picture.pixels[i] == ~0u && i % width % 40 && y % 40;
            for (int shift = 0; shift < 32 && !isCaption; shift += 8) {
                const int difference =
                    std::abs(int(picture.pixels[i] >> shift & 255) - int(reference.pixels[i] >> shift & 255));
                largest = std::max(largest, difference);
                differing += difference > 0;
            }
        }
        RecordProperty(name + " largest difference", largest);
        EXPECT_LE(largest, 16) << "at the disc's edge no more";
        EXPECT_LE(differing, width) << name;
        EXPECT_GT(white, width * 2) << "no caption";
        if (HasFailure()) {
            for (unsigned& pixel : picture.pixels)
                pixel = __builtin_bswap32(pixel);
            vx::writePNGFile((testing::TempDir() + "upside_down_" + name).c_str(), width, height, 4,
                             reinterpret_cast<const unsigned char*>(picture.pixels.data()));
        }
    }
    for (const auto& [width, expected] : {std::pair(60, 17), {5, 0}}) { // stripes of 3, 2 x 2 and 10 x 1
        VX_GLTestPattern narrow(width, 400);
        narrow.UpdateRectangleTexture();
        const TagPicture picture(narrow);
        int black = 0;
        for (int x = 0; x < width; ++x)
            black += picture.at(x, 60) == 0xffu;
        EXPECT_EQ(black, expected) << width;
    }
}
