// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLVertex.h>

/// A vertex block with a flat list of 32-bit indices; the base of every generated shape. One thread at a
/// time, no GL.
class VX_EXPORT VX_GLMeshData {
public:
    VX_GLMeshData();
    /// A copy of `source`, its vertices, its indices and the four carried fields; `source` stays the
    /// caller's. Throws `std::bad_alloc` when memory for the indices runs out.
    explicit VX_GLMeshData(VX_GLMeshData* source);
    virtual ~VX_GLMeshData();
    VX_GLMeshData(const VX_GLMeshData&) = delete;
    VX_GLMeshData& operator=(const VX_GLMeshData&) = delete;

    /// Makes the vertex store if there is none and returns `VX_GLVertex::Allocate(format, count)` of it: the
    /// block, owned by the store, or null.
    void* AllocateVertex(int format, int count);

    /// Replaces the index list by a new one of `count` entries, which are not set, and returns it; it stays
    /// owned by the mesh. Throws `std::bad_alloc` for a negative count or when memory runs out; the mesh has
    /// no indices then.
    unsigned int* AllocateIndex(int count);

    /// Tangent frame of one triangle by its texture coordinates: unit vectors, made of rows of the frame's
    /// inverse. Triangles whose texture coordinates span no area (a determinant of at most 0.001) give
    /// tangent (1, 0, 0) and normal (0, 0, 1); collinear positions give values that are not finite.
    /// @param positions three positions
    /// @param uvs three texture coordinates
    /// @param[out] normal, tangent the two unit vectors
    static void FindInvTBN(glm::tvec3<float>* positions, glm::tvec2<float>* uvs, glm::tvec3<float>& normal,
                           glm::tvec3<float>& tangent);

    /// Gives the three corners of each triangle of an unindexed triangle list the normal of `FindInvTBN`.
    /// Formats 7 and 15 get normals; no format that has texture coordinates has room for a tangent. Does
    /// nothing for other formats and for a mesh with indices. Vertices behind the last whole triangle stay.
    void CalculateNormalTangent();

    /// Owned; null until the first `AllocateVertex`.
    VX_GLVertex* m_Vertex = nullptr;
    /// Entries of the index list.
    int m_IndexCount = 0;
    /// Owned, from `new[]`; null while there is none.
    unsigned int* m_Index = nullptr;

    /// Four fields for the host. The library copies them with the mesh and reads nothing from them.
    int m_CarriedIndex = -1;
    glm::tvec3<float> m_CarriedVector0{1.0f, 1.0f, 1.0f};
    glm::tvec3<float> m_CarriedVector1{0.0f, 0.0f, 0.0f};
    glm::tvec3<float> m_CarriedVector2{0.0f, 0.0f, 0.0f};
};
