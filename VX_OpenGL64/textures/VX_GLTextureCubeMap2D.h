// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTextureBase.h>

/// A cube map from six picture files.
class VX_EXPORT VX_GLTextureCubeMap2D : public VX_GLTextureBase {
public:
    ~VX_GLTextureCubeMap2D() override;

    /// Discards what was there and loads the set that `path` names one of as `VX_GLTextureLoaderCubeMap2D`
    /// does, which tells arguments, GL and state. Returns whether there is a texture, be it without faces.
    bool LoadFromPath(NSString* path, bool mipmap) override;
};
