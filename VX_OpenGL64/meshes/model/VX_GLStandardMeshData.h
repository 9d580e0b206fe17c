// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>

#include <vector>

/// One face of a model's mesh: vertices and indices with a tag.
class VX_EXPORT VX_GLStandardFaceData : public VX_GLMeshData {
public:
    VX_GLStandardFaceData();
    ~VX_GLStandardFaceData() override;

    /// For the host; nothing here reads it.
    int m_FaceTag = 9;
};

/// One mesh of a model; owns its faces.
class VX_EXPORT VX_GLStandardMeshData {
public:
    VX_GLStandardMeshData();
    /// As `ClearFace`.
    virtual ~VX_GLStandardMeshData();
    VX_GLStandardMeshData(const VX_GLStandardMeshData&) = delete;
    VX_GLStandardMeshData& operator=(const VX_GLStandardMeshData&) = delete;

    /// Appends a new face and returns it, borrowed.
    VX_GLStandardFaceData* AddFace();
    /// Returns how many faces there are.
    int GetFaceCount() const;
    /// Destroys the faces and empties the list.
    void ClearFace();
    /// The same.
    void FreeResources();

    /// For the host; nothing here reads it.
    int m_MeshTag = -1;
    /// Owned, in the order of addition.
    std::vector<VX_GLStandardFaceData*> m_Faces;
};
