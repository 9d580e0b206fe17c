// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VXVector.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>

/// Draws simple shapes at once from client memory, for overlays and debugging aids, with the current colour,
/// texture and matrices. Needs a current context of the compatibility profile with no buffer bound to
/// `GL_ARRAY_BUFFER`. Calls `glEnableClientState`, `glVertexPointer`, `glDrawArrays`, `glDisableClientState`,
/// and where told `glTexCoordPointer`. The arrays are disabled afterwards; their pointers stay set to memory
/// that is gone.
class VX_EXPORT VX_GLConvenienceDraw {
public:
    /// `GL_LINES` from one point to the other.
    static void drawLine(const VXVector2& from, const VXVector2& to);
    static void drawLine(const VXVector3& from, const VXVector3& to);

    /// `GL_TRIANGLE_FAN` around `center`, counter-clockwise from +x. With `segments` below 1 about one
    /// segment for each unit of the circumference; never fewer than 2. Throws `std::bad_alloc` when there is
    /// no memory for the rim.
    static void drawSolidCircle(const VXVector2& center, float radius, int segments);

    /// `GL_TRIANGLE_STRIP` with texture coordinates: those of the positions, for rectangle textures, when
    /// `pixelCoordinates` is true, else 0 to 1 from the corner (x, y). Also calls `glTexCoordPointer` for the
    /// active client texture unit.
    static void drawSolidRect(CGRect rect, bool pixelCoordinates);

    /// `GL_LINE_LOOP` around the rectangle.
    static void drawStrokedRect(const CGRect& rect);
};
