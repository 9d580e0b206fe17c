// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include <webp/decode.h>

namespace {

/// A lossy file says for each 16 x 16 pixels how they are foretold, in more than three bits.
constexpr std::uint64_t kLossyPixelsPerByte = 1024;
/// In a lossless one 4096 pixels, each of them eight of the picture's, are copied for more than a byte.
constexpr std::uint64_t kLosslessPixelsPerByte = 8 * 4096;
/// One colour alone fills any size for no bytes at all: up to this many pixels that is let through.
constexpr std::uint64_t kOneColorPixels = std::uint64_t(2048) * 2048;

class WebPDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    bool readFile();
    bool takeInfo(const WebPBitstreamFeatures& features);
    bool decode();

    std::vector<unsigned char> m_File;
    std::unique_ptr<unsigned char[]> m_Picture; ///< libwebp has no way to give rows out
    std::uint32_t m_Row = 0;
};

bool WebPDecoder::open() {
    if (!readFile())
        return false;
    WebPBitstreamFeatures features;
    switch (WebPGetFeatures(m_File.data(), m_File.size(), &features)) {
        case VP8_STATUS_OK:
            return takeInfo(features);
        case VP8_STATUS_NOT_ENOUGH_DATA:
            return cutShort();
        default:
            return fail("the file is damaged");
    }
}

bool WebPDecoder::readFile() {
    unsigned char head[12];
    if (!m_Source->read(head, sizeof head))
        return cutShort();
    const std::uint64_t size = std::uint64_t(8) + vx::littleEndian32(head + 4);
    if (size < sizeof head || size > m_Source->length())
        return cutShort();
    m_File.resize(std::size_t(size));
    std::memcpy(m_File.data(), head, sizeof head);
    return m_Source->read(m_File.data() + sizeof head, m_File.size() - sizeof head) || cutShort();
}

bool WebPDecoder::takeInfo(const WebPBitstreamFeatures& features) {
    if (features.has_animation)
        return fail("a moving WebP is not read");
    m_Info.channels = features.has_alpha ? 4 : 3;
    m_Info.bitsPerPixel = 8 * m_Info.channels;
    const bool lossy = features.format == 1;
    return admit(std::uint64_t(features.width), std::uint64_t(features.height)) &&
           ((!lossy && pixels() <= kOneColorPixels) ||
            fileHolds(pixels() / (lossy ? kLossyPixelsPerByte : kLosslessPixelsPerByte)));
}

bool WebPDecoder::decode() {
    const std::size_t stride = m_Info.rowBytes(), size = stride * m_Info.height;
    m_Picture.reset(new (std::nothrow) unsigned char[size]);
    WebPDecoderConfig config;
    if (!m_Picture || !WebPInitDecoderConfig(&config))
        return fail("there is not enough memory");
    config.output.colorspace = m_Info.channels == 4 ? MODE_RGBA : MODE_RGB;
    config.output.is_external_memory = 1;
    config.output.u.RGBA = {m_Picture.get(), int(stride), size};
    const VP8StatusCode status = WebPDecode(m_File.data(), m_File.size(), &config);
    m_File = {};
    return status == VP8_STATUS_OK ||
           (status == VP8_STATUS_NOT_ENOUGH_DATA ? cutShort() : fail("the file is damaged"));
}

bool WebPDecoder::readRow(void* row) {
    if (m_Row == 0 && !decode())
        return false;
    std::memcpy(row, m_Picture.get() + m_Row++ * m_Info.rowBytes(), m_Info.rowBytes());
    return true;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeWebPDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<WebPDecoder>(std::move(source));
}
