// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>

#include <VX_OpenGL64/textures/files/private/PixelRows.h>
#include <VX_OpenGL64/textures/files/private/RowReader.h>
#include <VX_Platform/Foundation/NSException.h>

#include <algorithm>
#include <cstring>

namespace {

std::size_t bytesPerPixelOf(Texture2DPixelFormat format) {
    switch (format) {
        case Texture2DPixelFormat_RGBA8888:
            return 4;
        case Texture2DPixelFormat_RGBA5551:
        case Texture2DPixelFormat_RGB565:
        case Texture2DPixelFormat_LA88:
            return 2;
        case Texture2DPixelFormat_L8:
            return 1;
        default:
            NSException::raise(NSInternalInconsistencyException, "Invalid pixel format");
    }
}

void convertRow(Texture2DPixelFormat format, const unsigned char* row, unsigned char* out,
                std::size_t pixels) {
    switch (format) {
        case Texture2DPixelFormat_RGBA8888:
            // There and back: what is lost on the way is part of the picture.
            vx::pixels::premultiplyRGBA(row, out, pixels);
            return vx::pixels::undoPremultiplication(out, pixels);
        case Texture2DPixelFormat_RGBA5551:
            return vx::pixels::toRGBA5551(row, out, pixels);
        case Texture2DPixelFormat_RGB565:
            return vx::pixels::toRGB565(row, out, pixels);
        case Texture2DPixelFormat_LA88:
            return vx::pixels::premultiplyLA(row, out, pixels);
        default:
            std::memcpy(out, row, pixels);
    }
}

} // namespace

std::size_t vx::UnpackLayout::rowBytes(std::size_t width, std::size_t bytesPerPixel) const {
    const std::size_t bytes = (rowLength > 0 ? rowLength : width) * bytesPerPixel;
    return (bytes + alignment - 1) / alignment * alignment;
}

Texture2DPixelFormat vx::pixelFormatOf(const PictureInfo& info) {
    if (info.isGray())
        return info.hasAlpha() ? Texture2DPixelFormat_LA88 : Texture2DPixelFormat_L8;
    if (info.hasAlpha())
        return Texture2DPixelFormat_RGBA8888;
    return info.bitsPerPixel == 16 ? Texture2DPixelFormat_RGBA5551 : Texture2DPixelFormat_RGB565;
}

std::size_t vx::powerOfTwoSide(std::size_t side) {
    if (side == 0)
        return 0;
    std::size_t power = 1;
    while (power < side)
        power *= 2;
    return power;
}

vx::TextureCanvas::TextureCanvas(const PictureInfo& info, Texture2DPixelFormat format, bool powersOfTwo,
                                 const UnpackLayout& layout)
    : m_Format(format),
      m_ImageWidth(info.width),
      m_ImageHeight(info.height),
      m_Width(powersOfTwo ? powerOfTwoSide(info.width) : info.width),
      m_Height(powersOfTwo ? powerOfTwoSide(info.height) : info.height),
      m_BytesPerPixel(bytesPerPixelOf(format)),
      m_RowBytes(layout.rowBytes(m_Width, m_BytesPerPixel)) {
    // With rows that GL is told to find closer together than a row is long, the last one reaches further.
    std::size_t size = 0;
    if (!__builtin_mul_overflow(m_RowBytes, m_Height, &size))
        m_Pixels.reset(static_cast<unsigned char*>(std::calloc(size + m_Width * m_BytesPerPixel + 1, 1)));
    if (m_Pixels && format == Texture2DPixelFormat_RGBA5551)
        clear();
}

void vx::TextureCanvas::clear() {
    // Black, and opaque as all of it is.
    constexpr std::uint16_t black = 1;
    for (std::size_t y = 0; y < m_Height; ++y) {
        unsigned char* row = m_Pixels.get() + y * m_RowBytes;
        for (std::size_t x = y < m_ImageHeight ? m_ImageWidth : 0; x < m_Width; ++x)
            std::memcpy(row + 2 * x, &black, sizeof black);
    }
}

bool vx::TextureCanvas::read(PictureReader& picture) {
    RowReader rows(picture);
    for (std::size_t y = 0; y < m_ImageHeight; ++y) {
        const unsigned char* row = rows.next();
        if (!row)
            return false;
        convertRow(m_Format, row, m_Pixels.get() + y * m_RowBytes, m_ImageWidth);
    }
    return true;
}
