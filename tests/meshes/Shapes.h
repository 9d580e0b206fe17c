// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

#include <gtest/gtest.h>

namespace vx::test {

using Vec2 = glm::vec2;
using Vec3 = glm::vec3;
using Vec4 = glm::vec4;

inline constexpr int kFormats[] = {1, 3, 5, 7, 9, 11, 13, 15, 19};

/// The attributes of one vertex of a mesh; only those that its format has.
struct At {
    At(const VX_GLMeshData& mesh, int i) : vertex(mesh.m_Vertex->Seek(i)), format(mesh.m_Vertex->m_Format) {}
    Vec3& position() const { return *static_cast<Vec3*>(vertex); }
    Vec3& normal() const { return *VX_GLVertex::GetNormal(format, vertex); }
    Vec2& uv() const { return *VX_GLVertex::GetUV(format, vertex); }
    Vec4& diffuse() const { return *VX_GLVertex::GetDiffuse(format, vertex); }
    Vec3& tangent() const { return *VX_GLVertex::GetTangent(format, vertex); }
    void* vertex;
    int format;
};

inline void expectNear(const Vec3& got, const Vec3& want, float most = 1e-5f) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(got[i], want[i], most) << "axis " << i;
}

} // namespace vx::test
