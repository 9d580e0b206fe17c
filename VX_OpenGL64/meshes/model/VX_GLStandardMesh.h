// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/model/VX_GLStandardMaterial.h>
#include <VX_OpenGL64/meshes/model/VX_GLStandardMeshData.h>
#include <VX_OpenGL64/meshes/model/VX_GLStandardMeshs.h>

#include <vector>

/// A whole model: materials, meshes, and a tree of nodes that refer to the meshes by number. It owns all of
/// them; what the `Add...` operations return is there to be filled in. One thread at a time; materials with
/// textures must end with the context of those textures current.
class VX_EXPORT VX_GLStandardMesh {
public:
    VX_GLStandardMesh();
    /// As `FreeResources`.
    virtual ~VX_GLStandardMesh();
    VX_GLStandardMesh(const VX_GLStandardMesh&) = delete;
    VX_GLStandardMesh& operator=(const VX_GLStandardMesh&) = delete;

    /// Appends a new material and returns it, borrowed.
    VX_GLStandardMaterial* AddMaterial();
    /// Returns how many materials there are.
    int GetMaterialCount() const;
    /// Appends a new mesh and returns it, borrowed.
    VX_GLStandardMeshData* AddMesh();
    /// Returns how many meshes there are.
    int GetMeshCount() const;
    /// The root node, borrowed; made when it is first asked for.
    VX_GLStandardMeshs* GetRootMeshs();

    /// Destroys the materials, with the textures that they hold, which needs their context current.
    void ClearMaterials();
    /// Destroys the meshes. The numbers in the tree stay.
    void ClearMeshs();
    /// Destroys the root node, then the materials, then the meshes: the model is as new.
    void FreeResources();

    /// Owned, in the order of addition.
    std::vector<VX_GLStandardMaterial*> m_Materials;
    std::vector<VX_GLStandardMeshData*> m_Meshs;
    /// Owned; null until `GetRootMeshs`.
    VX_GLStandardMeshs* m_RootMeshs = nullptr;
};
