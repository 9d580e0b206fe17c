// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>

#include <epoxy/gl.h>

VX_GLVBOIndex::~VX_GLVBOIndex() = default;

void VX_GLVBOIndex::BindBuffer() {
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_Buffer);
}

void VX_GLVBOIndex::UnBindBuffer() {
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void VX_GLVBOIndex::Allocate(int size, unsigned int usage, void* data) {
    m_Size = size;
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, size, data, usage);
}

void VX_GLVBOIndex::Copy(int offset, int size, void* data) {
    glBufferSubData(GL_ELEMENT_ARRAY_BUFFER, offset, size, data);
}

void* VX_GLVBOIndex::Lock(unsigned int access) {
    return glMapBuffer(GL_ELEMENT_ARRAY_BUFFER, access);
}

bool VX_GLVBOIndex::Unlock() {
    return glUnmapBuffer(GL_ELEMENT_ARRAY_BUFFER);
}
