// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>

#include <epoxy/gl.h>

VX_GLVBOVertex::~VX_GLVBOVertex() = default;

void VX_GLVBOVertex::BindBuffer() {
    glBindBuffer(GL_ARRAY_BUFFER, m_Buffer);
}

void VX_GLVBOVertex::UnBindBuffer() {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void VX_GLVBOVertex::Allocate(int size, unsigned int usage, void* data) {
    m_Size = size;
    glBufferData(GL_ARRAY_BUFFER, size, data, usage);
}

void VX_GLVBOVertex::Copy(int offset, int size, void* data) {
    glBufferSubData(GL_ARRAY_BUFFER, offset, size, data);
}

void* VX_GLVBOVertex::Lock(unsigned int access) {
    return glMapBuffer(GL_ARRAY_BUFFER, access);
}

bool VX_GLVBOVertex::Unlock() {
    return glUnmapBuffer(GL_ARRAY_BUFFER);
}
