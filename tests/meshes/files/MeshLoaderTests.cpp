// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshBaseLoader.h>
#include <tests/meshes/Shapes.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace vx::test;

namespace {

/// Its mesh 1 has the positions and indices, and bytes of 0x11 for the rest; mesh 0 is null.
class Loaded : public VX_GLMeshBaseLoader {
public:
    Loaded(int format, const std::vector<Vec3>& positions, const std::vector<unsigned>& indices = {}) {
        m_Meshes = {nullptr, new VX_GLMeshData};
        VX_GLMeshData& mesh = *m_Meshes[1];
        mesh.AllocateVertex(format, static_cast<int>(positions.size()));
        m_Bytes = static_cast<char*>(mesh.m_Vertex->m_Data);
        std::fill_n(m_Bytes, positions.size() * mesh.m_Vertex->m_Stride, 0x11);
        for (std::size_t i = 0; i < positions.size(); ++i)
            at(static_cast<int>(i)).position() = positions[i];
        std::copy(indices.begin(), indices.end(), mesh.AllocateIndex(static_cast<int>(indices.size())));
    }
    At at(int i) const { return {*m_Meshes[1], i}; }
    /// Whether nothing but the first position was written.
    bool isUntouched() const {
        return std::all_of(m_Bytes + 12, m_Bytes + m_Meshes[1]->m_Vertex->m_Stride,
                           [](char c) { return c == 0x11; });
    }

private:
    char* m_Bytes;
};

} // namespace

TEST(VX_GLMeshBaseLoader, MakesNormalsThatPointAwayFromWhoSeesTheCornersCounterClockwise) {
    Vec3 a{1, 1, 1}, b{3, 1, 1}, c{1, 4, 1}, out;
    VX_GLMeshBaseLoader::CalcNormal(&a, &b, &c, &out);
    EXPECT_EQ(out, Vec3(0, 0, 1)) << "this one points at him";
    const std::vector<Vec3> corner = {{0, 0, 0}, {2, 0, 0}, {0, 3, 0}, {0, 0, 4}, {9, 9, 9}};
    for (const int format : kFormats) {
        // z for the first face, x for the second; the third uses vertex 1 twice and has no area. Three faces
        // are outside or cut off.
        Loaded loaded(format, corner, {0, 1, 2, 0, 2, 3, 1, 1, 2, 0, 1, 5, 5, 1, 0, 0, 1, 0xffffffffu, 0, 2});
        loaded.makeNormalVector(1);
        if (!(format & 2)) {
            EXPECT_TRUE(loaded.isUntouched());
            continue;
        }
        const Vec3 wanted[] = {{-0.5f, 0, -0.5f}, {0, 0, -1.0f / 3}, {-1.0f / 3, 0, -1.0f / 3}, {-1, 0, 0}};
        for (int i = 0; i < 4; ++i)
            expectNear(loaded.at(i).normal(), wanted[i]);
        EXPECT_TRUE(std::isnan(loaded.at(4).normal().x)) << "no face uses it";
    }
}

TEST(VX_GLMeshBaseLoader, MakesTextureCoordinatesFromNormals) {
    Vec2 offset{-1, -2}, scale{0.5f, 0.25f};
    for (const int format : kFormats) {
        Loaded loaded(format, {{0, 0, 0}});
        const bool hasBoth = (format & 6) == 6;
        if (hasBoth)
            loaded.at(0).normal() = {0, -0.5f, 5};
        loaded.makeTextureUVFromNorm(offset, scale, 1);
        EXPECT_TRUE(hasBoth ? loaded.at(0).uv() == Vec2(0.5f, 0.375f) : loaded.isUntouched()) << format;
    }
}

TEST(VX_GLMeshBaseLoader, FindsCentreAndRadiusAndScales) {
    // The centre is (2, 0, 1): distances of 3 from it, of 5 from the origin.
    Loaded pair(1, {{5, 0, 1}, {-1, 0, 1}, {2, 0, 1}});
    pair.calcRaiusCenter(1);
    EXPECT_EQ(Vec4(pair.m_Center, pair.m_Radius), Vec4(2, 0, 1, std::sqrt(26.0f)));
    pair.shiftToCenterScale(2, 1);
    EXPECT_EQ(Vec4(pair.m_Center, pair.m_Radius), Vec4(0, 0, 0, 3)) << "the distance before the scaling";
    expectNear(pair.at(0).position(), {2, 0, 0});
}

TEST(VX_GLMeshBaseLoader, LeavesMeshesThatAreNotThereAlone) {
    Loaded loaded(7, {});
    Vec2 any{1, 1};
    for (const int index : {-1, 0, 2, 1000}) {
        loaded.m_Radius = 5;
        loaded.makeNormalVector(index);
        loaded.makeTextureUVFromNorm(any, any, index);
        loaded.shiftToCenterScale(2, index);
        loaded.calcRaiusCenter(index);
        EXPECT_EQ(loaded.m_Radius, 0.0f);
    }
}
