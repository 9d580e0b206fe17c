// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>

#include <VX_OpenGL64/targets/private/DepthAttachment.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr GLenum colorAttachment(int index) {
    return GL_COLOR_ATTACHMENT0_EXT + static_cast<GLenum>(index);
}

} // namespace

VX_GLMultiSampleRenderTarget::VX_GLMultiSampleRenderTarget() {
    AllocateResolveCount(1);
}

VX_GLMultiSampleRenderTarget::~VX_GLMultiSampleRenderTarget() {
    VX_GLMultiSampleRenderTarget::FreeTextures();
    if (!holdsObjects())
        return;
    // They stay, and the log has said so once.
    m_Textures.clear();
    m_DepthBuffer = m_FrameBuffer = 0;
}

void VX_GLMultiSampleRenderTarget::AllocateResolveCount(int count) {
    delete[] std::exchange(m_ResolveTextures, nullptr);
    delete[] std::exchange(m_ColorRenderBuffers, nullptr);
    m_ResolveCount = std::min(count, 0); // what is left of it when an allocation throws
    if (count < 0)
        throw std::bad_array_new_length(); // which not every compiler says by itself
    m_ResolveTextures = new unsigned int[static_cast<std::size_t>(count)]();
    m_ColorRenderBuffers = new unsigned int[static_cast<std::size_t>(count)]();
    m_ResolveCount = count;
}

void VX_GLMultiSampleRenderTarget::SetTextureFormat(unsigned int internalFormat, unsigned int type) {
    m_TextureInternalFormat = internalFormat;
    m_TextureType = type;
}

bool VX_GLMultiSampleRenderTarget::holdsObjects() const {
    const auto isName = [](unsigned int name) { return name != 0; };
    const int count = std::max(m_ResolveCount, 0);
    return m_FrameBuffer || m_DepthBuffer || m_ResolveFrameBuffer || m_ResolveDepthTexture ||
           !m_Textures.empty() || std::any_of(m_ResolveTextures, m_ResolveTextures + count, isName) ||
           std::any_of(m_ColorRenderBuffers, m_ColorRenderBuffers + count, isName);
}

void VX_GLMultiSampleRenderTarget::FreeTextures() {
    if (!holdsObjects() || !vx::mayDelete("VX_GLMultiSampleRenderTarget", m_FrameBuffer))
        return;
    if (m_ResolveCount > 0) {
        glDeleteTextures(m_ResolveCount, m_ResolveTextures);
        std::fill_n(m_ResolveTextures, m_ResolveCount, 0u);
    }
    if (m_ResolveDepthTexture)
        glDeleteTextures(1, &m_ResolveDepthTexture);
    m_ResolveDepthTexture = 0;
    if (m_ResolveFrameBuffer)
        glDeleteFramebuffersEXT(1, &m_ResolveFrameBuffer);
    m_ResolveFrameBuffer = 0;
    if (m_ResolveCount > 0) {
        glDeleteRenderbuffersEXT(m_ResolveCount, m_ColorRenderBuffers);
        std::fill_n(m_ColorRenderBuffers, m_ResolveCount, 0u);
    }
    VX_GLRenderTarget::FreeTextures();
}

unsigned int VX_GLMultiSampleRenderTarget::CreateFrameBuffer() {
    VX_NEEDS_CONTEXT();
    FreeTextures();
    makeResolveFrameBuffer();
    makeSampledFrameBuffer();
    const GLenum status = glCheckFramebufferStatusEXT(GL_FRAMEBUFFER_EXT);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    if (status != GL_FRAMEBUFFER_COMPLETE_EXT)
        NSLog("Failed: VX_GLMultiSampleRenderTarget::CreateFrameBuffer : %x", status);
    return status;
}

void VX_GLMultiSampleRenderTarget::makeResolveFrameBuffer() {
    glGenFramebuffersEXT(1, &m_ResolveFrameBuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_ResolveFrameBuffer);
    glGenTextures(m_ResolveCount, m_ResolveTextures);
    for (int i = 0; i < m_ResolveCount; ++i)
        attachResolveTexture(i);
    if (m_UseDepth)
        m_ResolveDepthTexture = vx::attachDepthTexture2D(m_Width, m_Height);
}

void VX_GLMultiSampleRenderTarget::attachResolveTexture(int index) {
    glBindTexture(GL_TEXTURE_2D, m_ResolveTextures[index]);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                    m_GenerateMipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(m_TextureInternalFormat), m_Width, m_Height, 0, GL_RGBA,
                 m_TextureType, nullptr);
    if (m_GenerateMipmap)
        glGenerateMipmapEXT(GL_TEXTURE_2D);
    glFramebufferTexture2DEXT(GL_FRAMEBUFFER_EXT, colorAttachment(index), GL_TEXTURE_2D,
                              m_ResolveTextures[index], 0);
}

void VX_GLMultiSampleRenderTarget::makeSampledFrameBuffer() {
    glGenFramebuffersEXT(1, &m_FrameBuffer);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, m_FrameBuffer);
    glGenRenderbuffersEXT(m_ResolveCount, m_ColorRenderBuffers);
    // Each kind has the other's words; hosts look for them as they are.
    for (int i = 0; i < m_ResolveCount; ++i)
        makeSamples(m_ColorRenderBuffers[i], m_TextureInternalFormat, colorAttachment(i),
                    "Failed: GL_RENDERBUFFER_SAMPLES_EXT[ query < DepthSamples ]");
    if (m_UseDepth) {
        glGenRenderbuffersEXT(1, &m_DepthBuffer);
        makeSamples(m_DepthBuffer, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT_EXT,
                    "Failed: GL_RENDERBUFFER_SAMPLES_EXT");
    }
}

void VX_GLMultiSampleRenderTarget::makeSamples(unsigned int renderBuffer, unsigned int format,
                                               unsigned int attachment, const char* shortOfSamples) {
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, renderBuffer);
    glRenderbufferStorageMultisampleEXT(GL_RENDERBUFFER_EXT, m_DepthSamples, format, m_Width, m_Height);
    GLint granted = 0;
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_SAMPLES_EXT, &granted);
    if (granted < m_DepthSamples)
        NSLog("%s", shortOfSamples);
    glFramebufferRenderbufferEXT(GL_FRAMEBUFFER_EXT, attachment, GL_RENDERBUFFER_EXT, renderBuffer);
}

void VX_GLMultiSampleRenderTarget::Copy(int index) {
    VX_NEEDS_CONTEXT();
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, m_FrameBuffer);
    glReadBuffer(colorAttachment(index));
    glBindFramebufferEXT(GL_DRAW_FRAMEBUFFER_EXT, m_ResolveFrameBuffer);
    glDrawBuffer(colorAttachment(index));
    glBlitFramebufferEXT(0, 0, m_Width, m_Height, 0, 0, m_Width, m_Height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    if (!m_GenerateMipmap)
        return;
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, resolveTexture(index));
    glGenerateMipmapEXT(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
}

void VX_GLMultiSampleRenderTarget::CopyDepth() {
    VX_NEEDS_CONTEXT();
    glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, m_FrameBuffer);
    glBindFramebufferEXT(GL_DRAW_FRAMEBUFFER_EXT, m_ResolveFrameBuffer);
    glBlitFramebufferEXT(0, 0, m_Width, m_Height, 0, 0, m_Width, m_Height, GL_DEPTH_BUFFER_BIT, GL_NEAREST);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
}

unsigned int VX_GLMultiSampleRenderTarget::resolveTexture(int index) const {
    return index >= 0 && index < m_ResolveCount ? m_ResolveTextures[index] : 0;
}

void VX_GLMultiSampleRenderTarget::DrawFullScreenMSAA() {
    VX_NEEDS_CONTEXT();
    glEnable(GL_TEXTURE_2D);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, resolveTexture(0));
    QuadsNorm();
    glDisable(GL_TEXTURE_2D);
}
