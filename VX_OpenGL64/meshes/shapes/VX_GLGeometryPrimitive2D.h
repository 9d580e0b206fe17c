// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

/// Writers of flat shapes into a caller's array of positions. With a null array each returns how many
/// vertices it will write; with one it writes them and returns 0. The array must have that size. No state, no
/// GL; any thread.
class VX_EXPORT VX_GLGeometryPrimitive2D {
public:
    /// A ring around the origin of `dotCount` arcs, counter-clockwise from the +x axis, as one
    /// `GL_TRIANGLE_STRIP` with degenerate joins.
    ///
    /// The first vertex of each arc is written twice; the z of the first one is left as it was. Vertices are
    /// not finite with a `stepCount` of 1. Nothing is written with a `dotCount` or `stepCount` below 1.
    /// @param radiusA, radiusB the two edges of the arcs
    /// @param dotCount how many arcs
    /// @param stepCount places along one arc, both ends included
    /// @param fill share of its angle that each arc covers, 0 to 1
    /// @param[out] out the vertices, or null
    /// @return with a null `out` (`stepCount` * 2 + 2) * `dotCount`
    static int DotDonut(float radiusA, float radiusB, int dotCount, int stepCount, float fill,
                        glm::tvec3<float>* out);

    /// An arrow in the xy plane, pointing toward +x and centred on the origin in x, as 7 triangles for
    /// `GL_TRIANGLES`.
    /// @param length from tail to tip
    /// @param headWidth, shaftWidth extents in y
    /// @param headRatio share of half the length by which the shaft ends before the tip; as a divisor of the
    ///        widths, how far the head sweeps back. Not 0.
    /// @param[out] out the vertices, or null
    /// @return with a null `out` 21
    static int Arrow1(float length, float headWidth, float shaftWidth, float headRatio,
                      glm::tvec3<float>* out);
};
