// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureCubeMap2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureRect.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLTest.h>
#include <tests/textures/GLCalls.h>
#include <tests/textures/PictureFiles.h>

#include <cstring>
#include <memory>

namespace {

constexpr GLenum kRectangle = GL_TEXTURE_RECTANGLE_ARB;

std::vector<int> sizesOf(const VX_GLTexture& texture) {
    return ints(texture.width(), texture.height(), texture.orgwidth(), texture.orgheight());
}

std::vector<double> sizesOf(const VX_GLTextureBase& texture) {
    return {texture.Size().width, texture.Size().height, texture.TexCoordSize().width,
            texture.TexCoordSize().height};
}

unsigned newTexture() {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    return name;
}

struct Opened : VX_GLTextureBase {
    using VX_GLTextureBase::ProtectedLoadFromData;
};

/// What the texture's rectangle family does with unpack state, from alignment 2 and row length 9.
template <class Texture>
std::vector<std::string> loadOnApple(Texture&& texture, GLenum target, GLenum format) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 9);
    const std::vector<unsigned char> pixels(1000, 0x55);
    glCalls.clear();
    texture(target, GL_RGBA8, format, GL_UNSIGNED_BYTE, 3, 2, pixels.data());
    return std::exchange(glCalls, {});
}

} // namespace

TEST(VX_GLTexture, HoldsOneTextureAndItsLoadersSizes) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile file(pngBytes(3, 5, 3, noise(45).data()));
    VX_GLTexture texture;
    EXPECT_EQ(sizesOf(texture), ints(0, 0, 0, 0));
    EXPECT_TRUE(texture.loadRectangleExtTextureFromPath(file.path()));
    EXPECT_EQ(sizesOf(texture), ints(5, 3, 5, 3));
    const auto enabled = [&] {
        texture.enableTexture(true);
        int filter = 0;
        glGetTexParameteriv(texture.txType(), GL_TEXTURE_MIN_FILTER, &filter);
        const auto state = stateOf(GL_TEXTURE_2D, kRectangle);
        texture.enableTexture(false);
        EXPECT_EQ(stateOf(GL_TEXTURE_2D, kRectangle), ints(0, 0));
        return ints(texture.txType(), texture.isMipmaped(), state[0], state[1], filter);
    };
    EXPECT_EQ(enabled(), ints(kRectangle, 0, 0, 1, GL_LINEAR));
    const unsigned rectangle = texture.name();
    EXPECT_TRUE(texture.loadMipmapTextureFromPath(file.path(), true));
    EXPECT_FALSE(glIsTexture(rectangle));
    EXPECT_EQ(enabled(), ints(GL_TEXTURE_2D, 1, 1, 0, GL_LINEAR_MIPMAP_LINEAR));
    EXPECT_EQ(sizesOf(texture), ints(8, 4, 5, 3));
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
        EXPECT_TRUE(glIsTexture(first));
        EXPECT_EQ(sizesOf(texture), (std::vector{5.0, 6.0, 7.0, 8.0}));
        EXPECT_EQ(ints(texture.Target(), texture.Name()), ints(GL_TEXTURE_2D, first));
        texture.Attach(GL_TEXTURE_2D, second, {}, {});
        EXPECT_TRUE(!glIsTexture(first) && glIsTexture(second));
        texture.Attach(GL_TEXTURE_2D, 0, {}, {});
        EXPECT_FALSE(glIsTexture(second));
        texture.Attach(GL_TEXTURE_2D, newTexture(), {}, {});
        EXPECT_TRUE(glIsTexture(texture.Detach()));
        texture.Attach(GL_TEXTURE_2D, newTexture(), {}, {});
        EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(texture.Name()));
    }
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(0)) << "deleted at its end";
}

TEST(VX_GLTextureBase, SubclassesLoadTheirOwnKind) {
    HeadlessContext gl(8, 8);
    const TemporaryFile file(pngBytes(3, 5, 3, noise(45).data()));
    NSString* path = NSString::stringWithUTF8String(file.path());
    VX_GLTexture2D plain;
    VX_GLTextureRect rectangle;
    VX_GLTextureCubeMap2D cube;
    VX_GLTextureBase& base = rectangle;
    EXPECT_FALSE(base.LoadFromPath(path, true) || base.Target() || base.Name());
    EXPECT_TRUE(static_cast<VX_GLTextureBase&>(plain).LoadFromPath(path, false) &&
                rectangle.LoadFromPath(path));
    EXPECT_EQ(sizesOf(plain), (std::vector{5.0, 3.0, 0.625, 0.75}));
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
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    const unsigned char rgb[2][2][3][3] = {{{{1, 2, 3}}}, {{{}, {}, {}}, {{}, {}, {7, 8, 9}}}};
    const unsigned name = VX_GLTextureBase::Create3DTexture(GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, 3, 2, 2, rgb);
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_3D, GL_UNPACK_ALIGNMENT), ints(name, 8));
    unsigned char back[2][2][3][3] = {};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_3D, 0, GL_RGB, GL_UNSIGNED_BYTE, back);
    EXPECT_EQ(std::memcmp(rgb, back, sizeof rgb), 0);
    int wraps[3] = {};
    for (const int i : {0, 1, 2})
        glGetTexParameteriv(GL_TEXTURE_3D, i < 2 ? GL_TEXTURE_WRAP_S + GLenum(i) : GL_TEXTURE_WRAP_R,
                            &wraps[i]);
    EXPECT_EQ(ints(wraps[0], wraps[1], wraps[2]), ints(GL_REPEAT, GL_REPEAT, GL_CLAMP));
    EXPECT_EQ(VX_GLTextureBase::Create3DTexture(GL_RGB8, GL_RGB, GL_UNSIGNED_BYTE, -1, 2, 2, rgb), 0u);
    EXPECT_TRUE(log.lines.empty());

    Opened opened;
    EXPECT_TRUE(
        opened.ProtectedLoadFromData(GL_TEXTURE_2D, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, 1, 1, nullptr));
    const unsigned former = opened.Name();
    EXPECT_FALSE(
        opened.ProtectedLoadFromData(GL_TEXTURE_2D, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, -3, 2, nullptr));
    EXPECT_EQ(sizesOf(opened), (std::vector{-3.0, 2.0, -3.0, 2.0}));
    EXPECT_EQ(ints(opened.Name(), glIsTexture(former), glIsTexture(former + 1)), ints(0, 0, 0));
    EXPECT_EQ(log.lines, std::vector<std::string>{"WARNING: OpenGL Error 0x501 while creating texture with "
                                                  "glTexImage2D(). invalid value"});
}

TEST(VX_GLTextureBase, TellsGLHowRowsLieAndBringsItBack) {
    HeadlessContext gl(8, 8);
    vx::currentGLCapabilities().clientStorage = vx::currentGLCapabilities().textureRange = true;
    const TextureCalls calls;
    VX_GLTexture texture;
    VX_GLTextureRect rectangle;
    const auto first = [&](auto... arguments) { texture.loadTextureFromData(arguments...); };
    const auto second = [&](GLenum, auto... arguments) { rectangle.LoadFromData(arguments...); };
    const auto store = [](GLenum state, int value) { return glCall("glPixelStorei", state, value); };
    const auto expected = [&](int name, GLenum target, std::vector<std::string> middle, GLenum format) {
        const auto parameter = [target](GLenum which, int value) {
            return glCall("glTexParameteri", target, which, value);
        };
        std::vector<std::string> all = {glCall("glEnable", target),
                                        glCall("glGenTextures", 1, &target),
                                        glCall("glBindTexture", target, name),
                                        parameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR),
                                        parameter(GL_TEXTURE_MIN_FILTER, GL_LINEAR),
                                        parameter(GL_TEXTURE_STORAGE_HINT_APPLE, GL_STORAGE_CACHED_APPLE)};
        all.insert(all.end(), middle.begin(), middle.end());
        for (const std::string& call :
             {glCall("glTexImage2D", target, 0, GL_RGBA8, 3, 2, 0, format, GL_UNSIGNED_BYTE, &target),
              glCall("glGetError"), glCall("glDisable", target), store(GL_UNPACK_CLIENT_STORAGE_APPLE, 7),
              store(GL_UNPACK_ROW_LENGTH, 9), store(GL_UNPACK_ALIGNMENT, 2)})
            all.push_back(call);
        return all;
    };
    const std::vector<std::string> clamped = {
        store(GL_UNPACK_CLIENT_STORAGE_APPLE, 0),
        glCall("glTexParameterf", kRectangle, GL_TEXTURE_WRAP_S, float(GL_CLAMP_TO_EDGE)),
        glCall("glTexParameterf", kRectangle, GL_TEXTURE_WRAP_T, float(GL_CLAMP_TO_EDGE))};
    std::vector<std::string> rgba = {store(GL_UNPACK_ALIGNMENT, 1), store(GL_UNPACK_ROW_LENGTH, 3)};
    std::vector<std::string> other = {store(GL_UNPACK_ROW_LENGTH, 0)};
    rgba.insert(rgba.end(), clamped.begin(), clamped.end());
    other.insert(other.end(), clamped.begin(), clamped.end());
    EXPECT_EQ(loadOnApple(first, GL_TEXTURE_2D, GL_RGBA),
              expected(1, GL_TEXTURE_2D, {store(GL_UNPACK_CLIENT_STORAGE_APPLE, 0)}, GL_RGBA));
    texture.discardData();
    EXPECT_EQ(loadOnApple(first, kRectangle, GL_BGRA), expected(2, kRectangle, other, GL_BGRA));
    EXPECT_EQ(loadOnApple(second, kRectangle, GL_RGBA), expected(3, kRectangle, rgba, GL_RGBA));
}
