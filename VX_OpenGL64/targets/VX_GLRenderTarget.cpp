// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>

#include <VX_OpenGL64/targets/private/DepthAttachment.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

namespace {

// A quad between x = left and x = right over the whole height, with texture coordinates from 0 to (s, t).
void drawQuad(float left, float right, float height, float s, float t) {
    glBegin(GL_QUADS);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(left, 0.0f);
    glTexCoord2f(s, 0.0f);
    glVertex2f(right, 0.0f);
    glTexCoord2f(s, t);
    glVertex2f(right, height);
    glTexCoord2f(0.0f, t);
    glVertex2f(left, height);
    glEnd();
}

} // namespace

VX_GLRenderTarget::~VX_GLRenderTarget() {
    VX_GLRenderTarget::FreeTextures();
}

void VX_GLRenderTarget::FreeTextures() {
    const bool isEmpty = m_Textures.empty() && !m_DepthBuffer && !m_FrameBuffer;
    if (isEmpty || !vx::mayDelete("VX_GLRenderTarget", m_FrameBuffer))
        return;
    for (const unsigned int& texture : m_Textures)
        glDeleteTextures(1, &texture);
    m_Textures.clear();
    // A depth texture goes this way too, and so stays alive: docs/kept-behaviour.md. Its name may be that of
    // another target's renderbuffer.
    if (m_DepthBuffer) {
        if (!m_DepthIsTexture || !glIsRenderbufferEXT(m_DepthBuffer))
            glDeleteRenderbuffersEXT(1, &m_DepthBuffer);
        m_DepthBuffer = 0;
        m_DepthIsTexture = false;
    }
    if (m_FrameBuffer) {
        glDeleteFramebuffersEXT(1, &m_FrameBuffer);
        m_FrameBuffer = 0;
    }
}

bool VX_GLRenderTarget::SetResolution(int width, int height) {
    if (width == m_Width && height == m_Height)
        return false;
    FreeTextures();
    m_Width = width;
    m_Height = height;
    return true;
}

unsigned int VX_GLRenderTarget::CreateFrameBuffer() {
    VX_NEEDS_CONTEXT();
    return createFrameBuffer(vx::attachDepthRenderbuffer);
}

unsigned int VX_GLRenderTarget::CreateFrameBufferDepthTexture2D() {
    VX_NEEDS_CONTEXT();
    return createFrameBuffer(vx::attachDepthTexture2D);
}

unsigned int VX_GLRenderTarget::createFrameBuffer(unsigned int (*attachDepth)(int width, int height)) {
    FreeTextures();
    glGenFramebuffersEXT(1, &m_FrameBuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_FrameBuffer);
    GLenum status = GL_FRAMEBUFFER_COMPLETE_EXT;
    if (m_UseDepth) {
        m_DepthIsTexture = attachDepth == vx::attachDepthTexture2D;
        m_DepthBuffer = attachDepth(m_Width, m_Height);
        status = glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
    }
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    return status;
}

unsigned int VX_GLRenderTarget::AddTextureBuffer(unsigned int internalFormat, unsigned int type, int width,
                                                 int height) {
    VX_NEEDS_CONTEXT();
    return addTexture(GL_TEXTURE_RECTANGLE_ARB, "Can't allocate TextureBuffer: AddTextureBuffer",
                      internalFormat, type, width, height);
}

unsigned int VX_GLRenderTarget::AddTexture2DBuffer(unsigned int internalFormat, unsigned int type, int width,
                                                   int height) {
    VX_NEEDS_CONTEXT();
    return addTexture(GL_TEXTURE_2D, "Can't allocate AddTexture2DBuffer", internalFormat, type, width,
                      height);
}

unsigned int VX_GLRenderTarget::addTexture(unsigned int target, const char* failure,
                                           unsigned int internalFormat, unsigned int type, int width,
                                           int height) {
    if (!m_FrameBuffer)
        return 0;
    if (width < 0)
        width = m_Width;
    if (height < 0)
        height = m_Height;

    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_FrameBuffer);
    GLuint name = 0;
    glGenTextures(1, &name);
    glEnable(target);
    glBindTexture(target, name);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(target, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(target, 0, static_cast<GLint>(internalFormat), width, height, 0, GL_RGBA, type, nullptr);
    const auto attachment = static_cast<GLenum>(GL_COLOR_ATTACHMENT0_EXT + m_Textures.size());
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, attachment, target, name, 0);
    const GLenum status = glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);

    if (status != GL_FRAMEBUFFER_COMPLETE_EXT) {
        NSLog("%s", failure);
        glDeleteTextures(1, &name);
        name = 0;
    }
    m_Textures.push_back(name); // a 0 too: later indices go on matching the attachment points
    glDisable(target);
    return name;
}

void VX_GLRenderTarget::Bind(int index) {
    VX_NEEDS_CONTEXT();
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_FrameBuffer);
    glDrawBuffer(GL_COLOR_ATTACHMENT0_EXT + static_cast<GLenum>(index));
    glViewport(0, 0, m_Width, m_Height);
}

void VX_GLRenderTarget::Binds(int count, unsigned int* buffers) {
    VX_NEEDS_CONTEXT();
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_FrameBuffer);
    glDrawBuffers(count, buffers);
    glViewport(0, 0, m_Width, m_Height);
}

void VX_GLRenderTarget::Unbind() {
    VX_NEEDS_CONTEXT();
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    glDrawBuffer(GL_BACK);
}

void VX_GLRenderTarget::SetDefaultProjection() {
    VX_NEEDS_CONTEXT();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, m_Width, 0.0, m_Height, -1.0, 1.0);
}

void VX_GLRenderTarget::Quads() {
    VX_NEEDS_CONTEXT();
    const auto width = static_cast<float>(m_Width);
    const auto height = static_cast<float>(m_Height);
    drawQuad(0.0f, width, height, width, height);
}

void VX_GLRenderTarget::QuadsDEBUG() {
    VX_NEEDS_CONTEXT();
    const auto height = static_cast<float>(m_Height);
    drawQuad(10.0f, static_cast<float>(m_Width - 10), height, static_cast<float>(m_Width), height);
}

void VX_GLRenderTarget::QuadsNorm() {
    VX_NEEDS_CONTEXT();
    drawQuad(0.0f, static_cast<float>(m_Width), static_cast<float>(m_Height), 1.0f, 1.0f);
}

unsigned int VX_GLRenderTarget::textureAt(int index) const {
    const auto place = static_cast<std::size_t>(index);
    return place < m_Textures.size() ? m_Textures[place] : 0;
}

void VX_GLRenderTarget::DrawFullScreen(int index) {
    VX_NEEDS_CONTEXT();
    glEnable(GL_TEXTURE_RECTANGLE_ARB);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_RECTANGLE_ARB, textureAt(index));
    Quads();
    glDisable(GL_TEXTURE_RECTANGLE_ARB);
}

void VX_GLRenderTarget::DrawFullScreen2D(int index) {
    VX_NEEDS_CONTEXT();
    glEnable(GL_TEXTURE_2D);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, textureAt(index));
    QuadsNorm();
    glDisable(GL_TEXTURE_2D);
}
