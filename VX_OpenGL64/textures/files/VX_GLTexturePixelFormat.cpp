// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLTexturePixelFormat.h>

#include <VX_OpenGL64/textures/private/UnpackState.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

struct Transfer {
    GLenum format; ///< and internal format
    GLenum type;
    std::size_t bytesPerPixel;
};

Transfer transferOf(Texture2DPixelFormat pixelFormat) {
    switch (pixelFormat) {
        case Texture2DPixelFormat_RGBA8888:
            return {GL_RGBA, GL_UNSIGNED_BYTE, 4};
        case Texture2DPixelFormat_RGBA4444:
            return {GL_RGBA, GL_UNSIGNED_SHORT_4_4_4_4, 2};
        case Texture2DPixelFormat_RGBA5551:
            return {GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1, 2};
        case Texture2DPixelFormat_RGB565:
            return {GL_RGB, GL_UNSIGNED_SHORT_5_6_5, 2};
        case Texture2DPixelFormat_RGB888:
            return {GL_RGB, GL_UNSIGNED_BYTE, 3};
        case Texture2DPixelFormat_L8:
            return {GL_LUMINANCE, GL_UNSIGNED_BYTE, 1};
        case Texture2DPixelFormat_A8:
            return {GL_ALPHA, GL_UNSIGNED_BYTE, 1};
        case Texture2DPixelFormat_LA88:
            return {GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE, 2};
    }
    NSException::raise(NSInternalInconsistencyException, "");
}

/// The same pixels without gaps between their rows.
std::vector<unsigned char> withoutGaps(const void* data, std::size_t rowBytes, std::size_t usedBytes,
                                       std::size_t height) {
    std::vector<unsigned char> tight(usedBytes * height);
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(&tight[y * usedBytes], static_cast<const unsigned char*>(data) + y * rowBytes, usedBytes);
    return tight;
}

} // namespace

void _GLDoTexImage2D(unsigned int target, Texture2DPixelFormat pixelFormat, unsigned long width,
                     unsigned long height, const void* data) {
    VX_NEEDS_CONTEXT();
    const auto [format, type, bytesPerPixel] = transferOf(pixelFormat);
    glTexImage2D(target, 0, static_cast<GLint>(format), static_cast<GLsizei>(width),
                 static_cast<GLsizei>(height), 0, format, type, data);
}

void _GLDoTexImage2DMipMaps(unsigned int target, Texture2DPixelFormat pixelFormat, unsigned long width,
                            unsigned long height, const void* data) {
    VX_NEEDS_CONTEXT();
    const Transfer transfer = transferOf(pixelFormat);
    const auto build = [&](const void* pixels) {
        gluBuild2DMipmaps(target, static_cast<GLint>(transfer.format), static_cast<GLsizei>(width),
                          static_cast<GLsizei>(height), transfer.format, transfer.type, pixels);
    };
    // GLU does not pad the rows of the first level that it makes, and GL then reads past their end. Pictures
    // so narrow are handed over without padding.
    const vx::UnpackLayout layout = vx::currentUnpackLayout();
    const std::size_t usedBytes = width * transfer.bytesPerPixel;
    const std::size_t nextBytes = std::max(width / 2, 1ul) * transfer.bytesPerPixel;
    if (height < 4 || nextBytes % layout.alignment == 0)
        return build(data);
    const std::size_t rowBytes = layout.rowBytes(width, transfer.bytesPerPixel);
    const auto tight =
        withoutGaps(vx::skippedInto(data, rowBytes, transfer.bytesPerPixel), rowBytes, usedBytes, height);
    const vx::KeptUnpackState kept;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    build(vx::unpackedFrom(tight.data(), usedBytes, transfer.bytesPerPixel));
}
