// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTextureBase.h>

/// A rectangle texture from a picture file or from memory. It is not loaded through its base: the virtual
/// `LoadFromPath` with two arguments does nothing and returns false.
class VX_EXPORT VX_GLTextureRect : public VX_GLTextureBase {
public:
    ~VX_GLTextureRect() override;

    /// Discards what was there and loads the picture as `VX_GLTextureLoader2DRect` does, which tells
    /// arguments, GL and state. Returns as `VX_GLTexture2D::LoadFromPath`.
    bool LoadFromPath(NSString* path);
    /// As `VX_GLTexture::loadTextureFromData` with the target GL_TEXTURE_RECTANGLE. The sizes become those
    /// given, whatever comes of it.
    bool LoadFromData(unsigned int internalFormat, unsigned int format, unsigned int type, int width,
                      int height, const void* data);

private:
    // Hidden, without a warning of newer compilers: a rectangle texture has no mipmaps.
    using VX_GLTextureBase::LoadFromPath;
};
