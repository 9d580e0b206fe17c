// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOBase.h>

#include <epoxy/gl.h>

VX_GLVBOBase::VX_GLVBOBase() {
    glGenBuffers(1, &m_Buffer);
}

VX_GLVBOBase::~VX_GLVBOBase() {
    glDeleteBuffers(1, &m_Buffer);
}
