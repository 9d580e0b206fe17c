// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTextureCubeMap2D.h>

#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLTextureCubeMap2D::~VX_GLTextureCubeMap2D() = default;

bool VX_GLTextureCubeMap2D::LoadFromPath(NSString* path, bool mipmap) {
    VX_NEEDS_CONTEXT();
    discardData();
    m_Target = GL_TEXTURE_CUBE_MAP;
    m_Texture = VX_GLTextureLoaderCubeMap2D(path, &m_Size, &m_TexCoordSize, mipmap);
    return m_Texture != 0;
}
