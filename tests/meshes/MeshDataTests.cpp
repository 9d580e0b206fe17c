// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <new>

using Vec2 = glm::tvec2<float>;
using Vec3 = glm::tvec3<float>;

namespace {

void expectNear(const Vec3& got, const Vec3& want) {
    EXPECT_NEAR(got.x, want.x, 1e-6f);
    EXPECT_NEAR(got.y, want.y, 1e-6f);
    EXPECT_NEAR(got.z, want.z, 1e-6f);
}

/// A triangle in the plane x = 0 whose texture axes run along y and z.
void fillSideTriangle(VX_GLMeshData& mesh, int first) {
    const Vec3 positions[] = {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const Vec2 uvs[] = {{0, 0}, {1, 0}, {0, 1}};
    for (int i = 0; i < 3; ++i) {
        *mesh.m_Vertex->GetPosition(first + i) = positions[i];
        VX_GLVertex::SetUV(mesh.m_Vertex->m_Format, mesh.m_Vertex->Seek(first + i), uvs[i]);
    }
}

Vec3 normalOf(VX_GLMeshData& mesh, int index) {
    return *VX_GLVertex::GetNormal(mesh.m_Vertex->m_Format, mesh.m_Vertex->Seek(index));
}

} // namespace

TEST(MeshData, StartsEmptyAndCopiesDeeply) {
    VX_GLMeshData mesh;
    EXPECT_EQ(mesh.m_Vertex, nullptr);
    EXPECT_EQ(mesh.m_Index, nullptr);
    EXPECT_EQ(mesh.m_IndexCount, 0);
    EXPECT_EQ(mesh.m_CarriedIndex, -1);
    EXPECT_EQ(mesh.m_CarriedVector0, Vec3(1, 1, 1));
    EXPECT_EQ(mesh.m_CarriedVector1, Vec3(0, 0, 0));
    EXPECT_EQ(mesh.m_CarriedVector2, Vec3(0, 0, 0));

    mesh.AllocateVertex(1, 1);
    *mesh.m_Vertex->GetPosition(0) = {1, 2, 3};
    unsigned int* indices = mesh.AllocateIndex(2);
    indices[0] = 7;
    indices[1] = 0xffffffffu;
    mesh.m_CarriedIndex = 4;
    mesh.m_CarriedVector0 = {2, 0, 0};
    mesh.m_CarriedVector1 = {0, 2, 0};
    mesh.m_CarriedVector2 = {0, 0, 2};
    VX_GLMeshData copy(&mesh);
    EXPECT_NE(copy.m_Index, mesh.m_Index);
    ASSERT_EQ(copy.m_IndexCount, 2);
    EXPECT_EQ(copy.m_Index[0], 7u);
    EXPECT_EQ(copy.m_Index[1], 0xffffffffu);
    EXPECT_NE(copy.m_Vertex, mesh.m_Vertex);
    EXPECT_EQ(*copy.m_Vertex->GetPosition(0), Vec3(1, 2, 3));
    EXPECT_EQ(copy.m_CarriedIndex, 4);
    EXPECT_EQ(copy.m_CarriedVector0, Vec3(2, 0, 0));
    EXPECT_EQ(copy.m_CarriedVector1, Vec3(0, 2, 0));
    EXPECT_EQ(copy.m_CarriedVector2, Vec3(0, 0, 2));

    VX_GLMeshData indicesOnly;
    indicesOnly.AllocateIndex(1)[0] = 5;
    VX_GLMeshData copyOfIndices(&indicesOnly);
    EXPECT_EQ(copyOfIndices.m_Index[0], 5u);
}

TEST(MeshData, AnImpossibleIndexCountThrowsAndLeavesNoList) {
    VX_GLMeshData mesh;
    mesh.AllocateIndex(3);
    EXPECT_THROW(mesh.AllocateIndex(-1), std::bad_alloc);
    EXPECT_EQ(mesh.m_Index, nullptr);
    EXPECT_EQ(mesh.m_IndexCount, 0);
    EXPECT_NE(mesh.AllocateIndex(0), nullptr);
}

TEST(MeshData, TangentFrames) {
    struct {
        const char* name;
        Vec3 positions[3];
        Vec2 uvs[3];
        Vec3 normal, tangent;
    } const rows[] = {
        {"no texture area",
         {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}},
         {{.5, .5}, {.5, .5}, {.5, .5}},
         {0, 0, 1},
         {1, 0, 0}},
        // The determinant is the float 0.001 itself, then the next float above it.
        {"at the limit",
         {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}},
         {{0.001f, 0}, {0, 1}, {0, 0}},
         {0, 0, 1},
         {1, 0, 0}},
        {"above the limit",
         {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}},
         {{std::nextafter(0.001f, 1.0f), 0}, {0, 1}, {0, 0}},
         // T = (0, 0, -1000), B = (0, 1, -1), N = (1000, 0, 0); B x N = (0, -1000, -1000), T x N = (0, -1e6,
         // 0).
         {-1, 0, 0},
         {0, 0, 1}},
        {"flat in xy", {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 0}, {1, 0}, {0, 1}}, {0, 0, 1}, {1, 0, 0}},
        // T = y, B = z, N = x; B x N = y, T x N = -z, T x B = x.
        {"flat in yz", {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 0}, {1, 0}, {0, 1}}, {0, -1, 0}, {0, 0, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Vec3 positions[3] = {row.positions[0], row.positions[1], row.positions[2]};
        Vec2 uvs[3] = {row.uvs[0], row.uvs[1], row.uvs[2]};
        Vec3 normal, tangent;
        VX_GLMeshData::FindInvTBN(positions, uvs, normal, tangent);
        expectNear(normal, row.normal);
        expectNear(tangent, row.tangent);
    }
    Vec3 line[3] = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}};
    Vec2 uvs[3] = {{0, 0}, {1, 0}, {0, 1}};
    Vec3 normal, tangent;
    VX_GLMeshData::FindInvTBN(line, uvs, normal, tangent);
    EXPECT_FALSE(std::isfinite(normal.x));
}

TEST(MeshData, CalculatedNormalsReachOnlyWholeUnindexedTriangles) {
    for (int format : {7, 15}) {
        VX_GLMeshData mesh;
        mesh.AllocateVertex(format, 5);
        fillSideTriangle(mesh, 0);
        for (int i = 0; i < 5; ++i)
            VX_GLVertex::SetNormal(format, mesh.m_Vertex->Seek(i), {9, 9, 9});
        mesh.AllocateIndex(3);
        mesh.CalculateNormalTangent();
        EXPECT_EQ(normalOf(mesh, 0), Vec3(9, 9, 9)) << "an indexed mesh stays";
        mesh.AllocateIndex(0);
        mesh.CalculateNormalTangent();
        for (int i = 0; i < 3; ++i)
            expectNear(normalOf(mesh, i), {0, -1, 0});
        EXPECT_EQ(normalOf(mesh, 3), Vec3(9, 9, 9)) << "no triangle is left for it";
    }
    VX_GLMeshData().CalculateNormalTangent();
    for (int format : {1, 3, 5, 9, 11, 13, 19}) {
        VX_GLMeshData mesh;
        auto* bytes = static_cast<unsigned char*>(mesh.AllocateVertex(format, 3));
        std::fill(bytes, bytes + 3 * mesh.m_Vertex->m_Stride, 0x11);
        mesh.CalculateNormalTangent();
        EXPECT_EQ(std::count(bytes, bytes + 3 * mesh.m_Vertex->m_Stride, 0x11), 3 * mesh.m_Vertex->m_Stride)
            << format;
    }
}
