// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTextureRect.h>

#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLTextureRect::~VX_GLTextureRect() = default;

bool VX_GLTextureRect::LoadFromPath(NSString* path) {
    VX_NEEDS_CONTEXT();
    discardData();
    m_Target = GL_TEXTURE_RECTANGLE_ARB;
    m_Texture = VX_GLTextureLoader2DRect(path, &m_Size, &m_TexCoordSize);
    return m_Texture != 0;
}

bool VX_GLTextureRect::LoadFromData(unsigned int internalFormat, unsigned int format, unsigned int type,
                                    int width, int height, const void* data) {
    VX_NEEDS_CONTEXT();
    return ProtectedLoadFromData(GL_TEXTURE_RECTANGLE_ARB, internalFormat, format, type, width, height, data);
}
