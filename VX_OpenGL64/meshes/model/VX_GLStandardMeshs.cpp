// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMeshs.h>

#include <VX_OpenGL64/meshes/model/private/OwnedList.h>

VX_GLStandardMeshs::VX_GLStandardMeshs() = default;

VX_GLStandardMeshs::~VX_GLStandardMeshs() {
    FreeResources();
}

void VX_GLStandardMeshs::AddMeshIndex(int index) {
    m_MeshIndex.push_back(index);
}

void VX_GLStandardMeshs::ClearMeshIndex() {
    m_MeshIndex.clear();
}

VX_GLStandardMeshs* VX_GLStandardMeshs::AddChildren() {
    return vx::appendNew(m_Children);
}

void VX_GLStandardMeshs::ClearChildren() {
    vx::deleteAll(m_Children);
}

void VX_GLStandardMeshs::FreeResources() {
    ClearMeshIndex();
    ClearChildren();
}
