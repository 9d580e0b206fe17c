// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/StretchedBitmap.h>

#include <VX_OpenGL64/textures/files/private/PixelRows.h>
#include <VX_OpenGL64/textures/files/private/RowReader.h>
#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>

#include <epoxy/gl.h>

#include <memory>
#include <new>
#include <utility>

namespace {

using vx::pixels::StretchPoint;

/// A canvas whose rows are written from the picture's top on, which is the last one in memory.
struct Canvas {
    std::size_t width, height;
    unsigned char* pixels;

    unsigned char* row(std::size_t y) const { return pixels + (height - 1 - y) * width * 4; }
};

bool copyRows(vx::RowReader& rows, const vx::PictureInfo& info, const Canvas& canvas) {
    for (std::size_t y = 0; y < canvas.height; ++y) {
        const unsigned char* row = rows.next();
        if (!row)
            return false;
        vx::pixels::toBGRA(row, info.channels, canvas.row(y), canvas.width);
    }
    return true;
}

/// The picture's rows stretched in width, of which the last two are kept.
class StretchedRows {
public:
    StretchedRows(vx::RowReader& rows, const vx::PictureInfo& info, std::size_t width)
        : m_Rows(rows),
          m_Info(info),
          m_Columns(width),
          m_Pixels(std::size_t(info.width) * 4),
          m_Upper(width * 4),
          m_Lower(width * 4) {
        for (std::size_t x = 0; x < width; ++x)
            m_Columns[x] = vx::pixels::stretchPoint(x, info.width, width);
    }

    /// Reads on until row `index` is the lower one.
    bool advance(std::size_t index) {
        for (; m_Count <= index; ++m_Count) {
            const unsigned char* row = m_Rows.next();
            if (!row)
                return false;
            vx::pixels::toBGRA(row, m_Info.channels, m_Pixels.data(), m_Info.width);
            std::swap(m_Upper, m_Lower);
            vx::pixels::stretchRow(m_Pixels.data(), m_Columns.data(), m_Lower.data(), m_Columns.size());
        }
        return true;
    }

    void blend(std::uint32_t weight, unsigned char* out) const {
        const auto& upper = weight > 0 ? m_Upper : m_Lower;
        vx::pixels::blendRows(upper.data(), m_Lower.data(), weight, out, m_Lower.size());
    }

private:
    vx::RowReader& m_Rows;
    const vx::PictureInfo& m_Info;
    std::vector<StretchPoint> m_Columns;
    std::vector<unsigned char> m_Pixels;
    std::vector<std::uint32_t> m_Upper, m_Lower;
    std::size_t m_Count = 0;
};

bool stretchRows(vx::RowReader& rows, const vx::PictureInfo& info, const Canvas& canvas) {
    StretchedRows stretched(rows, info, canvas.width);
    for (std::size_t y = 0; y < canvas.height; ++y) {
        const auto [first, weight] = vx::pixels::stretchPoint(y, info.height, canvas.height);
        if (!stretched.advance(first + (weight > 0 ? 1 : 0)))
            return false;
        stretched.blend(weight, canvas.row(y));
    }
    return true;
}

GLImageBitmap describe(const vx::PictureInfo& info, bool powersOfTwo) {
    GLImageBitmap bitmap;
    bitmap.orgwidth = static_cast<int>(info.width);
    bitmap.orgheight = static_cast<int>(info.height);
    bitmap.target = powersOfTwo ? GL_TEXTURE_2D : GL_TEXTURE_RECTANGLE_ARB;
    bitmap.internalFormat = GL_RGBA8;
    bitmap.format = GL_BGRA;
    bitmap.type = GL_UNSIGNED_INT_8_8_8_8_REV;
    bitmap.bitsPerComponent = 8;
    bitmap.bytesPerPixel = 4;
    bitmap.width = powersOfTwo ? vx::powerOfTwoSide(info.width) : info.width;
    bitmap.height = powersOfTwo ? vx::powerOfTwoSide(info.height) : info.height;
    bitmap.rowBytes = bitmap.width * 4;
    bitmap.dataSize = static_cast<unsigned>(bitmap.rowBytes * bitmap.height);
    return bitmap;
}

} // namespace

bool vx::readBitmap(PictureReader& picture, bool powersOfTwo, GLImageBitmap& out, std::string& why) {
    const PictureInfo& info = picture.info();
    GLImageBitmap bitmap = describe(info, powersOfTwo);
    std::size_t size = 0;
    std::unique_ptr<unsigned char[]> pixels;
    if (!__builtin_mul_overflow(bitmap.rowBytes, bitmap.height, &size))
        pixels.reset(new (std::nothrow) unsigned char[size]);
    if (!pixels) {
        why = "there is not enough memory";
        return false;
    }
    const Canvas canvas{bitmap.width, bitmap.height, pixels.get()};
    const bool fits = info.width == bitmap.width && info.height == bitmap.height;
    RowReader rows(picture);
    if (!(fits ? copyRows : stretchRows)(rows, info, canvas)) {
        why = picture.failure();
        return false;
    }
    bitmap.data = pixels.release();
    out = bitmap;
    return true;
}
