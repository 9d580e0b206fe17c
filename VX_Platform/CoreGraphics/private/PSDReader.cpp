// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <cstdlib>
#include <cstring>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PSD
#define STBI_NO_STDIO
#define STBI_MAX_DIMENSIONS 0x7fffffff
#include <stb/stb_image.h>

namespace {

/// Run lengths make 128 bytes of two.
constexpr std::uint64_t RunLengthRatio = 64;
/// What stb_image asks for at a time to fill its buffer; less is no sign of damage then.
constexpr int BufferedRead = 128;

class PSDDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    static int readBytes(void* self, char* to, int count);
    static void skipBytes(void* self, int count);
    static int isAtEnd(void* self);
    bool decode();

    std::unique_ptr<void, decltype(&std::free)> m_Picture{nullptr, &std::free}; ///< four channels a pixel
    bool m_Ended = false;
    std::uint32_t m_Row = 0;
};

bool PSDDecoder::open() {
    unsigned char header[26];
    if (!m_Source->read(header, sizeof header))
        return cutShort();
    m_Source->seek(0);
    const std::uint32_t channels = vx::bigEndian16(header + 12), depth = vx::bigEndian16(header + 22);
    if (vx::bigEndian16(header + 4) != 1 || vx::bigEndian16(header + 24) != 3 ||
        (depth != 8 && depth != 16) || channels < 3)
        return fail("a PSD is read with 8 or 16 bits of red, green and blue alone");
    m_Info.channels = channels == 3 ? 3 : 4;
    m_Info.bitsPerChannel = depth;
    m_Info.bitsPerPixel = m_Info.channels * depth;
    return admit(vx::bigEndian32(header + 18), vx::bigEndian32(header + 14)) &&
           fileHolds(pixels() * 3 / RunLengthRatio);
}

// stb_image takes the end of a file for zeros.
int PSDDecoder::readBytes(void* self, char* to, int count) {
    auto* decoder = static_cast<PSDDecoder*>(self);
    const int got = int(decoder->m_Source->readSome(to, std::size_t(count)));
    decoder->m_Ended |= got == 0 || (got < count && count != BufferedRead);
    return got;
}

void PSDDecoder::skipBytes(void* self, int count) {
    if (count > 0)
        static_cast<PSDDecoder*>(self)->m_Source->skip(std::uint64_t(count));
}

int PSDDecoder::isAtEnd(void* self) {
    return static_cast<PSDDecoder*>(self)->m_Source->left() == 0;
}

bool PSDDecoder::decode() {
    static constexpr stbi_io_callbacks Input = {readBytes, skipBytes, isAtEnd};
    int width, height, channels;
    if (m_Info.bitsPerChannel == 16)
        m_Picture.reset(stbi_load_16_from_callbacks(&Input, this, &width, &height, &channels, 4));
    else
        m_Picture.reset(stbi_load_from_callbacks(&Input, this, &width, &height, &channels, 4));
    if (m_Ended)
        return cutShort();
    return m_Picture || fail(std::string("the file is damaged: ") + stbi_failure_reason());
}

bool PSDDecoder::readRow(void* row) {
    if (m_Row == 0 && !decode())
        return false;
    const std::size_t bytes = m_Info.bitsPerChannel / 8, wanted = m_Info.channels * bytes;
    const auto* in =
        static_cast<const unsigned char*>(m_Picture.get()) + std::size_t(m_Row++) * m_Info.width * 4 * bytes;
    auto* out = static_cast<unsigned char*>(row);
    for (std::uint32_t x = 0; x < m_Info.width; ++x, in += 4 * bytes, out += wanted)
        std::memcpy(out, in, wanted);
    return true;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makePSDDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<PSDDecoder>(std::move(source));
}
