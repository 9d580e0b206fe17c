// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/PixelRows.h>
#include <VX_OpenGL64/textures/files/private/StretchedBitmap.h>
#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>
#include <VX_Platform/Foundation/NSException.h>
#include <tests/textures/PictureFiles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

using namespace vx;
using namespace vx::test;

namespace {

/// A picture of given rows, `goodRows` of which can be read.
struct MemoryPicture : PictureReader {
    MemoryPicture(PictureInfo info, Bytes bytes, std::size_t goodRows)
        : m_Bytes(std::move(bytes)), m_GoodRows(goodRows) {
        m_Info = info;
        m_Failure = "torn";
    }
    bool readRow(void* row) override {
        std::memcpy(row, m_Bytes.data() + m_Next * m_Info.rowBytes(), m_Info.rowBytes());
        return m_Next++ < m_GoodRows;
    }
    Bytes m_Bytes;
    std::size_t m_GoodRows, m_Next = 0;
};

/// By the machine's wide registers, where it has them, and without.
struct PixelRows : testing::TestWithParam<bool> {
    PixelRows() { pixels::usesWideRegisters = m_Wide && GetParam(); }
    ~PixelRows() override { pixels::usesWideRegisters = m_Wide; }
    const bool m_Wide = pixels::usesWideRegisters;
};
INSTANTIATE_TEST_SUITE_P(Both, PixelRows, testing::Bool());

Bytes stretched(const PictureInfo& info, const Bytes& bytes, bool powersOfTwo, GLImageBitmap& bitmap) {
    MemoryPicture picture(info, bytes, info.height);
    std::string why;
    EXPECT_TRUE(readBitmap(picture, powersOfTwo, bitmap, why)) << why;
    const std::unique_ptr<unsigned char[]> data(static_cast<unsigned char*>(bitmap.data));
    return Bytes(data.get(), data.get() + bitmap.dataSize);
}

} // namespace

TEST_P(PixelRows, GiveWhatEachPixelGivesByItself) {
    constexpr std::size_t count = 65536 + 13; // every value with every alpha, and no whole registers
    Bytes la, rgba;
    for (std::size_t i = 0; i < count; ++i) {
        la.insert(la.end(), {static_cast<unsigned char>(i >> 8), static_cast<unsigned char>(i)});
        for (const std::size_t byte : {i >> 8, i * 7 >> 3, i * 5 >> 2, i})
            rgba.push_back(static_cast<unsigned char>(byte));
    }
    Bytes la88(2 * count), there(4 * count), grayBGRA(4 * count), bgra(4 * count), back = rgba;
    pixels::premultiplyLA(la.data(), la88.data(), count);
    pixels::toBGRA(la.data(), 2, grayBGRA.data(), count);
    pixels::premultiplyRGBA(rgba.data(), there.data(), count);
    pixels::toBGRA(rgba.data(), 4, bgra.data(), count);
    pixels::undoPremultiplication(back.data(), count);
    const auto at = [](const Bytes& all, std::size_t i) { return Bytes(&all[4 * i], &all[4 * i] + 4); };
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char *p = &rgba[4 * i], a = p[3];
        const unsigned char gray = premultiplied(p[0], a), green = premultiplied(p[1], a),
                            blue = premultiplied(p[2], a);
        ASSERT_EQ(Bytes(&la88[2 * i], &la88[2 * i] + 2), (Bytes{gray, a}));
        ASSERT_EQ(at(grayBGRA, i), (Bytes{gray, gray, gray, a}));
        ASSERT_EQ(at(there, i), (Bytes{gray, green, blue, a}));
        ASSERT_EQ(at(bgra, i), (Bytes{blue, green, gray, a}));
        ASSERT_EQ(at(back, i), (Bytes{undone(p[0], a), undone(p[1], a), undone(p[2], a), a}));
    }
    EXPECT_EQ(back[4 * (64 * 256 + 128)], 127);
}

TEST_P(PixelRows, LoseTheLowestBits) {
    constexpr std::size_t count = 1021;
    const Bytes rgb = noise(3 * count);
    std::vector<std::uint16_t> to565(count), to5551(count), wide(65536);
    Bytes bgra(4 * count), gray(4 * count), narrow(wide.size());
    pixels::toRGB565(rgb.data(), reinterpret_cast<unsigned char*>(to565.data()), count);
    pixels::toRGBA5551(rgb.data(), reinterpret_cast<unsigned char*>(to5551.data()), count);
    pixels::toBGRA(rgb.data(), 3, bgra.data(), count);
    pixels::toBGRA(rgb.data(), 1, gray.data(), count);
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char r = rgb[3 * i], g = rgb[3 * i + 1], b = rgb[3 * i + 2];
        ASSERT_EQ(to565[i], r / 8 * 2048 + g / 4 * 32 + b / 8);
        ASSERT_EQ(to5551[i], (r / 8 * 1024 + g / 8 * 32 + b / 8) * 2 + 1);
        ASSERT_EQ(Bytes(&bgra[4 * i], &bgra[4 * i] + 4), (Bytes{b, g, r, 255}));
        ASSERT_EQ(Bytes(&gray[4 * i], &gray[4 * i] + 4), (Bytes{rgb[i], rgb[i], rgb[i], 255}));
    }
    for (std::size_t i = 0; i < wide.size(); ++i)
        wide[i] = static_cast<std::uint16_t>(i);
    pixels::narrow(wide.data(), narrow.data(), wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i)
        ASSERT_EQ(narrow[i], std::lround(double(i) / 257)) << i;
}

TEST_P(PixelRows, AreStretchedLinearlyAndOpaqueAtTheEdges) {
    GLImageBitmap bitmap;
    for (const auto& sides : {std::pair(5, 3), {1, 3}, {300, 1}, {7, 8}, {4, 2}}) {
        const int width = sides.first, height = sides.second;
        const Bytes gray = noise(std::size_t(width * height));
        const Bytes pixels = stretched({unsigned(width), unsigned(height), 1, 8, 8}, gray, true, bitmap);
        const auto place = [](int at, int from, int to) {
            return std::clamp((at + 0.5) * from / to - 0.5, 0.0, from - 1.0);
        };
        const int across = int(bitmap.width), down = int(bitmap.height);
        for (int i = 0; i < across * down; ++i) {
            const double x = place(i % across, width, across), y = place(down - 1 - i / across, height, down);
            const auto part = [&](int column, int row) {
                column = std::min(column, width - 1), row = std::min(row, height - 1);
                return gray[std::size_t(row * width + column)];
            };
            const double above = std::lerp(part(int(x), int(y)), part(int(x) + 1, int(y)), x - int(x));
            const double below =
                std::lerp(part(int(x), int(y) + 1), part(int(x) + 1, int(y) + 1), x - int(x));
            ASSERT_NEAR(pixels[std::size_t(4 * i)], std::lerp(above, below, y - int(y)), 0.6) << width;
            ASSERT_EQ(pixels[std::size_t(4 * i + 3)], 255);
        }
    }
    EXPECT_EQ(stretched({3, 1, 1, 16, 16}, {0, 0, 0xFF, 0xFF, 0, 0}, true, bitmap)[4], 159) << "at 5/8";
}

TEST(TextureCanvas, KeepsNothingOfADamagedPicture) {
    const PictureInfo info{2, 3, 1, 8, 8}, vast{1u << 31, 1u << 31, 4, 8, 32};
    MemoryPicture one(info, Bytes(6), 2), other(info, Bytes(6), 2);
    EXPECT_FALSE(TextureCanvas(info, Texture2DPixelFormat_L8, true, {}).read(one));
    GLImageBitmap bitmap;
    std::string why;
    EXPECT_FALSE(readBitmap(other, true, bitmap, why));
    EXPECT_TRUE(why == "torn" && !bitmap.data && bitmap.width + bitmap.height == 0 && !bitmap.orgwidth);
    EXPECT_FALSE(TextureCanvas(vast, Texture2DPixelFormat_RGBA8888, true, {}));
    EXPECT_THROW(TextureCanvas(info, Texture2DPixelFormat(9), true, {}), NSException);
    EXPECT_EQ(pixelFormatOf({1, 1, 1, 16, 16}), Texture2DPixelFormat_L8) << "gray, with 16 bits too";
}
