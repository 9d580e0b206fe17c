// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/GuardedDecoder.h>

#include <cstdio>
#include <vector>

#include <jpeglib.h>
// After jpeglib.h, which it needs.
#include <jerror.h>

namespace {

/// Each block of 8 x 8 takes a bit at the least, and of the components that share a picture the densest has a
/// block for 256 pixels or fewer.
constexpr std::uint64_t kJPEGPixelsPerByte = 8 * 256;
/// Files have about ten. Each may pass over the whole picture for a few bytes.
constexpr int kMostScans = 100;

class JPEGDecoder final : public vx::GuardedDecoder {
public:
    explicit JPEGDecoder(std::unique_ptr<vx::ByteSource> source);
    ~JPEGDecoder() override { jpeg_destroy_decompress(&m_JPEG); }

    bool open() override;
    bool readRow(void* row) override;

private:
    static JPEGDecoder& of(j_common_ptr jpeg) { return *static_cast<JPEGDecoder*>(jpeg->client_data); }
    static JPEGDecoder& of(j_decompress_ptr jpeg) { return of(j_common_ptr(jpeg)); }
    static void onError(j_common_ptr jpeg);
    static void onMessage(j_common_ptr jpeg, int level);
    static boolean fillInput(j_decompress_ptr jpeg);
    static void skipInput(j_decompress_ptr jpeg, long count);
    static void watchScans(j_common_ptr jpeg);

    void readHeader();
    bool takeInfo();
    void convertInk(unsigned char* rgb) const;

    jpeg_decompress_struct m_JPEG{};
    jpeg_error_mgr m_Errors{};
    jpeg_source_mgr m_Input{};
    jpeg_progress_mgr m_Progress{};
    std::vector<unsigned char> m_Ink; ///< a row of cyan, magenta, yellow and black
};

JPEGDecoder::JPEGDecoder(std::unique_ptr<vx::ByteSource> source) : GuardedDecoder(std::move(source)) {
    m_JPEG.err = jpeg_std_error(&m_Errors);
    m_JPEG.client_data = this;
    m_Errors.error_exit = onError;
    m_Errors.emit_message = onMessage;
    m_Input.init_source = [](j_decompress_ptr) {};
    m_Input.fill_input_buffer = fillInput;
    m_Input.skip_input_data = skipInput;
    m_Input.resync_to_restart = jpeg_resync_to_restart;
    m_Input.term_source = [](j_decompress_ptr) {};
    m_Progress.progress_monitor = watchScans;
}

void JPEGDecoder::onError(j_common_ptr jpeg) {
    char text[JMSG_LENGTH_MAX];
    jpeg->err->format_message(jpeg, text);
    of(jpeg).fail(std::string("the file is damaged: ") + text);
    of(jpeg).giveUp();
}

// libjpeg shows something for any data and warns. Of what it warns of, some is found in good files.
void JPEGDecoder::onMessage(j_common_ptr jpeg, int level) {
    if (level >= 0)
        return;
    switch (jpeg->err->msg_code) {
        case JWRN_EXTRANEOUS_DATA:
        case JWRN_ADOBE_XFORM:
        case JWRN_BOGUS_ICC:
        case JWRN_BOGUS_PROGRESSION:
            return;
        default:
            onError(jpeg);
    }
}

boolean JPEGDecoder::fillInput(j_decompress_ptr jpeg) {
    const std::span<const unsigned char> bytes = of(jpeg).m_Source->take();
    if (bytes.empty()) {
        of(jpeg).cutShort();
        of(jpeg).giveUp();
    }
    jpeg->src->next_input_byte = bytes.data();
    jpeg->src->bytes_in_buffer = bytes.size();
    return TRUE;
}

void JPEGDecoder::skipInput(j_decompress_ptr jpeg, long count) {
    if (count <= 0)
        return;
    const std::size_t atHand = jpeg->src->bytes_in_buffer;
    if (std::size_t(count) <= atHand) {
        jpeg->src->next_input_byte += count;
        jpeg->src->bytes_in_buffer -= std::size_t(count);
        return;
    }
    of(jpeg).m_Source->skip(std::size_t(count) - atHand);
    jpeg->src->bytes_in_buffer = 0;
}

void JPEGDecoder::watchScans(j_common_ptr jpeg) {
    if (j_decompress_ptr(jpeg)->input_scan_number <= kMostScans)
        return;
    of(jpeg).fail("the file has too many scans");
    of(jpeg).giveUp();
}

bool JPEGDecoder::open() {
    if (!guarded([this] { readHeader(); }) || !takeInfo())
        return false;
    if (m_JPEG.out_color_space == JCS_CMYK)
        m_Ink.resize(std::size_t(m_Info.width) * 4);
    return guarded([this] { jpeg_start_decompress(&m_JPEG); });
}

void JPEGDecoder::readHeader() {
    jpeg_create_decompress(&m_JPEG);
    m_JPEG.src = &m_Input;
    m_JPEG.progress = &m_Progress;
    jpeg_read_header(&m_JPEG, TRUE);
}

bool JPEGDecoder::takeInfo() {
    const bool ink = m_JPEG.num_components == 4, gray = m_JPEG.num_components == 1;
    if (!ink && !gray && m_JPEG.num_components != 3)
        return fail(std::to_string(m_JPEG.num_components) + " components are not read");
    m_JPEG.out_color_space = ink ? JCS_CMYK : gray ? JCS_GRAYSCALE : JCS_RGB;
    m_Info.channels = gray ? 1 : 3;
    m_Info.bitsPerPixel = 8 * unsigned(m_JPEG.num_components);
    return admit(m_JPEG.image_width, m_JPEG.image_height) && fileHolds(pixels() / kJPEGPixelsPerByte);
}

bool JPEGDecoder::readRow(void* row) {
    auto* rgb = static_cast<unsigned char*>(row);
    const bool gotten = guarded([this, rgb] {
        JSAMPROW line = m_Ink.empty() ? rgb : m_Ink.data();
        jpeg_read_scanlines(&m_JPEG, &line, 1);
        if (m_JPEG.output_scanline == m_JPEG.output_height)
            jpeg_finish_decompress(&m_JPEG);
    });
    if (gotten && !m_Ink.empty())
        convertInk(rgb);
    return gotten;
}

// Adobe's files say how much of the paper's light is left; others how much ink there is.
void JPEGDecoder::convertInk(unsigned char* rgb) const {
    const unsigned char flip = m_JPEG.saw_Adobe_marker ? 0 : 255;
    for (std::size_t i = 0; i < m_Ink.size(); i += 4, rgb += 3) {
        const unsigned light = m_Ink[i + 3] ^ flip;
        for (int c = 0; c < 3; ++c)
            rgb[c] = static_cast<unsigned char>(((m_Ink[i + std::size_t(c)] ^ flip) * light + 127) / 255);
    }
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeJPEGDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<JPEGDecoder>(std::move(source));
}
