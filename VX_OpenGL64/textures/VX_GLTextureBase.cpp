// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTextureBase.h>

#include <VX_OpenGL64/textures/private/TextureFromData.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <utility>

VX_GLTextureBase::~VX_GLTextureBase() {
    discardData();
}

bool VX_GLTextureBase::LoadFromPath(NSString*, bool) {
    return false;
}

void VX_GLTextureBase::discardData() {
    if (!m_Texture || !vx::mayDelete("VX_GLTextureBase", m_Texture))
        return;
    glDeleteTextures(1, &m_Texture);
    m_Texture = 0;
}

unsigned int VX_GLTextureBase::Create3DTexture(unsigned int internalFormat, unsigned int format,
                                               unsigned int type, int width, int height, int depth,
                                               const void* data) {
    VX_NEEDS_CONTEXT();
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_3D, name);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_3D, GL_TEXTURE_WRAP_R, GL_CLAMP);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage3D(GL_TEXTURE_3D, 0, static_cast<GLint>(internalFormat), width, height, depth, 0, format, type,
                 data);
    if (glGetError() != GL_NO_ERROR) {
        glDeleteTextures(1, &name);
        name = 0;
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    return name;
}

void VX_GLTextureBase::Attach(unsigned int target, unsigned int name, CGSize size, CGSize texCoordSize) {
    if (m_Texture != name)
        discardData();
    m_Target = target;
    m_Texture = name;
    m_Size = size;
    m_TexCoordSize = texCoordSize;
}

unsigned int VX_GLTextureBase::Detach() {
    return std::exchange(m_Texture, 0);
}

bool VX_GLTextureBase::ProtectedLoadFromData(unsigned int target, unsigned int internalFormat,
                                             unsigned int format, unsigned int type, int width, int height,
                                             const void* data) {
    VX_NEEDS_CONTEXT();
    discardData();
    m_Target = target;
    m_Size = m_TexCoordSize = CGSizeMake(width, height);
    m_Texture = vx::makeTextureFromData(target, internalFormat, format, type, width, height, data);
    return m_Texture != 0;
}
