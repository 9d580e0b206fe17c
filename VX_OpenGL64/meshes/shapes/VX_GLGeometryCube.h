// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

/// Axis-aligned boxes as 24 unindexed vertices: six faces of four corners, for `GL_QUADS`. Y points up in a
/// right-handed system. Every vertex holds its face's normal, the current `Color` and the texture coordinate
/// (0, 0), as far as the format has them; the tangent of format 19 is not written. One thread at a time, no
/// GL.
class VX_EXPORT VX_GLGeometryCube : public VX_GLMeshData {
public:
    VX_GLGeometryCube();

    /// `MakeCube` with `m_Center` and `m_HalfSize` into the own vertex store, in one of the nine formats of
    /// `VX_GLVertexFormat`. Any other format leaves an empty store. The index list stays as it is.
    virtual void Generate(int format);

    /// Four writers. Each writes 24 vertices of `format` from `vertex` on, where the caller must have room
    /// for them, and returns the address behind the last one; an unknown format writes nothing and returns
    /// `vertex`. `size` is the extent from `center` along each axis, in both directions unless told
    /// otherwise.

    /// Centred; normals outward, corners counter-clockwise seen from outside.
    static void* MakeCube(void* vertex, int format, glm::tvec3<float> center, glm::tvec3<float> size);
    /// Stands on `center`: from its height up to `size.y` above. Normals inward, corners counter-clockwise
    /// seen from outside.
    static void* MakeBuilding(void* vertex, int format, glm::tvec3<float> center, glm::tvec3<float> size);
    /// Hangs below `center`: from its height down to `size.y` below. Normals outward, corners
    /// counter-clockwise seen from outside.
    static void* MakeFloor(void* vertex, int format, glm::tvec3<float> center, glm::tvec3<float> size);
    /// Centred; normals inward, corners counter-clockwise seen from inside.
    static void* MakeRoom(void* vertex, int format, glm::tvec3<float> center, glm::tvec3<float> size);

    /// Diffuse colour (red, green, blue, alpha) of every vertex written, for the whole process; read by each
    /// writer as it runs, without a lock. White at first.
    static glm::tvec4<float> Color;

    /// Position of the box.
    glm::tvec3<float> m_Center{0.0f, 0.0f, 0.0f};
    /// Extent of the box from its position along each axis.
    glm::tvec3<float> m_HalfSize{0.1f, 0.1f, 0.1f};
    /// Two fields that nothing reads.
    int m_Reserved0 = 0;
    int m_Reserved1 = 0;
};
