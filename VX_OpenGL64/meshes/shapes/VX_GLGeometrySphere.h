// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

/// A sphere around the origin as an unindexed triangle list, for `GL_TRIANGLES`: an icosahedron whose
/// triangles are split into four again and again. Smooth normals; corners run counter-clockwise seen from the
/// side the normals point to. The texture coordinate is the raw (x, y) of the point on the unit sphere, -1 to
/// 1; diffuse is white; the tangent of format 19 is not written. One thread at a time, no GL.
class VX_EXPORT VX_GLGeometrySphere : public VX_GLMeshData {
public:
    VX_GLGeometrySphere();

    /// Writes 60 * 4 ^ `m_Subdivision` vertices of `format`, one of the nine, into the own store. Any other
    /// format, and a sphere that is too large for the store, leaves it empty; a negative subdivision writes
    /// the triangles that the store has room for, which are fewer than 20.
    virtual void Generate(int format);

    /// Writes the triangle of the unit vectors `a`, `b`, `c` (three floats each), split `depth` times, as
    /// 3 * 4 ^ `depth` vertices of `format` from `vertex` on, where the caller must have room for them.
    /// Returns the address behind the last one; an unknown format writes nothing and returns `vertex`.
    void* drawtri(void* vertex, int format, float* a, float* b, float* c, int depth, float radius);

    /// Corners of the icosahedron on the unit sphere, and its triangles as corner numbers.
    static const float vdata[12][3];
    static const unsigned int tindices[20][3];

    /// From the origin to each vertex.
    float m_Radius = 0.5f;
    /// How often each triangle is split.
    int m_Subdivision = 3;
    /// Which way normals and winding face.
    bool m_Outward = true;
};
