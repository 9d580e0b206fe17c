// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTextureBase.h>

/// A 2D texture from a picture or DDS file.
class VX_EXPORT VX_GLTexture2D : public VX_GLTextureBase {
public:
    ~VX_GLTexture2D() override;

    /// Discards what was there and loads the picture as `VX_GLTextureLoader2D` does, which tells arguments,
    /// GL and state. Returns whether there is a name; also true where that function gives 1281, which is then
    /// held and deleted as if it were this object's.
    bool LoadFromPath(NSString* path, bool mipmap) override;
    /// Discards what was there and loads the file as `VX_GLDDSTextureLoader2D::Load` does. Returns whether
    /// there is a texture; false for a null path.
    bool LoadDDSFromPath(NSString* path);
};
