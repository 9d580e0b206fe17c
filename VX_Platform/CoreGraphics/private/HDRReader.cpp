// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

/// The densest run-length rows have 16 pixels a byte; the oldest way of packing goes beyond that, seldom far.
constexpr std::uint64_t kHDRPixelsPerByte = 256;

using Pixel = std::array<unsigned char, 4>;

/// Radiance pictures, made 8-bit by a gamma of 2.2. A reader of our own: stb_image 2.27 never comes back from
/// one that is cut short, and takes 15 bytes a pixel.
class HDRDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    using Tones = std::array<unsigned char, 256>;

    bool readLine(std::string& line);
    bool readPixels();
    bool readPlane(std::size_t plane);
    bool readOldPixels(Pixel first);
    const Tones& tonesOf(std::size_t exponent);

    std::vector<Pixel> m_Line; ///< three mantissas and their exponent
    std::array<std::unique_ptr<Tones>, 256> m_Tones;
};

bool HDRDecoder::open() {
    std::string line;
    bool isKnown = false;
    do {
        if (!readLine(line))
            return false;
        isKnown |= line == "FORMAT=32-bit_rle_rgbe";
    } while (!line.empty());
    if (!isKnown)
        return fail("its pixels are of a kind that is not read");
    unsigned width = 0, height = 0;
    if (!readLine(line))
        return false;
    if (std::sscanf(line.c_str(), "-Y %9u +X %9u", &height, &width) != 2)
        return fail("its rows do not go from the left, from the top down");
    m_Info.bitsPerPixel = 32;
    if (!admit(width, height) || !fileHolds(pixels() / kHDRPixelsPerByte))
        return false;
    m_Line.resize(width);
    return true;
}

bool HDRDecoder::readLine(std::string& line) {
    line.clear();
    for (int c = m_Source->get(); c != '\n'; c = m_Source->get()) {
        if (c < 0)
            return cutShort();
        if (line.size() >= 4096)
            return fail("the file is damaged: a line of its header has no end");
        line += static_cast<char>(c);
    }
    return true;
}

bool HDRDecoder::readRow(void* row) {
    if (!readPixels())
        return m_Failure.empty() ? cutShort() : false;
    auto* out = static_cast<unsigned char*>(row);
    for (const Pixel& pixel : m_Line) {
        const Tones& tones = tonesOf(pixel[3]);
        for (std::size_t c = 0; c < 3; ++c)
            *out++ = tones[pixel[c]];
    }
    return true;
}

bool HDRDecoder::readPixels() {
    Pixel first;
    if (!m_Source->read(first.data(), first.size()))
        return false;
    const bool inPlanes =
        first[0] == 2 && first[1] == 2 && first[2] < 128 && m_Info.width >= 8 && m_Info.width < 32768;
    if (!inPlanes)
        return readOldPixels(first);
    if (vx::bigEndian16(&first[2]) != m_Info.width)
        return fail("the file is damaged: a row of another length");
    return readPlane(0) && readPlane(1) && readPlane(2) && readPlane(3);
}

bool HDRDecoder::readPlane(std::size_t plane) {
    for (std::size_t x = 0; x < m_Line.size();) {
        const int code = m_Source->get();
        const bool isRun = code > 128;
        const std::size_t count = std::size_t(isRun ? code - 128 : code);
        if (code < 0)
            return false;
        if (count == 0 || count > m_Line.size() - x)
            return fail("the file is damaged: pixels beside the picture");
        int value = isRun ? m_Source->get() : 0;
        for (const std::size_t end = x + count; x < end; ++x) {
            if (!isRun)
                value = m_Source->get();
            m_Line[x][plane] = static_cast<unsigned char>(value);
        }
        if (value < 0)
            return false;
    }
    return true;
}

// Pixels as they are, or ones for "the last one again", with the bytes of the count following each other.
bool HDRDecoder::readOldPixels(Pixel pixel) {
    unsigned shift = 0;
    for (std::size_t x = 0;;) {
        if (pixel[0] == 1 && pixel[1] == 1 && pixel[2] == 1) {
            const std::uint64_t count = std::uint64_t(pixel[3]) << shift;
            if (x == 0 || shift > 16 || count > m_Line.size() - x)
                return fail("the file is damaged: pixels beside the picture");
            std::fill_n(m_Line.begin() + std::ptrdiff_t(x), count, m_Line[x - 1]);
            x += count;
            shift += 8;
        } else {
            m_Line[x++] = pixel;
            shift = 0;
        }
        if (x == m_Line.size())
            return true;
        if (!m_Source->read(pixel.data(), pixel.size()))
            return false;
    }
}

const HDRDecoder::Tones& HDRDecoder::tonesOf(std::size_t exponent) {
    std::unique_ptr<Tones>& tones = m_Tones[exponent];
    if (!tones) {
        tones = std::make_unique<Tones>();
        for (std::size_t mantissa = 0; exponent > 0 && mantissa < 256; ++mantissa) {
            const double light = std::ldexp(double(mantissa), int(exponent) - 136);
            (*tones)[mantissa] =
                static_cast<unsigned char>(std::min(std::pow(light, 1 / 2.2) * 255 + 0.5, 255.0));
        }
    }
    return *tones;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeHDRDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<HDRDecoder>(std::move(source));
}
