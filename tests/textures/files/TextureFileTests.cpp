// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>
#include <VX_OpenGL64/textures/files/VX_GLTextureFailure.h>
#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>
#include <VX_OpenGL64/textures/files/VX_GLTextureLoader.h>
#include <VX_OpenGL64/textures/files/VX_GLTexturePixelFormat.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/GLTest.h>
#include <tests/textures/CallCounter.h>
#include <tests/textures/PictureFiles.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include <unistd.h>

namespace {

constexpr GLenum kRectangleExt = GL_TEXTURE_RECTANGLE_ARB, kCube = GL_TEXTURE_CUBE_MAP;
constexpr unsigned kWidth = 5, kHeight = 3;

/// A file of each pixel format, 5 x 3: channels (0 for 16 bits a pixel, in a TGA file), how its texture
/// reads.
const struct Kind {
    unsigned channels;
    GLenum format, type;
    unsigned bytes;
} kKinds[] = {{0, GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1, 2},
              {1, GL_LUMINANCE, GL_UNSIGNED_BYTE, 1},
              {2, GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE, 2},
              {3, GL_RGB, GL_UNSIGNED_SHORT_5_6_5, 2},
              {4, GL_RGBA, GL_UNSIGNED_BYTE, 4}};

std::string fileOf(const Kind& kind) {
    const Bytes pixels = noise(kWidth * kHeight * 4);
    std::string tga = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, kWidth, 0, kHeight, 0, 16, 0x20};
    return kind.channels ? pngBytes(kind.channels, kWidth, kHeight, pixels)
                         : tga.append(pixels.begin(), pixels.begin() + kWidth * kHeight * 2);
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
    const int count = levelOf(target, 0, GL_TEXTURE_WIDTH) * levelOf(target, 0, GL_TEXTURE_HEIGHT);
    Bytes pixels(std::size_t(count) * bytesPerPixel);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(target, 0, format, type, pixels.data());
    return pixels;
}

std::vector<int> state() {
    return stateOf(GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,
                   GL_TEXTURE_2D, kRectangleExt, kCube);
}

/// The ways in which hosts leave the unpack state: alignment, row length, skipped rows and pixels.
constexpr int kUnpackStates[][4] = {{4, 0, 0, 0},  {1, 0, 0, 0}, {8, 0, 0, 0},
                                    {4, 11, 0, 0}, {2, 0, 3, 2}, {8, 13, 1, 1}};

std::vector<int> setState(const int (&unpack)[4]) {
    const GLenum names[] = {GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS,
                            GL_UNPACK_SKIP_PIXELS};
    for (const int i : {0, 1, 2, 3})
        glPixelStorei(names[i], unpack[i]);
    return state();
}

NSString* text(const std::string& bytes) {
    return NSString::stringWithUTF8String(bytes.c_str());
}

/// Sizes that a load has or has not changed.
struct Sizes {
    CGSize size{7, 7}, end{7, 7};
    std::vector<double> all() const { return {size.width, size.height, end.width, end.height}; }
};

/// A folder of its own, with square pictures of cube faces in it, the sides of which tell them apart.
struct FaceFolder {
    FaceFolder() { std::filesystem::create_directory(path); }
    ~FaceFolder() { std::filesystem::remove_all(path); }
    /// In the place of 8 x 8 pixels a picture of 7 x 7, to be filled up.
    void add(const std::string& name, unsigned side) const {
        side -= side == 8;
        std::ofstream(path + "/" + name, std::ios::binary) << pngBytes(4, side, side, noise(side * side * 4));
    }
    const std::string path = testing::TempDir() + "vx faces \u00e9 " + std::to_string(getpid());
};

/// The side of each face that the texture has, or 0.
std::vector<int> facesOf(unsigned name) {
    glBindTexture(kCube, name);
    std::vector<int> sides;
    for (const GLenum face :
         {GL_TEXTURE_CUBE_MAP_NEGATIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_Y, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z,
          GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_POSITIVE_Y, GL_TEXTURE_CUBE_MAP_POSITIVE_Z})
        sides.push_back(levelOf(face, 0, GL_TEXTURE_WIDTH));
    return sides;
}

} // namespace

// What it is that reaches GL, the uploads of all pictures tell.
TEST(TextureFile, BringsEveryFormatToGLUnderAnyUnpackState) {
    HeadlessContext gl(8, 8);
    GLuint former = 0;
    glGenTextures(1, &former);
    for (const Kind& kind : kKinds) {
        const TemporaryFile file(fileOf(kind));
        Bytes plain, tight; // as the first state has it
        for (const auto& unpack : kUnpackStates) {
            const auto before = setState(unpack);
            Sizes sizes;
            for (const bool mipmap : {false, true}) {
                glBindTexture(GL_TEXTURE_2D, former);
                const unsigned name =
                    VX_GLTextureLoader2D(text(file.path()), &sizes.size, &sizes.end, mipmap);
                EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(former));
                EXPECT_EQ(state(), before);
                EXPECT_EQ(sizes.all(), (std::vector{5.0, 3.0, 5.0 / 8, 3.0 / 4}));
                glBindTexture(GL_TEXTURE_2D, name);
                const Bytes pixels = pixelsOf(GL_TEXTURE_2D, kind.format, kind.type, kind.bytes);
                plain = plain.empty() ? pixels : plain;
                EXPECT_EQ(pixels, plain) << kind.channels << " " << unpack[0] << unpack[1] << mipmap;
                EXPECT_EQ(ints(levelOf(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT),
                               levelOf(GL_TEXTURE_2D, 3, GL_TEXTURE_WIDTH),
                               parameterOf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER),
                               parameterOf(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T)),
                          ints(kind.format, mipmap, mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR, GL_REPEAT));
            }
            const unsigned name = VX_GLTextureLoader2DRect(text(file.path()), &sizes.size, &sizes.end);
            EXPECT_EQ(state(), before);
            EXPECT_EQ(sizes.all(), (std::vector{5.0, 3.0, 1.0, 1.0}));
            EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_RECTANGLE_ARB), ints(name));
            const Bytes pixels = pixelsOf(kRectangleExt, kind.format, kind.type, kind.bytes);
            tight = tight.empty() ? pixels : tight;
            EXPECT_EQ(pixels, tight);
        }
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(TextureFile, GivesTheNumberOfAnErrorForAName) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile none("P6 no picture"), torn(fileOf(kKinds[4]).substr(0, 90)), good(fileOf(kKinds[4]));
    Sizes sizes;
    const CallCounter calls;
    const auto loadAll = [&](NSString* path) {
        EXPECT_EQ(VX_GLTextureLoader2D(path, &sizes.size, &sizes.end, true), 1281u);
        EXPECT_EQ(VX_GLTextureLoader2DRect(path, &sizes.size, &sizes.end), 1281u);
    };
    for (const bool tells : {false, true}) {
        VX_SetDiagnostics(tells);
        for (const std::string& path :
             {std::string(none.path()), std::string(torn.path()), testing::TempDir()})
            loadAll(text(path));
        EXPECT_EQ(log.count(std::string("VX_GLTextureLoader2D: ") + torn.path() + ": "), tells);
        EXPECT_EQ(log.lines.size(), tells ? 6u : 0u);
    }
    VX_SetDiagnostics(false);
    loadAll(nullptr);
    EXPECT_EQ(VX_GLTextureLoaderCubeMap2D(nullptr, &sizes.size, &sizes.end, true), 0u);
    EXPECT_EQ(calls.textures + calls.errors, 0);

    for (const bool rectangle : {false, true}) {
        glEnable(0xFFFF); // an older error is taken for one's own
        EXPECT_EQ(rectangle ? VX_GLTextureLoader2DRect(text(good.path()), &sizes.size, &sizes.end)
                            : VX_GLTextureLoader2D(text(good.path()), &sizes.size, &sizes.end, false),
                  1281u);
        EXPECT_EQ(log.lines.back(), "Texture Loader: OpenGL error 0x0500");
    }
    EXPECT_EQ(calls.errors, 2);
    EXPECT_EQ(sizes.all(), (std::vector{7.0, 7.0, 7.0, 7.0}));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 1); // rows that lie over each other, all inside our memory
    for (const bool mipmap : {false, true})
        EXPECT_NE(VX_GLTextureLoader2D(text(good.path()), nullptr, nullptr, mipmap), 1281u);
}

TEST(TextureFile, FindsCubeFacesByNumberOrByWord) {
    HeadlessContext gl(8, 8);
    const std::string words[] = {"right", "down", "back", "left", "up", "front"};
    // By number 1, 2, 4, ... pixels wide, by word twice as many.
    const struct {
        std::string asked, numbers, words;
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
        for (const char digit : row.numbers)
            folder.add(std::string("sky_") + digit + ".png", 1u << (digit - '0'));
        for (const char digit : row.words)
            folder.add("sky_" + words[digit - '0'] + ".png", 2u << (digit - '0'));
        const auto before = setState(kUnpackStates[5]);
        const auto former = std::filesystem::current_path();
        const CallCounter calls;
        for (const bool inFolder : {false, true}) {
            std::filesystem::current_path(inFolder ? folder.path : former.string());
            Sizes sizes;
            const unsigned name =
                VX_GLTextureLoaderCubeMap2D(text(inFolder ? row.asked : folder.path + "/" + row.asked),
                                            &sizes.size, &sizes.end, inFolder);
            std::filesystem::current_path(former);
            ASSERT_EQ(name == 0, row.faces.empty()) << row.asked;
            EXPECT_EQ(calls.textures, name ? inFolder + 1 : 0);
            EXPECT_EQ(sizes.size.width, name ? row.faces[5] : 7);
            if (!name)
                continue;
            EXPECT_EQ(state(), before);
            EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_CUBE_MAP), ints(0));
            EXPECT_EQ(facesOf(name), row.faces);
            EXPECT_EQ(ints(parameterOf(kCube, GL_TEXTURE_WRAP_R), parameterOf(kCube, GL_TEXTURE_MIN_FILTER)),
                      ints(GL_CLAMP_TO_EDGE, inFolder ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR));
        }
    }
}

TEST(TexturePixelFormat, NamesWhatGLIsGiven) {
    HeadlessContext gl(8, 8);
    const std::pair<GLenum, GLenum> transfers[] = {
        {GL_RGBA, GL_UNSIGNED_BYTE},          {GL_RGBA, GL_UNSIGNED_SHORT_4_4_4_4},
        {GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1}, {GL_RGB, GL_UNSIGNED_SHORT_5_6_5},
        {GL_RGB, GL_UNSIGNED_BYTE},           {GL_LUMINANCE, GL_UNSIGNED_BYTE},
        {GL_ALPHA, GL_UNSIGNED_BYTE},         {GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE}};
    const Bytes pixels(64, 0xC5);
    for (const auto give : {_GLDoTexImage2D, _GLDoTexImage2DMipMaps}) {
        for (int format = 1; format <= 8; ++format) {
            const auto& [name, type] = transfers[format - 1];
            give(GL_TEXTURE_2D, Texture2DPixelFormat(format), 4, 2, pixels.data());
            EXPECT_EQ(levelOf(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT), int(name));
            EXPECT_EQ(pixelsOf(GL_TEXTURE_2D, name, type, 4)[1], 0xC5) << format;
        }
        EXPECT_THROW(give(GL_TEXTURE_2D, Texture2DPixelFormat(0), 1, 1, pixels.data()), NSException);
    }
}

TEST(VX_GLTextureLoader, StretchesFlipsAndKeepsThePixels) {
    HeadlessContext gl(8, 8);
    const Bytes flipped = {51, 0, 255, 255, 3, 2, 1, 255, 0, 100, 50, 128, 0, 0, 0, 0};
    const TemporaryFile square(
        pngBytes(4, 2, 2, {100, 200, 0, 128, 9, 9, 9, 0, 255, 0, 51, 255, 1, 2, 3, 255}));
    const TemporaryFile odd(fileOf(kKinds[3]));
    for (const auto& unpack : kUnpackStates) {
        const auto before = setState(unpack);
        for (const int kind : {0, 1, 2, 3}) { // plain, clamped, with mipmaps, a rectangle
            VX_GLTextureLoader loader;
            const auto load = [&](const TemporaryFile& file) {
                return kind == 3   ? loader.loadRectangleExtTextureFromPath(file.path())
                       : kind == 2 ? loader.load2DMipmapTextureFromPath(file.path(), false)
                                   : loader.load2DTextureFromPath(file.path(), kind == 1);
            };
            const GLenum target = kind == 3 ? kRectangleExt : GL_TEXTURE_2D;
            const unsigned name = load(square);
            EXPECT_EQ(state(), before);
            EXPECT_EQ(stateOf(kind == 3 ? GL_TEXTURE_BINDING_RECTANGLE_ARB : GL_TEXTURE_BINDING_2D),
                      ints(kind == 2 ? 0 : name));
            glBindTexture(target, name);
            EXPECT_EQ(pixelsOf(target, GL_BGRA, GL_UNSIGNED_BYTE, 4), flipped) << kind;
            EXPECT_EQ(ints(parameterOf(target, GL_TEXTURE_MIN_FILTER), parameterOf(target, GL_TEXTURE_WRAP_S),
                           kind == 3 ? 0 : levelOf(target, 1, GL_TEXTURE_WIDTH)),
                      ints(GL_LINEAR, kind % 2 ? GL_CLAMP_TO_EDGE : GL_REPEAT, kind == 2));
            const GLImageBitmap& bitmap = loader.bitmap();
            const auto* data = static_cast<unsigned char*>(bitmap.data);
            EXPECT_EQ(Bytes(data, data + bitmap.dataSize), flipped);
            EXPECT_EQ(ints(bitmap.target, bitmap.internalFormat, bitmap.format, bitmap.type, bitmap.rowBytes),
                      ints(target, GL_RGBA8, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, 8));
            load(odd);
            loader.freeImage();
            EXPECT_TRUE(!bitmap.data && bitmap.dataSize + bitmap.format + bitmap.rowBytes == 0);
            EXPECT_EQ(ints(loader.width(), loader.height(), loader.orgwidth(), loader.orgheight()),
                      kind == 3 ? ints(5, 3, 5, 3) : ints(8, 4, 5, 3));
        }
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLTextureLoader, TellsWhatItCannotLoadAndPassesFacesBy) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile torn(fileOf(kKinds[4]).substr(0, 90)), good(fileOf(kKinds[3]));
    VX_GLTextureLoader loader;
    const CallCounter calls;
    for (const char* path : {torn.path(), static_cast<const char*>(nullptr)})
        EXPECT_EQ(loader.load2DTextureFromPath(path, true) + loader.load2DMipmapTextureFromPath(path, true) +
                      loader.loadRectangleExtTextureFromPath(path),
                  0u);
    EXPECT_EQ(loader.loadCubeMapTextureFromPath(nullptr), 0u);
    EXPECT_EQ(calls.textures + calls.errors, 0);
    EXPECT_EQ(log.count(std::string("couldn't load texture:") + torn.path()), 3);
    EXPECT_EQ(log.count("couldn't load texture:(null)"), 2) << "none for the rectangle";
    glEnable(0xFFFF);
    EXPECT_NE(loader.load2DMipmapTextureFromPath(good.path(), true), 0u);
    EXPECT_EQ(log.count("WARNING: OpenGL Error 0x500 while loading texture with glTexImage2D(). "), 1);
    EXPECT_EQ(log.lines.size(), 6u);

    const FaceFolder folder;
    for (const int face : {0, 1, 3, 4})
        folder.add("sky_" + std::to_string(face) + ".png", 1u << face);
    const auto before = setState(kUnpackStates[5]);
    const int errors = calls.errors;
    const unsigned name = loader.loadCubeMapTextureFromPath((folder.path + "/sky.png").c_str());
    EXPECT_EQ(calls.errors, errors);
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_CUBE_MAP), ints(name));
    EXPECT_EQ(state(), before);
    EXPECT_EQ(facesOf(name), ints(1, 2, 0, 8, 16, 0));
    EXPECT_TRUE(log.lines.size() == 6 && !loader.bitmap().data && loader.width() == 16);
}

TEST(TextureFailure, TellsWhatWentWrongInTheLastLoad) {
    HeadlessContext gl(8, 8);
    const LogCollector log;
    const TemporaryFile none("P6 no picture"), good(fileOf(kKinds[3])), torn(fileOf(kKinds[4]).substr(0, 90));
    const TemporaryFile blocks("DDS " + std::string(80, 0) + "DXT1" + std::string(40, 0));
    const FaceFolder folder;
    folder.add("sky_5.png", 4);
    const std::string sky = folder.path + "/sky", cut = torn.path() + std::string(": the file is cut short");
    VX_GLTextureLoader loader;
    VX_GLDDSTextureLoader2D dds;
    const std::pair<std::function<void()>, std::string> loads[] = {
        {[&] { VX_GLTextureLoader2D(text(torn.path()), nullptr, nullptr, false); }, cut},
        {[&] { VX_GLTextureLoader2D(text(good.path()), nullptr, nullptr, false); }, ""},
        {[&] { VX_GLTextureLoader2DRect(nullptr, nullptr, nullptr); }, "there is no path"},
        {[&] { loader.load2DTextureFromPath(torn.path(), true); }, cut},
        {[&] { loader.loadRectangleExtTextureFromPath(good.path()); }, ""},
        {[&] { loader.loadRectangleExtTextureFromPath(nullptr); }, "there is no path"},
        {[&] { loader.loadCubeMapTextureFromPath((sky + ".png").c_str()); },
         sky + "_4.png: No such file or directory"},
        {[&] { VX_GLTextureLoaderCubeMap2D(text(sky), nullptr, nullptr, false); },
         sky + ": its name has no \"_\""},
        {[&] { dds.Load(none.path()); }, none.path() + std::string(": it does not begin with \"DDS \"")},
        {[&] { dds.ReadDDS(blocks.path()); }, ""},
        {[&] { glEnable(0xFFFF), loader.load2DTextureFromPath(good.path(), true); },
         good.path() + std::string(": OpenGL error 0x0500")},
        {[&] { glEnable(0xFFFF), VX_GLTextureLoader2DRect(text(good.path()), nullptr, nullptr); },
         good.path() + std::string(": OpenGL error 0x0500")},
    };
    for (const auto& [load, failure] : loads) {
        load();
        EXPECT_EQ(VX_GLTextureFailure(), failure);
    }
    std::thread([] { EXPECT_STREQ(VX_GLTextureFailure(), "") << "of another thread"; }).join();
}
