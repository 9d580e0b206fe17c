// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/private/ReadSource.h>

#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>

#include <epoxy/gl.h>

#include <cstddef>
#include <iterator>

namespace vx {

ReadSource::ReadSource() {
    bind(0);
    GLboolean hasBack = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &hasBack);
    glReadBuffer(hasBack ? GL_BACK : GL_FRONT);
}

ReadSource::ReadSource(const VX_GLRenderTarget& target, int index) {
    bind(target.m_FrameBuffer);
    glReadBuffer(GL_COLOR_ATTACHMENT0_EXT + static_cast<GLenum>(index));
}

// For reading and drawing both, so that GL tells of the buffers of this one.
void ReadSource::bind(unsigned framebuffer) {
    glGetIntegerv(GL_FRAMEBUFFER_BINDING_EXT, &m_DrawFrameBuffer);
    m_ReadFrameBuffer = m_DrawFrameBuffer;
    if (currentGLCapabilities().framebufferBlit)
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING_EXT, &m_ReadFrameBuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, framebuffer);
    glGetIntegerv(GL_READ_BUFFER, &m_Buffer);
}

ReadSource::~ReadSource() {
    glReadBuffer(static_cast<GLenum>(m_Buffer));
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, static_cast<GLuint>(m_DrawFrameBuffer));
    if (m_ReadFrameBuffer != m_DrawFrameBuffer)
        glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, static_cast<GLuint>(m_ReadFrameBuffer));
}

bool ReadSource::isThere(const VX_GLRenderTarget* target, int index) {
    return target && target->m_FrameBuffer && index >= 0 && index < std::ssize(target->m_Textures) &&
           target->m_Textures[static_cast<std::size_t>(index)];
}

} // namespace vx
