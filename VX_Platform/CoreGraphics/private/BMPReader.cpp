// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <bit>
#include <vector>

namespace {

enum Compression : std::uint32_t { Plain = 0, RLE8 = 1, RLE4 = 2, Masks = 3, AlphaMasks = 6 };

/// The sparsest of run-length files pass over a row for two bytes.
constexpr std::uint64_t kRunLengthPixelsPerByte = 1024;

/// Where one of the colours lies in a pixel of 16 or 32 bits.
class ColorMask {
public:
    /// False for a mask with holes.
    bool set(std::uint32_t mask) {
        m_Mask = mask;
        m_Shift = mask ? std::countr_zero(mask) : 0;
        m_Most = mask >> m_Shift;
        if (m_Most <= 255) {
            for (std::uint32_t v = 0; v <= m_Most; ++v)
                m_Bytes[v] = scaled(v);
        }
        return (m_Most & (m_Most + 1)) == 0;
    }
    bool isThere() const { return m_Mask != 0; }
    unsigned char of(std::uint32_t pixel) const {
        const std::uint32_t value = (pixel & m_Mask) >> m_Shift;
        return m_Most <= 255 ? m_Bytes[value] : scaled(value);
    }

private:
    unsigned char scaled(std::uint64_t value) const {
        return m_Most ? static_cast<unsigned char>((value * 255 + m_Most / 2) / m_Most) : 0;
    }

    std::uint32_t m_Mask = 0;
    int m_Shift = 0;
    std::uint32_t m_Most = 0;
    std::array<unsigned char, 256> m_Bytes{};
};

class BMPDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    /// Where a row of a run-length file begins: its first pixels may have been passed over.
    struct RowStart {
        std::uint64_t position = 0;
        std::uint32_t column = 0;
    };

    bool readHeader();
    bool takeHeader(const unsigned char* header, std::uint32_t size);
    bool takeLongHeader(const unsigned char* header, std::uint32_t size);
    bool checkDepth();
    bool readMasks(const unsigned char* header, std::uint32_t size);
    bool readPalette(std::uint64_t end);
    bool preparePixels();

    bool isRunLength() const { return m_Compression == RLE8 || m_Compression == RLE4; }
    bool findRows();
    bool passOver(std::uint32_t& x, std::uint32_t& y, bool& ended);
    bool unpackRow(const RowStart& start);
    void put(std::uint32_t x, std::uint32_t count, const unsigned char* indices);

    void writeIndexed(unsigned char* rgb) const;
    void writeMasked(unsigned char* out) const;
    void writeBGR(unsigned char* rgb) const;

    std::uint32_t m_Depth = 0;
    std::uint32_t m_Compression = Plain;
    std::uint32_t m_Colors = 0;
    std::uint64_t m_HeaderEnd = 0;
    std::uint64_t m_Pixels = 0; ///< where they begin
    bool m_IsTopDown = false;
    bool m_HasShortPalette = false;
    std::uint32_t m_Row = 0;
    std::array<ColorMask, 4> m_Masks; ///< red, green, blue, alpha
    std::array<std::array<unsigned char, 3>, 256> m_Palette{};
    std::vector<unsigned char> m_Line; ///< a row as the file has it, or its indices
    std::vector<RowStart> m_Rows;      ///< from the bottom
};

bool BMPDecoder::open() {
    return readHeader() && preparePixels();
}

bool BMPDecoder::readHeader() {
    unsigned char file[18];
    if (!m_Source->read(file, sizeof file))
        return cutShort();
    const std::uint32_t size = vx::littleEndian32(file + 14);
    if (size < 12 || size > 1024)
        return fail("the header is of an unknown kind");
    unsigned char header[1024] = {};
    std::copy(file + 14, file + 18, header);
    if (!m_Source->read(header + 4, size - 4))
        return cutShort();
    m_HeaderEnd = 14 + size;
    if (!takeHeader(header, size) || !readMasks(header, size))
        return false;
    const std::uint64_t offset = vx::littleEndian32(file + 10);
    if (m_Depth <= 8 && !readPalette(offset))
        return false;
    m_Pixels = std::max(offset, m_HeaderEnd);
    return true;
}

bool BMPDecoder::takeHeader(const unsigned char* header, std::uint32_t size) {
    if (size >= 16)
        return takeLongHeader(header, size);
    m_HasShortPalette = true;
    m_Depth = vx::littleEndian16(header + 10);
    return checkDepth() && admit(vx::littleEndian16(header + 4), vx::littleEndian16(header + 6));
}

// Of OS/2's headers the end may be left out, which then counts as zeros.
bool BMPDecoder::takeLongHeader(const unsigned char* header, std::uint32_t size) {
    const std::uint32_t height = vx::littleEndian32(header + 8);
    m_IsTopDown = height >> 31;
    m_Depth = vx::littleEndian16(header + 14);
    m_Compression = vx::littleEndian32(header + 16);
    m_Colors = vx::littleEndian32(header + 32);
    if (size == 64 && m_Compression > RLE4)
        return fail("its compression is not read");
    return checkDepth() && admit(vx::littleEndian32(header + 4), m_IsTopDown ? 0 - height : height);
}

bool BMPDecoder::checkDepth() {
    const bool masked = m_Compression == Masks || m_Compression == AlphaMasks;
    if (m_Compression > RLE4 && !masked)
        return fail("its compression is not read");
    const bool deep = m_Depth == 16 || m_Depth == 32;
    const bool known = deep || m_Depth == 24 || m_Depth == 1 || m_Depth == 2 || m_Depth == 4 || m_Depth == 8;
    if (!known || (masked && !deep) || (m_Compression == RLE8 && m_Depth != 8) ||
        (m_Compression == RLE4 && m_Depth != 4))
        return fail(std::to_string(m_Depth) + " bits a pixel are not known in such a file");
    m_Info.bitsPerPixel = m_Depth;
    return true;
}

bool BMPDecoder::readMasks(const unsigned char* header, std::uint32_t size) {
    if (m_Depth != 16 && m_Depth != 32)
        return true;
    std::uint32_t masks[4] = {0xff0000, 0xff00, 0xff, 0};
    if (m_Depth == 16)
        masks[0] = 0x7c00, masks[1] = 0x3e0, masks[2] = 0x1f;
    if (m_Compression != Plain) {
        // Behind the first 40 bytes in any case; the old header ends there.
        unsigned char behind[16] = {};
        const std::uint32_t count = m_Compression == AlphaMasks || size >= 56 ? 16 : 12;
        std::copy(header + 40, header + 56, behind);
        if (size == 40) {
            if (!m_Source->read(behind, count))
                return cutShort();
            m_HeaderEnd += count;
        }
        for (int c = 0; c < 4; ++c)
            masks[c] = vx::littleEndian32(behind + 4 * c);
    }
    for (std::size_t c = 0; c < 4; ++c) {
        if (!m_Masks[c].set(masks[c]))
            return fail("a colour's bits are not side by side");
    }
    m_Info.channels = m_Masks[3].isThere() ? 4 : 3;
    return true;
}

bool BMPDecoder::readPalette(std::uint64_t end) {
    const std::uint32_t entry = m_HasShortPalette ? 3 : 4, most = 1u << m_Depth;
    std::uint64_t count = m_Colors == 0 ? most : m_Colors;
    if (end > m_HeaderEnd)
        count = std::min(count, (end - m_HeaderEnd) / entry);
    m_HeaderEnd += count * entry;
    count = std::min<std::uint64_t>(count, most);
    for (std::size_t i = 0; i < count; ++i) {
        unsigned char bgr[4];
        if (!m_Source->read(bgr, entry))
            return cutShort();
        m_Palette[i] = {bgr[2], bgr[1], bgr[0]};
    }
    return true;
}

bool BMPDecoder::preparePixels() {
    if (isRunLength()) {
        const std::uint64_t least =
            std::max<std::uint64_t>(m_Info.height, pixels() / kRunLengthPixelsPerByte);
        if (m_IsTopDown)
            return fail("run lengths from the top down are not known");
        if (!fileHolds(least) || !findRows())
            return false;
        m_Line.resize(m_Info.width);
        return true;
    }
    const std::uint64_t stride = (std::uint64_t(m_Info.width) * m_Depth + 31) / 32 * 4;
    if (m_Pixels + stride * m_Info.height > m_Source->length())
        return cutShort();
    m_Line.resize(std::size_t(stride));
    return true;
}

bool BMPDecoder::readRow(void* row) {
    const std::uint32_t y = m_Row++, fromBottom = m_Info.height - 1 - y;
    if (isRunLength()) {
        if (!unpackRow(m_Rows[fromBottom]))
            return cutShort();
    } else {
        m_Source->seek(m_Pixels + m_Line.size() * (m_IsTopDown ? y : fromBottom));
        if (!m_Source->read(m_Line.data(), m_Line.size()))
            return cutShort();
    }
    auto* out = static_cast<unsigned char*>(row);
    if (m_Depth <= 8)
        writeIndexed(out);
    else if (m_Depth == 24)
        writeBGR(out);
    else
        writeMasked(out);
    return true;
}

// The rows come from the bottom and are wanted from the top, so their places are found first.
bool BMPDecoder::findRows() {
    m_Source->seek(m_Pixels);
    m_Rows.assign(m_Info.height, {});
    m_Rows[0].position = m_Pixels;
    std::uint32_t x = 0, y = 0;
    for (bool ended = false; !ended;) {
        const std::uint32_t row = y;
        if (!passOver(x, y, ended))
            return false;
        if (y != row && y < m_Info.height)
            m_Rows[y] = {m_Source->position(), x};
    }
    return true;
}

// One order of the run-length stream. Some programs draw the bytes too that a plain row is filled up with.
bool BMPDecoder::passOver(std::uint32_t& x, std::uint32_t& y, bool& ended) {
    const int count = m_Source->get(), order = m_Source->get();
    if (order < 0)
        return cutShort();
    if (count > 0 || order > 2) {
        x += std::uint32_t(count > 0 ? count : order);
        if (y >= m_Info.height)
            return fail("the file is damaged: pixels beside the picture");
        if (count == 0)
            m_Source->skip(m_Depth == 8 ? (order + 1) / 2 * 2 : (order + 3) / 4 * 2);
    } else if (order == 0) {
        x = 0;
        ++y;
    } else if (order == 1) {
        ended = true;
    } else {
        const int right = m_Source->get(), up = m_Source->get();
        if (up < 0)
            return cutShort();
        x += std::uint32_t(right);
        y += std::uint32_t(up);
    }
    if (x > m_Info.width + std::uint64_t(7) || y > m_Info.height)
        return fail("the file is damaged: pixels beside the picture");
    return true;
}

// What no order draws has the palette's first colour. The stream was found whole when its rows were.
bool BMPDecoder::unpackRow(const RowStart& start) {
    std::fill(m_Line.begin(), m_Line.end(), static_cast<unsigned char>(0));
    if (start.position == 0)
        return true;
    m_Source->seek(start.position);
    for (std::uint32_t x = start.column;;) {
        const int count = m_Source->get(), order = m_Source->get();
        unsigned char values[256] = {};
        if (order < 0)
            return false;
        if (count > 0) {
            std::fill(values, values + 128, static_cast<unsigned char>(order));
            if (m_Depth == 8)
                std::fill(values + 128, values + 256, static_cast<unsigned char>(order));
            put(x, std::uint32_t(count), values);
            x += std::uint32_t(count);
        } else if (order > 2) {
            const int bytes = m_Depth == 8 ? (order + 1) / 2 * 2 : (order + 3) / 4 * 2;
            if (!m_Source->read(values, std::size_t(bytes)))
                return false;
            put(x, std::uint32_t(order), values);
            x += std::uint32_t(order);
        } else if (order < 2) {
            return true;
        } else {
            const int right = m_Source->get(), up = m_Source->get();
            if (up != 0)
                return up > 0;
            x += std::uint32_t(right);
        }
    }
}

void BMPDecoder::put(std::uint32_t x, std::uint32_t count, const unsigned char* indices) {
    const std::uint32_t end = std::min(x + count, m_Info.width);
    for (std::uint32_t i = 0; x < end; ++i, ++x)
        m_Line[x] = m_Depth == 8 ? indices[i] : (indices[i / 2] >> (i % 2 ? 0 : 4) & 15);
}

void BMPDecoder::writeIndexed(unsigned char* rgb) const {
    const std::uint32_t depth = isRunLength() ? 8 : m_Depth, perByte = 8 / depth, most = (1u << depth) - 1;
    for (std::uint32_t x = 0; x < m_Info.width; ++x, rgb += 3) {
        const std::uint32_t shift = 8 - depth * (x % perByte + 1);
        const auto& color = m_Palette[m_Line[x / perByte] >> shift & most];
        std::copy(color.begin(), color.end(), rgb);
    }
}

void BMPDecoder::writeMasked(unsigned char* out) const {
    const unsigned channels = m_Info.channels, bytes = m_Depth / 8;
    const unsigned char* in = m_Line.data();
    for (std::uint32_t x = 0; x < m_Info.width; ++x, in += bytes) {
        const std::uint32_t pixel = bytes == 2 ? vx::littleEndian16(in) : vx::littleEndian32(in);
        for (unsigned c = 0; c < channels; ++c)
            *out++ = m_Masks[c].of(pixel);
    }
}

void BMPDecoder::writeBGR(unsigned char* rgb) const {
    const unsigned char* in = m_Line.data();
    for (std::uint32_t x = 0; x < m_Info.width; ++x, in += 3, rgb += 3) {
        rgb[0] = in[2];
        rgb[1] = in[1];
        rgb[2] = in[0];
    }
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeBMPDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<BMPDecoder>(std::move(source));
}
