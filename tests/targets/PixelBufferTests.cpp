// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLPixelBufferObject.h>
#include <tests/support/GLTest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <random>

using PixelBuffer = VX_GLPixelBufferObject;

namespace {

using Words = std::vector<std::uint32_t>;
constexpr int kWidth = 33, kHeight = 17;

/// Pack and unpack buffer, texture, whether textures are enabled, read buffer.
std::vector<int> bindings() {
    return stateOf(GL_PIXEL_PACK_BUFFER_BINDING, GL_PIXEL_UNPACK_BUFFER_BINDING, GL_TEXTURE_BINDING_2D,
                   GL_TEXTURE_2D, GL_READ_BUFFER);
}

Words noise(unsigned seed) {
    Words words(kWidth * kHeight);
    std::generate(words.begin(), words.end(), std::mt19937(seed));
    return words;
}

/// What the texture holds at its origin; the rest has to be as it was.
Words contentOf(unsigned texture) {
    Words all(40 * 20), part;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, all.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    for (int i = 0; i < 40 * 20; ++i)
        if (i % 40 < kWidth && i / 40 < kHeight)
            part.push_back(all[std::size_t(i)]);
        else
            EXPECT_EQ(all[std::size_t(i)], 0xFF00FF00u);
    return part;
}

std::vector<std::int64_t> s_Sizes;

} // namespace

TEST(VX_GLPixelBufferObject, BringsTheFrontBufferToMemoryAndIntoATexturePixelForPixel) {
    HeadlessContext gl(kWidth, kHeight);
    const Words drawn = noise(1), written = noise(2);
    glWindowPos2i(0, 0);
    glDrawPixels(kWidth, kHeight, GL_BGRA, GL_UNSIGNED_BYTE, drawn.data());
    unsigned texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    const Words green(40 * 20, 0xFF00FF00u);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 40, 20, 0, GL_BGRA, GL_UNSIGNED_BYTE, green.data());
    glReadBuffer(GL_BACK);

    auto* buffer = new PixelBuffer(kWidth, kHeight, 4, GL_STREAM_READ);
    const int name = int(buffer->m_Buffer);
    EXPECT_EQ(bindings(), ints(0, 0, texture, 0, GL_BACK));
    buffer->ReadFrontBuffer();
    EXPECT_EQ(bindings(), ints(name, 0, texture, 0, GL_FRONT));
    buffer->CopyToTexture2D(texture, GL_BGRA, GL_UNSIGNED_BYTE); // though it is bound still
    EXPECT_EQ(bindings(), ints(name, 0, 0, 0, GL_FRONT));
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    EXPECT_EQ(contentOf(texture), drawn);

    const std::pair<void* (PixelBuffer::*)(), int> locks[] = {
        {&PixelBuffer::ReadOnlyBeginLock, GL_READ_ONLY},
        {&PixelBuffer::ReadWriteBeginLock, GL_READ_WRITE},
        {&PixelBuffer::WriteOnlyBeginLock, GL_WRITE_ONLY}};
    for (const auto& [lock, access] : locks) {
        void* pixels = (buffer->*lock)();
        int given[3] = {};
        for (const int i : {0, 1, 2})
            glGetBufferParameteriv(GL_PIXEL_PACK_BUFFER,
                                   GLenum(std::vector{GL_BUFFER_SIZE, GL_BUFFER_USAGE, GL_BUFFER_ACCESS}[i]),
                                   &given[i]);
        EXPECT_EQ(ints(given[0], given[1], given[2]), ints(drawn.size() * 4, GL_STREAM_READ, access));
        EXPECT_EQ(bindings()[0], name);
        if (access == GL_WRITE_ONLY)
            std::memcpy(pixels, written.data(), written.size() * 4);
        else
            EXPECT_EQ(std::memcmp(pixels, drawn.data(), drawn.size() * 4), 0);
        EXPECT_EQ((buffer->*lock)(), nullptr) << "locked already";
        buffer->EndLock();
        EXPECT_EQ(bindings()[0], 0);
    }
    buffer->CopyToTexture2D(texture, GL_BGRA, GL_UNSIGNED_BYTE);
    EXPECT_EQ(contentOf(texture), written);
    buffer->ReadFrontBuffer();
    buffer->EndLock();
    EXPECT_EQ(bindings()[0], 0) << "without a lock too";
    delete buffer;
    EXPECT_FALSE(glIsBuffer(unsigned(name)));
}

TEST(VX_GLPixelBufferObject, SizesAre64BitsWideAndMayBeNothing) {
    HeadlessContext gl(kWidth, kHeight);
    PixelBuffer empty(0, 5, 4, GL_STREAM_DRAW);
    empty.ReadFrontBuffer();
    EXPECT_EQ(empty.WriteOnlyBeginLock(), nullptr);
    empty.EndLock();
    empty.CopyToTexture2D(0, GL_BGRA, GL_UNSIGNED_BYTE);
    const PixelBuffer tooLarge(INT_MAX, INT_MAX, INT_MAX, GL_STREAM_DRAW);

    const auto former = std::exchange(
        epoxy_glBufferData, [](GLenum, GLsizeiptr size, const void*, GLenum) { s_Sizes.push_back(size); });
    const int rows[][3] = {{0, 5, 4}, {70000, 70000, 4}, {-2, 3, 4}, {INT_MAX, INT_MAX, INT_MAX}};
    for (const auto& [width, height, bytes] : rows)
        PixelBuffer(width, height, bytes, GL_STREAM_DRAW);
    epoxy_glBufferData = former;
    EXPECT_EQ(s_Sizes, (std::vector<std::int64_t>{0, 19'600'000'000, -24, INT64_MAX}));
}
