// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>
#include <tests/support/LogCollector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using Vec2 = glm::tvec2<float>;
using Vec3 = glm::tvec3<float>;
using Vec4 = glm::tvec4<float>;

namespace {

/// The attributes of one vertex of a generated shape.
struct At {
    At(const VX_GLMeshData& mesh, int i) : vertex(mesh.m_Vertex->Seek(i)), format(mesh.m_Vertex->m_Format) {}
    Vec3 position() const { return *static_cast<Vec3*>(vertex); }
    Vec3 normal() const { return *VX_GLVertex::GetNormal(format, vertex); }
    Vec2 uv() const { return *VX_GLVertex::GetUV(format, vertex); }
    Vec4 diffuse() const { return *VX_GLVertex::GetDiffuse(format, vertex); }
    void* vertex;
    int format;
};

Vec3 corner(int triangle, int place) {
    const float* p = VX_GLGeometrySphere::vdata[VX_GLGeometrySphere::tindices[triangle][place]];
    return {p[0], p[1], p[2]};
}

void expectNear(const Vec3& got, const Vec3& want) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(got[i], want[i], 1e-5f);
}

/// Every corner on the sphere with the sphere's own normal, wound the way that the normals point.
void expectSphere(const VX_GLMeshData& mesh, float radius, float direction) {
    for (int i = 0; i < mesh.m_Vertex->m_Count; i += 3) {
        const Vec3 a = At(mesh, i).position(), b = At(mesh, i + 1).position(), c = At(mesh, i + 2).position();
        for (int k = i; k < i + 3; ++k) {
            ASSERT_NEAR(glm::length(At(mesh, k).position()), radius, 1e-6f);
            expectNear(At(mesh, k).normal() * radius * direction, At(mesh, k).position());
        }
        ASSERT_GT(glm::dot(glm::cross(b - a, c - a), At(mesh, i).normal()), 0.0f);
    }
}

} // namespace

TEST(Sphere, DepthZeroIsTheIcosahedronInTheOrderOfTheTable) {
    VX_GLGeometrySphere sphere;
    sphere.m_Subdivision = 0;
    sphere.m_Radius = 2.0f;
    for (bool outward : {true, false}) {
        sphere.m_Outward = outward;
        sphere.Generate(15);
        ASSERT_EQ(sphere.m_Vertex->m_Count, 60);
        for (int i = 0; i < 60; ++i) {
            const Vec3 p = corner(i / 3, outward ? 2 - i % 3 : i % 3);
            EXPECT_EQ(At(sphere, i).position(), p * 2.0f);
            EXPECT_EQ(At(sphere, i).normal(), outward ? p : -p);
            EXPECT_EQ(At(sphere, i).uv(), Vec2(p.x, p.y)) << "never negated";
            EXPECT_EQ(At(sphere, i).diffuse(), Vec4(1, 1, 1, 1));
        }
    }
    EXPECT_EQ(sphere.m_IndexCount, 0);
}

TEST(Sphere, SplitsAreSphericalAndFaceTheirSide) {
    VX_GLGeometrySphere sphere;
    EXPECT_EQ(sphere.m_Subdivision, 3);
    sphere.Generate(7);
    EXPECT_EQ(sphere.m_Vertex->m_Count, 3840);
    expectSphere(sphere, 0.5f, 1);
    sphere.m_Outward = false;
    void* block = sphere.m_Vertex->m_Data;
    sphere.Generate(7);
    EXPECT_EQ(sphere.m_Vertex->m_Data, block);
    expectSphere(sphere, 0.5f, -1);

    // Depth 1: (a, ab, ac), (b, bc, ab), (c, ac, bc), (ab, bc, ac).
    VX_GLGeometrySphere once;
    once.m_Subdivision = 1;
    once.m_Outward = false;
    once.m_Radius = 1;
    once.Generate(3);
    ASSERT_EQ(once.m_Vertex->m_Count, 240);
    const Vec3 a = corner(0, 0), b = corner(0, 1), c = corner(0, 2);
    const Vec3 ab = glm::normalize(a + b), ac = glm::normalize(a + c), bc = glm::normalize(b + c);
    const Vec3 order[] = {a, ab, ac, b, bc, ab, c, ac, bc, ab, bc, ac};
    for (int i = 0; i < 12; ++i)
        expectNear(At(once, i).position(), order[i]);
}

TEST(Sphere, EveryFormatOrNothing) {
    VX_GLGeometrySphere sphere;
    for (int format : {1, 3, 5, 7, 9, 11, 13, 15, 19}) {
        sphere.m_Subdivision = 1;
        sphere.Generate(format);
        EXPECT_EQ(sphere.m_Vertex->m_Count, 240) << format;
        EXPECT_NEAR(glm::length(At(sphere, 239).position()), 0.5f, 1e-6f) << format;
    }
    const Vec3 kept{7, 8, 9};
    VX_GLVertex::SetTangent(19, sphere.m_Vertex->Seek(239), kept);
    VX_GLVertex::SetTangent(19, sphere.m_Vertex->Seek(238), kept);
    sphere.Generate(19);
    EXPECT_EQ(*VX_GLVertex::GetTangent(19, sphere.m_Vertex->Seek(239)), kept);
    EXPECT_EQ(*VX_GLVertex::GetTangent(19, sphere.m_Vertex->Seek(238)), kept);
    sphere.Generate(2);
    EXPECT_EQ(sphere.m_Vertex->m_Data, nullptr);
    float p[3] = {1, 0, 0};
    EXPECT_EQ(sphere.drawtri(p, 2, p, p, p, 30, 1), p);
    for (int depth : {12, 15, 16, 40, 1000000}) {
        sphere.m_Subdivision = depth;
        sphere.Generate(7);
        EXPECT_EQ(sphere.m_Vertex->m_Data, nullptr) << depth;
    }
    // 15, 3 and no vertices, where 60 would be written.
    for (int depth : {-1, -2, -3, -1000000}) {
        VX_GLGeometrySphere small;
        small.m_Subdivision = depth;
        small.Generate(7);
        EXPECT_EQ(small.m_Vertex->m_Count, depth == -1 ? 15 : depth == -2 ? 3 : 0);
    }
}

TEST(UVSphere, FourDivisionsAreTwoBandsAndAJoin) {
    VX_GLGeometryUVSphere sphere;
    sphere.m_Divisions = 4;
    sphere.m_Radius = 1.0f;
    sphere.Generate(7);
    ASSERT_EQ(sphere.m_Vertex->m_Count, 23);
    // Rings at the poles and the equator; four quarters of a turn, from +x through +z.
    const Vec3 turn[] = {{1, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {0, 0, -1}, {1, 0, 0}};
    auto expectVertex = [&](int i, const Vec3& p, float u, float v) {
        SCOPED_TRACE(i);
        expectNear(At(sphere, i).position(), p);
        expectNear(At(sphere, i).normal(), p);
        EXPECT_NEAR(At(sphere, i).uv().x, u, 1e-6f);
        EXPECT_NEAR(At(sphere, i).uv().y, v, 1e-6f);
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
    // The strip turns counter-clockwise seen from outside.
    const Vec3 a = At(sphere, 0).position(), b = At(sphere, 1).position(), c = At(sphere, 3).position();
    EXPECT_GT(glm::dot(glm::cross(c - b, a - b), b + c), 0.0f);
}

TEST(UVSphere, AnOddNumberLeavesAnOpening) {
    VX_GLGeometryUVSphere sphere;
    sphere.Generate(3);
    ASSERT_EQ(sphere.m_Vertex->m_Count, 9);
    for (int i = 1; i < 9; i += 2)
        EXPECT_NEAR(At(sphere, i).position().y, 0.5f * std::sin(3.14159f / 6), 1e-5f) << "the uppermost ring";
}

TEST(UVSphere, ColoursChangeOneBandLate) {
    VX_GLGeometryUVSphere sphere;
    sphere.m_Divisions = 12;
    auto bands = [&](int size) {
        sphere.m_BandSize = size;
        sphere.Generate(9);
        std::string colours;
        for (int i = 0, vertex = 1; i < 6; ++i, vertex += 28)
            colours += At(sphere, vertex).diffuse() == sphere.m_BandColor[0] ? '0' : '1';
        return colours;
    };
    EXPECT_EQ(bands(0), "000000");
    EXPECT_EQ(bands(-1), "000000");
    EXPECT_EQ(bands(1), "001010");
    EXPECT_EQ(bands(2), "000110");
    EXPECT_EQ(sphere.m_BandColor[1], Vec4(0, 0, 0, 1));
}

TEST(UVSphere, SaysWhenItHasNothingToWrite) {
    vx::test::LogCollector log;
    VX_GLGeometryUVSphere sphere;
    int said = 0;
    for (int divisions : {1, 0, -1, -4, -2147483647}) {
        sphere.m_Divisions = divisions;
        sphere.Generate(7);
        EXPECT_EQ(sphere.m_Vertex->m_Data, nullptr);
        EXPECT_EQ(log.count("##"), ++said);
    }
    for (int divisions : {2, 3, 7, 64}) {
        sphere.m_Divisions = divisions;
        for (int format : {1, 3, 5, 7, 9, 11, 13, 15, 19, 2})
            sphere.Generate(format);
    }
    for (int divisions : {30000, 65536, 2147483647}) {
        sphere.m_Divisions = divisions;
        sphere.Generate(7);
        EXPECT_EQ(sphere.m_Vertex->m_Data, nullptr);
    }
    EXPECT_EQ(log.count(""), said) << "a refused format is not spoken of, and a written sphere is whole";
}
