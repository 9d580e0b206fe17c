// SPDX-License-Identifier: MIT
#include <tests/meshes/Shapes.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <new>
#include <string>

using namespace vx::test;

namespace {
const struct Row {
    int format, stride, diffuse, normal, uv, tangent; // offsets in bytes, -1 where there is none
} kRows[] = {
    {1, 12, -1, -1, -1, -1},  {3, 24, -1, 12, -1, -1},  {5, 20, -1, -1, 12, -1},
    {7, 32, -1, 12, 24, -1},  {9, 28, 12, -1, -1, -1},  {11, 40, 12, 28, -1, -1},
    {13, 36, 12, -1, 28, -1}, {15, 48, 12, 28, 40, -1}, {19, 36, -1, 12, -1, 24},
};

std::vector<int> stateOf(const VX_GLVertex& vertices) {
    return {vertices.m_Data != nullptr, vertices.m_Format, vertices.m_Count, vertices.m_Stride};
}

using Ints = std::vector<int>;

} // namespace

TEST(VX_GLVertex, EachFormatHasItsStrideAndItsAttributesAtTheirOffsets) {
    using V = VX_GLVertex;
    const glm::vec4 diffuse{1, 2, 3, 4};
    const glm::vec3 normal{5, 6, 7}, tangent{8, 9, 10};
    const glm::vec2 uv{11, 12};
    for (const auto& [format, stride, diffuseAt, normalAt, uvAt, tangentAt] : kRows) {
        SCOPED_TRACE(format);
        V vertices;
        auto* block = static_cast<char*>(vertices.Allocate(format, 2));
        ASSERT_EQ(static_cast<void*>(vertices.GetPosition(1)), block + stride);
        std::string wanted(std::size_t(2 * stride), '\0');
        std::memset(block, 0, wanted.size());
        const auto check = [&, stride = stride](int offset, const auto& value, void* next, void* found) {
            EXPECT_EQ(next, offset < 0 ? block : block + stride);
            EXPECT_EQ(found, offset < 0 ? nullptr : block + offset);
            if (offset >= 0)
                std::memcpy(&wanted[std::size_t(offset)], &value, sizeof value);
        };
        check(diffuseAt, diffuse, V::SetDiffuse(format, block, diffuse), V::GetDiffuse(format, block));
        check(normalAt, normal, V::SetNormal(format, block, normal), V::GetNormal(format, block));
        check(uvAt, uv, V::SetUV(format, block, uv), V::GetUV(format, block));
        check(tangentAt, tangent, V::SetTangent(format, block, tangent), V::GetTangent(format, block));
        EXPECT_EQ(std::string(block, wanted.size()), wanted);
        float bump[9] = {};
        V::SetBumpVertex(format, bump, {1, 2, 3}, {9, 9, 9, 9}, {4, 5, 6}, {7, 8, 9}, {9, 9});
        for (int i = 0; i < 9; ++i)
            EXPECT_EQ(bump[i], format == 19 ? float(i + 1) : 0.0f);
    }
}

TEST(VX_GLVertex, KeepsALargeEnoughBlockOfTheSameFormat) {
    VX_GLVertex vertices;
    void* block = std::memset(vertices.Allocate(7, 3), 0x2a, 96);
    for (const int count : {2, -1, 3})
        EXPECT_EQ(vertices.Allocate(7, count), block);
    EXPECT_EQ(std::string(static_cast<char*>(block), 96), std::string(96, 0x2a)) << "it is the very block";
    EXPECT_EQ(stateOf(vertices), (Ints{1, 7, 3, 32}));
    vertices.Allocate(3, 11);
    EXPECT_EQ(stateOf(vertices), (Ints{1, 3, 11, 24}));
}

TEST(VX_GLVertex, RefusedFormatsAndImpossibleSizesLeaveItEmpty) {
    std::vector<std::pair<int, int>> refused; // format and count
    for (const int format : {-1, 0, 2, 4, 6, 8, 16, 17, 18, 21, 23, 31, INT_MIN, INT_MAX})
        refused.emplace_back(format, 10);
    // The low 32 bits of the size: negative, 0, 32 and a small block.
    for (const int count : {INT_MIN, 1 << 26, 1 << 27, (1 << 27) + 1, INT_MAX})
        refused.emplace_back(7, count);
    for (const auto& [format, count] : refused) {
        VX_GLVertex vertices;
        vertices.Allocate(3, 10);
        EXPECT_EQ(vertices.Allocate(format, count), nullptr);
        EXPECT_EQ(stateOf(vertices), (Ints{0, -1, 0, format == 7 ? 32 : 0})) << format << ' ' << count;
    }
}

TEST(VX_GLMeshData, CopiesDeeply) {
    VX_GLMeshData mesh;
    mesh.AllocateIndex(2)[1] = 0xffffffffu;
    EXPECT_EQ(VX_GLMeshData(&mesh).m_Index[1], 0xffffffffu) << "without vertices";
    mesh.AllocateVertex(3, 2);
    At(mesh, 1).normal() = {1, 2, 3};
    mesh.m_CarriedIndex = 4;
    mesh.m_CarriedVector0 = {2, 0, 0};
    mesh.m_CarriedVector1 = {0, 2, 0};
    mesh.m_CarriedVector2 = {0, 0, 2};
    const VX_GLMeshData copy(&mesh);
    EXPECT_TRUE(copy.m_Index != mesh.m_Index && copy.m_Vertex->m_Data != mesh.m_Vertex->m_Data);
    EXPECT_EQ((Ints{copy.m_IndexCount, copy.m_CarriedIndex}), (Ints{2, 4}));
    EXPECT_EQ(stateOf(*copy.m_Vertex), (Ints{1, 3, 2, 24}));
    EXPECT_EQ(At(copy, 1).normal(), Vec3(1, 2, 3));
    EXPECT_EQ(glm::mat3(copy.m_CarriedVector0, copy.m_CarriedVector1, copy.m_CarriedVector2), glm::mat3(2));
    EXPECT_THROW(mesh.AllocateIndex(-1), std::bad_alloc);
    EXPECT_TRUE(!mesh.m_Index && mesh.m_IndexCount == 0);
}

TEST(VX_GLMeshData, FindsTangentFrames) {
    const struct {
        Vec3 second, third; // the first corner is the origin
        Vec2 uvs[3];
        Vec3 normal, tangent;
    } rows[] = {
        // The determinant is the float 0.001 itself, then the next float above it, where T = (0, 0, -1000),
        // B = (0, 1, -1), N = (1000, 0, 0), B x N = (0, -1000, -1000) and T x N = (0, -1e6, 0).
        {{0, 1, 0}, {0, 0, 1}, {{0.001f, 0}, {0, 1}, {0, 0}}, {0, 0, 1}, {1, 0, 0}},
        {{0, 1, 0}, {0, 0, 1}, {{std::nextafter(0.001f, 1.0f), 0}, {0, 1}, {0, 0}}, {-1, 0, 0}, {0, 0, 1}},
        {{1, 0, 0}, {0, 1, 0}, {{0, 0}, {0, 1}, {1, 0}}, {0, 0, -1}, {0, -1, 0}}, // mirrored
        // T = y, B = z, N = x; B x N = y, T x N = -z, T x B = x.
        {{0, 1, 0}, {0, 0, 1}, {{0, 0}, {1, 0}, {0, 1}}, {0, -1, 0}, {0, 0, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Vec3 positions[3] = {{0, 0, 0}, row.second, row.third}, normal, tangent;
        Vec2 uvs[3] = {row.uvs[0], row.uvs[1], row.uvs[2]};
        VX_GLMeshData::FindInvTBN(positions, uvs, normal, tangent);
        expectNear(normal, row.normal);
        expectNear(tangent, row.tangent);
    }
}

TEST(VX_GLMeshData, CalculatedNormalsReachOnlyWholeUnindexedTriangles) {
    VX_GLMeshData().CalculateNormalTangent(); // nothing to calculate
    for (const int format : {11, 7, 15}) {    // the first has no texture coordinate
        VX_GLMeshData mesh;
        mesh.AllocateVertex(format, 5);
        const Vec3 side[] = {{0, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        for (int i = 0; i < 5; ++i) {
            At(mesh, i).position() = side[i % 3];
            VX_GLVertex::SetUV(format, mesh.m_Vertex->Seek(i), {side[i % 3].y, side[i % 3].z});
            At(mesh, i).normal() = {9, 9, 9};
        }
        mesh.AllocateIndex(3);
        mesh.CalculateNormalTangent();
        EXPECT_EQ(At(mesh, 0).normal(), Vec3(9, 9, 9)) << "an indexed mesh stays";
        mesh.AllocateIndex(0);
        mesh.CalculateNormalTangent();
        for (int i = 0; i < 5; ++i) // no triangle is left for the last two
            expectNear(At(mesh, i).normal(), i < 3 && format != 11 ? Vec3(0, -1, 0) : Vec3(9, 9, 9));
    }
}
