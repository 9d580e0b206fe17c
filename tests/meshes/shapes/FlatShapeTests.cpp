// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <tests/meshes/ClientArrayRecorder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using vx::test::ClientArrayRecorder;
using Calls = std::vector<std::string>;
using Vec3 = glm::tvec3<float>;

TEST(FlatShapes, DotDonutWritesArcsWithJoins) {
    using Shape = VX_GLGeometryPrimitive2D;
    EXPECT_EQ(Shape::DotDonut(1, 2, 3, 4, 0.5f, nullptr), 30);
    EXPECT_EQ(Shape::DotDonut(1, 2, 0, 4, 0.5f, nullptr), 0);
    std::vector<Vec3> ring(31, Vec3(77.0f));
    EXPECT_EQ(Shape::DotDonut(1, 2, 0, 4, 0.5f, ring.data()), 0);
    EXPECT_EQ(Shape::DotDonut(1, 2, 3, 0, 0.5f, ring.data()), 0);
    EXPECT_EQ(ring[0], Vec3(77.0f)) << "nothing to write";
    EXPECT_EQ(Shape::DotDonut(1, 2, 3, 4, 0.5f, ring.data()), 0);
    EXPECT_EQ(ring[30], Vec3(77.0f));
    for (int dot = 0; dot < 3; ++dot) {
        const Vec3* arc = &ring[dot * 10];
        EXPECT_EQ(arc[0].z, 77.0f) << "the z of the join stays";
        EXPECT_EQ(arc[0].x, arc[1].x);
        EXPECT_EQ(arc[0].y, arc[1].y);
        EXPECT_EQ(arc[9], arc[8]);
        for (int j = 0; j < 4; ++j) {
            // A third of a turn for each dot, of which half is covered in three equal steps.
            const double angle = 2 * M_PI / 3 * (dot + 0.5 * j / 3);
            for (int edge = 0; edge < 2; ++edge) {
                EXPECT_NEAR(arc[1 + 2 * j + edge].x, std::cos(angle) * (edge + 1), 1e-5);
                EXPECT_NEAR(arc[1 + 2 * j + edge].y, std::sin(angle) * (edge + 1), 1e-5);
                EXPECT_EQ(arc[1 + 2 * j + edge].z, 0.0f);
            }
        }
    }
    Shape::DotDonut(1, 2, 1, 1, 1, ring.data());
    EXPECT_TRUE(std::isnan(ring[1].x));
    EXPECT_TRUE(std::isnan(ring[3].x));
    EXPECT_EQ(Shape::DotDonut(1, 2, 2147483647, 2147483647, 1, nullptr), 0) << "32 bits, wrapped around";
}

TEST(FlatShapes, ArrowPointsToTheRight) {
    EXPECT_EQ(VX_GLGeometryPrimitive2D::Arrow1(1, 2, 3, 4, nullptr), 21);
    Vec3 arrow[22];
    arrow[21] = Vec3(77.0f);
    EXPECT_EQ(VX_GLGeometryPrimitive2D::Arrow1(2, 1, 0.5f, 0.5f, arrow), 0);
    EXPECT_EQ(arrow[21], Vec3(77.0f));
    // xs = 1 - 0.5, xb = 1 - 0.5 / 0.5, xa = 0 - 0.25 / 0.5.
    const Vec3 p[] = {{-1, -.25, 0}, {.5, -.25, 0}, {.5, .25, 0}, {-1, .25, 0}, {-.5, -.5, 0},
                      {0, -.5, 0},   {1, 0, 0},     {0, .5, 0},   {-.5, .5, 0}};
    const int order[] = {0, 1, 3, 1, 2, 3, 4, 5, 1, 5, 6, 1, 1, 6, 2, 2, 6, 7, 2, 7, 8};
    for (int i = 0; i < 21; ++i)
        EXPECT_EQ(arrow[i], p[order[i]]) << i;
}

TEST(ConvenienceDraw, LinesAndRectanglesFromClientMemory) {
    // 1406 is GL_FLOAT, 8074 the vertex array, 8078 the texture coordinate array.
    ClientArrayRecorder recorder;
    VX_GLConvenienceDraw::drawLine(VXVector2{1, 2}, VXVector2{3, 4});
    EXPECT_EQ(recorder.calls, (Calls{"enable(8074)", "vertex(2 1406 0)", "draw(1 0 2)", "disable(8074)"}));
    EXPECT_EQ(recorder.vertices, (std::vector<float>{1, 2, 3, 4}));

    recorder.calls.clear();
    VX_GLConvenienceDraw::drawLine(VXVector3{1, 2, 3}, VXVector3{4, 5, 6});
    EXPECT_EQ(recorder.calls, (Calls{"enable(8074)", "vertex(3 1406 0)", "draw(1 0 2)", "disable(8074)"}));
    EXPECT_EQ(recorder.vertices, (std::vector<float>{1, 2, 3, 4, 5, 6}));

    recorder.calls.clear();
    VX_GLConvenienceDraw::drawStrokedRect(CGRectMake(1, 2, 10, 20));
    EXPECT_EQ(recorder.calls, (Calls{"enable(8074)", "vertex(2 1406 0)", "draw(2 0 4)", "disable(8074)"}));
    EXPECT_EQ(recorder.vertices, (std::vector<float>{1, 2, 11, 2, 11, 22, 1, 22}));

    for (bool pixels : {true, false}) {
        recorder.calls.clear();
        VX_GLConvenienceDraw::drawSolidRect(CGRectMake(1, 2, 10, 20), pixels);
        EXPECT_EQ(recorder.calls,
                  (Calls{"enable(8074)", "vertex(2 1406 0)", "enable(8078)", "texcoord(2 1406 0)",
                         "draw(5 0 4)", "disable(8074)", "disable(8078)"}));
        EXPECT_EQ(recorder.vertices, (std::vector<float>{11, 2, 1, 2, 11, 22, 1, 22}));
        EXPECT_EQ(recorder.texCoords,
                  pixels ? recorder.vertices : (std::vector<float>{1, 0, 0, 0, 1, 1, 0, 1}));
    }
}

TEST(ConvenienceDraw, SolidCircleCountsItsSegments) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    struct {
        float radius;
        int segments, used;
    } const rows[] = {{10, 0, 62},      {0.1f, 0, 2}, {1, -5, 6}, {1, 1, 2},
                      {1, 2, 2},        {5, 8, 8},    {-3, 0, 2}, {std::nanf(""), 0, 2},
                      {infinity, 0, 2}, {1e30f, 0, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.radius);
        ClientArrayRecorder recorder;
        VX_GLConvenienceDraw::drawSolidCircle({3, 4}, row.radius, row.segments);
        char draw[32];
        std::snprintf(draw, sizeof draw, "draw(6 0 %x)", row.used + 2);
        EXPECT_EQ(recorder.calls, (Calls{"enable(8074)", "vertex(2 1406 0)", draw, "disable(8074)"}));
        EXPECT_EQ(recorder.vertices[0], 3.0f);
        EXPECT_EQ(recorder.vertices[1], 4.0f);
    }
    ClientArrayRecorder recorder;
    VX_GLConvenienceDraw::drawSolidCircle({3, 4}, 100, 4);
    const float rim[] = {103, 4, 3, 104, -97, 4, 3, -96, 103, 4};
    for (int i = 0; i < 10; ++i)
        EXPECT_NEAR(recorder.vertices[2 + i], rim[i], 1e-3f) << i;
    EXPECT_LT(recorder.vertices[11], 4.0f - 1e-4f) << "the gap of the short constant";
}
