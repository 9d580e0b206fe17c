// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <vector>

namespace {

/// The whole picture behind the layers, gray or RGB of 8 or 16 bits, plain or in run lengths. A reader of our
/// own: stb_image 2.27 leaves the range of its numbers where alpha is, and takes the end of a file for zeros.
class PSDDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    bool readHeader();
    bool skipSection();
    bool findRows(bool arePacked);
    bool readLine(std::size_t plane);
    bool unpackLine(std::uint64_t end);
    template <typename Sample>
    void place(Sample* row, std::size_t plane) const;
    template <typename Sample>
    void takeOffPaper(Sample* row) const;

    std::uint32_t m_Planes = 0;
    std::vector<unsigned char> m_Line;
    std::vector<std::uint64_t> m_Rows; ///< where each begins, plane by plane, and where the last ends
    bool m_ArePacked = false;
    std::uint32_t m_Row = 0;
};

bool PSDDecoder::open() {
    unsigned char packing[2];
    if (!readHeader() || !skipSection() || !skipSection() || !skipSection())
        return false;
    if (!m_Source->read(packing, sizeof packing))
        return cutShort();
    m_ArePacked = vx::bigEndian16(packing) == 1;
    if (vx::bigEndian16(packing) > 1)
        return fail("its compression is not read");
    // A row takes two bytes at the least, in each plane.
    if (m_ArePacked && !fileHolds(std::uint64_t(m_Info.height) * m_Planes * 2))
        return false;
    m_Line.resize(std::size_t(m_Info.width) * m_Info.bitsPerChannel / 8);
    return findRows(m_ArePacked);
}

bool PSDDecoder::readHeader() {
    unsigned char header[26];
    if (!m_Source->read(header, sizeof header))
        return cutShort();
    m_Planes = vx::bigEndian16(header + 12);
    const std::uint32_t depth = vx::bigEndian16(header + 22), mode = vx::bigEndian16(header + 24);
    const std::uint32_t colors = mode == 1 ? 1 : 3;
    if (vx::bigEndian16(header + 4) != 1 || (mode != 1 && mode != 3) || (depth != 8 && depth != 16) ||
        m_Planes < colors || m_Planes > 56)
        return fail("of PSD files, those of gray or RGB in 8 or 16 bits are read");
    m_Info.channels = colors + (m_Planes > colors);
    m_Info.bitsPerChannel = depth;
    m_Info.bitsPerPixel = m_Info.channels * depth;
    return admit(vx::bigEndian32(header + 18), vx::bigEndian32(header + 14)) &&
           fileHolds(pixels() * m_Planes / 64); // run lengths make 128 bytes of two
}

// Of colours, of resources, of layers.
bool PSDDecoder::skipSection() {
    unsigned char length[4];
    if (!m_Source->read(length, sizeof length) || vx::bigEndian32(length) > m_Source->left())
        return cutShort();
    m_Source->skip(vx::bigEndian32(length));
    return true;
}

bool PSDDecoder::findRows(bool arePacked) {
    const std::size_t rows = std::size_t(m_Info.height) * m_Planes;
    const std::size_t wanted = std::size_t(m_Info.height) * m_Info.channels;
    std::uint64_t at = m_Source->position() + (arePacked ? 2 * rows : 0);
    if (!arePacked) {
        if (m_Line.size() * rows > m_Source->left())
            return cutShort();
        m_Rows = {at};
        return true;
    }
    m_Rows.reserve(wanted + 1);
    for (std::size_t i = 0; i < rows; ++i) {
        unsigned char length[2];
        if (!m_Source->read(length, sizeof length))
            return cutShort();
        if (i <= wanted)
            m_Rows.push_back(at);
        at += vx::bigEndian16(length);
    }
    if (wanted == rows)
        m_Rows.push_back(at);
    return at <= m_Source->length() || cutShort();
}

bool PSDDecoder::readLine(std::size_t plane) {
    const std::size_t index = plane * m_Info.height + m_Row;
    m_Source->seek(m_ArePacked ? m_Rows[index] : m_Rows[0] + index * m_Line.size());
    if (m_ArePacked)
        return unpackLine(m_Rows[index + 1]);
    return m_Source->read(m_Line.data(), m_Line.size()) || cutShort();
}

bool PSDDecoder::unpackLine(std::uint64_t end) {
    std::size_t x = 0;
    while (x < m_Line.size() && m_Source->position() < end) {
        const int code = m_Source->get();
        const std::size_t count = std::size_t(code < 128 ? code + 1 : 257 - code);
        if (code == 128)
            continue;
        if (code < 0 || count > m_Line.size() - x)
            break;
        if (code > 128)
            std::fill_n(m_Line.begin() + std::ptrdiff_t(x), count,
                        static_cast<unsigned char>(m_Source->get()));
        else if (!m_Source->read(&m_Line[x], count))
            return cutShort();
        x += count;
    }
    return (x == m_Line.size() && m_Source->position() <= end) ||
           fail("the file is damaged: a row of another length");
}

bool PSDDecoder::readRow(void* row) {
    const bool isDeep = m_Info.bitsPerChannel == 16;
    for (std::size_t plane = 0; plane < m_Info.channels; ++plane) {
        if (!readLine(plane))
            return false;
        isDeep ? place(static_cast<std::uint16_t*>(row), plane)
               : place(static_cast<unsigned char*>(row), plane);
    }
    ++m_Row;
    if (m_Info.hasAlpha())
        isDeep ? takeOffPaper(static_cast<std::uint16_t*>(row))
               : takeOffPaper(static_cast<unsigned char*>(row));
    return true;
}

template <typename Sample>
void PSDDecoder::place(Sample* row, std::size_t plane) const {
    const unsigned char* in = m_Line.data();
    Sample* out = row + plane;
    for (std::uint32_t x = 0; x < m_Info.width; ++x, in += sizeof(Sample), out += m_Info.channels)
        *out = static_cast<Sample>(sizeof(Sample) == 2 ? vx::bigEndian16(in) : *in);
}

// Colours are stored as they look on white paper.
template <typename Sample>
void PSDDecoder::takeOffPaper(Sample* row) const {
    constexpr std::int64_t kMost = Sample(-1);
    for (std::uint32_t x = 0; x < m_Info.width; ++x, row += m_Info.channels) {
        const std::int64_t alpha = row[m_Info.channels - 1];
        for (unsigned c = 0; alpha > 0 && alpha < kMost && c + 1 < m_Info.channels; ++c) {
            const std::int64_t ink = std::max<std::int64_t>(0, row[c] - (kMost - alpha));
            row[c] = static_cast<Sample>(std::min(kMost, (ink * kMost + alpha / 2) / alpha));
        }
    }
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makePSDDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<PSDDecoder>(std::move(source));
}
