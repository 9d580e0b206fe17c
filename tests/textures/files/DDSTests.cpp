// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/GLTest.h>
#include <tests/support/TemporaryFile.h>
#include <tests/textures/CallCounter.h>

#include <filesystem>

namespace {

/// A DDS file; of DXT1 its blocks are white.
std::string ddsBytes(const char* fourCC, unsigned width, unsigned height, unsigned levels, std::size_t size) {
    std::string bytes(128, 0);
    bytes.replace(0, 4, "DDS ").replace(84, 4, fourCC);
    for (const int byte : {0, 1, 2, 3}) {
        bytes[12 + byte] = static_cast<char>(height >> 8 * byte);
        bytes[16 + byte] = static_cast<char>(width >> 8 * byte);
        bytes[28 + byte] = static_cast<char>(levels >> 8 * byte);
    }
    for (std::size_t i = 0; i < size; ++i)
        bytes += i % 8 < 2 ? '\xFF' : '\0';
    return bytes;
}

/// Width, height and bytes of the levels of the texture that is bound.
std::vector<int> levels() {
    std::vector<int> all;
    for (int level = 0; level < 15; ++level) {
        int values[3] = {};
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_WIDTH, &values[0]);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_HEIGHT, &values[1]);
        if (values[0] == 0)
            break;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_COMPRESSED_IMAGE_SIZE, &values[2]);
        all.insert(all.end(), values, values + 3);
    }
    return all;
}

long openFiles() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

} // namespace

TEST(VX_GLDDSTextureLoader2D, UploadsTheLevelsThatAreInTheFile) {
    HeadlessContext gl(8, 8);
    const std::vector<int> all = {256, 128, 16384, 128, 64, 4096, 64, 32, 1024, 32, 16, 256, 16, 8,
                                  64,  8,   4,     16,  4,  2,    8,  2,  1,    8,  1,  1,   8};
    const std::vector<int> allButOne(all.begin(), all.end() - 3);
    const struct {
        std::string file;
        std::vector<int> levels;
        int warnings = 0;
    } rows[] = {
        {ddsBytes("DXT1", 256, 128, 9, 21864), all},
        {ddsBytes("DXT1", 256, 128, 9, 21863), allButOne},
        {ddsBytes("DXT1", 256, 128, 8, 21864), allButOne},
        {ddsBytes("DXT5", 4, 4, 1, 99), {4, 4, 16}},
        {ddsBytes("DXT3", 5, 9, 3, 16 * 8 + 15), {5, 9, 96, 2, 4, 16, 1, 2, 16}},
        {ddsBytes("DXT5", 4, 4, 0, 16), {}},
        {ddsBytes("DXT5", 4, 4, 0xFFFFFFFF, 16), {}},
        {ddsBytes("DXT1", 32768, 32768, 1, 0), {}},
        {ddsBytes("DXT5", 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 64), {}},
        {ddsBytes("DXT5", 0, 0, 1, 0), {}},
        {ddsBytes("DXT5", 0xFFFFFFFC, 4, 0x7FFFFFFF, 16), {}, 32}, // left to GL, as often as a side is halved
    };
    for (const auto& row : rows) {
        LogCollector log;
        const TemporaryFile file(row.file);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
        VX_GLDDSTextureLoader2D loader;
        const unsigned name = loader.Load(file.path());
        EXPECT_EQ(
            log.count("WARNING: OpenGL Error 0x501 while loading texture with glCompressedTexImage2D(). "),
            row.warnings);
        EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT, GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D), ints(2, 0, 0));
        EXPECT_TRUE(name && !loader.m_Data);
        glBindTexture(GL_TEXTURE_2D, name);
        EXPECT_EQ(levels(), row.levels);
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
    const TemporaryFile other(ddsBytes("DX10", 4, 4, 1, 8)), head(good.substr(0, 127)), word("DDX " + good);
    const long before = openFiles();
    VX_GLDDSTextureLoader2D loader;
    const CallCounter calls;
    for (const char* path :
         {other.path(), head.path(), word.path(), "/tmp", "/nowhere", static_cast<const char*>(nullptr)}) {
        log.lines.clear();
        EXPECT_EQ(loader.Load(path), 0u);
        EXPECT_EQ(log.lines.size(), 1u);
    }
    VX_SetDiagnostics(false);
    EXPECT_FALSE(VX_GLTexture2D().LoadDDSFromPath(nullptr));
    EXPECT_TRUE(calls.textures == 0 && log.lines.size() == 1);
    EXPECT_EQ(openFiles(), before);
}

TEST(VX_GLDDSTextureLoader2D, ShowsItsBlocks) {
    HeadlessContext gl(8, 8);
    const TemporaryFile white(ddsBytes("DXT1", 8, 4, 4, 40));
    VX_GLTexture2D texture;
    EXPECT_TRUE(texture.LoadDDSFromPath(NSString::stringWithUTF8String(white.path())));
    EXPECT_EQ(ints(texture.Size().width, texture.Size().height, texture.TexCoordSize().width,
                   texture.TexCoordSize().height, texture.Target()),
              ints(8, 4, 8, 4, GL_TEXTURE_2D));
    glBindTexture(GL_TEXTURE_2D, texture.Name());
    glEnable(GL_TEXTURE_2D);
    glRectf(-1, -1, 1, 1);
    EXPECT_EQ(pixelAt(4, 4), 0xFFFFFFFFu);
    VX_GLDDSTextureLoader2D byHand;
    byHand.DecompressDDS();
    EXPECT_TRUE(byHand.ReadDDS(white.path()) && byHand.ReadDDS(white.path()));
    EXPECT_EQ(ints(byHand.m_DataSize, byHand.m_Components, byHand.m_MipMapCount, byHand.m_Format),
              ints(40, 3, 4, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT));
    for (const auto& [fourCC, format] :
         {std::pair("DXT3", GL_COMPRESSED_RGBA_S3TC_DXT3_EXT), {"DXT5", GL_COMPRESSED_RGBA_S3TC_DXT5_EXT}}) {
        byHand.ReadDDS(TemporaryFile(ddsBytes(fourCC, 4, 4, 1, 16)).path());
        EXPECT_EQ(ints(byHand.m_Components, byHand.m_Format), ints(4, format));
    }
}
