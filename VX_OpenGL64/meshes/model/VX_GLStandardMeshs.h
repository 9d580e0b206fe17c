// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

#include <vector>

/// One node of a model's tree: a transform, the numbers of the meshes that it places, and its children, which
/// it owns. The numbers are positions in the model's mesh list; nothing checks them.
class VX_EXPORT VX_GLStandardMeshs {
public:
    VX_GLStandardMeshs();
    /// As `FreeResources`: depth first.
    ~VX_GLStandardMeshs();
    VX_GLStandardMeshs(const VX_GLStandardMeshs&) = delete;
    VX_GLStandardMeshs& operator=(const VX_GLStandardMeshs&) = delete;

    /// Appends the number of a mesh, which is not checked.
    void AddMeshIndex(int index);
    /// Empties the list of numbers.
    void ClearMeshIndex();
    /// Appends a new child and returns it, borrowed.
    VX_GLStandardMeshs* AddChildren();
    /// Destroys the children and what is below them.
    void ClearChildren();
    /// Empties the mesh numbers, then destroys the children. The transform stays.
    void FreeResources();

    /// The identity at first.
    glm::tmat4x4<float> m_Transform{1.0f};
    /// Positions in the model's list of meshes.
    std::vector<int> m_MeshIndex;
    /// Owned, in the order of addition.
    std::vector<VX_GLStandardMeshs*> m_Children;
};
