// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshBaseLoader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using Vec2 = glm::tvec2<float>;
using Vec3 = glm::tvec3<float>;

namespace {

class Loaded : public VX_GLMeshBaseLoader {
public:
    Loaded(int format, const std::vector<Vec3>& positions, const std::vector<unsigned>& indices = {}) {
        m_Meshes.push_back(nullptr);
        m_Meshes.push_back(new VX_GLMeshData);
        mesh().AllocateVertex(format, static_cast<int>(positions.size()));
        std::fill_n(static_cast<char*>(mesh().m_Vertex->m_Data), positions.size() * mesh().m_Vertex->m_Stride,
                    0x11);
        for (std::size_t i = 0; i < positions.size(); ++i)
            position(static_cast<int>(i)) = positions[i];
        std::copy(indices.begin(), indices.end(), mesh().AllocateIndex(static_cast<int>(indices.size())));
    }
    VX_GLMeshData& mesh() { return *m_Meshes[1]; }
    Vec3& position(int i) { return *mesh().m_Vertex->GetPosition(i); }
    Vec3& normal(int i) {
        return *VX_GLVertex::GetNormal(mesh().m_Vertex->m_Format, mesh().m_Vertex->Seek(i));
    }
    Vec2& uv(int i) { return *VX_GLVertex::GetUV(mesh().m_Vertex->m_Format, mesh().m_Vertex->Seek(i)); }
};

const std::vector<Vec3> corner = {{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {9, 9, 9}};

void expectNear(const Vec3& got, const Vec3& want) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(got[i], want[i], 1e-6f);
}

} // namespace

TEST(MeshLoader, NormalOfATrianglePointsAtWhoSeesItCounterClockwise) {
    Vec3 a{1, 1, 1}, b{3, 1, 1}, c{1, 4, 1}, out;
    VX_GLMeshBaseLoader::CalcNormal(&a, &b, &c, &out);
    EXPECT_EQ(out, Vec3(0, 0, 1));
    VX_GLMeshBaseLoader::CalcNormal(&a, &c, &b, &out);
    EXPECT_EQ(out, Vec3(0, 0, -1));
    VX_GLMeshBaseLoader::CalcNormal(&a, &a, &a, &out);
    EXPECT_EQ(out, Vec3(0, 0, 0));
}

TEST(MeshLoader, SmoothNormalsAreNegatedMeansOfTheFacesAround) {
    for (int format : {3, 7, 11, 15, 19}) {
        // z for the first face, x for the second; the third uses vertex 1 twice and has no area.
        Loaded loaded(format, corner, {0, 1, 2, 0, 2, 3, 1, 1, 2});
        loaded.makeNormalVector(1);
        expectNear(loaded.normal(0), {-0.5f, 0, -0.5f});
        expectNear(loaded.normal(1), {0, 0, -1.0f / 3});
        expectNear(loaded.normal(2), {-1.0f / 3, 0, -1.0f / 3});
        expectNear(loaded.normal(3), {-1, 0, 0});
        EXPECT_TRUE(std::isnan(loaded.normal(4).x)) << "no face uses it";
    }
    Loaded outside(7, corner, {0, 1, 5, 0, 1, 0xffffffffu, 0, 1, 2, 0, 2});
    outside.makeNormalVector(1);
    expectNear(outside.normal(0), {0, 0, -1});
    Loaded unindexed(7, corner);
    unindexed.makeNormalVector(1);
    EXPECT_TRUE(std::isnan(unindexed.normal(0).z));
    for (int format : {1, 5, 9, 13}) {
        Loaded without(format, {{1, 2, 3}}, {0, 0, 0});
        without.makeNormalVector(1);
        const auto* bytes = static_cast<const char*>(without.mesh().m_Vertex->m_Data);
        EXPECT_TRUE(std::all_of(bytes + 12, bytes + without.mesh().m_Vertex->m_Stride,
                                [](char c) { return c == 0x11; }));
    }
}

TEST(MeshLoader, TextureCoordinatesFromNormals) {
    Loaded loaded(15, {{0, 0, 0}, {1, 1, 1}});
    loaded.normal(0) = {-1, 1, 0};
    loaded.normal(1) = {0, 0.5f, 5};
    Vec2 offset{-1, -1}, scale{0.5f, 0.25f};
    loaded.makeTextureUVFromNorm(offset, scale, 1);
    EXPECT_EQ(loaded.uv(0), Vec2(0, 0.5f));
    EXPECT_EQ(loaded.uv(1), Vec2(0.5f, 0.375f));
    for (int format : {3, 5}) {
        Loaded without(format, {{1, 2, 3}});
        without.makeTextureUVFromNorm(offset, scale, 1);
        EXPECT_EQ(static_cast<const char*>(without.mesh().m_Vertex->m_Data)[12], 0x11);
    }
}

TEST(MeshLoader, CentreRadiusAndScale) {
    Loaded loaded(7, {{10, 0, 0}, {10, 0, 0}, {10, 0, 0}});
    loaded.calcRaiusCenter(1);
    EXPECT_EQ(loaded.m_Center, Vec3(10, 0, 0));
    EXPECT_EQ(loaded.m_Radius, 10.0f);
    loaded.shiftToCenterScale(2, 1);
    EXPECT_EQ(loaded.m_Radius, 0.0f);
    EXPECT_FALSE(std::isfinite(loaded.position(0).x));

    // The centre is (2, 0, 1): distances of 3 from it, of 5 from the origin.
    Loaded pair(1, {{5, 0, 1}, {-1, 0, 1}, {2, 0, 1}});
    pair.calcRaiusCenter(1);
    EXPECT_EQ(pair.m_Center, Vec3(2, 0, 1));
    EXPECT_FLOAT_EQ(pair.m_Radius, std::sqrt(26.0f));
    pair.shiftToCenterScale(2, 1);
    EXPECT_EQ(pair.m_Radius, 3.0f) << "the distance before the scaling";
    EXPECT_EQ(pair.m_Center, Vec3(0, 0, 0));
    expectNear(pair.position(0), {2, 0, 0});
    expectNear(pair.position(1), {-2, 0, 0});
    pair.shiftToCenterScale(1, 1);
    expectNear(pair.position(0), {1, 0, 0});
}

TEST(MeshLoader, MeshesThatAreNotThereAreLeftAlone) {
    Loaded loaded(7, {});
    Vec2 any{1, 1};
    for (int index : {-1, 0, 2, 1000}) {
        loaded.m_Radius = 5;
        loaded.makeNormalVector(index);
        loaded.makeTextureUVFromNorm(any, any, index);
        loaded.shiftToCenterScale(2, index);
        EXPECT_EQ(loaded.m_Radius, 5.0f);
        loaded.calcRaiusCenter(index);
        EXPECT_EQ(loaded.m_Radius, 0.0f);
        EXPECT_EQ(loaded.m_Center, Vec3(0, 0, 0));
    }
    loaded.makeNormalVector(1);
    loaded.makeTextureUVFromNorm(any, any, 1);
    loaded.calcRaiusCenter(1);
    EXPECT_TRUE(std::isnan(loaded.m_Center.x)) << "0 divided by a count of 0";
    loaded.m_Radius = 5;
    loaded.shiftToCenterScale(2, 1);
    EXPECT_EQ(loaded.m_Radius, 0.0f);
    EXPECT_EQ(loaded.m_Center, Vec3(0, 0, 0));
    loaded.freeAllMesh();
    EXPECT_TRUE(loaded.m_Meshes.empty());
    loaded.close();
}
