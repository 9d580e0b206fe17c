// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

bool isSpace(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// P1 to P6, and P7 with any of its kinds of up to four samples a pixel.
class PNMDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    bool isBitmap() const { return m_Kind == '1' || m_Kind == '4'; }
    bool isText() const { return m_Kind <= '3'; }

    bool readHeader();
    bool readLongHeader();
    std::string readWord();
    int skipComment();
    bool readNumber(std::uint32_t& number);
    bool takeInfo(std::uint32_t width, std::uint32_t height, std::uint32_t channels);
    std::uint64_t leastRowBytes() const;

    bool readTextRow(unsigned char* row);
    bool readTextSample(std::uint32_t& sample);
    bool readBytesRow(unsigned char* row);
    bool put(unsigned char* row, std::size_t index, std::uint32_t sample);

    int m_Kind = 0;
    std::uint32_t m_Most = 1;
    std::array<unsigned char, 256> m_Bytes{}; ///< what samples up to 255 become
    std::vector<unsigned char> m_Line;
};

bool PNMDecoder::open() {
    m_Source->get();
    m_Kind = m_Source->get();
    return m_Kind == '7' ? readLongHeader() : readHeader();
}

bool PNMDecoder::readHeader() {
    std::uint32_t width, height;
    if (!readNumber(width) || !readNumber(height) || (!isBitmap() && !readNumber(m_Most)))
        return false;
    return takeInfo(width, height, m_Kind == '3' || m_Kind == '6' ? 3 : 1);
}

std::string PNMDecoder::readWord() {
    std::string word;
    int c = m_Source->get();
    while (isSpace(c) || c == '#')
        c = c == '#' ? skipComment() : m_Source->get();
    for (; c >= 0 && !isSpace(c) && word.size() < 16; c = m_Source->get())
        word += static_cast<char>(c);
    return word;
}

bool PNMDecoder::readLongHeader() {
    std::uint32_t width = 0, height = 0, channels = 0;
    for (;;) {
        const std::string word = readWord();
        std::uint32_t unused = 0;
        if (word == "ENDHDR")
            return channels >= 1 && channels <= 4
                       ? takeInfo(width, height, channels)
                       : fail(std::to_string(channels) + " samples a pixel are not read");
        if (word == "TUPLTYPE") {
            skipComment();
            continue;
        }
        std::uint32_t& number = word == "WIDTH"    ? width
                                : word == "HEIGHT" ? height
                                : word == "DEPTH"  ? channels
                                : word == "MAXVAL" ? m_Most
                                                   : unused;
        if (&number == &unused)
            return fail("the file is damaged: its header is not understood");
        if (!readNumber(number))
            return false;
    }
}

// What comes after the line.
int PNMDecoder::skipComment() {
    int c;
    do {
        c = m_Source->get();
    } while (c >= 0 && c != '\n' && c != '\r');
    return c;
}

// One byte behind the number is read with it.
bool PNMDecoder::readNumber(std::uint32_t& number) {
    int c = m_Source->get();
    while (isSpace(c) || c == '#')
        c = c == '#' ? skipComment() : m_Source->get();
    if (c < 0)
        return cutShort();
    if (c < '0' || c > '9')
        return fail("the file is damaged: a number is missing");
    std::uint64_t value = 0;
    for (; c >= '0' && c <= '9' && value <= INT32_MAX; c = m_Source->get())
        value = value * 10 + std::uint64_t(c - '0');
    if (c == '#')
        c = skipComment();
    if (value > INT32_MAX || (c >= 0 && !isSpace(c)))
        return fail("the file is damaged: a number is none");
    number = std::uint32_t(value);
    return true;
}

bool PNMDecoder::takeInfo(std::uint32_t width, std::uint32_t height, std::uint32_t channels) {
    if (m_Most == 0 || m_Most > 65535)
        return fail("the file is damaged: samples up to " + std::to_string(m_Most));
    m_Info.channels = channels;
    m_Info.bitsPerChannel = m_Most > 255 ? 16 : 8;
    m_Info.bitsPerPixel = isBitmap() ? 1 : channels * m_Info.bitsPerChannel;
    if (!admit(width, height))
        return false;
    if (leastRowBytes() * height > m_Source->left() + (isText() ? 1 : 0))
        return cutShort();
    for (std::uint32_t v = 0; v < 256; ++v)
        m_Bytes[v] = static_cast<unsigned char>((v * 255 + m_Most / 2) / m_Most);
    m_Line.resize(isText() ? 0 : std::size_t(leastRowBytes()));
    return true;
}

std::uint64_t PNMDecoder::leastRowBytes() const {
    if (m_Kind == '4')
        return (m_Info.width + std::uint64_t(7)) / 8;
    return m_Kind == '1' ? m_Info.width
           : isText()    ? m_Info.width * std::uint64_t(2) * m_Info.channels
                         : m_Info.rowBytes();
}

bool PNMDecoder::readRow(void* row) {
    auto* out = static_cast<unsigned char*>(row);
    return isText() ? readTextRow(out) : readBytesRow(out);
}

bool PNMDecoder::readTextRow(unsigned char* row) {
    for (std::size_t i = 0; i < std::size_t(m_Info.width) * m_Info.channels; ++i) {
        std::uint32_t sample;
        if (!readTextSample(sample) || !put(row, i, sample))
            return false;
    }
    return true;
}

bool PNMDecoder::readTextSample(std::uint32_t& sample) {
    if (m_Kind != '1')
        return readNumber(sample);
    // Digits need nothing between them.
    int c = m_Source->get();
    while (isSpace(c) || c == '#')
        c = c == '#' ? skipComment() : m_Source->get();
    if (c != '0' && c != '1')
        return c < 0 ? cutShort() : fail("the file is damaged: a pixel is neither black nor white");
    sample = c == '0';
    return true;
}

bool PNMDecoder::readBytesRow(unsigned char* row) {
    if (!m_Source->read(m_Line.data(), m_Line.size()))
        return cutShort();
    for (std::size_t i = 0; i < std::size_t(m_Info.width) * m_Info.channels; ++i) {
        const std::uint32_t sample = m_Kind == '4'  ? ~m_Line[i / 8] >> (7 - i % 8) & 1
                                     : m_Most > 255 ? vx::bigEndian16(&m_Line[2 * i])
                                                    : m_Line[i];
        if (!put(row, i, sample))
            return false;
    }
    return true;
}

bool PNMDecoder::put(unsigned char* row, std::size_t index, std::uint32_t sample) {
    if (sample > m_Most)
        return fail("the file is damaged: a sample is too large");
    if (m_Most > 255)
        reinterpret_cast<std::uint16_t*>(row)[index] =
            static_cast<std::uint16_t>((std::uint64_t(sample) * 65535 + m_Most / 2) / m_Most);
    else
        row[index] = m_Bytes[sample];
    return true;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makePNMDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<PNMDecoder>(std::move(source));
}
