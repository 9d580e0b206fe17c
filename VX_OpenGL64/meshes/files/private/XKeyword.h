// SPDX-License-Identifier: MIT
#pragma once

namespace vx::xkeyword {

/// Codes of the keywords of X text files.
enum Keyword : int {
    Template = 60,
    Header = 61,
    Frame = 62,
    FrameTransformMatrix = 63,
    Mesh = 64,
    MeshTextureCoords = 65,
    MeshMaterialList = 66,
    Material = 67,
    XSkinMeshHeader = 68,
    SkinWeights = 69,
    TextureFilename = 70,
    MeshNormals = 71,
    AnimationSet = 72,
    Animation = 73,
    AnimationKey = 74
};

} // namespace vx::xkeyword
