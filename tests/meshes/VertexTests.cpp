// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLVertex.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

namespace {

struct Row {
    int format, stride, diffuse, normal, uv, tangent; // offsets in bytes, -1 where there is none
};

constexpr Row rows[] = {
    {1, 12, -1, -1, -1, -1},  {3, 24, -1, 12, -1, -1},  {5, 20, -1, -1, 12, -1},
    {7, 32, -1, 12, 24, -1},  {9, 28, 12, -1, -1, -1},  {11, 40, 12, 28, -1, -1},
    {13, 36, 12, -1, 28, -1}, {15, 48, 12, 28, 40, -1}, {19, 36, -1, 12, -1, 24},
};

void expectEmpty(const VX_GLVertex& vertices, int stride) {
    EXPECT_EQ(vertices.m_Data, nullptr);
    EXPECT_EQ(vertices.m_Format, -1);
    EXPECT_EQ(vertices.m_Count, 0);
    EXPECT_EQ(vertices.m_Stride, stride);
}

} // namespace

TEST(Vertex, EachFormatHasItsStrideAndItsAttributesAtTheirOffsets) {
    const glm::tvec4<float> diffuse{1, 2, 3, 4};
    const glm::tvec3<float> normal{5, 6, 7}, tangent{8, 9, 10};
    const glm::tvec2<float> uv{11, 12};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.format);
        VX_GLVertex vertices;
        auto* block = static_cast<char*>(vertices.Allocate(row.format, 2));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(vertices.m_Stride, row.stride);
        std::memset(block, 0, 2 * row.stride);
        auto check = [&](int offset, void* next, const void* got, const void* value, std::size_t size) {
            if (offset < 0) {
                EXPECT_EQ(next, block);
                EXPECT_EQ(got, nullptr);
                return;
            }
            EXPECT_EQ(next, block + row.stride);
            ASSERT_EQ(got, block + offset);
            EXPECT_EQ(std::memcmp(got, value, size), 0);
        };
        using V = VX_GLVertex;
        const int f = row.format;
        check(row.diffuse, V::SetDiffuse(f, block, diffuse), V::GetDiffuse(f, block), &diffuse, 16);
        check(row.normal, V::SetNormal(f, block, normal), V::GetNormal(f, block), &normal, 12);
        check(row.uv, V::SetUV(f, block, uv), V::GetUV(f, block), &uv, 8);
        check(row.tangent, V::SetTangent(f, block, tangent), V::GetTangent(f, block), &tangent, 12);
        for (int byte = row.stride; byte < 2 * row.stride; ++byte)
            ASSERT_EQ(block[byte], 0) << "a setter wrote behind its vertex";
        EXPECT_EQ(vertices.Seek(1), block + row.stride);
        EXPECT_EQ(static_cast<void*>(vertices.GetPosition(1)), block + row.stride);
    }
}

TEST(Vertex, ABumpVertexIsOfFormat19Only) {
    float block[9] = {};
    auto write = [&](int format) {
        return VX_GLVertex::SetBumpVertex(format, block, {1, 2, 3}, {9, 9, 9, 9}, {4, 5, 6}, {7, 8, 9},
                                          {9, 9});
    };
    EXPECT_EQ(write(15), block);
    EXPECT_EQ(block[0], 0.0f);
    EXPECT_EQ(write(19), block + 9);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(block[i], static_cast<float>(i + 1));
}

TEST(Vertex, KeepsALargeEnoughBlockOfTheSameFormat) {
    VX_GLVertex vertices;
    void* block = vertices.Allocate(7, 100);
    EXPECT_EQ(vertices.Allocate(7, 10), block);
    EXPECT_EQ(vertices.Allocate(7, -1), block);
    EXPECT_EQ(vertices.m_Count, 100);
    EXPECT_NE(vertices.Allocate(3, 10), nullptr);
    EXPECT_EQ(vertices.m_Count, 10);
    EXPECT_EQ(vertices.m_Stride, 24);
    EXPECT_NE(vertices.Allocate(3, 11), nullptr);
    EXPECT_EQ(vertices.m_Count, 11);
}

TEST(Vertex, RefusedFormatsAndImpossibleSizesLeaveItEmpty) {
    for (int format : {-1, 0, 2, 4, 6, 8, 16, 17, 18, 21, 23, 31, INT_MIN, INT_MAX}) {
        VX_GLVertex vertices;
        vertices.Allocate(7, 10);
        EXPECT_EQ(vertices.Allocate(format, 10), nullptr) << format;
        expectEmpty(vertices, 0);
    }
    // The low 32 bits of the size: negative, 0, 32 and a small block.
    for (int count : {-1, INT_MIN, 1 << 26, 1 << 27, (1 << 27) + 1, INT_MAX}) {
        VX_GLVertex vertices;
        EXPECT_EQ(vertices.Allocate(7, count), nullptr) << count;
        expectEmpty(vertices, 32);
    }
}

TEST(Vertex, ACopyHasABlockOfItsOwn) {
    VX_GLVertex source;
    VX_GLVertex copyOfEmpty(&source);
    expectEmpty(copyOfEmpty, 0);
    std::memset(source.Allocate(5, 3), 0x2a, 60);
    VX_GLVertex copy(&source);
    EXPECT_NE(copy.m_Data, source.m_Data);
    EXPECT_EQ(copy.m_Format, 5);
    EXPECT_EQ(copy.m_Count, 3);
    EXPECT_EQ(std::memcmp(copy.m_Data, source.m_Data, 60), 0);
}
