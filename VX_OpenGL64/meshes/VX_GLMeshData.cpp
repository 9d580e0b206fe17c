// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

#include <cmath>
#include <cstring>
#include <new>

namespace {

glm::tvec3<float> normalised(const glm::tvec3<float>& v) {
    return v * (1.0f / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z));
}

} // namespace

VX_GLMeshData::VX_GLMeshData() = default;

VX_GLMeshData::VX_GLMeshData(VX_GLMeshData* source)
    : m_CarriedIndex(source->m_CarriedIndex),
      m_CarriedVector0(source->m_CarriedVector0),
      m_CarriedVector1(source->m_CarriedVector1),
      m_CarriedVector2(source->m_CarriedVector2) {
    AllocateIndex(source->m_IndexCount);
    if (source->m_Index)
        std::memcpy(m_Index, source->m_Index, static_cast<std::size_t>(m_IndexCount) * sizeof(unsigned int));
    try {
        m_Vertex = new VX_GLVertex(source->m_Vertex);
    } catch (...) {
        delete[] m_Index;
        throw;
    }
}

VX_GLMeshData::~VX_GLMeshData() {
    delete m_Vertex;
    delete[] m_Index;
}

void* VX_GLMeshData::AllocateVertex(int format, int count) {
    if (!m_Vertex)
        m_Vertex = new VX_GLVertex;
    return m_Vertex->Allocate(format, count);
}

unsigned int* VX_GLMeshData::AllocateIndex(int count) {
    delete[] m_Index;
    m_Index = nullptr;
    m_IndexCount = 0;
    if (count < 0)
        throw std::bad_array_new_length(); // which not every compiler says by itself
    m_Index = new unsigned int[count];
    m_IndexCount = count;
    return m_Index;
}

void VX_GLMeshData::FindInvTBN(glm::tvec3<float>* positions, glm::tvec2<float>* uvs,
                               glm::tvec3<float>& normal, glm::tvec3<float>& tangent) {
    const float a = uvs[0].x - uvs[2].x;
    const float b = uvs[0].y - uvs[2].y;
    const float c = uvs[1].x - uvs[2].x;
    const float d = uvs[1].y - uvs[2].y;
    const glm::tvec3<float> e1 = positions[0] - positions[2];
    const glm::tvec3<float> e2 = positions[1] - positions[2];
    const float det = a * d - b * c;
    if (std::fabs(det) <= 0.001f) {
        tangent = {1.0f, 0.0f, 0.0f};
        normal = {0.0f, 0.0f, 1.0f};
        return;
    }
    const float s = 1.0f / det;
    const glm::tvec3<float> T = (d * e1 - b * e2) * s;
    const glm::tvec3<float> B = (a * e2 - c * e1) * s;
    const glm::tvec3<float> N = glm::cross(T, B);
    // Nothing guards the determinant: collinear positions give values that are not finite.
    const float k = 1.0f / (T.x * B.y * N.z - T.z * B.y * N.x + B.x * N.y * T.z - B.z * N.y * T.x +
                            N.x * T.y * B.z - N.z * T.y * B.x);
    const glm::tvec3<float> BN = glm::cross(B, N);
    const glm::tvec3<float> TN = glm::cross(T, N);
    const glm::tvec3<float> TB = glm::cross(T, B);
    tangent = normalised({k * BN.x, k * TN.x, k * TB.x});
    normal = normalised({k * BN.z, k * TN.z, k * TB.z});
}

void VX_GLMeshData::CalculateNormalTangent() {
    if (m_IndexCount >= 1 || !m_Vertex || !m_Vertex->m_Data)
        return;
    const int format = m_Vertex->m_Format;
    if (!VX_GLVertex::GetUV(format, m_Vertex->m_Data))
        return;
    for (int i = 0; i < m_Vertex->m_Count - 2; i += 3) {
        glm::tvec3<float> positions[3];
        glm::tvec2<float> uvs[3];
        for (int corner = 0; corner < 3; ++corner) {
            positions[corner] = *m_Vertex->GetPosition(i + corner);
            uvs[corner] = *VX_GLVertex::GetUV(format, m_Vertex->Seek(i + corner));
        }
        glm::tvec3<float> normal, tangent;
        FindInvTBN(positions, uvs, normal, tangent);
        for (int corner = 0; corner < 3; ++corner) {
            VX_GLVertex::SetNormal(format, m_Vertex->Seek(i + corner), normal);
            VX_GLVertex::SetTangent(format, m_Vertex->Seek(i + corner), tangent);
        }
    }
}
