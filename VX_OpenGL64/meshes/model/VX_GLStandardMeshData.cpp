// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMeshData.h>

#include <VX_OpenGL64/meshes/model/private/OwnedList.h>

VX_GLStandardFaceData::VX_GLStandardFaceData() = default;

VX_GLStandardFaceData::~VX_GLStandardFaceData() = default;

VX_GLStandardMeshData::VX_GLStandardMeshData() = default;

VX_GLStandardMeshData::~VX_GLStandardMeshData() {
    ClearFace();
}

VX_GLStandardFaceData* VX_GLStandardMeshData::AddFace() {
    return vx::appendNew(m_Faces);
}

int VX_GLStandardMeshData::GetFaceCount() const {
    return static_cast<int>(m_Faces.size());
}

void VX_GLStandardMeshData::ClearFace() {
    vx::deleteAll(m_Faces);
}

void VX_GLStandardMeshData::FreeResources() {
    ClearFace();
}
