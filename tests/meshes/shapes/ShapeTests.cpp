// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>
#include <tests/meshes/Shapes.h>
#include <tests/support/LogCollector.h>

#include <cmath>
#include <string>
#include <vector>

using namespace vx::test;
using Flat = VX_GLGeometryPrimitive2D;

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
            SCOPED_TRACE(testing::Message() << "shape " << &shape - kShapes << " face " << face);
            Vec3 outward(0.0f);
            outward[shape.faces[face * 3] - 'x'] = shape.faces[face * 3 + 1] == '+' ? 1 : -1;
            const PN* c = &box[face * 4];
            const Vec3 wound = glm::cross(c[2].position - c[1].position, c[0].position - c[1].position);
            EXPECT_EQ(wound / glm::length(wound), outward * shape.winding);
            const char* first = shape.firstCorners + face * 4;
            const Vec3 place{first[0] == '+' ? 1 : -1, first[1] == 'T' ? 1 : -1, first[2] == '+' ? 1 : -1};
            EXPECT_EQ(c->position, middle + half * place);
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(c[i].normal, outward * shape.normals);
                EXPECT_EQ(glm::abs(c[i].position - middle), half);
                EXPECT_EQ(glm::dot(c[i].position - middle, outward), glm::dot(half, glm::abs(outward)));
            }
        }
    }
}

TEST(VX_GLGeometryCube, GeneratesIntoItsOwnStore) {
    VX_GLGeometryCube box;
    box.Generate(19);
    EXPECT_EQ(At(box, 0).position(), Vec3(-0.1f, 0.1f, 0.1f));
    VX_GLGeometryCube::Color = {0.25f, 0.5f, 0.75f, 1.0f};
    box.m_Center = {1, 1, 1};
    box.m_HalfSize = {0.5f, 0.25f, 0.125f};
    box.Generate(15);
    VX_GLGeometryCube::Color = {1, 1, 1, 1};
    EXPECT_EQ(At(box, 0).position(), Vec3(0.5f, 1.25f, 1.125f));
    EXPECT_EQ(At(box, 23).diffuse(), Vec4(0.25f, 0.5f, 0.75f, 1.0f));
    box.Generate(2);
    EXPECT_EQ(box.m_Vertex->m_Data, nullptr);
}

TEST(VX_GLGeometryPrimitive2D, DotDonutWritesArcsWithJoins) {
    std::vector<Vec3> ring(31, Vec3(77.0f));
    for (const auto& [dots, steps] : {std::pair(0, 4), {3, 0}})
        EXPECT_EQ(Flat::DotDonut(1, 2, dots, steps, 0.5f, ring.data()), 0);
    EXPECT_EQ(Flat::DotDonut(1, 2, 3, 4, 0.5f, nullptr), 30);
    EXPECT_EQ(Flat::DotDonut(1, 2, 3, 4, 0.5f, ring.data()), 0);
    EXPECT_EQ(ring[30], Vec3(77.0f));
    for (int dot = 0; dot < 3; ++dot) {
        const Vec3* arc = &ring[std::size_t(dot) * 10];
        EXPECT_EQ(arc[0], Vec3(arc[1].x, arc[1].y, 77.0f)) << "the z of the join stays";
        EXPECT_EQ(arc[9], arc[8]);
        for (int i = 0; i < 8; ++i) {
            // A third of a turn for each dot, of which half is covered in three equal steps.
            const double angle = 2 * M_PI / 3 * (dot + 0.5 * (i / 2) / 3), radius = i % 2 + 1;
            expectNear(arc[1 + i], {std::cos(angle) * radius, std::sin(angle) * radius, 0});
        }
    }
    EXPECT_EQ(Flat::DotDonut(1, 2, 2147483647, 2147483647, 1, nullptr), 0) << "32 bits, wrapped around";
}

TEST(VX_GLGeometryPrimitive2D, ArrowPointsToTheRight) {
    EXPECT_EQ(Flat::Arrow1(1, 2, 3, 4, nullptr), 21);
    std::vector<Vec3> arrow(22, Vec3(77.0f)), wanted;
    EXPECT_EQ(Flat::Arrow1(2, 1, 0.5f, 0.5f, arrow.data()), 0);
    // xs = 1 - 0.5, xb = 1 - 0.5 / 0.5, xa = 0 - 0.25 / 0.5.
    const Vec3 p[] = {{-1, -.25, 0}, {.5, -.25, 0}, {.5, .25, 0}, {-1, .25, 0}, {-.5, -.5, 0},
                      {0, -.5, 0},   {1, 0, 0},     {0, .5, 0},   {-.5, .5, 0}, Vec3(77.0f)};
    for (const int place : {0, 1, 3, 1, 2, 3, 4, 5, 1, 5, 6, 1, 1, 6, 2, 2, 6, 7, 2, 7, 8, 9})
        wanted.push_back(p[place]);
    EXPECT_TRUE(arrow == wanted);
}

TEST(VX_GLGeometrySphere, SplitsAreSphericalAndFaceTheirSideInEveryFormat) {
    VX_GLGeometrySphere sphere, whole;
    sphere.m_Radius = whole.m_Radius = 2.0f;
    for (const bool outward : {true, false}) {
        sphere.m_Outward = whole.m_Outward = outward;
        whole.Generate(15);
        ASSERT_EQ(whole.m_Vertex->m_Count, 3840);
        for (int i = 0; i < 3840; ++i) {
            const At got(whole, i), first(whole, i / 3 * 3);
            const Vec3 p = got.position(), a = first.position();
            ASSERT_NEAR(glm::length(p), 2.0f, 1e-5f);
            expectNear(got.normal() * (outward ? 2.0f : -2.0f), p);
            expectNear(Vec3(got.uv(), 0) * 2.0f, Vec3(p.x, p.y, 0)); // never negated
            ASSERT_EQ(got.diffuse(), Vec4(1, 1, 1, 1));
            const Vec3 b = At(whole, i / 3 * 3 + 1).position(), c = At(whole, i / 3 * 3 + 2).position();
            ASSERT_GT(glm::dot(glm::cross(b - a, c - a), first.normal()), 0.0f);
        }
        for (const int format : kFormats) {
            sphere.Generate(format);
            if (format == 19)
                At(sphere, 3839).tangent() = {7, 8, 9};
            sphere.Generate(format);
            for (const int i : {0, 1000, 3839}) {
                const At got(sphere, i), wanted(whole, i);
                EXPECT_EQ(got.position(), wanted.position());
                EXPECT_TRUE(!(format & 2) || got.normal() == wanted.normal()) << format;
                EXPECT_TRUE(!(format & 4) || got.uv() == wanted.uv()) << format;
                EXPECT_TRUE(!(format & 8) || got.diffuse() == wanted.diffuse()) << format;
                EXPECT_TRUE(format != 19 || i < 3839 || got.tangent() == Vec3(7, 8, 9)) << "it stays";
            }
        }
    }
    sphere.m_Subdivision = 0; // the icosahedron
    sphere.Generate(1);
    EXPECT_EQ(sphere.m_Vertex->m_Count, 60);
}

TEST(VX_GLGeometrySphere, WritesNoMoreThanItHasRoomFor) {
    // 15 and no vertices below 0, where 60 would be written, and none when they would be too many.
    for (const auto& [depth, count] : {std::pair(-1, 15), {-3, 0}, {-1000000, 0}, {12, 0}, {1000000, 0}}) {
        VX_GLGeometrySphere sphere;
        sphere.m_Subdivision = depth;
        sphere.Generate(7);
        EXPECT_EQ(sphere.m_Vertex->m_Count, count) << depth;
        EXPECT_TRUE(depth < 0 || !sphere.m_Vertex->m_Data);
    }
}

TEST(VX_GLGeometryUVSphere, IsTwoBandsAndAJoinOfFourDivisions) {
    VX_GLGeometryUVSphere sphere;
    sphere.m_Divisions = 4;
    sphere.m_Radius = 2.0f;
    sphere.Generate(7);
    ASSERT_EQ(sphere.m_Vertex->m_Count, 23);
    // Rings at the poles and the equator; four quarters of a turn, from +x through +z.
    const Vec3 turn[] = {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {0, 0, -1}, {1, 0, 0}};
    const auto expectVertex = [&](int i, const Vec3& p, float u, float v) {
        expectNear(At(sphere, i).position() / 2.0f, p);
        expectNear(At(sphere, i).normal(), p);
        expectNear(Vec3(At(sphere, i).uv(), i), {u, v, i}, 1e-6f);
    };
    for (int j = 0; j <= 4; ++j) {
        const float u = 0.999f - 0.25f * j;
        expectVertex(2 * j, {0, -1, 0}, u, 0.999f);
        expectVertex(2 * j + 1, turn[j], u, 0.499f);
        expectVertex(12 + 2 * j, turn[j], u, 0.499f);
        expectVertex(13 + 2 * j, {0, 1, 0}, u, -0.001f);
    }
    expectVertex(10, turn[4], -0.001f, 0.499f);
    expectVertex(11, turn[0], 0.999f, 0.499f);
    expectVertex(22, {0, 1, 0}, -0.001f, -0.001f);

    sphere.m_Divisions = 12;
    for (const auto& [size, expected] : {std::pair(0, "000000"), {-1, "000000"}, {2, "000110"}}) { // one late
        sphere.m_BandSize = size;
        sphere.Generate(9);
        std::string colours;
        for (int vertex = 1; vertex < 6 * 28; vertex += 28)
            colours += At(sphere, vertex).diffuse() == sphere.m_BandColor[0] ? '0' : '1';
        EXPECT_EQ(colours, expected) << size;
    }
}

TEST(VX_GLGeometryUVSphere, SaysWhenItHasNothingToWrite) {
    LogCollector log;
    VX_GLGeometryUVSphere sphere;
    for (const int divisions : {1, 0, -4, -2147483647, 30000, 65536, 2147483647}) {
        sphere.m_Divisions = divisions;
        sphere.Generate(7);
        EXPECT_EQ(sphere.m_Vertex->m_Data, nullptr) << divisions;
    }
    EXPECT_EQ(log.lines, std::vector<std::string>(4, "##")) << "of too many nothing is said";
}
