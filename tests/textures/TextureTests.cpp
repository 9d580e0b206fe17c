// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureCubeMap2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureRect.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/GLTest.h>
#include <tests/textures/PictureFiles.h>

#include <memory>

namespace {

constexpr GLenum kRectangle = GL_TEXTURE_RECTANGLE_ARB;

std::vector<int> sizesOf(const VX_GLTexture& texture) {
    return ints(texture.width(), texture.height(), texture.orgwidth(), texture.orgheight());
}

std::vector<double> sizesOf(const VX_GLTextureBase& texture) {
    const CGSize size = texture.Size(), end = texture.TexCoordSize();
    return {size.width, size.height, end.width, end.height};
}

unsigned newTexture() {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    return name;
}

/// The red of the pixels of the texture that is bound.
Bytes redOf(GLenum target, std::size_t count) {
    Bytes red(count);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(target, 0, GL_RED, GL_UNSIGNED_BYTE, red.data());
    return red;
}

} // namespace

TEST(VX_GLTexture, HoldsOneTextureAndItsLoadersSizes) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile file(pngBytes(3, 5, 3, noise(45)));
    VX_GLTexture texture;
    const auto enabled = [&] {
        texture.enableTexture(true);
        int filter = 0;
        glGetTexParameteriv(texture.txType(), GL_TEXTURE_MIN_FILTER, &filter);
        const auto state = stateOf(GL_TEXTURE_2D, kRectangle);
        texture.enableTexture(false);
        EXPECT_EQ(stateOf(GL_TEXTURE_2D, kRectangle), ints(0, 0));
        return ints(texture.txType(), texture.isMipmaped(), state[0], state[1], filter);
    };
    EXPECT_EQ(sizesOf(texture), ints(0, 0, 0, 0));
    EXPECT_TRUE(texture.loadRectangleExtTextureFromPath(file.path()));
    EXPECT_EQ(sizesOf(texture), ints(5, 3, 5, 3));
    EXPECT_EQ(enabled(), ints(kRectangle, 0, 0, 1, GL_LINEAR));
    const unsigned rectangle = texture.name();
    EXPECT_TRUE(texture.loadMipmapTextureFromPath(file.path(), true) &&
                (texture.name() == rectangle || !glIsTexture(rectangle)));
    EXPECT_EQ(enabled(), ints(GL_TEXTURE_2D, 1, 1, 0, GL_LINEAR_MIPMAP_LINEAR));
    EXPECT_EQ(sizesOf(texture), ints(8, 4, 5, 3));
    texture.discardData();
    EXPECT_EQ(ints(texture.isMipmaped(), texture.width()), ints(0, 0));
    EXPECT_TRUE(texture.load2DTextureFromPath(file.path()));
    EXPECT_EQ(enabled(), ints(GL_TEXTURE_2D, 0, 1, 0, GL_LINEAR));

    const unsigned given = texture.dettach();
    EXPECT_TRUE(glIsTexture(given) && texture.dettach() == 0);
    EXPECT_TRUE(texture.loadTextureFromData(kRectangle, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 4, 2, nullptr));
    EXPECT_EQ(sizesOf(texture), ints(0, 0, 0, 0));
    const unsigned last = texture.name();
    texture.discardData();
    EXPECT_EQ(ints(glIsTexture(last), texture.name(), texture.txType()), ints(0, 0, kRectangle)) << "still";
    EXPECT_FALSE(texture.load2DTextureFromPath(nullptr) ||
                 texture.loadMipmapTextureFromPath("/nowhere", true) ||
                 texture.loadRectangleExtTextureFromPath(nullptr));
    auto other = std::make_unique<VX_GLTexture>();
    other->load2DTextureFromPath(file.path());
    const unsigned others = other->name();
    other.reset();
    EXPECT_TRUE(glIsTexture(given) && !glIsTexture(others));
}

TEST(VX_GLTextureBase, TakesTexturesOverAndGivesThemAway) {
    HeadlessContext gl(8, 8);
    const unsigned first = newTexture(), second = newTexture();
    {
        VX_GLTexture2D texture;
        EXPECT_EQ(texture.Detach(), 0u);
        texture.Attach(GL_TEXTURE_3D, first, {1, 2}, {3, 4});
        texture.Attach(GL_TEXTURE_2D, first, {5, 6}, {7, 8});
        EXPECT_TRUE(glIsTexture(first) && texture.Target() == GL_TEXTURE_2D && texture.Name() == first);
        EXPECT_EQ(sizesOf(texture), (std::vector{5.0, 6.0, 7.0, 8.0}));
        texture.Attach(GL_TEXTURE_2D, second, {}, {});
        EXPECT_TRUE(!glIsTexture(first) && glIsTexture(second));
        texture.Attach(GL_TEXTURE_2D, 0, {}, {});
        EXPECT_FALSE(glIsTexture(second));
        texture.Attach(GL_TEXTURE_2D, newTexture(), {}, {});
        EXPECT_TRUE(glIsTexture(texture.Detach()));
        texture.Attach(GL_TEXTURE_2D, newTexture(), {}, {});
    }
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(0)) << "deleted at its end";
}

TEST(VX_GLTextureBase, SubclassesLoadTheirOwnKind) {
    HeadlessContext gl(8, 8);
    const TemporaryFile file(pngBytes(3, 5, 3, noise(45)));
    NSString* path = NSString::stringWithUTF8String(file.path());
    VX_GLTexture2D plain;
    VX_GLTextureRect rectangle;
    VX_GLTextureCubeMap2D cube;
    VX_GLTextureBase& base = rectangle;
    EXPECT_FALSE(base.LoadFromPath(path, true) || base.Target() || base.Name());
    EXPECT_TRUE(static_cast<VX_GLTextureBase&>(plain).LoadFromPath(path, false) &&
                rectangle.LoadFromPath(path));
    EXPECT_EQ(sizesOf(rectangle), (std::vector{5.0, 3.0, 1.0, 1.0}));
    EXPECT_FALSE(cube.LoadFromPath(nullptr, false));
    EXPECT_EQ(ints(plain.Target(), rectangle.Target(), cube.Target(), cube.Name()),
              ints(GL_TEXTURE_2D, kRectangle, GL_TEXTURE_CUBE_MAP, 0));
    const unsigned former = plain.Name();
    EXPECT_TRUE(plain.LoadFromPath(nullptr, false) && plain.Name() == 1281) << "taken for a name";
    EXPECT_EQ(sizesOf(plain), (std::vector{5.0, 3.0, 0.625, 0.75})) << "of the last success";
    EXPECT_FALSE(glIsTexture(former));
}

TEST(VX_GLTextureBase, MakesTexturesOfData) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    Bytes pixels(64);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<unsigned char>(i);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 5);
    VX_GLTextureRect rectangle;
    EXPECT_TRUE(rectangle.LoadFromData(GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 3, 2, pixels.data()));
    EXPECT_EQ(redOf(kRectangle, 6), (Bytes{0, 4, 8, 12, 16, 20})) << "without gaps";
    EXPECT_TRUE(rectangle.LoadFromData(GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, 3, 2, pixels.data()));
    EXPECT_EQ(redOf(kRectangle, 6), (Bytes{0, 3, 6, 16, 19, 22})) << "with the caller's alignment";
    EXPECT_EQ(sizesOf(rectangle), (std::vector{3.0, 2.0, 3.0, 2.0}));
    VX_GLTexture texture;
    EXPECT_TRUE(
        texture.loadTextureFromData(GL_TEXTURE_2D, GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, 3, 2, pixels.data()));
    EXPECT_EQ(redOf(GL_TEXTURE_2D, 6), (Bytes{0, 3, 6, 16, 19, 22}));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    const unsigned solid =
        VX_GLTextureBase::Create3DTexture(GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, 3, 2, 2, pixels.data());
    EXPECT_EQ(redOf(GL_TEXTURE_3D, 12), (Bytes{0, 3, 6, 9, 12, 15, 18, 21, 24, 27, 30, 33}));
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_3D, GL_UNPACK_ALIGNMENT, GL_TEXTURE_2D, kRectangle),
              ints(solid, 8, 0, 0));
    int wraps[2] = {};
    glGetTexParameteriv(GL_TEXTURE_3D, GL_TEXTURE_WRAP_T, &wraps[0]);
    glGetTexParameteriv(GL_TEXTURE_3D, GL_TEXTURE_WRAP_R, &wraps[1]);
    EXPECT_EQ(ints(wraps[0], wraps[1]), ints(GL_REPEAT, GL_CLAMP));
    EXPECT_EQ(VX_GLTextureBase::Create3DTexture(GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, -1, 2, 2, nullptr), 0u);
    EXPECT_TRUE(log.lines.empty());

    const unsigned former = rectangle.Name();
    EXPECT_FALSE(rectangle.LoadFromData(GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, -3, 2, nullptr));
    EXPECT_EQ(sizesOf(rectangle), (std::vector{-3.0, 2.0, -3.0, 2.0}));
    EXPECT_EQ(ints(rectangle.Name(), glIsTexture(former)), ints(0, 0));
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE_ARB), ints(0)) << "the new one is deleted too";
    EXPECT_EQ(log.lines.back(),
              "WARNING: OpenGL Error 0x501 while creating texture with glTexImage2D(). invalid value");
    EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH, kRectangle), ints(8, 0, 0));
}
