// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/PixelRows.h>
#include <VX_OpenGL64/textures/files/private/StretchedBitmap.h>
#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>
#include <VX_Platform/Foundation/NSException.h>
#include <tests/textures/files/MemoryPicture.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace vx;
using namespace vx::test;
using Bytes = std::vector<unsigned char>;

namespace {

/// By the machine's wide registers, where it has them, and without.
struct PixelRows : testing::TestWithParam<bool> {
    PixelRows() { pixels::usesWideRegisters = m_Wide && GetParam(); }
    ~PixelRows() override { pixels::usesWideRegisters = m_Wide; }

    const bool m_Wide = pixels::usesWideRegisters;
};
INSTANTIATE_TEST_SUITE_P(Narrow, PixelRows, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Wide, PixelRows, testing::Values(true));

/// Every pair of two bytes as pixels of `channels`, the last one alpha; the others differ from each other.
Bytes allPairs(unsigned channels, bool valueWithinAlpha = false) {
    Bytes all;
    for (unsigned pair = 0; pair < 65536; ++pair) {
        const unsigned alpha = pair & 255, value = valueWithinAlpha ? (pair >> 8) * alpha / 255 : pair >> 8;
        for (unsigned channel = 0; channel + 1 < channels; ++channel)
            all.push_back(static_cast<unsigned char>(channel == 0 ? value : pair * (channel * 7 + 1) >> 3));
        all.push_back(static_cast<unsigned char>(alpha));
    }
    all.insert(all.end(), all.begin(), all.begin() + channels * 13); // and an end that fills no register
    return all;
}

/// `channels` of each pixel made by `formula` of its value and the pixel's alpha.
template <class Formula>
Bytes eachOf(const Bytes& in, unsigned channels, Formula formula) {
    Bytes out = in;
    for (std::size_t i = 0; i < in.size(); ++i) {
        const unsigned alpha = in[i / channels * channels + channels - 1];
        if (i % channels + 1 < channels)
            out[i] = static_cast<unsigned char>(formula(in[i], alpha));
    }
    return out;
}

std::uint16_t wordAt(const Bytes& bytes, std::size_t index) {
    return static_cast<std::uint16_t>(bytes[2 * index] | bytes[2 * index + 1] << 8);
}

GLImageBitmap bitmapOf(const PictureInfo& info, const Bytes& bytes, bool powersOfTwo) {
    MemoryPicture picture(info, bytes);
    GLImageBitmap bitmap;
    std::string why;
    EXPECT_TRUE(readBitmap(picture, powersOfTwo, bitmap, why)) << why;
    return bitmap;
}

Bytes takeBytes(const GLImageBitmap& bitmap) {
    const std::unique_ptr<unsigned char[]> data(static_cast<unsigned char*>(bitmap.data));
    return Bytes(data.get(), data.get() + bitmap.dataSize);
}

} // namespace

TEST_P(PixelRows, ComeOutAsOneByOne) {
    for (const unsigned channels : {2u, 4u}) {
        const Bytes straight = allPairs(channels);
        const std::size_t count = straight.size() / channels;
        const Bytes expected = eachOf(straight, channels, premultiplied);
        Bytes out(straight.size());
        (channels == 2 ? pixels::premultiplyLA : pixels::premultiplyRGBA)(straight.data(), out.data(), count);
        EXPECT_EQ(out, expected) << channels;
        Bytes bgra(count * 4);
        pixels::toBGRA(straight.data(), channels, bgra.data(), count);
        for (std::size_t i = 0; i < bgra.size(); ++i) {
            const std::size_t channel = channels == 2 ? i % 4 / 3 : i % 4 == 3 ? 3 : 2 - i % 4;
            ASSERT_EQ(bgra[i], expected[i / 4 * channels + channel]) << i;
        }
    }
    for (const bool within : {true, false}) {
        Bytes undoing = allPairs(4, within);
        const Bytes expected = eachOf(undoing, 4, undone);
        pixels::undoPremultiplication(undoing.data(), undoing.size() / 4);
        EXPECT_EQ(undoing, expected);
    }
    Bytes known = {64, 128, 0, 128, 9, 8, 7, 0, 9, 8, 7, 255};
    pixels::undoPremultiplication(known.data(), 3);
    EXPECT_EQ(known, (Bytes{127, 254, 0, 128, 9, 8, 7, 0, 9, 8, 7, 255}));
}

TEST_P(PixelRows, LoseTheLowestBits) {
    Bytes rgb;
    for (unsigned i = 0; i < 3 * 1021; ++i)
        rgb.push_back(static_cast<unsigned char>(i * 7919 >> 4));
    const std::size_t count = rgb.size() / 3;
    Bytes to565(2 * count), to5551(2 * count), bgra(4 * count), gray(4 * rgb.size());
    pixels::toRGB565(rgb.data(), to565.data(), count);
    pixels::toRGBA5551(rgb.data(), to5551.data(), count);
    pixels::toBGRA(rgb.data(), 3, bgra.data(), count);
    pixels::toBGRA(rgb.data(), 1, gray.data(), rgb.size());
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned r = rgb[3 * i], g = rgb[3 * i + 1], b = rgb[3 * i + 2];
        ASSERT_EQ(wordAt(to565, i), r / 8 * 2048 + g / 4 * 32 + b / 8);
        ASSERT_EQ(wordAt(to5551, i), (r / 8 * 1024 + g / 8 * 32 + b / 8) * 2 + 1);
        ASSERT_EQ(Bytes(&bgra[4 * i], &bgra[4 * i] + 4),
                  (Bytes{rgb[3 * i + 2], rgb[3 * i + 1], rgb[3 * i], 255}));
        ASSERT_EQ(Bytes(&gray[4 * i], &gray[4 * i] + 4), (Bytes{rgb[i], rgb[i], rgb[i], 255}));
    }
    std::vector<std::uint16_t> wide(65536);
    for (unsigned i = 0; i < wide.size(); ++i)
        wide[i] = static_cast<std::uint16_t>(i);
    Bytes narrow(wide.size());
    pixels::narrow(wide.data(), narrow.data(), wide.size());
    for (unsigned i = 0; i < wide.size(); ++i)
        ASSERT_EQ(narrow[i], std::lround(i / 257.0)) << i;
}

TEST_P(PixelRows, AreStretchedLinearlyAndStayOpaqueAtTheEdges) {
    for (const auto& [width, height] : {std::pair(5, 3), {1, 3}, {300, 1}, {7, 8}, {4, 2}}) {
        const PictureInfo info{unsigned(width), unsigned(height), 3, 8, 24};
        Bytes rgb;
        for (int i = 0; i < width * height * 3; ++i)
            rgb.push_back(static_cast<unsigned char>(i * 7919 >> 3));
        const GLImageBitmap bitmap = bitmapOf(info, rgb, true);
        const int canvasWidth = int(bitmap.width), canvasHeight = int(bitmap.height);
        const Bytes pixels = takeBytes(bitmap);
        const auto between = [](int place, int from, int to) {
            return std::clamp((place + 0.5) * from / to - 0.5, 0.0, from - 1.0);
        };
        for (int i = 0; i < canvasWidth * canvasHeight; ++i) {
            const double x = between(i % canvasWidth, width, canvasWidth);
            const double y = between(canvasHeight - 1 - i / canvasWidth, height, canvasHeight);
            for (int channel = 0; channel < 3; ++channel) {
                double value = 0;
                for (const int corner : {0, 1, 2, 3}) {
                    const int left = int(x) + corner % 2, top = int(y) + corner / 2;
                    const double part = (1 - std::abs(x - left)) * (1 - std::abs(y - top));
                    if (left < width && top < height)
                        value += part * rgb[std::size_t((top * width + left) * 3 + 2 - channel)];
                }
                ASSERT_NEAR(pixels[std::size_t(i * 4 + channel)], value, 0.6) << width << " " << i;
            }
            ASSERT_EQ(pixels[std::size_t(i * 4 + 3)], 255);
        }
    }
    const Bytes twoPixels = {100, 200, 0, 128, 0, 40, 255, 255};
    const PictureInfo rows{1, 2, 4, 8, 32};
    EXPECT_EQ(takeBytes(bitmapOf(rows, twoPixels, false)), (Bytes{255, 40, 0, 255, 0, 100, 50, 128}));
    const GLImageBitmap three = bitmapOf({3, 1, 1, 16, 16}, {0, 0, 0xFF, 0xFF, 0, 0}, true);
    EXPECT_EQ(std::vector<unsigned long>({three.width, three.height, three.rowBytes, three.dataSize}),
              (std::vector<unsigned long>{4, 1, 16, 16}));
    const Bytes stretched = takeBytes(three); // at -1/8, 5/8, 11/8 and 17/8
    EXPECT_EQ((Bytes{stretched[0], stretched[4], stretched[8], stretched[12]}), (Bytes{0, 159, 159, 0}));
}

TEST(TextureCanvas, ChoosesByWhatTheFileSaysAndPadsForGL) {
    const struct {
        unsigned channels, bits, bitsPerPixel;
        Texture2DPixelFormat format;
        std::size_t bytes;
        Bytes row; ///< of two pixels, in the file
        Bytes kept, clear;
    } rows[] = {
        {1, 8, 8, Texture2DPixelFormat_L8, 1, {9, 200}, {9, 200}, {0}},
        {1, 16, 16, Texture2DPixelFormat_L8, 1, {127, 9, 128, 9}, {9, 9}, {0}},
        {2, 8, 16, Texture2DPixelFormat_LA88, 2, {200, 128, 9, 255}, {100, 128, 9, 255}, {0, 0}},
        {3, 8, 24, Texture2DPixelFormat_RGB565, 2, {255, 4, 8, 0, 0, 15}, {0x21, 0xF8, 1, 0}, {0, 0}},
        {3, 8, 16, Texture2DPixelFormat_RGBA5551, 2, {255, 8, 8, 0, 0, 15}, {0x43, 0xF8, 3, 0}, {1, 0}},
        {4,
         8,
         16,
         Texture2DPixelFormat_RGBA8888,
         4,
         {128, 9, 0, 128, 9, 9, 9, 0},
         {127, 9, 0, 128, 0, 0, 0, 0},
         {0, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        const PictureInfo info{2, 3, row.channels, row.bits, row.bitsPerPixel};
        ASSERT_EQ(pixelFormatOf(info), row.format);
        Bytes file;
        for (int i = 0; i < 3; ++i)
            file.insert(file.end(), row.row.begin(), row.row.end());
        for (const UnpackLayout layout : {UnpackLayout{1, 0}, {2, 0}, {4, 0}, {8, 0}, {4, 7}, {1, 1}}) {
            for (const bool powersOfTwo : {false, true}) {
                MemoryPicture picture(info, file);
                TextureCanvas canvas(info, row.format, powersOfTwo, layout);
                ASSERT_TRUE(canvas && canvas.read(picture));
                const std::size_t used = (layout.rowLength ? layout.rowLength : 2) * row.bytes;
                EXPECT_EQ(canvas.rowBytes(),
                          used + (layout.alignment - used % layout.alignment) % layout.alignment);
                EXPECT_EQ(canvas.height(), powersOfTwo ? 4u : 3u);
                const auto at = [&](std::size_t y, std::size_t count) {
                    const unsigned char* start = canvas.pixels() + y * canvas.rowBytes();
                    return Bytes(start, start + count);
                };
                if (layout.rowLength == 1)
                    continue; // rows lie over each other; no byte is outside
                EXPECT_EQ(at(0, row.kept.size()), row.kept);
                EXPECT_EQ(at(2, row.kept.size()), row.kept);
                if (powersOfTwo) {
                    EXPECT_EQ(at(3, row.bytes), row.clear);
                }
            }
        }
    }
    const std::size_t sides[][2] = {
        {0, 0}, {1, 1}, {2, 2}, {3, 4}, {300, 512}, {512, 512}, {(1u << 31) + 1, 1ull << 32}};
    for (const auto& [side, power] : sides)
        EXPECT_EQ(powerOfTwoSide(side), power);
}

TEST(TextureCanvas, KeepsNothingOfADamagedPicture) {
    const PictureInfo info{2, 3, 1, 8, 8};
    MemoryPicture one(info, Bytes(6), 2), other(info, Bytes(6), 2);
    TextureCanvas canvas(info, Texture2DPixelFormat_L8, true, {});
    EXPECT_FALSE(canvas.read(one));
    GLImageBitmap bitmap;
    std::string why;
    EXPECT_FALSE(readBitmap(other, true, bitmap, why));
    EXPECT_EQ(why, "torn");
    EXPECT_TRUE(bitmap.data == nullptr && bitmap.width + bitmap.height == 0 && bitmap.orgwidth == 0);
    const PictureInfo vast{1u << 31, 1u << 31, 4, 8, 32};
    EXPECT_FALSE(TextureCanvas(vast, Texture2DPixelFormat_RGBA8888, true, {}));
    try {
        TextureCanvas(info, Texture2DPixelFormat(9), true, {});
        ADD_FAILURE();
    } catch (const NSException& raised) {
        EXPECT_STREQ(raised.name()->UTF8String(), NSInternalInconsistencyException);
        EXPECT_STREQ(raised.reason()->UTF8String(), "Invalid pixel format");
    }
}
