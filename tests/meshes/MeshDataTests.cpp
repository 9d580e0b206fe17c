// SPDX-License-Identifier: MIT
#include <tests/meshes/Shapes.h>

#include <algorithm>
#include <cmath>
#include <new>

using namespace vx::test;

TEST(VX_GLMeshData, CopiesDeeply) {
    VX_GLMeshData mesh;
    EXPECT_EQ(mesh.m_CarriedIndex, -1);
    EXPECT_EQ(mesh.m_CarriedVector0, Vec3(1, 1, 1));
    VX_GLMeshData().CalculateNormalTangent(); // nothing to calculate
    mesh.AllocateIndex(2)[1] = 0xffffffffu;
    EXPECT_EQ(VX_GLMeshData(&mesh).m_Index[1], 0xffffffffu) << "without vertices";
    mesh.AllocateVertex(1, 1);
    At(mesh, 0).position() = {1, 2, 3};
    mesh.m_CarriedIndex = 4;
    mesh.m_CarriedVector0 = {2, 0, 0};
    mesh.m_CarriedVector1 = {0, 2, 0};
    mesh.m_CarriedVector2 = {0, 0, 2};
    const VX_GLMeshData copy(&mesh);
    EXPECT_NE(copy.m_Index, mesh.m_Index);
    EXPECT_EQ(copy.m_IndexCount, 2);
    EXPECT_NE(copy.m_Vertex, mesh.m_Vertex);
    EXPECT_EQ(At(copy, 0).position(), Vec3(1, 2, 3));
    EXPECT_EQ(copy.m_CarriedIndex, 4);
    EXPECT_EQ(copy.m_CarriedVector0, Vec3(2, 0, 0));
    EXPECT_EQ(copy.m_CarriedVector1, Vec3(0, 2, 0));
    EXPECT_EQ(copy.m_CarriedVector2, Vec3(0, 0, 2));
    EXPECT_THROW(mesh.AllocateIndex(-1), std::bad_alloc);
    EXPECT_EQ(mesh.m_Index, nullptr);
    EXPECT_EQ(mesh.m_IndexCount, 0);
    EXPECT_NE(mesh.AllocateIndex(0), nullptr);
}

TEST(VX_GLMeshData, FindsTangentFrames) {
    const struct {
        Vec3 second, third; // the first corner is the origin
        Vec2 uvs[3];
        Vec3 normal, tangent;
    } rows[] = {
        {{0, 1, 0}, {0, 0, 1}, {{.5, .5}, {.5, .5}, {.5, .5}}, {0, 0, 1}, {1, 0, 0}}, // no texture area
        // The determinant is the float 0.001 itself, then the next float above it, where T = (0, 0, -1000),
        // B = (0, 1, -1), N = (1000, 0, 0), B x N = (0, -1000, -1000) and T x N = (0, -1e6, 0).
        {{0, 1, 0}, {0, 0, 1}, {{0.001f, 0}, {0, 1}, {0, 0}}, {0, 0, 1}, {1, 0, 0}},
        {{0, 1, 0}, {0, 0, 1}, {{std::nextafter(0.001f, 1.0f), 0}, {0, 1}, {0, 0}}, {-1, 0, 0}, {0, 0, 1}},
        {{1, 0, 0}, {0, 1, 0}, {{0, 0}, {1, 0}, {0, 1}}, {0, 0, 1}, {1, 0, 0}},
        {{1, 0, 0}, {0, 1, 0}, {{0, 0}, {0, 1}, {1, 0}}, {0, 0, -1}, {0, -1, 0}}, // mirrored
        // T = y, B = z, N = x; B x N = y, T x N = -z, T x B = x.
        {{0, 1, 0}, {0, 0, 1}, {{0, 0}, {1, 0}, {0, 1}}, {0, -1, 0}, {0, 0, 1}},
        {{1, 0, 0}, {2, 0, 0}, {{0, 0}, {1, 0}, {0, 1}}, Vec3(NAN), Vec3(NAN)}, // in one line
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Vec3 positions[3] = {{0, 0, 0}, row.second, row.third}, normal, tangent;
        Vec2 uvs[3] = {row.uvs[0], row.uvs[1], row.uvs[2]};
        VX_GLMeshData::FindInvTBN(positions, uvs, normal, tangent);
        if (std::isnan(row.normal.x)) {
            EXPECT_FALSE(std::isfinite(normal.x));
            continue;
        }
        expectNear(normal, row.normal);
        expectNear(tangent, row.tangent);
    }
}

TEST(VX_GLMeshData, CalculatedNormalsReachOnlyWholeUnindexedTriangles) {
    for (const int format : kFormats) {
        VX_GLMeshData mesh;
        auto* bytes = static_cast<unsigned char*>(mesh.AllocateVertex(format, 5));
        std::fill_n(bytes, 5 * mesh.m_Vertex->m_Stride, 0x11);
        if (format != 7 && format != 15) {
            mesh.CalculateNormalTangent();
            EXPECT_EQ(std::count(bytes, bytes + 5 * mesh.m_Vertex->m_Stride, 0x11),
                      5 * mesh.m_Vertex->m_Stride);
            continue;
        }
        const Vec3 side[] = {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        for (int i = 0; i < 5; ++i) {
            At(mesh, i).position() = side[i % 3];
            At(mesh, i).uv() = {side[i % 3].y, side[i % 3].z};
            At(mesh, i).normal() = {9, 9, 9};
        }
        mesh.AllocateIndex(3);
        mesh.CalculateNormalTangent();
        EXPECT_EQ(At(mesh, 0).normal(), Vec3(9, 9, 9)) << "an indexed mesh stays";
        mesh.AllocateIndex(0);
        mesh.CalculateNormalTangent();
        for (int i = 0; i < 5; ++i) // no triangle is left for the last two
            expectNear(At(mesh, i).normal(), i < 3 ? Vec3(0, -1, 0) : Vec3(9, 9, 9));
    }
}
