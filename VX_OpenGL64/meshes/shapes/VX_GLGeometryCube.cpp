// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>

#include <VX_OpenGL64/meshes/private/VertexLayout.h>

namespace {

enum Axis { X, Y, Z };

/// One face: the axis and the sign of its normal, and its corners as the sides of the box in x, y and z:
/// minus and plus, bottom and top, minus and plus.
struct Face {
    Axis axis;
    bool negated;
    char corners[4][4];
};

constexpr Face kCube[6] = {
    {Z, false, {"-T+", "-B+", "+B+", "+T+"}}, {X, true, {"-T-", "-B-", "-B+", "-T+"}},
    {Z, true, {"+T-", "+B-", "-B-", "-T-"}},  {X, false, {"+T+", "+B+", "+B-", "+T-"}},
    {Y, false, {"-T-", "-T+", "+T+", "+T-"}}, {Y, true, {"-B+", "-B-", "+B-", "+B+"}},
};

constexpr Face kSlab[6] = {
    {Y, false, {"+T-", "-T-", "-T+", "+T+"}}, {Y, true, {"+B+", "-B+", "-B-", "+B-"}},
    {Z, false, {"+T+", "-T+", "-B+", "+B+"}}, {Z, true, {"+B-", "-B-", "-T-", "+T-"}},
    {X, true, {"-T+", "-T-", "-B-", "-B+"}},  {X, false, {"+T-", "+T+", "+B+", "+B-"}},
};

constexpr Face kRoom[6] = {
    {Y, true, {"+T-", "+T+", "-T+", "-T-"}},  {Y, false, {"+B+", "+B-", "-B-", "-B+"}},
    {Z, true, {"+T+", "+B+", "-B+", "-T+"}},  {Z, false, {"+B-", "+T-", "-T-", "-B-"}},
    {X, false, {"-T+", "-B+", "-B-", "-T-"}}, {X, true, {"+T-", "+B-", "+B+", "+T+"}},
};

struct Bounds {
    glm::tvec3<float> low;
    glm::tvec3<float> high;

    glm::tvec3<float> corner(const char* sides) const {
        return {sides[0] == '-' ? low.x : high.x, sides[1] == 'B' ? low.y : high.y,
                sides[2] == '-' ? low.z : high.z};
    }
};

Bounds boundsAround(const glm::tvec3<float>& center, const glm::tvec3<float>& size) {
    return {center - size, center + size};
}

void* writeBox(void* vertex, int format, const Bounds& bounds, const Face (&faces)[6], bool facesInward) {
    static constexpr glm::tvec3<float> vNormalX{1.0f, 0.0f, 0.0f};
    static constexpr glm::tvec3<float> vNormalY{0.0f, 1.0f, 0.0f};
    static constexpr glm::tvec3<float> vNormalZ{0.0f, 0.0f, 1.0f};
    const vx::VertexLayout* layout = vx::vertexLayout(format);
    if (!layout)
        return vertex;
    const glm::tvec4<float> color = VX_GLGeometryCube::Color;
    for (const Face& face : faces) {
        const glm::tvec3<float>& axis = face.axis == X ? vNormalX : face.axis == Y ? vNormalY : vNormalZ;
        const glm::tvec3<float> normal = face.negated != facesInward ? -axis : axis;
        for (const char* corner : face.corners)
            vertex = vx::writeVertex(*layout, vertex, bounds.corner(corner), color, normal, {0.0f, 0.0f});
    }
    return vertex;
}

} // namespace

glm::tvec4<float> VX_GLGeometryCube::Color{1.0f, 1.0f, 1.0f, 1.0f};

VX_GLGeometryCube::VX_GLGeometryCube() = default;

void VX_GLGeometryCube::Generate(int format) {
    AllocateVertex(format, 24);
    MakeCube(m_Vertex->m_Data, m_Vertex->m_Format, m_Center, m_HalfSize);
}

void* VX_GLGeometryCube::MakeCube(void* vertex, int format, glm::tvec3<float> center,
                                  glm::tvec3<float> size) {
    return writeBox(vertex, format, boundsAround(center, size), kCube, false);
}

void* VX_GLGeometryCube::MakeBuilding(void* vertex, int format, glm::tvec3<float> center,
                                      glm::tvec3<float> size) {
    Bounds bounds = boundsAround(center, size);
    bounds.low.y = center.y;
    // Against the winding: docs/kept-behaviour.md.
    return writeBox(vertex, format, bounds, kSlab, true);
}

void* VX_GLGeometryCube::MakeFloor(void* vertex, int format, glm::tvec3<float> center,
                                   glm::tvec3<float> size) {
    Bounds bounds = boundsAround(center, size);
    bounds.high.y = center.y;
    return writeBox(vertex, format, bounds, kSlab, false);
}

void* VX_GLGeometryCube::MakeRoom(void* vertex, int format, glm::tvec3<float> center,
                                  glm::tvec3<float> size) {
    return writeBox(vertex, format, boundsAround(center, size), kRoom, false);
}
