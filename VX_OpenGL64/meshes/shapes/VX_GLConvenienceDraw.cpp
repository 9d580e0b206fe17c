// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <cmath>
#include <limits>
#include <memory>

#include <epoxy/gl.h>

namespace {

void drawVertices(GLint components, const void* vertices, GLenum mode, GLsizei count) {
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(components, GL_FLOAT, 0, vertices);
    glDrawArrays(mode, 0, count);
    glDisableClientState(GL_VERTEX_ARRAY);
}

/// The edges of a rectangle as a vertex array has them.
struct Edges {
    float left, top, right, bottom;

    explicit Edges(const CGRect& rect)
        : left(static_cast<float>(rect.origin.x)),
          top(static_cast<float>(rect.origin.y)),
          right(static_cast<float>(rect.origin.x + rect.size.width)),
          bottom(static_cast<float>(rect.origin.y + rect.size.height)) {}
};

/// About one segment for each unit of the circumference; 2 for one that no int can count.
int segmentsOf(float radius, int segments) {
    if (segments < 1) {
        const double units = std::floor(static_cast<double>(radius) * 3.141592653589793 * 2.0);
        segments = units <= std::numeric_limits<int>::max() ? static_cast<int>(std::fmax(units, 2.0)) : 2;
    }
    // Two more points than segments must still be a count.
    constexpr int most = std::numeric_limits<int>::max() - 2;
    return segments < 2 ? 2 : segments > most ? most : segments;
}

} // namespace

void VX_GLConvenienceDraw::drawLine(const VXVector2& from, const VXVector2& to) {
    VX_NEEDS_CONTEXT();
    const VXVector2 points[] = {from, to};
    drawVertices(2, points, GL_LINES, 2);
}

void VX_GLConvenienceDraw::drawLine(const VXVector3& from, const VXVector3& to) {
    VX_NEEDS_CONTEXT();
    const VXVector3 points[] = {from, to};
    drawVertices(3, points, GL_LINES, 2);
}

void VX_GLConvenienceDraw::drawSolidCircle(const VXVector2& center, float radius, int segments) {
    VX_NEEDS_CONTEXT();
    segments = segmentsOf(radius, segments);
    const std::unique_ptr<VXVector2[]> points(new VXVector2[static_cast<std::size_t>(segments) + 2]);
    points[0] = center;
    for (int i = 0; i <= segments; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(segments);
        // The short constant leaves a gap at the last point: docs/kept-behaviour.md.
        const float angle = (t + t) * 3.14159f;
        points[static_cast<std::size_t>(i) + 1] = {std::cos(angle) * radius + center.x,
                                                   std::sin(angle) * radius + center.y};
    }
    drawVertices(2, points.get(), GL_TRIANGLE_FAN, segments + 2);
}

void VX_GLConvenienceDraw::drawSolidRect(CGRect rect, bool pixelCoordinates) {
    VX_NEEDS_CONTEXT();
    const Edges e(rect);
    const VXVector2 positions[] = {
        {e.right, e.top}, {e.left, e.top}, {e.right, e.bottom}, {e.left, e.bottom}};
    constexpr VXVector2 unit[] = {{1.0f, 0.0f}, {0.0f, 0.0f}, {1.0f, 1.0f}, {0.0f, 1.0f}};
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, positions);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glTexCoordPointer(2, GL_FLOAT, 0, pixelCoordinates ? positions : unit);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}

void VX_GLConvenienceDraw::drawStrokedRect(const CGRect& rect) {
    VX_NEEDS_CONTEXT();
    const Edges e(rect);
    const VXVector2 corners[] = {{e.left, e.top}, {e.right, e.top}, {e.right, e.bottom}, {e.left, e.bottom}};
    drawVertices(2, corners, GL_LINE_LOOP, 4);
}
