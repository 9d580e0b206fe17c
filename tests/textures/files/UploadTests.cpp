// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureRect.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/Checksum.h>
#include <tests/support/GLTest.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <utility>

namespace {

std::size_t bytesPerPixel(GLenum format, GLenum type) {
    if (type != GL_UNSIGNED_BYTE)
        return type == GL_UNSIGNED_INT_8_8_8_8_REV ? 4 : 2;
    return format == GL_RGBA ? 4 : format == GL_LUMINANCE_ALPHA ? 2 : 1;
}

/// CRC-32 of the rows that GL finds under the unpack state in force.
std::uint32_t crcOfRows(const unsigned char* data, std::size_t pixelBytes, std::size_t width, int height) {
    const auto unpack = stateOf(GL_UNPACK_ALIGNMENT, GL_UNPACK_ROW_LENGTH);
    const std::size_t alignment = std::size_t(unpack[0]);
    const std::size_t row = pixelBytes * (unpack[1] > 0 ? std::size_t(unpack[1]) : width);
    std::uint32_t crc = 0;
    for (int y = 0; y < height; ++y, data += (row + alignment - 1) / alignment * alignment)
        crc = crcOf(data, pixelBytes * width, crc);
    return crc;
}

/// Writes down what glTexImage2D was given last.
struct UploadRecorder {
    UploadRecorder() {
        glTexImage2D(GL_PROXY_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        s_Real = std::exchange(epoxy_glTexImage2D, record);
    }
    ~UploadRecorder() { epoxy_glTexImage2D = s_Real; }

    /// A texture's part of a line of uploads.txt.
    static std::string told(CGSize first, CGSize second) {
        char sizes[100];
        std::snprintf(sizes, sizeof sizes, " %g %g %g %g", first.width, first.height, second.width,
                      second.height);
        return " | " + std::exchange(s_Upload, "") + sizes;
    }

private:
    static void record(GLenum target, GLint level, GLint internal, GLsizei width, GLsizei height,
                       GLint border, GLenum format, GLenum type, const void* data) {
        char line[150];
        std::snprintf(line, sizeof line, "%x %d %x %d %d %d %x %x %08x", target, level, unsigned(internal),
                      width, height, border, format, type,
                      crcOfRows(static_cast<const unsigned char*>(data), bytesPerPixel(format, type),
                                std::size_t(width), height));
        s_Upload = line;
        s_Real(target, level, internal, width, height, border, format, type, data);
    }
    static inline std::string s_Upload;
    static inline PFNGLTEXIMAGE2DPROC s_Real;
};

} // namespace

// What the lines say was worked out by make_uploads, which prints the pixels of a file that it is given.
TEST(TextureUpload, EveryKindOfFileReachesGLAsWorkedOutByHand) {
    HeadlessContext gl(8, 8);
    const UploadRecorder recorder;
    std::ifstream file(VX_PICTURES "uploads.txt");
    int count = 0;
    for (std::string wanted; std::getline(file, wanted); ++count) {
        std::string line = wanted.substr(0, wanted.find(" |"));
        const std::string path = VX_PICTURES + line.substr(0, line.find(' '));
        NSString* text = NSString::stringWithUTF8String(path.c_str());
        VX_GLTexture2D plain;
        EXPECT_TRUE(plain.LoadFromPath(text, false));
        line += recorder.told(plain.Size(), plain.TexCoordSize());
        VX_GLTextureRect rectangle;
        EXPECT_TRUE(rectangle.LoadFromPath(text));
        line += recorder.told(rectangle.Size(), rectangle.TexCoordSize());
        VX_GLTexture texture;
        for (const auto load :
             {&VX_GLTexture::load2DTextureFromPath, &VX_GLTexture::loadRectangleExtTextureFromPath}) {
            EXPECT_TRUE((texture.*load)(path.c_str()));
            line += recorder.told(CGSizeMake(texture.width(), texture.height()),
                                  CGSizeMake(texture.orgwidth(), texture.orgheight()));
        }
        EXPECT_EQ(line, wanted);
    }
    EXPECT_GE(count, 140);
}
