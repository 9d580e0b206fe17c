// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using Shape = VX_GLGeometryPrimitive2D;
using Vec3 = glm::tvec3<float>;

TEST(VX_GLGeometryPrimitive2D, DotDonutWritesArcsWithJoins) {
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

TEST(VX_GLGeometryPrimitive2D, ArrowPointsToTheRight) {
    EXPECT_EQ(Shape::Arrow1(1, 2, 3, 4, nullptr), 21);
    Vec3 arrow[22];
    arrow[21] = Vec3(77.0f);
    EXPECT_EQ(Shape::Arrow1(2, 1, 0.5f, 0.5f, arrow), 0);
    EXPECT_EQ(arrow[21], Vec3(77.0f));
    // xs = 1 - 0.5, xb = 1 - 0.5 / 0.5, xa = 0 - 0.25 / 0.5.
    const Vec3 p[] = {{-1, -.25, 0}, {.5, -.25, 0}, {.5, .25, 0}, {-1, .25, 0}, {-.5, -.5, 0},
                      {0, -.5, 0},   {1, 0, 0},     {0, .5, 0},   {-.5, .5, 0}};
    const int order[] = {0, 1, 3, 1, 2, 3, 4, 5, 1, 5, 6, 1, 1, 6, 2, 2, 6, 7, 2, 7, 8};
    for (int i = 0; i < 21; ++i)
        EXPECT_EQ(arrow[i], p[order[i]]) << i;
}
