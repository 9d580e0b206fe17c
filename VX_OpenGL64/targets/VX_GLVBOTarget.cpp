// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOTarget.h>

#include <epoxy/gl.h>

template <unsigned int target>
void VX_GLVBOTarget<target>::BindBuffer() {
    glBindBuffer(target, m_Buffer);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::UnBindBuffer() {
    glBindBuffer(target, 0);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::Allocate(int size, unsigned int usage, void* data) {
    m_Size = size;
    glBufferData(target, size, data, usage);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::Copy(int offset, int size, void* data) {
    glBufferSubData(target, offset, size, data);
}

template <unsigned int target>
void* VX_GLVBOTarget<target>::Lock(unsigned int access) {
    return glMapBuffer(target, access);
}

template <unsigned int target>
bool VX_GLVBOTarget<target>::Unlock() {
    return glUnmapBuffer(target);
}

template class VX_GLVBOTarget<GL_ARRAY_BUFFER>;
template class VX_GLVBOTarget<GL_ELEMENT_ARRAY_BUFFER>;
