// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/files/VX_GLTexturePixelFormat.h>
#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace vx {

/// How GL is told to find the rows of pixels in memory.
struct UnpackLayout {
    std::size_t alignment = 4;
    std::size_t rowLength = 0; ///< in pixels; 0 means the picture's width

    std::size_t rowBytes(std::size_t width, std::size_t bytesPerPixel) const;
};

/// What a picture's pixels become, from what the file says of it.
Texture2DPixelFormat pixelFormatOf(const PictureInfo& info);
/// A power of two and 0 stay, any other side becomes the next power of two.
std::size_t powerOfTwoSide(std::size_t side);

/// A picture, as it stands and unscaled, in the first rows and columns of pixels that GL takes as they are:
/// its top row first, the rest clear, colours not premultiplied (but those of LA88 are). No GL.
class TextureCanvas {
public:
    /// Clear, with the picture's own size or sides that are powers of two. Throws
    /// NSInternalInconsistencyException for a format that no picture has.
    TextureCanvas(const PictureInfo& info, Texture2DPixelFormat format, bool powersOfTwo,
                  const UnpackLayout& layout);
    /// Whether there was memory for it.
    explicit operator bool() const { return m_Pixels != nullptr; }

    /// Reads all rows of the picture, of the same info. False when it is damaged.
    bool read(PictureReader& picture);

    Texture2DPixelFormat format() const { return m_Format; }
    std::size_t width() const { return m_Width; }
    std::size_t height() const { return m_Height; }
    std::size_t imageWidth() const { return m_ImageWidth; }
    std::size_t imageHeight() const { return m_ImageHeight; }
    std::size_t bytesPerPixel() const { return m_BytesPerPixel; }
    /// From one row's start to the next one's.
    std::size_t rowBytes() const { return m_RowBytes; }
    const unsigned char* pixels() const { return m_Pixels.get(); }

private:
    struct Free {
        void operator()(unsigned char* block) const { std::free(block); }
    };

    Texture2DPixelFormat m_Format;
    std::size_t m_ImageWidth, m_ImageHeight;
    std::size_t m_Width, m_Height;
    std::size_t m_BytesPerPixel;
    std::size_t m_RowBytes;
    std::unique_ptr<unsigned char[], Free> m_Pixels;

    void clear();
};

} // namespace vx
