// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// How pixels lie in memory, and with which internal format, format and type they go to GL.
enum Texture2DPixelFormat : int {
    Texture2DPixelFormat_RGBA8888 = 1, ///< GL_RGBA twice, GL_UNSIGNED_BYTE
    Texture2DPixelFormat_RGBA4444 = 2, ///< GL_RGBA twice, GL_UNSIGNED_SHORT_4_4_4_4
    Texture2DPixelFormat_RGBA5551 = 3, ///< GL_RGBA twice, GL_UNSIGNED_SHORT_5_5_5_1
    Texture2DPixelFormat_RGB565 = 4,   ///< GL_RGB twice, GL_UNSIGNED_SHORT_5_6_5
    Texture2DPixelFormat_RGB888 = 5,   ///< GL_RGB twice, GL_UNSIGNED_BYTE
    Texture2DPixelFormat_L8 = 6,       ///< GL_LUMINANCE twice, GL_UNSIGNED_BYTE
    Texture2DPixelFormat_A8 = 7,       ///< GL_ALPHA twice, GL_UNSIGNED_BYTE
    Texture2DPixelFormat_LA88 = 8      ///< GL_LUMINANCE_ALPHA twice, GL_UNSIGNED_BYTE
};

/// Gives level 0 of the texture bound to `target` its pixels: `width` x `height` of them from `data`, which
/// is borrowed for the call; their rows lie as the unpack state says. Throws
/// NSInternalInconsistencyException, with an empty reason, for a format that is none of the above. Needs a
/// current context. GL: glTexImage2D.
VX_EXPORT void _GLDoTexImage2D(unsigned int target, Texture2DPixelFormat pixelFormat, unsigned long width,
                               unsigned long height, const void* data);
/// The same with all smaller levels made from it, averaged. GL: gluBuild2DMipmaps, which scales what is no
/// power of two, or too large for the driver; of pictures so narrow that GLU would let GL read past its own
/// memory, a copy is handed over under a glPixelStorei. The unpack state is brought back.
VX_EXPORT void _GLDoTexImage2DMipMaps(unsigned int target, Texture2DPixelFormat pixelFormat,
                                      unsigned long width, unsigned long height, const void* data);
