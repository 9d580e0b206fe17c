// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <vector>

#include <gif_lib.h>

namespace {

/// A GIF of a few bytes may fill any size.
constexpr std::uint64_t kGIFBudget = std::uint64_t(8192) * 8192;

/// The first frame, where it lies on the screen that the file speaks of.
class GIFDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    ~GIFDecoder() override {
        int error;
        if (m_File)
            DGifCloseFile(m_File, &error);
    }

    bool open() override;
    bool readRow(void* row) override;

private:
    using Color = std::array<unsigned char, 4>;

    static int readBytes(GifFileType* file, GifByteType* to, int count);
    bool giveUp(int error);
    bool giveUp() { return giveUp(m_File->Error); }
    bool findFrame();
    bool readExtension();
    void takePalette(const ColorMapObject& map);
    bool readLine(GifPixelType* line);
    bool readInterlaced();
    void write(unsigned char* out, const Color& color) const {
        std::copy(color.begin(), color.begin() + m_Info.channels, out);
    }

    GifFileType* m_File = nullptr;
    bool m_Ended = false;
    int m_Transparent = NO_TRANSPARENT_COLOR;
    Color m_Outside{0, 0, 0, 0}; ///< where the frame is not
    std::array<Color, 256> m_Palette{};
    std::uint32_t m_Left = 0, m_Top = 0, m_FrameWidth = 0, m_FrameHeight = 0;
    std::uint32_t m_Row = 0;
    std::uint32_t m_LinesRead = 0;
    std::vector<GifPixelType> m_Line;
    std::vector<GifPixelType> m_Frame; ///< of an interlaced file
};

int GIFDecoder::readBytes(GifFileType* file, GifByteType* to, int count) {
    auto* self = static_cast<GIFDecoder*>(file->UserData);
    const std::size_t got = self->m_Source->readSome(to, std::size_t(count));
    self->m_Ended |= got < std::size_t(count);
    return int(got);
}

bool GIFDecoder::giveUp(int error) {
    const char* text = GifErrorString(error);
    return m_Ended ? cutShort()
                   : fail(std::string("the file is damaged: ") + (text ? text : "no reason given"));
}

bool GIFDecoder::open() {
    int error = 0;
    m_File = DGifOpen(this, readBytes, &error);
    if (!m_File)
        return giveUp(error);
    if (!findFrame())
        return false;
    const GifImageDesc& frame = m_File->Image;
    const ColorMapObject* map = frame.ColorMap ? frame.ColorMap : m_File->SColorMap;
    if (!map)
        return fail("the file is damaged: there are no colours");
    m_Left = std::uint32_t(frame.Left);
    m_Top = std::uint32_t(frame.Top);
    m_FrameWidth = std::uint32_t(frame.Width);
    m_FrameHeight = std::uint32_t(frame.Height);
    if (m_FrameWidth == 0 || m_FrameHeight == 0)
        return fail("it has no pixels");
    // Some files speak of a screen that is too small, or of none.
    if (!admit(std::max(m_Left + m_FrameWidth, std::uint32_t(m_File->SWidth)),
               std::max(m_Top + m_FrameHeight, std::uint32_t(m_File->SHeight)),
               std::min(vx::pixelBudget(), kGIFBudget)))
        return false;
    m_Info.channels = m_Transparent == NO_TRANSPARENT_COLOR ? 3 : 4;
    m_Info.bitsPerPixel = unsigned(map->BitsPerPixel);
    takePalette(*map);
    m_Line.resize(m_FrameWidth);
    if (frame.Interlace)
        m_Frame.resize(std::size_t(m_FrameWidth) * m_FrameHeight);
    return true;
}

bool GIFDecoder::findFrame() {
    for (;;) {
        GifRecordType type = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(m_File, &type) != GIF_OK)
            return giveUp();
        if (type == IMAGE_DESC_RECORD_TYPE)
            return DGifGetImageDesc(m_File) == GIF_OK || giveUp();
        if (type == TERMINATE_RECORD_TYPE)
            return fail("it has no pixels");
        if (!readExtension())
            return giveUp();
    }
}

bool GIFDecoder::readExtension() {
    int code = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(m_File, &code, &block) != GIF_OK)
        return false;
    GraphicsControlBlock control;
    if (block && code == GRAPHICS_EXT_FUNC_CODE &&
        DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK)
        m_Transparent = control.TransparentColor;
    while (block) {
        if (DGifGetExtensionNext(m_File, &block) != GIF_OK)
            return false;
    }
    return true;
}

void GIFDecoder::takePalette(const ColorMapObject& map) {
    const auto colorOf = [](const GifColorType& color) {
        return Color{color.Red, color.Green, color.Blue, 255};
    };
    m_Palette.fill({0, 0, 0, 255});
    std::transform(map.Colors, map.Colors + std::min(map.ColorCount, 256), m_Palette.begin(), colorOf);
    if (m_Transparent != NO_TRANSPARENT_COLOR)
        m_Palette[std::size_t(m_Transparent)][3] = 0;
    else if (m_File->SColorMap && m_File->SBackGroundColor < m_File->SColorMap->ColorCount)
        m_Outside = colorOf(m_File->SColorMap->Colors[m_File->SBackGroundColor]);
}

bool GIFDecoder::readLine(GifPixelType* line) {
    if (DGifGetLine(m_File, line, int(m_FrameWidth)) != GIF_OK)
        return giveUp();
    // After the last one something must follow, if only the mark of the end.
    GifRecordType next;
    return ++m_LinesRead < m_FrameHeight || DGifGetRecordType(m_File, &next) == GIF_OK || giveUp();
}

bool GIFDecoder::readInterlaced() {
    static constexpr std::uint32_t kStarts[] = {0, 4, 2, 1}, kSteps[] = {8, 8, 4, 2};
    for (int pass = 0; pass < 4; ++pass) {
        for (std::uint32_t y = kStarts[pass]; y < m_FrameHeight; y += kSteps[pass]) {
            if (!readLine(m_Frame.data() + std::size_t(y) * m_FrameWidth))
                return false;
        }
    }
    return true;
}

bool GIFDecoder::readRow(void* row) {
    if (m_Row == 0 && !m_Frame.empty() && !readInterlaced())
        return false;
    const std::uint32_t y = m_Row++;
    const bool covered = y >= m_Top && y - m_Top < m_FrameHeight;
    const GifPixelType* line = m_Line.data();
    if (covered && !m_Frame.empty())
        line = m_Frame.data() + std::size_t(y - m_Top) * m_FrameWidth;
    else if (covered && !readLine(m_Line.data()))
        return false;
    auto* out = static_cast<unsigned char*>(row);
    for (std::uint32_t x = 0; x < m_Info.width; ++x, out += m_Info.channels) {
        const bool inside = covered && x >= m_Left && x - m_Left < m_FrameWidth;
        write(out, inside ? m_Palette[line[x - m_Left]] : m_Outside);
    }
    return true;
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeGIFDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<GIFDecoder>(std::move(source));
}
