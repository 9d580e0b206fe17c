// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOBase.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLVBOBase::VX_GLVBOBase() {
    VX_NEEDS_CONTEXT();
    glGenBuffers(1, &m_Buffer);
}

VX_GLVBOBase::~VX_GLVBOBase() {
    if (m_Buffer && vx::mayDelete("VX_GLVBOBase", m_Buffer))
        glDeleteBuffers(1, &m_Buffer);
}

void VX_GLVBOBase::end(const char* className) {
    if (m_Buffer && !vx::mayDelete(className, m_Buffer))
        m_Buffer = 0;
}
