// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshBaseLoader.h>

#include <VX_OpenGL64/meshes/model/private/OwnedList.h>

#include <cmath>

namespace {

using Vec3 = glm::tvec3<float>;

float squaredLength(const Vec3& v) {
    return v.x * v.x + v.y * v.y + v.z * v.z;
}

/// The unit normal of each face around a vertex summed up, with the number of those faces.
using Accumulators = std::vector<glm::tvec4<float>>;

void addFace(VX_GLVertex& vertices, const unsigned int* corners, Accumulators& sums) {
    for (int i = 0; i < 3; ++i) {
        if (corners[i] >= sums.size())
            return;
    }
    Vec3 normal;
    VX_GLMeshBaseLoader::CalcNormal(vertices.GetPosition(static_cast<int>(corners[0])),
                                    vertices.GetPosition(static_cast<int>(corners[1])),
                                    vertices.GetPosition(static_cast<int>(corners[2])), &normal);
    for (int i = 0; i < 3; ++i)
        sums[corners[i]] += glm::tvec4<float>(normal.x, normal.y, normal.z, 1.0f);
}

} // namespace

VX_GLMeshBaseLoader::VX_GLMeshBaseLoader() = default;

VX_GLMeshBaseLoader::~VX_GLMeshBaseLoader() {
    delete m_Lexer;
    freeAllMesh();
}

void VX_GLMeshBaseLoader::close() {
    delete m_Lexer;
    m_Lexer = nullptr;
}

void VX_GLMeshBaseLoader::freeAllMesh() {
    vx::deleteAll(m_Meshes);
}

VX_GLMeshData* VX_GLMeshBaseLoader::meshAt(int meshIndex) const {
    const bool isInside = meshIndex >= 0 && static_cast<std::size_t>(meshIndex) < m_Meshes.size();
    return isInside ? m_Meshes[static_cast<std::size_t>(meshIndex)] : nullptr;
}

VX_GLVertex* VX_GLMeshBaseLoader::verticesAt(int meshIndex) const {
    const VX_GLMeshData* mesh = meshAt(meshIndex);
    return mesh ? mesh->m_Vertex : nullptr;
}

void VX_GLMeshBaseLoader::CalcNormal(glm::tvec3<float>* a, glm::tvec3<float>* b, glm::tvec3<float>* c,
                                     glm::tvec3<float>* out) {
    const Vec3 normal = glm::cross(*c - *b, *a - *b);
    const float length = std::sqrt(squaredLength(normal));
    *out = length == 0.0f ? normal : normal / length;
}

void VX_GLMeshBaseLoader::makeNormalVector(int meshIndex) {
    VX_GLVertex* vertices = verticesAt(meshIndex);
    if (!vertices || !vertices->m_Data || !VX_GLVertex::GetNormal(vertices->m_Format, vertices->m_Data))
        return;
    Accumulators sums(static_cast<std::size_t>(vertices->m_Count), glm::tvec4<float>(0.0f));
    const VX_GLMeshData& mesh = *meshAt(meshIndex);
    for (int i = 0; mesh.m_Index && i < mesh.m_IndexCount - 2; i += 3)
        addFace(*vertices, mesh.m_Index + i, sums);
    void* vertex = vertices->m_Data;
    for (const glm::tvec4<float>& sum : sums) {
        // Negated and not normalised: docs/kept-behaviour.md.
        const Vec3 normal = -(Vec3(sum.x, sum.y, sum.z) / sum.w);
        vertex = VX_GLVertex::SetNormal(vertices->m_Format, vertex, normal);
    }
}

void VX_GLMeshBaseLoader::makeTextureUVFromNorm(glm::tvec2<float>& offset, glm::tvec2<float>& scale,
                                                int meshIndex) {
    VX_GLVertex* vertices = verticesAt(meshIndex);
    if (!vertices || vertices->m_Count < 1)
        return;
    const int format = vertices->m_Format;
    void* vertex = vertices->m_Data;
    if (!VX_GLVertex::GetNormal(format, vertex) || !VX_GLVertex::GetUV(format, vertex))
        return;
    for (int i = 0; i < vertices->m_Count; ++i) {
        const Vec3& normal = *VX_GLVertex::GetNormal(format, vertex);
        const glm::tvec2<float> uv((normal.x - offset.x) * scale.x, (normal.y - offset.y) * scale.y);
        vertex = VX_GLVertex::SetUV(format, vertex, uv);
    }
}

void VX_GLMeshBaseLoader::calcRaiusCenter(int meshIndex) {
    m_Radius = 0.0f;
    m_Center = Vec3(0.0f);
    const VX_GLVertex* vertices = verticesAt(meshIndex);
    if (!vertices)
        return;
    Vec3 sum(0.0f);
    float largest = 0.0f;
    for (int i = 0; i < vertices->m_Count; ++i) {
        const Vec3& position = *vertices->GetPosition(i);
        // The root of the largest square is the largest root.
        if (const float squared = squaredLength(position); squared > largest)
            largest = squared;
        sum += position;
    }
    m_Radius = std::sqrt(largest);
    m_Center = sum / static_cast<float>(vertices->m_Count);
}

void VX_GLMeshBaseLoader::shiftToCenterScale(float scale, int meshIndex) {
    const VX_GLVertex* vertices = verticesAt(meshIndex);
    if (!vertices)
        return;
    float largest = 0.0f;
    for (int i = 0; i < vertices->m_Count; ++i) {
        Vec3& position = *vertices->GetPosition(i);
        position -= m_Center;
        if (const float squared = squaredLength(position); squared > largest)
            largest = squared;
    }
    m_Radius = std::sqrt(largest);
    m_Center = Vec3(0.0f);
    const float factor = scale / m_Radius;
    for (int i = 0; i < vertices->m_Count; ++i)
        *vertices->GetPosition(i) *= factor;
}
