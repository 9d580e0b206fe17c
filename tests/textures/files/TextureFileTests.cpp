// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>
#include <VX_OpenGL64/textures/files/VX_GLTextureLoader.h>
#include <VX_OpenGL64/textures/files/VX_GLTexturePixelFormat.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLTest.h>
#include <tests/textures/GLCalls.h>
#include <tests/textures/PictureFiles.h>
#include <tests/textures/files/MemoryPicture.h>

#include <filesystem>
#include <fstream>

using Bytes = std::vector<unsigned char>;

namespace {

constexpr GLenum kRectangle = GL_TEXTURE_RECTANGLE_ARB;
constexpr unsigned kWidth = 5, kHeight = 3;

/// A file of each pixel format, 5 x 3, and how its texture reads.
struct Kind {
    unsigned channels; ///< of the file; 0 for 16 bits a pixel
    GLenum format, type;
    unsigned bytes; ///< of a pixel

    std::string file() const {
        const Bytes pixels = noise(kWidth * kHeight * (channels ? channels : 2));
        return channels ? pngBytes(channels, kWidth, kHeight, pixels.data())
                        : tgaBytes(kWidth, kHeight, pixels);
    }
    /// Pixel `index` of the file, step by step.
    Bytes pixel(unsigned index) const {
        const Bytes all = noise(kWidth * kHeight * (channels ? channels : 2));
        const unsigned char* p = &all[index * (channels ? channels : 2)];
        const auto byte = [](unsigned value) { return static_cast<unsigned char>(value); };
        const unsigned word565 = channels == 3 ? p[0] / 8 * 2048 + p[1] / 4 * 32 + p[2] / 8 : 0;
        const unsigned word5551 = channels ? 0 : (p[0] | p[1] << 8) * 2 + 1;
        switch (channels) {
            case 0:
                return {byte(word5551), byte(word5551 >> 8)};
            case 1:
                return {p[0]};
            case 2:
                return {byte(premultiplied(p[0], p[1])), p[1]};
            case 3:
                return {byte(word565), byte(word565 >> 8)};
            default:
                return {byte(undone(premultiplied(p[0], p[3]), p[3])),
                        byte(undone(premultiplied(p[1], p[3]), p[3])),
                        byte(undone(premultiplied(p[2], p[3]), p[3])), p[3]};
        }
    }
    /// All of a texture of that size, the picture's top row first.
    Bytes texture(unsigned width, unsigned height) const {
        Bytes all;
        for (unsigned i = 0; i < width * height; ++i) {
            const unsigned x = i % width, y = i / width;
            Bytes pixel(bytes);
            pixel[0] = channels == 0; // clear, but 5551 is opaque
            if (x < kWidth && y < kHeight)
                pixel = this->pixel(y * kWidth + x);
            all.insert(all.end(), pixel.begin(), pixel.end());
        }
        return all;
    }
};
const Kind kKinds[] = {{0, GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1, 2},
                       {1, GL_LUMINANCE, GL_UNSIGNED_BYTE, 1},
                       {2, GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE, 2},
                       {3, GL_RGB, GL_UNSIGNED_SHORT_5_6_5, 2},
                       {4, GL_RGBA, GL_UNSIGNED_BYTE, 4}};

NSString* text(const std::string& bytes) {
    return NSString::stringWithUTF8String(bytes.c_str());
}

int levelOf(GLenum target, int level, GLenum name) {
    int value = 0;
    glGetTexLevelParameteriv(target, level, name, &value);
    return value;
}

int parameterOf(GLenum target, GLenum name) {
    int value = 0;
    glGetTexParameteriv(target, name, &value);
    return value;
}

Bytes pixelsOf(GLenum target, GLenum format, GLenum type, unsigned bytesPerPixel) {
    Bytes pixels(std::size_t(levelOf(target, 0, GL_TEXTURE_WIDTH) * levelOf(target, 0, GL_TEXTURE_HEIGHT)) *
                 bytesPerPixel);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(target, 0, format, type, pixels.data());
    return pixels;
}

std::vector<int> unpackState() {
    return stateOf(GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,
                   GL_TEXTURE_2D, kRectangle, GL_TEXTURE_CUBE_MAP);
}

/// The ways in which hosts leave the unpack state: alignment, row length, skipped rows and pixels.
const int kUnpackStates[][4] = {{4, 0, 0, 0},  {1, 0, 0, 0}, {8, 0, 0, 0},
                                {4, 11, 0, 0}, {2, 0, 3, 2}, {8, 13, 1, 1}};

void setUnpackState(const int (&state)[4]) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, state[0]);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, state[1]);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, state[2]);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, state[3]);
}

unsigned boundTexture(GLenum target) {
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(target, name);
    return name;
}

std::vector<double> sizes(CGSize size, CGSize texCoordSize) {
    return {size.width, size.height, texCoordSize.width, texCoordSize.height};
}

/// A folder of its own, with the pictures of cube faces in it: RGBA, square, each side telling them apart.
struct FaceFolder {
    FaceFolder() { std::filesystem::create_directory(path); }
    ~FaceFolder() { std::filesystem::remove_all(path); }
    void add(const std::string& name, unsigned side) const {
        std::ofstream(path + "/" + name, std::ios::binary)
            << pngBytes(4, side, side, noise(side * side * 4).data());
    }
    const std::string path = testing::TempDir() + "vx faces \u00e9";
};

/// The side of each face that the texture has, or 0.
std::vector<int> facesOf(unsigned name) {
    glBindTexture(GL_TEXTURE_CUBE_MAP, name);
    std::vector<int> sides;
    for (const GLenum face :
         {GL_TEXTURE_CUBE_MAP_NEGATIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_Y, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z,
          GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_POSITIVE_Y, GL_TEXTURE_CUBE_MAP_POSITIVE_Z})
        sides.push_back(levelOf(face, 0, GL_TEXTURE_WIDTH));
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
    return sides;
}

} // namespace

TEST(TextureFile, BringsEveryFormatToGLUnderAnyUnpackState) {
    HeadlessContext gl(8, 8);
    for (const Kind& kind : kKinds) {
        const TemporaryFile file(kind.file());
        for (const auto& state : kUnpackStates) {
            setUnpackState(state);
            const unsigned former = boundTexture(GL_TEXTURE_2D);
            const auto before = unpackState();
            for (const bool mipmap : {false, true}) {
                CGSize size, end;
                const unsigned name = VX_GLTextureLoader2D(text(file.path()), &size, &end, mipmap);
                EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(former));
                EXPECT_EQ(unpackState(), before);
                EXPECT_EQ(sizes(size, end), (std::vector{5.0, 3.0, 5.0 / 8, 3.0 / 4}));
                glBindTexture(GL_TEXTURE_2D, name);
                EXPECT_EQ(pixelsOf(GL_TEXTURE_2D, kind.format, kind.type, kind.bytes), kind.texture(8, 4))
                    << kind.channels << " " << state[0] << state[1] << state[2] << mipmap;
                EXPECT_EQ(ints(levelOf(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT),
                               levelOf(GL_TEXTURE_2D, 3, GL_TEXTURE_WIDTH),
                               parameterOf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER),
                               parameterOf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T)),
                          ints(kind.format, mipmap, mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR, GL_REPEAT));
                glBindTexture(GL_TEXTURE_2D, former);
            }
            CGSize size, end;
            const unsigned name = VX_GLTextureLoader2DRect(text(file.path()), &size, &end);
            EXPECT_EQ(unpackState(), before);
            EXPECT_EQ(sizes(size, end), (std::vector{5.0, 3.0, 1.0, 1.0}));
            EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE_ARB), ints(name));
            EXPECT_EQ(pixelsOf(kRectangle, kind.format, kind.type, kind.bytes),
                      kind.texture(kWidth, kHeight));
        }
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(TextureFile, GivesTheNumberOfAnErrorForAName) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile none("P6 no picture"), torn(kKinds[4].file().substr(0, 90)), good(kKinds[4].file());
    const std::string paths[] = {none.path(), torn.path(), testing::TempDir(), "/nowhere/p.png"};
    CGSize size{7, 7}, end{7, 7};
    {
        const TextureCalls calls;
        for (const std::string& path : paths) {
            EXPECT_EQ(VX_GLTextureLoader2D(text(path), &size, &end, true), 1281u);
            EXPECT_EQ(VX_GLTextureLoader2DRect(text(path), &size, &end), 1281u);
        }
        EXPECT_EQ(VX_GLTextureLoader2D(nullptr, &size, &end, true), 1281u);
        EXPECT_EQ(VX_GLTextureLoader2DRect(nullptr, &size, &end), 1281u);
        EXPECT_EQ(VX_GLTextureLoaderCubeMap2D(nullptr, &size, &end, true), 0u);
        EXPECT_EQ(glCalls, std::vector<std::string>());
    }
    EXPECT_TRUE(log.lines.empty());
    VX_SetDiagnostics(true);
    for (const std::string& path : paths)
        VX_GLTextureLoader2D(text(path), &size, &end, true);
    VX_SetDiagnostics(false);
    EXPECT_EQ(log.lines.size(), 4u);
    EXPECT_EQ(log.count(std::string("VX_GLTextureLoader2D: ") + torn.path() + ": "), 1);

    for (const bool rectangle : {false, true}) {
        glEnable(0xFFFF); // an older error is taken for one's own
        const TextureCalls calls;
        EXPECT_EQ(rectangle ? VX_GLTextureLoader2DRect(text(good.path()), &size, &end)
                            : VX_GLTextureLoader2D(text(good.path()), &size, &end, false),
                  1281u);
        EXPECT_EQ(std::count(glCalls.begin(), glCalls.end(), "glGetError"), 1);
        EXPECT_EQ(log.lines.back(), "Texture Loader: OpenGL error 0x0500");
    }
    EXPECT_EQ(sizes(size, end), (std::vector{7.0, 7.0, 7.0, 7.0}));
    EXPECT_NE(VX_GLTextureLoader2D(text(good.path()), nullptr, nullptr, false), 1281u);
}

TEST(TextureFile, FindsCubeFacesByNumberOrByWord) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const char* const words[] = {"right", "down", "back", "left", "up", "front"};
    // By number 1, 2, 4, ... pixels wide; by word as many as that and the next.
    const struct {
        const char *asked, *numbers, *words;
        std::vector<int> faces;
    } rows[] = {
        {"sky_0.png", "012345", "", {1, 2, 4, 8, 16, 32}},
        {"sky_x_y.png", "012345", "012345", {1, 2, 4, 8, 16, 32}},
        {"sky_up.png", "", "012345", {2, 4, 8, 16, 32, 64}},
        {"sky_0.png", "01234", "5", {0, 0, 0, 0, 0, 64}},
        {"sky_0.png", "01234", "", {}},
        {"sky.png", "012345", "", {}},
        {"sky_0.tga", "012345", "", {}},
        {"ski_0.png", "012345", "", {}},
    };
    for (const auto& row : rows) {
        const FaceFolder folder;
        for (const char digit : std::string(row.numbers))
            folder.add(std::string("sky_") + digit + ".png", 1u << (digit - '0'));
        for (const char digit : std::string(row.words))
            folder.add(std::string("sky_") + words[digit - '0'] + ".png", 2u << (digit - '0'));
        const auto former = std::filesystem::current_path();
        const TextureCalls calls;
        setUnpackState(kUnpackStates[5]);
        const auto before = unpackState();
        glCalls.clear();
        CGSize size{7, 7}, end{7, 7};
        const unsigned name =
            VX_GLTextureLoaderCubeMap2D(text(folder.path + "/" + row.asked), &size, &end, true);
        ASSERT_EQ(name == 0, row.faces.empty()) << row.asked;
        if (!name) {
            EXPECT_EQ(glCalls, std::vector<std::string>());
            EXPECT_EQ(size.width, 7.0);
            continue;
        }
        EXPECT_EQ(unpackState(), before);
        EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_CUBE_MAP), ints(0));
        EXPECT_EQ(facesOf(name), row.faces);
        glBindTexture(GL_TEXTURE_CUBE_MAP, name);
        EXPECT_EQ(ints(parameterOf(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_WRAP_R),
                       parameterOf(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER)),
                  ints(GL_CLAMP_TO_EDGE, GL_LINEAR_MIPMAP_LINEAR));
        std::filesystem::current_path(folder.path);
        EXPECT_EQ(facesOf(VX_GLTextureLoaderCubeMap2D(text(row.asked), nullptr, nullptr, false)), row.faces);
        std::filesystem::current_path(former);
    }
    EXPECT_TRUE(log.lines.empty()) << log.lines[0];
}

TEST(TexturePixelFormat, NamesWhatGLIsGiven) {
    HeadlessContext gl(8, 8);
    const GLenum types[] = {GL_UNSIGNED_BYTE,        GL_UNSIGNED_SHORT_4_4_4_4, GL_UNSIGNED_SHORT_5_5_5_1,
                            GL_UNSIGNED_SHORT_5_6_5, GL_UNSIGNED_BYTE,          GL_UNSIGNED_BYTE,
                            GL_UNSIGNED_BYTE,        GL_UNSIGNED_BYTE};
    const GLenum formats[] = {GL_RGBA, GL_RGBA,      GL_RGBA,  GL_RGB,
                              GL_RGB,  GL_LUMINANCE, GL_ALPHA, GL_LUMINANCE_ALPHA};
    const Bytes pixels(64, 0xC5);
    boundTexture(GL_TEXTURE_2D);
    for (int format = 1; format <= 8; ++format) {
        const auto kept = formats[format - 1];
        const TextureCalls calls;
        _GLDoTexImage2D(GL_TEXTURE_2D, Texture2DPixelFormat(format), 4, 2, pixels.data());
        EXPECT_EQ(glCalls, std::vector{glCall("glTexImage2D", GL_TEXTURE_2D, 0, kept, 4, 2, 0, kept,
                                              types[format - 1], pixels.data())});
        _GLDoTexImage2DMipMaps(GL_TEXTURE_2D, Texture2DPixelFormat(format), 4, 2, pixels.data());
        EXPECT_EQ(levelOf(GL_TEXTURE_2D, 2, GL_TEXTURE_INTERNAL_FORMAT), int(kept));
        EXPECT_EQ(pixelsOf(GL_TEXTURE_2D, kept, types[format - 1], 4)[0], 0xC5);
    }
    for (const auto give : {_GLDoTexImage2D, _GLDoTexImage2DMipMaps}) {
        for (const int format : {0, 9}) {
            try {
                give(GL_TEXTURE_2D, Texture2DPixelFormat(format), 1, 1, pixels.data());
                ADD_FAILURE();
            } catch (const NSException& raised) {
                EXPECT_STREQ(raised.name()->UTF8String(), NSInternalInconsistencyException);
                EXPECT_EQ(raised.reason()->length(), 0);
            }
        }
    }
}

TEST(VX_GLTextureLoader, StretchesFlipsAndKeepsThePixels) {
    HeadlessContext gl(8, 8);
    const Bytes colours = {100, 200, 0, 128, 9, 9, 9, 0, 255, 0, 51, 255, 1, 2, 3, 255};
    const Bytes flipped = {51, 0, 255, 255, 3, 2, 1, 255, 0, 100, 50, 128, 0, 0, 0, 0};
    const TemporaryFile square(pngBytes(4, 2, 2, colours.data())), odd(kKinds[3].file());
    for (const auto& state : kUnpackStates) {
        setUnpackState(state);
        const auto before = unpackState();
        for (const int kind : {0, 1, 2, 3}) { // plain, clamped, with mipmaps, a rectangle
            VX_GLTextureLoader loader;
            const auto load = [&](const char* path) {
                return kind == 3   ? loader.loadRectangleExtTextureFromPath(path)
                       : kind == 2 ? loader.load2DMipmapTextureFromPath(path, false)
                                   : loader.load2DTextureFromPath(path, kind == 1);
            };
            const GLenum target = kind == 3 ? kRectangle : GL_TEXTURE_2D;
            const GLenum binding = kind == 3 ? GL_TEXTURE_BINDING_RECTANGLE_ARB : GL_TEXTURE_BINDING_2D;
            const unsigned name = load(square.path());
            EXPECT_EQ(unpackState(), before);
            EXPECT_EQ(stateOf(binding), ints(kind == 2 ? 0 : name));
            glBindTexture(target, name);
            EXPECT_EQ(pixelsOf(target, GL_BGRA, GL_UNSIGNED_BYTE, 4), flipped) << kind;
            EXPECT_EQ(ints(parameterOf(target, GL_TEXTURE_MIN_FILTER), parameterOf(target, GL_TEXTURE_WRAP_S),
                           levelOf(target, 0, GL_TEXTURE_INTERNAL_FORMAT)),
                      ints(GL_LINEAR, kind % 2 ? GL_CLAMP_TO_EDGE : GL_REPEAT, GL_RGBA8));
            const GLImageBitmap& bitmap = loader.bitmap();
            const auto* data = static_cast<unsigned char*>(bitmap.data);
            EXPECT_EQ(Bytes(data, data + bitmap.dataSize), flipped);
            EXPECT_EQ(ints(bitmap.border, bitmap.level, bitmap.target, bitmap.format, bitmap.type,
                           bitmap.bitsPerComponent, bitmap.bytesPerPixel, bitmap.rowBytes),
                      ints(0, 0, target, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, 8, 4, 8));
            EXPECT_NE(load(odd.path()), 0u);
            loader.freeImage();
            EXPECT_TRUE(!bitmap.data && bitmap.dataSize + bitmap.format + bitmap.rowBytes == 0);
            EXPECT_EQ(ints(loader.width(), loader.height(), loader.orgwidth(), loader.orgheight()),
                      kind == 3 ? ints(5, 3, 5, 3) : ints(8, 4, 5, 3));
            glBindTexture(GL_TEXTURE_2D, stateOf(GL_TEXTURE_BINDING_2D)[0]);
            if (kind < 2) {
                const Bytes all = pixelsOf(GL_TEXTURE_2D, GL_BGRA, GL_UNSIGNED_BYTE, 4);
                const Bytes file = noise(kWidth * kHeight * 3);
                for (std::size_t i = 3; i < all.size(); i += 4)
                    EXPECT_EQ(all[i], 255);
                EXPECT_EQ(Bytes(&all[3 * 32], &all[3 * 32] + 3), (Bytes{file[2], file[1], file[0]}));
            }
        }
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLTextureLoader, TellsWhatItCannotLoadAndWarnsOfErrors) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile torn(kKinds[4].file().substr(0, 90)), good(kKinds[3].file());
    VX_GLTextureLoader loader;
    {
        const TextureCalls calls;
        for (const char* path : {torn.path(), static_cast<const char*>(nullptr), "/nowhere"})
            EXPECT_EQ(loader.load2DTextureFromPath(path, true) +
                          loader.load2DMipmapTextureFromPath(path, true) +
                          loader.loadRectangleExtTextureFromPath(path),
                      0u);
        EXPECT_EQ(loader.loadCubeMapTextureFromPath(nullptr), 0u);
        EXPECT_EQ(glCalls, std::vector<std::string>());
    }
    EXPECT_EQ(log.count(std::string("couldn't load texture:") + torn.path()), 3);
    EXPECT_EQ(log.count("couldn't load texture:(null)"), 2) << "none for the rectangle";
    EXPECT_EQ(log.lines.size(), 8u);
    for (const bool mipmap : {false, true}) {
        glEnable(0xFFFF);
        EXPECT_NE(mipmap ? loader.load2DMipmapTextureFromPath(good.path(), true)
                         : loader.loadRectangleExtTextureFromPath(good.path()),
                  0u);
        EXPECT_EQ(log.lines.back().substr(0, 71),
                  "WARNING: OpenGL Error 0x500 while loading texture with glTexImage2D(). ");
    }
    EXPECT_EQ(log.lines.size(), 10u);
}

TEST(VX_GLTextureLoader, LoadsNumberedFacesAndPassesOthersBy) {
    HeadlessContext gl(8, 8);
    const FaceFolder folder;
    const auto load = [&](VX_GLTextureLoader& loader) {
        return loader.loadCubeMapTextureFromPath((folder.path + "/sky.png").c_str());
    };
    VX_GLTextureLoader loader;
    EXPECT_EQ(facesOf(load(loader)), ints(0, 0, 0, 0, 0, 0));
    for (const int face : {0, 1, 3, 4})
        folder.add("sky_" + std::to_string(face) + ".png", 1u << face);
    setUnpackState(kUnpackStates[5]);
    const auto before = unpackState();
    glEnable(GL_TEXTURE_2D);
    const TextureCalls calls;
    const unsigned name = load(loader);
    EXPECT_EQ(std::count(glCalls.begin(), glCalls.end(), "glGetError"), 0);
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_CUBE_MAP), ints(name));
    EXPECT_EQ(unpackState(), before) << "the 2D target is switched";
    EXPECT_EQ(facesOf(name), ints(1, 2, 0, 8, 16, 0));
    EXPECT_TRUE(!loader.bitmap().data && loader.width() == 16) << "the last one could not be read";
}

TEST(VX_GLTextureLoader, LetsGLReadARectanglesPixelsWhereItWill) {
    HeadlessContext gl(8, 8);
    const TemporaryFile file(kKinds[3].file());
    const unsigned former = boundTexture(kRectangle);
    vx::currentGLCapabilities().clientStorage = vx::currentGLCapabilities().textureRange = true;
    VX_GLTextureLoader loader;
    const TextureCalls calls;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    glCalls.clear();
    const int name = int(loader.loadRectangleExtTextureFromPath(file.path()));
    const auto store = [](GLenum state, int value) { return glCall("glPixelStorei", state, value); };
    const auto parameter = [](GLenum which, float value) {
        return glCall("glTexParameterf", kRectangle, which, value);
    };
    EXPECT_EQ(
        glCalls,
        (std::vector{
            glCall("glEnable", kRectangle), store(GL_UNPACK_CLIENT_STORAGE_APPLE, 1),
            store(GL_UNPACK_ROW_LENGTH, 5), store(GL_UNPACK_ALIGNMENT, 4),
            glCall("glTexParameteri", kRectangle, GL_TEXTURE_STORAGE_HINT_APPLE, GL_STORAGE_CACHED_APPLE),
            glCall("glGenTextures", 1, &name), glCall("glBindTexture", kRectangle, name),
            parameter(GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE), parameter(GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE),
            parameter(GL_TEXTURE_MAG_FILTER, GL_LINEAR), parameter(GL_TEXTURE_MIN_FILTER, GL_LINEAR),
            glCall("glTexImage2D", kRectangle, 0, GL_RGBA8, 5, 3, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV,
                   &name),
            glCall("glGetError"), store(GL_UNPACK_CLIENT_STORAGE_APPLE, 7), store(GL_UNPACK_ROW_LENGTH, 0),
            store(GL_UNPACK_ALIGNMENT, 2), glCall("glDisable", kRectangle)}))
        << former;
}
