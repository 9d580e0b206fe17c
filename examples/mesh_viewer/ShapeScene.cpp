// SPDX-License-Identifier: MIT
#include <examples/mesh_viewer/ShapeScene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>

#include <epoxy/gl.h>

namespace {

constexpr int Format = VX_GLVertexPDN;
constexpr int Columns = 4;
constexpr int Rows = 3;

/// The positions of a flat shape as vertices that face the viewer.
void fill(VX_GLMeshData& mesh, const std::vector<glm::vec3>& positions, const glm::vec4& color) {
    mesh.AllocateVertex(Format, static_cast<int>(positions.size()));
    for (std::size_t i = 0; i < positions.size(); ++i) {
        void* vertex = mesh.m_Vertex->Seek(static_cast<int>(i));
        *mesh.m_Vertex->GetPosition(static_cast<int>(i)) = positions[i];
        VX_GLVertex::SetDiffuse(Format, vertex, color);
        VX_GLVertex::SetNormal(Format, vertex, {0.0f, 0.0f, 1.0f});
    }
}

} // namespace

void ShapeScene::prepare() {
    addSpheres();
    addBoxes();
    addFlatShapes();
}

void ShapeScene::release() {
    m_Shapes.clear();
}

void ShapeScene::add(VX_GLMeshData& mesh, unsigned int mode, bool isFlat) {
    auto renderer = std::make_unique<VX_GLMeshDataRenderer>();
    renderer->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &mesh);
    m_Shapes.push_back({std::move(renderer), mode, isFlat});
}

void ShapeScene::addSpheres() {
    VX_GLGeometrySphere icosahedron, outside, inside;
    icosahedron.m_Subdivision = 0;
    inside.m_Outward = false;
    for (VX_GLGeometrySphere* sphere : {&icosahedron, &outside, &inside}) {
        sphere->Generate(Format);
        add(*sphere, GL_TRIANGLES);
    }
    VX_GLGeometryUVSphere banded;
    banded.m_Divisions = 24;
    banded.m_BandSize = 2;
    banded.m_BandColor[1] = {0.8f, 0.1f, 0.1f, 1.0f};
    banded.Generate(Format);
    add(banded, GL_TRIANGLE_STRIP);
}

void ShapeScene::addBoxes() {
    struct {
        void* (*make)(void*, int, glm::tvec3<float>, glm::tvec3<float>);
        glm::vec4 color;
    } const boxes[] = {{VX_GLGeometryCube::MakeCube, {1.0f, 0.6f, 0.2f, 1.0f}},
                       {VX_GLGeometryCube::MakeBuilding, {0.4f, 0.8f, 1.0f, 1.0f}},
                       {VX_GLGeometryCube::MakeFloor, {0.5f, 0.9f, 0.4f, 1.0f}},
                       {VX_GLGeometryCube::MakeRoom, {0.9f, 0.5f, 0.9f, 1.0f}}};
    for (const auto& box : boxes) {
        VX_GLMeshData mesh;
        VX_GLGeometryCube::Color = box.color;
        box.make(mesh.AllocateVertex(Format, 24), Format, glm::vec3(0.0f), glm::vec3(0.35f));
        add(mesh, GL_QUADS);
    }
}

void ShapeScene::addFlatShapes() {
    VX_GLGeometryUVSphere open;
    open.m_Divisions = 15; // odd: the upper pole stays open
    open.Generate(Format);
    add(open, GL_TRIANGLE_STRIP);

    using Shape = VX_GLGeometryPrimitive2D;
    std::vector<glm::vec3> positions(static_cast<std::size_t>(Shape::DotDonut(0, 0, 12, 6, 0, nullptr)));
    Shape::DotDonut(0.3f, 0.5f, 12, 6, 0.6f, positions.data());
    VX_GLMeshData donut, arrow;
    fill(donut, positions, {1.0f, 0.9f, 0.3f, 1.0f});
    add(donut, GL_TRIANGLE_STRIP, true);

    positions.assign(static_cast<std::size_t>(Shape::Arrow1(0, 0, 0, 0, nullptr)), glm::vec3(0.0f));
    Shape::Arrow1(1.0f, 0.6f, 0.2f, 0.8f, positions.data());
    fill(arrow, positions, {0.3f, 0.9f, 0.8f, 1.0f});
    add(arrow, GL_TRIANGLES, true);
}

void ShapeScene::draw(const Look& look, float aspect, double time) {
    // Nothing is drawn from the wrong side, which is what tells inside from outside.
    glEnable(GL_CULL_FACE);
    const float width = 2.4f * aspect / Columns, height = 2.4f / Rows;
    for (int cell = 0; cell < Columns * Rows; ++cell) {
        const int column = cell % Columns, row = cell / Columns;
        glPushMatrix();
        glTranslatef((static_cast<float>(column) - (Columns - 1) * 0.5f) * width,
                     ((Rows - 1) * 0.5f - static_cast<float>(row)) * height, 0.0f);
        glScalef(0.65f, 0.65f, 0.65f);
        if (static_cast<std::size_t>(cell) >= m_Shapes.size()) {
            drawOverlays();
        } else {
            const Shape& shape = m_Shapes[static_cast<std::size_t>(cell)];
            if (!shape.isFlat) {
                glRotatef(look.pitch, 1.0f, 0.0f, 0.0f);
                glRotatef(look.turnAt(time), 0.0f, 1.0f, 0.0f);
            } else {
                glDisable(GL_CULL_FACE);
            }
            shape.renderer->Draw(shape.mode, Format, 0, 0);
            glEnable(GL_CULL_FACE);
        }
        glPopMatrix();
    }
}

void ShapeScene::drawOverlays() {
    // One over the other in the order of drawing, whichever way they are wound.
    glPushAttrib(GL_ENABLE_BIT);
    glDisable(GL_CULL_FACE);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glColor3f(0.2f, 0.3f, 0.6f);
    VX_GLConvenienceDraw::drawSolidCircle({0.0f, 0.0f}, 0.35f, 24);
    glColor3f(0.9f, 0.5f, 0.2f);
    VX_GLConvenienceDraw::drawSolidRect(CGRectMake(-0.15, -0.15, 0.3, 0.3), false);
    glColor3f(1.0f, 1.0f, 1.0f);
    VX_GLConvenienceDraw::drawStrokedRect(CGRectMake(-0.5, -0.5, 1.0, 1.0));
    VX_GLConvenienceDraw::drawLine(VXVector2{-0.5f, -0.5f}, VXVector2{0.5f, 0.5f});
    glPopAttrib();
}
