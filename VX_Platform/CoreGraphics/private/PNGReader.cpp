// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/GuardedDecoder.h>

#include <bit>
#include <cstring>
#include <new>
#include <vector>

#include <png.h>

namespace {

/// What deflate can make of a byte.
constexpr std::uint64_t kDeflateRatio = 1032;

/// How much of the compressed pixels is asked for at a time.
constexpr std::size_t kCompressedRead = 32768;

/// Chunks that say nothing of the pixels as they are shown here; some of them unpack to megabytes.
constexpr png_byte kPassedOver[] =
    "bKGD\0cHRM\0eXIf\0gAMA\0hIST\0iCCP\0iTXt\0oFFs\0pCAL\0pHYs\0sBIT\0"
    "sCAL\0sPLT\0sRGB\0tEXt\0tIME\0zTXt";

class PNGDecoder final : public vx::GuardedDecoder {
public:
    using GuardedDecoder::GuardedDecoder;
    ~PNGDecoder() override { png_destroy_read_struct(&m_PNG, &m_Header, nullptr); }

    bool open() override;
    bool readRow(void* row) override;

private:
    static void readBytes(png_structp png, png_bytep to, std::size_t count);
    static void onError(png_structp png, png_const_charp message);

    void readHeader();
    bool takeInfo();
    void askForRows();
    void readAllPasses();
    bool readInterlaced(void* row);

    png_structp m_PNG = nullptr;
    png_infop m_Header = nullptr;
    std::uint32_t m_Row = 0;
    std::vector<unsigned char> m_Picture; ///< of an interlaced file
};

void PNGDecoder::readBytes(png_structp png, png_bytep to, std::size_t count) {
    auto* self = static_cast<PNGDecoder*>(png_get_io_ptr(png));
    if (!self->m_Source->read(to, count)) {
        self->cutShort();
        self->giveUp();
    }
}

void PNGDecoder::onError(png_structp png, png_const_charp message) {
    auto* self = static_cast<PNGDecoder*>(png_get_error_ptr(png));
    self->fail(std::string("the file is damaged: ") + message);
    self->giveUp();
}

bool PNGDecoder::open() {
    m_PNG = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, onError, [](png_structp, png_const_charp) {});
    m_Header = m_PNG ? png_create_info_struct(m_PNG) : nullptr;
    if (!m_Header)
        throw std::bad_alloc();
    if (!guarded([this] { readHeader(); }) || !takeInfo() || !guarded([this] { askForRows(); }))
        return false;
    if (png_get_interlace_type(m_PNG, m_Header) != PNG_INTERLACE_NONE)
        m_Picture.resize(m_Info.rowBytes() * m_Info.height);
    return true;
}

void PNGDecoder::readHeader() {
    png_set_read_fn(m_PNG, this, readBytes);
    png_set_compression_buffer_size(m_PNG, kCompressedRead);
    png_set_user_limits(m_PNG, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_crc_action(m_PNG, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    png_set_keep_unknown_chunks(m_PNG, PNG_HANDLE_CHUNK_NEVER, kPassedOver, sizeof kPassedOver / 5);
    png_read_info(m_PNG, m_Header);
}

bool PNGDecoder::takeInfo() {
    const unsigned depth = png_get_bit_depth(m_PNG, m_Header), color = png_get_color_type(m_PNG, m_Header);
    m_Info.bitsPerPixel = depth * png_get_channels(m_PNG, m_Header);
    m_Info.bitsPerChannel = depth == 16 ? 16 : 8;
    const bool alpha = color & PNG_COLOR_MASK_ALPHA || png_get_valid(m_PNG, m_Header, PNG_INFO_tRNS);
    m_Info.channels = (color & PNG_COLOR_MASK_COLOR ? 3 : 1) + alpha;
    return admit(png_get_image_width(m_PNG, m_Header), png_get_image_height(m_PNG, m_Header)) &&
           fileHolds(pixels() * m_Info.bitsPerPixel / 8 / kDeflateRatio);
}

void PNGDecoder::askForRows() {
    // What is asked for costs time in each row, even where it has nothing to do.
    if (png_get_channels(m_PNG, m_Header) != m_Info.channels || m_Info.bitsPerPixel < 8)
        png_set_expand(m_PNG);
    if (std::endian::native == std::endian::little && m_Info.bitsPerChannel == 16)
        png_set_swap(m_PNG);
    png_set_interlace_handling(m_PNG);
    png_read_update_info(m_PNG, m_Header);
    if (png_get_rowbytes(m_PNG, m_Header) != m_Info.rowBytes())
        png_error(m_PNG, "rows of another length");
}

bool PNGDecoder::readRow(void* row) {
    const bool last = ++m_Row == m_Info.height;
    if (!m_Picture.empty())
        return readInterlaced(row);
    return guarded([this, row, last] {
        png_read_row(m_PNG, static_cast<png_bytep>(row), nullptr);
        if (last)
            png_read_end(m_PNG, nullptr);
    });
}

void PNGDecoder::readAllPasses() {
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
        for (std::uint32_t y = 0; y < m_Info.height; ++y)
            png_read_row(m_PNG, m_Picture.data() + y * m_Info.rowBytes(), nullptr);
    }
    png_read_end(m_PNG, nullptr);
}

bool PNGDecoder::readInterlaced(void* row) {
    if (m_Row == 1 && !guarded([this] { readAllPasses(); }))
        return false;
    std::memcpy(row, m_Picture.data() + (m_Row - 1) * m_Info.rowBytes(), m_Info.rowBytes());
    return true;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makePNGDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<PNGDecoder>(std::move(source));
}
