// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

using Color = std::array<unsigned char, 4>;

constexpr std::size_t kHeaderSize = 18;

/// A packet makes 128 pixels at the most, of a byte and a pixel.
constexpr std::uint64_t kRunLength = 128;

struct Header {
    explicit Header(const unsigned char* bytes)
        : idLength(bytes[0]),
          hasMap(bytes[1]),
          type(bytes[2] & ~8u),
          isRunLength(bytes[2] & 8),
          mapFirst(vx::littleEndian16(bytes + 3)),
          mapLength(vx::littleEndian16(bytes + 5)),
          mapDepth(bytes[7]),
          width(vx::littleEndian16(bytes + 12)),
          height(vx::littleEndian16(bytes + 14)),
          depth(bytes[16]),
          description(bytes[17]) {}

    static bool isColorDepth(unsigned depth) {
        return depth == 15 || depth == 16 || depth == 24 || depth == 32;
    }
    bool looksRight() const {
        const bool mapped = type == 1 && hasMap == 1 && (depth == 8 || depth == 15 || depth == 16);
        const bool colored = type == 2 && isColorDepth(depth),
                   gray = type == 3 && (depth == 8 || depth == 16);
        return hasMap <= 1 && (!hasMap || isColorDepth(mapDepth) || type != 1) &&
               (mapped || colored || gray) && width > 0 && height > 0 && attributeBits() <= 8 &&
               description >> 6 == 0;
    }
    unsigned attributeBits() const { return description & 15; }
    bool fromRight() const { return description & 16; }
    bool fromTop() const { return description & 32; }
    std::uint64_t pixelsStart() const {
        return kHeaderSize + idLength + (hasMap ? mapLength * std::uint64_t((mapDepth + 7) / 8) : 0);
    }

    unsigned idLength, hasMap, type;
    bool isRunLength;
    unsigned mapFirst, mapLength, mapDepth, width, height, depth, description;
};

/// Red, green, blue and alpha from 2, 3 or 4 bytes.
Color colorOf(const unsigned char* bytes, unsigned depth) {
    if (depth >= 24)
        return {bytes[2], bytes[1], bytes[0], depth == 32 ? bytes[3] : static_cast<unsigned char>(255)};
    const std::uint32_t pixel = vx::littleEndian16(bytes);
    const auto five = [](std::uint32_t value) {
        return static_cast<unsigned char>(((value & 31) * 255 + 15) / 31);
    };
    return {five(pixel >> 10), five(pixel >> 5), five(pixel),
            static_cast<unsigned char>(pixel & 0x8000 ? 255 : 0)};
}

class TGADecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    /// Where a run-length row begins: in a packet of which so many pixels are left.
    struct RowStart {
        std::uint64_t position;
        std::uint32_t left;
        bool isRun;
    };

    bool takeHeader(const Header& header);
    bool readMap(const Header& header);
    bool findRows();
    bool passOverRow(RowStart& at);
    bool readRunLengths(RowStart at);
    bool readLine(std::uint32_t y);
    void write(unsigned char* row) const;
    const Color& mapped(std::uint32_t index) const;

    std::uint64_t m_Pixels = 0;
    unsigned m_Depth = 0;
    std::size_t m_PixelBytes = 0;
    bool m_IsGray = false, m_IsMapped = false, m_FromTop = false, m_FromRight = false;
    unsigned m_MapFirst = 0;
    std::vector<Color> m_Map;
    std::vector<RowStart> m_Rows; ///< of a run-length file
    std::vector<unsigned char> m_Line;
    std::uint32_t m_Row = 0;
};

bool TGADecoder::open() {
    unsigned char bytes[kHeaderSize];
    if (!m_Source->read(bytes, sizeof bytes))
        return cutShort();
    const Header header(bytes);
    if (!takeHeader(header) || (m_IsMapped && !readMap(header)))
        return false;
    m_Line.resize(m_Info.width * m_PixelBytes);
    if (header.isRunLength)
        return fileHolds(pixels() / kRunLength) && findRows();
    return m_Pixels + pixels() * m_PixelBytes <= m_Source->length() || cutShort();
}

bool TGADecoder::takeHeader(const Header& header) {
    m_IsMapped = header.type == 1;
    m_IsGray = header.type == 3;
    m_Depth = header.depth;
    m_PixelBytes = (m_Depth + 7) / 8;
    m_FromTop = header.fromTop();
    m_FromRight = header.fromRight();
    m_MapFirst = header.mapFirst;
    m_Pixels = header.pixelsStart();
    const unsigned colorDepth = m_IsMapped ? header.mapDepth : m_Depth;
    const bool hasAlpha = header.attributeBits() > 0 && (colorDepth == 16 || colorDepth == 32);
    m_Info.channels = (m_IsGray ? 1 : 3) + hasAlpha;
    m_Info.bitsPerPixel = m_Depth;
    return admit(header.width, header.height);
}

bool TGADecoder::readMap(const Header& header) {
    unsigned char bytes[4] = {};
    m_Source->seek(kHeaderSize + header.idLength);
    m_Map.resize(header.mapLength);
    for (Color& color : m_Map) {
        if (!m_Source->read(bytes, (header.mapDepth + 7) / 8))
            return cutShort();
        color = colorOf(bytes, header.mapDepth);
    }
    return true;
}

// The rows may come from the bottom and are wanted from the top, so their places are found first. Packets may
// go on into the next row.
bool TGADecoder::findRows() {
    m_Source->seek(m_Pixels);
    m_Rows.reserve(m_Info.height);
    RowStart at{m_Pixels, 0, false};
    for (std::uint32_t y = 0; y < m_Info.height; ++y) {
        m_Rows.push_back(at);
        if (!passOverRow(at))
            return cutShort();
    }
    if (at.left > 0)
        return fail("the file is damaged: pixels behind the last row");
    return true;
}

bool TGADecoder::passOverRow(RowStart& at) {
    for (std::uint32_t x = 0; x < m_Info.width;) {
        if (at.left == 0) {
            m_Source->seek(at.position);
            const int packet = m_Source->get();
            if (packet < 0)
                return false;
            at = {at.position + 1, (std::uint32_t(packet) & 127) + 1, packet > 127};
        }
        const std::uint32_t count = std::min(at.left, m_Info.width - x);
        x += count;
        at.left -= count;
        if (!at.isRun)
            at.position += count * m_PixelBytes;
        else if (at.left == 0)
            at.position += m_PixelBytes;
        if (at.position + (at.left > 0 && at.isRun ? m_PixelBytes : 0) > m_Source->length())
            return false;
    }
    return true;
}

bool TGADecoder::readRunLengths(RowStart at) {
    m_Source->seek(at.position);
    unsigned char* out = m_Line.data();
    for (std::uint32_t x = 0; x < m_Info.width;) {
        if (at.left == 0) {
            const int packet = m_Source->get();
            at = {0, (std::uint32_t(packet) & 127) + 1, packet > 127};
        }
        const std::uint32_t count = std::min(at.left, m_Info.width - x);
        const std::size_t bytes = count * m_PixelBytes;
        if (!m_Source->read(out, at.isRun ? m_PixelBytes : bytes))
            return false;
        for (std::size_t i = m_PixelBytes; at.isRun && i < bytes; ++i)
            out[i] = out[i - m_PixelBytes];
        out += bytes;
        x += count;
        at.left -= count;
    }
    return true;
}

bool TGADecoder::readLine(std::uint32_t y) {
    if (!m_Rows.empty())
        return readRunLengths(m_Rows[y]);
    m_Source->seek(m_Pixels + std::uint64_t(y) * m_Line.size());
    return m_Source->read(m_Line.data(), m_Line.size());
}

bool TGADecoder::readRow(void* row) {
    const std::uint32_t y = m_Row++;
    if (!readLine(m_FromTop ? y : m_Info.height - 1 - y))
        return cutShort();
    write(static_cast<unsigned char*>(row));
    return true;
}

const Color& TGADecoder::mapped(std::uint32_t index) const {
    static constexpr Color kBlack = {0, 0, 0, 255};
    return index >= m_MapFirst && index - m_MapFirst < m_Map.size() ? m_Map[index - m_MapFirst] : kBlack;
}

void TGADecoder::write(unsigned char* row) const {
    const unsigned channels = m_Info.channels;
    for (std::uint32_t x = 0; x < m_Info.width; ++x, row += channels) {
        const unsigned char* in = m_Line.data() + (m_FromRight ? m_Info.width - 1 - x : x) * m_PixelBytes;
        if (m_IsGray) {
            std::copy(in, in + channels, row);
            continue;
        }
        const Color color =
            !m_IsMapped ? colorOf(in, m_Depth) : mapped(m_PixelBytes == 1 ? *in : vx::littleEndian16(in));
        std::copy(color.begin(), color.begin() + channels, row);
    }
}

} // namespace

bool vx::mayBeTGA(std::span<const unsigned char> head) {
    return head.size() == kHeaderSize && Header(head.data()).looksRight();
}

std::unique_ptr<vx::PictureDecoder> vx::makeTGADecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<TGADecoder>(std::move(source));
}
