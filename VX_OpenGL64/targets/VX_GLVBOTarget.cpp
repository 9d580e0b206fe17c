// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOTarget.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

namespace {

template <unsigned int target>
void need(const char* operation) {
    vx::needContext(target == GL_ARRAY_BUFFER ? "VX_GLVBOVertex" : "VX_GLVBOIndex", operation);
}

} // namespace

template <unsigned int target>
void VX_GLVBOTarget<target>::BindBuffer() {
    need<target>("BindBuffer");
    glBindBuffer(target, m_Buffer);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::UnBindBuffer() {
    need<target>("UnBindBuffer");
    glBindBuffer(target, 0);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::Allocate(int size, unsigned int usage, void* data) {
    need<target>("Allocate");
    m_Size = size;
    glBufferData(target, size, data, usage);
}

template <unsigned int target>
void VX_GLVBOTarget<target>::Copy(int offset, int size, void* data) {
    need<target>("Copy");
    glBufferSubData(target, offset, size, data);
}

template <unsigned int target>
void* VX_GLVBOTarget<target>::Lock(unsigned int access) {
    need<target>("Lock");
    return glMapBuffer(target, access);
}

template <unsigned int target>
bool VX_GLVBOTarget<target>::Unlock() {
    need<target>("Unlock");
    return glUnmapBuffer(target);
}

template class VX_GLVBOTarget<GL_ARRAY_BUFFER>;
template class VX_GLVBOTarget<GL_ELEMENT_ARRAY_BUFFER>;
