// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLTexturePixelFormat.h>

#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

namespace {

struct Transfer {
    GLenum format; ///< and internal format
    GLenum type;
};

Transfer transferOf(Texture2DPixelFormat pixelFormat) {
    switch (pixelFormat) {
        case Texture2DPixelFormat_RGBA8888:
            return {GL_RGBA, GL_UNSIGNED_BYTE};
        case Texture2DPixelFormat_RGBA4444:
            return {GL_RGBA, GL_UNSIGNED_SHORT_4_4_4_4};
        case Texture2DPixelFormat_RGBA5551:
            return {GL_RGBA, GL_UNSIGNED_SHORT_5_5_5_1};
        case Texture2DPixelFormat_RGB565:
            return {GL_RGB, GL_UNSIGNED_SHORT_5_6_5};
        case Texture2DPixelFormat_RGB888:
            return {GL_RGB, GL_UNSIGNED_BYTE};
        case Texture2DPixelFormat_L8:
            return {GL_LUMINANCE, GL_UNSIGNED_BYTE};
        case Texture2DPixelFormat_A8:
            return {GL_ALPHA, GL_UNSIGNED_BYTE};
        case Texture2DPixelFormat_LA88:
            return {GL_LUMINANCE_ALPHA, GL_UNSIGNED_BYTE};
    }
    NSException::raise(NSInternalInconsistencyException, "");
}

} // namespace

void _GLDoTexImage2D(unsigned int target, Texture2DPixelFormat pixelFormat, unsigned long width,
                     unsigned long height, const void* data) {
    VX_NEEDS_CONTEXT();
    const auto [format, type] = transferOf(pixelFormat);
    glTexImage2D(target, 0, static_cast<GLint>(format), static_cast<GLsizei>(width),
                 static_cast<GLsizei>(height), 0, format, type, data);
}

void _GLDoTexImage2DMipMaps(unsigned int target, Texture2DPixelFormat pixelFormat, unsigned long width,
                            unsigned long height, const void* data) {
    VX_NEEDS_CONTEXT();
    const auto [format, type] = transferOf(pixelFormat);
    gluBuild2DMipmaps(target, static_cast<GLint>(format), static_cast<GLsizei>(width),
                      static_cast<GLsizei>(height), format, type, data);
}
