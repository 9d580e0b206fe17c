// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture.h>

#include <VX_OpenGL64/textures/files/VX_GLTextureLoader.h>
#include <VX_OpenGL64/textures/private/TextureFromData.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <utility>

VX_GLTexture::~VX_GLTexture() {
    discardData();
}

void VX_GLTexture::discardData() {
    if (m_Texture && vx::mayDelete("VX_GLTexture", m_Texture)) {
        glDeleteTextures(1, &m_Texture);
        m_Texture = 0;
    }
    delete m_Loader;
    m_Loader = nullptr;
    m_Mipmaped = false;
}

VX_GLTextureLoader& VX_GLTexture::newLoader() {
    discardData();
    m_Loader = new VX_GLTextureLoader;
    return *m_Loader;
}

bool VX_GLTexture::load2DTextureFromPath(const char* path) {
    VX_NEEDS_CONTEXT();
    m_Texture = newLoader().load2DTextureFromPath(path, false);
    m_Loader->freeImage();
    m_Mipmaped = m_Rectangle = false;
    return m_Texture != 0;
}

bool VX_GLTexture::loadRectangleExtTextureFromPath(const char* path) {
    VX_NEEDS_CONTEXT();
    m_Texture = newLoader().loadRectangleExtTextureFromPath(path);
    m_Mipmaped = false;
    m_Rectangle = true;
    return m_Texture != 0;
}

bool VX_GLTexture::loadMipmapTextureFromPath(const char* path, bool clamp) {
    VX_NEEDS_CONTEXT();
    m_Texture = newLoader().load2DMipmapTextureFromPath(path, clamp);
    m_Mipmaped = true;
    m_Rectangle = false;
    m_Loader->freeImage();
    return m_Texture != 0;
}

bool VX_GLTexture::loadTextureFromData(unsigned int target, unsigned int internalFormat, unsigned int format,
                                       unsigned int type, int width, int height, const void* data) {
    VX_NEEDS_CONTEXT();
    discardData();
    m_Texture = vx::makeTextureFromData(target, internalFormat, format, type, width, height, data);
    m_Rectangle = target == GL_TEXTURE_RECTANGLE_ARB;
    m_Mipmaped = false;
    return m_Texture != 0;
}

void VX_GLTexture::enableTexture(bool enable) {
    VX_NEEDS_CONTEXT();
    const GLenum target = isRectangle() ? GL_TEXTURE_RECTANGLE_ARB : GL_TEXTURE_2D;
    if (!enable) {
        glDisable(target);
        return;
    }
    glEnable(target);
    glBindTexture(target, m_Texture);
    if (isRectangle())
        return;
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, m_Mipmaped ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
}

unsigned int VX_GLTexture::dettach() {
    return std::exchange(m_Texture, 0);
}

unsigned int VX_GLTexture::txType() const {
    return isRectangle() ? GL_TEXTURE_RECTANGLE_ARB : GL_TEXTURE_2D;
}

int VX_GLTexture::width() const {
    return m_Loader ? m_Loader->width() : 0;
}

int VX_GLTexture::height() const {
    return m_Loader ? m_Loader->height() : 0;
}

int VX_GLTexture::orgwidth() const {
    return m_Loader ? m_Loader->orgwidth() : 0;
}

int VX_GLTexture::orgheight() const {
    return m_Loader ? m_Loader->orgheight() : 0;
}
