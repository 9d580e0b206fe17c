// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/GLTest.h>
#include <tests/support/TemporaryFile.h>
#include <tests/textures/GLCalls.h>

#include <filesystem>

namespace {

constexpr GLenum kDXT1 = GL_COMPRESSED_RGBA_S3TC_DXT1_EXT;
constexpr GLenum kDXT3 = GL_COMPRESSED_RGBA_S3TC_DXT3_EXT;
constexpr GLenum kDXT5 = GL_COMPRESSED_RGBA_S3TC_DXT5_EXT;

void put(std::string& bytes, std::size_t offset, unsigned number) {
    for (const int shift : {0, 8, 16, 24})
        bytes[offset++] = static_cast<char>(number >> shift);
}

/// A DDS file; of DXT1 its blocks are white.
std::string ddsBytes(const char* fourCC, int width, int height, unsigned levels, std::size_t dataSize) {
    std::string bytes(128, 0);
    bytes.replace(0, 4, "DDS ").replace(84, 4, fourCC);
    put(bytes, 12, unsigned(height));
    put(bytes, 16, unsigned(width));
    put(bytes, 28, levels);
    for (std::size_t i = 0; i < dataSize; ++i)
        bytes += i % 8 < 2 ? '\xFF' : '\0';
    return bytes;
}

std::string level(int index, GLenum format, int width, int height, int size) {
    return glCall("glCompressedTexImage2D", GL_TEXTURE_2D, index, format, width, height, 0, size, &index);
}

long openFiles() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

} // namespace

TEST(VX_GLDDSTextureLoader2D, UploadsTheLevelsThatAreInTheFile) {
    HeadlessContext gl(8, 8);
    const struct {
        std::string file;
        std::vector<std::string> levels;
    } rows[] = {
        {ddsBytes("DXT1", 256, 128, 9, 21864),
         {level(0, kDXT1, 256, 128, 16384), level(1, kDXT1, 128, 64, 4096), level(2, kDXT1, 64, 32, 1024),
          level(3, kDXT1, 32, 16, 256), level(4, kDXT1, 16, 8, 64), level(5, kDXT1, 8, 4, 16),
          level(6, kDXT1, 4, 2, 8), level(7, kDXT1, 2, 1, 8)}}, // the ninth is cut off below
        {ddsBytes("DXT5", 4, 4, 1, 99), {level(0, kDXT5, 4, 4, 16)}},
        {ddsBytes("DXT3", 5, 9, 3, 16 * 8 + 15),
         {level(0, kDXT3, 5, 9, 96), level(1, kDXT3, 2, 4, 16), level(2, kDXT3, 1, 2, 16)}},
        {ddsBytes("DXT5", 4, 4, 0, 16), {}},
        {ddsBytes("DXT5", 4, 4, 0xFFFFFFFF, 16), {}},
        {ddsBytes("DXT1", 32768, 32768, 1, 0), {}},
        {ddsBytes("DXT5", 0x7FFFFFFF, 0x7FFFFFFF, 4, 64), {}},
        {ddsBytes("DXT1", 0, 5, 2, 16), {level(0, kDXT1, 0, 5, 0), level(1, kDXT1, 1, 2, 8)}},
        {ddsBytes("DXT5", 0, 0, 1, 0), {level(0, kDXT5, 0, 0, 0)}},
    };
    for (const auto& row : rows) {
        LogCollector log;
        const TemporaryFile file(row.levels.size() == 8 ? row.file.substr(0, row.file.size() - 1) : row.file);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
        glEnable(GL_TEXTURE_2D);
        const TextureCalls calls;
        VX_GLDDSTextureLoader2D loader;
        const unsigned name = loader.Load(file.path());
        std::vector<std::string> levels;
        for (const std::string& call : glCalls) {
            if (call.starts_with("glCompressed"))
                levels.push_back(call);
        }
        EXPECT_EQ(levels, row.levels);
        EXPECT_EQ(std::count(glCalls.begin(), glCalls.end(), "glGetError"), long(levels.size()));
        EXPECT_TRUE(log.lines.empty()) << log.lines[0];
        EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D), ints(2, 0, 0));
        EXPECT_TRUE(glIsTexture(name) && !loader.m_Data);
        glBindTexture(GL_TEXTURE_2D, name);
        int filter = 0, environment = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
        EXPECT_EQ(ints(filter, environment), ints(GL_LINEAR_MIPMAP_LINEAR, GL_REPLACE));
    }
}

TEST(VX_GLDDSTextureLoader2D, RefusesOtherFilesAndLeavesNoneOpen) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    VX_SetDiagnostics(true);
    const std::string good = ddsBytes("DXT1", 4, 4, 1, 8);
    const TemporaryFile files[] = {TemporaryFile(ddsBytes("DX10", 4, 4, 1, 8)),
                                   TemporaryFile(good.substr(0, 127)), TemporaryFile("DDX " + good),
                                   TemporaryFile("")};
    const long before = openFiles();
    VX_GLDDSTextureLoader2D loader;
    const TextureCalls calls;
    for (const char* path : {files[0].path(), files[1].path(), files[2].path(), files[3].path(), "/tmp",
                             "/nowhere", static_cast<const char*>(nullptr)}) {
        log.lines.clear();
        EXPECT_EQ(loader.Load(path), 0u);
        EXPECT_EQ(log.lines.size(), 1u) << log.lines[0];
    }
    VX_SetDiagnostics(false);
    VX_GLTexture2D texture;
    EXPECT_FALSE(texture.LoadDDSFromPath(nullptr));
    EXPECT_TRUE(glCalls.empty() && log.lines.size() == 1);
    EXPECT_EQ(openFiles(), before);
}

TEST(VX_GLDDSTextureLoader2D, LeavesNegativeSidesToGLAndGoesOn) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const TemporaryFile file(ddsBytes("DXT5", -4, 4, 0x7FFFFFFF, 16));
    EXPECT_NE(VX_GLDDSTextureLoader2D().Load(file.path()), 0u);
    EXPECT_EQ(log.count("WARNING: OpenGL Error 0x501 while loading texture with glCompressedTexImage2D(). "),
              32);

    const TemporaryFile white(ddsBytes("DXT1", 8, 4, 4, 40));
    VX_GLTexture2D texture;
    EXPECT_TRUE(texture.LoadDDSFromPath(NSString::stringWithUTF8String(white.path())));
    EXPECT_EQ(ints(texture.Size().width, texture.Size().height, texture.TexCoordSize().width,
                   texture.TexCoordSize().height, texture.Target()),
              ints(8, 4, 8, 4, GL_TEXTURE_2D));
    glBindTexture(GL_TEXTURE_2D, texture.Name());
    glEnable(GL_TEXTURE_2D);
    clearTo(0, 0, 0);
    glRectf(-1, -1, 1, 1);
    EXPECT_EQ(pixelAt(4, 4) | 0xFF, 0xFFFFFFFFu);
    VX_GLDDSTextureLoader2D byHand;
    byHand.DecompressDDS();
    EXPECT_TRUE(byHand.ReadDDS(white.path()) && byHand.ReadDDS(white.path()));
    EXPECT_EQ(ints(byHand.m_DataSize, byHand.m_Components, byHand.m_MipMapCount), ints(40, 3, 4));
}
