// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>

#include <VX_OpenGL64/meshes/model/private/OwnedList.h>

VX_GLStandardMesh::VX_GLStandardMesh() = default;

VX_GLStandardMesh::~VX_GLStandardMesh() {
    FreeResources();
}

VX_GLStandardMaterial* VX_GLStandardMesh::AddMaterial() {
    return vx::appendNew(m_Materials);
}

int VX_GLStandardMesh::GetMaterialCount() const {
    return static_cast<int>(m_Materials.size());
}

VX_GLStandardMeshData* VX_GLStandardMesh::AddMesh() {
    return vx::appendNew(m_Meshs);
}

int VX_GLStandardMesh::GetMeshCount() const {
    return static_cast<int>(m_Meshs.size());
}

VX_GLStandardMeshs* VX_GLStandardMesh::GetRootMeshs() {
    if (!m_RootMeshs)
        m_RootMeshs = new VX_GLStandardMeshs;
    return m_RootMeshs;
}

void VX_GLStandardMesh::ClearMaterials() {
    vx::deleteAll(m_Materials);
}

void VX_GLStandardMesh::ClearMeshs() {
    vx::deleteAll(m_Meshs);
}

void VX_GLStandardMesh::FreeResources() {
    delete m_RootMeshs;
    m_RootMeshs = nullptr;
    ClearMaterials();
    ClearMeshs();
}
