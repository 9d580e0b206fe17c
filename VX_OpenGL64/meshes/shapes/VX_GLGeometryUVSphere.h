// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

/// A sphere around the origin as bands of latitude in one triangle strip, for `GL_TRIANGLE_STRIP`, from the
/// lower pole up, with Y as its axis. Normals point outward and triangles run counter-clockwise seen from
/// outside. The texture coordinate runs from 0.999 down to about 0, U around the ring from longitude 0 and V
/// from the lower pole up. The tangent of format 19 is not written. One thread at a time, no GL.
class VX_EXPORT VX_GLGeometryUVSphere : public VX_GLMeshData {
public:
    VX_GLGeometryUVSphere();

    /// Writes the bands into the own store, in one of the nine formats. Any other format leaves it empty.
    /// Fewer than 2 divisions write nothing and log "##".
    virtual void Generate(int format);

    /// From the origin to each vertex.
    float m_Radius = 0.5f;
    /// Steps around a ring. Half as many bands lie between the poles; an odd number leaves the upper pole
    /// open.
    int m_Divisions = 3;
    /// How many bands share one colour; 0 or less means one colour throughout. A change takes effect one band
    /// late: the first colour lasts for one band more.
    int m_BandSize = 0;
    /// The two colours (red, green, blue, alpha) of the bands.
    glm::tvec4<float> m_BandColor[2] = {{1.0f, 1.0f, 1.0f, 1.0f}, {0.0f, 0.0f, 0.0f, 1.0f}};
};
