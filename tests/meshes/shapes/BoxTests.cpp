// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <tests/meshes/Shapes.h>

#include <cmath>
#include <string>

using namespace vx::test;

namespace {

const struct Shape {
    void* (*write)(void*, int, Vec3, Vec3);
    float bottom, top;        // around center (10, 20, 30) with size (1, 2, 3)
    float normals, winding;   // 1 when they face outward and counter-clockwise, -1 when not
    const char* faces;        // the side on which each lies
    const char* firstCorners; // of each face, one letter a side
} kShapes[] = {
    {VX_GLGeometryCube::MakeCube, 18, 22, 1, 1, "z+ x- z- x+ y+ y-", "-T+ -T- +T- +T+ -T- -B+"},
    {VX_GLGeometryCube::MakeBuilding, 20, 22, -1, 1, "y+ y- z+ z- x- x+", "+T- +B+ +T+ +B- -T+ +T-"},
    {VX_GLGeometryCube::MakeFloor, 18, 20, 1, 1, "y+ y- z+ z- x- x+", "+T- +B+ +T+ +B- -T+ +T-"},
    {VX_GLGeometryCube::MakeRoom, 18, 22, -1, -1, "y+ y- z+ z- x- x+", "+T- +B+ +T+ +B- -T+ +T-"},
};

struct PN {
    Vec3 position, normal;
};

} // namespace

TEST(VX_GLGeometryCube, EachShapeHasItsFacesInOrderWithTheirNormalsAndWinding) {
    for (const Shape& shape : kShapes) {
        PN box[24];
        EXPECT_EQ(shape.write(box, 3, {10, 20, 30}, {1, 2, 3}), box + 24);
        EXPECT_EQ(shape.write(box, 2, {10, 20, 30}, {1, 2, 3}), box) << "no such format";
        const Vec3 middle{10, (shape.bottom + shape.top) / 2, 30}, half{1, (shape.top - shape.bottom) / 2, 3};
        for (int face = 0; face < 6; ++face) {
            SCOPED_TRACE(&shape - kShapes);
            SCOPED_TRACE(face);
            Vec3 outward(0.0f);
            outward[shape.faces[face * 3] - 'x'] = shape.faces[face * 3 + 1] == '+' ? 1 : -1;
            const PN* c = &box[face * 4];
            const Vec3 wound = glm::cross(c[2].position - c[1].position, c[0].position - c[1].position);
            EXPECT_EQ(wound / glm::length(wound), outward * shape.winding);
            const Vec3 first = c[0].position;
            EXPECT_EQ((std::string{first.x < 10 ? '-' : '+', first.y == shape.bottom ? 'B' : 'T',
                                   first.z < 30 ? '-' : '+'}),
                      std::string(shape.firstCorners + face * 4, 3));
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(c[i].normal, outward * shape.normals);
                EXPECT_EQ(glm::abs(c[i].position - middle), half);
                EXPECT_EQ(glm::dot(c[i].position - middle, outward), glm::dot(half, glm::abs(outward)));
            }
        }
        EXPECT_EQ(std::signbit(box[0].normal.x), box[0].normal.y + box[0].normal.z < 0) << "zeros have signs";
    }
}

TEST(VX_GLGeometryCube, GeneratesIntoItsOwnStore) {
    VX_GLGeometryCube box;
    box.Generate(19);
    At(box, 23).tangent() = {7, 8, 9};
    box.Generate(19);
    EXPECT_EQ(At(box, 23).tangent(), Vec3(7, 8, 9)) << "the tangent stays";
    EXPECT_EQ(At(box, 0).position(), Vec3(-0.1f, 0.1f, 0.1f));
    VX_GLGeometryCube::Color = {0.25f, 0.5f, 0.75f, 1.0f};
    box.m_Center = {1, 1, 1};
    box.m_HalfSize = {0.5f, 0.25f, 0.125f};
    box.Generate(15);
    EXPECT_EQ(box.m_Vertex->m_Count, 24);
    EXPECT_EQ(At(box, 0).position(), Vec3(0.5f, 1.25f, 1.125f));
    EXPECT_EQ(At(box, 23).diffuse(), VX_GLGeometryCube::Color);
    EXPECT_EQ(At(box, 23).uv(), Vec2(0, 0));
    VX_GLGeometryCube::Color = {1, 1, 1, 1};
    void* block = box.m_Vertex->m_Data;
    box.Generate(15);
    EXPECT_EQ(box.m_Vertex->m_Data, block);
    EXPECT_EQ(At(box, 0).diffuse(), Vec4(1, 1, 1, 1));
    box.Generate(2);
    EXPECT_EQ(box.m_Vertex->m_Data, nullptr);
}
