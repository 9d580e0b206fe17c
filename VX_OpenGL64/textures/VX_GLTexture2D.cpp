// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>

#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>
#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLTexture2D::~VX_GLTexture2D() = default;

bool VX_GLTexture2D::LoadFromPath(NSString* path, bool mipmap) {
    VX_NEEDS_CONTEXT();
    discardData();
    m_Target = GL_TEXTURE_2D;
    m_Texture = VX_GLTextureLoader2D(path, &m_Size, &m_TexCoordSize, mipmap);
    return m_Texture != 0;
}

bool VX_GLTexture2D::LoadDDSFromPath(NSString* path) {
    VX_NEEDS_CONTEXT();
    VX_GLDDSTextureLoader2D loader;
    discardData();
    m_Target = GL_TEXTURE_2D;
    m_Texture = loader.Load(path ? path->UTF8String() : nullptr);
    if (m_Texture)
        m_Size = m_TexCoordSize = CGSizeMake(loader.m_Width, loader.m_Height);
    return m_Texture != 0;
}
