// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLDDSTextureLoader2D.h>

#include <VX_OpenGL64/textures/files/private/DDSFile.h>
#include <VX_OpenGL64/textures/files/private/LoadFailure.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

VX_GLDDSTextureLoader2D::~VX_GLDDSTextureLoader2D() {
    freeData();
}

void VX_GLDDSTextureLoader2D::freeData() {
    delete[] m_Data;
    m_Data = nullptr;
    m_DataSize = 0;
}

unsigned int VX_GLDDSTextureLoader2D::Load(const char* path) {
    VX_NEEDS_CONTEXT();
    if (!ReadDDS(path))
        return 0;
    glEnable(GL_TEXTURE_2D);
    GLint alignment = 4;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glGenTextures(1, &m_Texture);
    glBindTexture(GL_TEXTURE_2D, m_Texture);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_FALSE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    if (const int levels = upload(path); levels < 1 || levels < m_MipMapCount)
        vx::tellOfFailure(
            "VX_GLDDSTextureLoader2D::Load", path,
            std::to_string(m_MipMapCount) + " levels claimed, " + std::to_string(levels) + " there");
    freeData();
    glBindTexture(GL_TEXTURE_2D, 0);
    glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
    glDisable(GL_TEXTURE_2D);
    return m_Texture;
}

bool VX_GLDDSTextureLoader2D::ReadDDS(const char* path) {
    vx::beginLoad();
    vx::DDSFile file;
    std::string why;
    if (!vx::readDDSFile(path, file, why)) {
        vx::tellOfFailure("VX_GLDDSTextureLoader2D::ReadDDS", path, why);
        return false;
    }
    freeData();
    m_DataSize = file.dataSize;
    m_Data = file.data.release();
    m_Format = file.format;
    m_Components = file.components;
    m_Width = file.width;
    m_Height = file.height;
    m_MipMapCount = file.mipMapCount;
    return true;
}

void VX_GLDDSTextureLoader2D::DecompressDDS() {
    VX_NEEDS_CONTEXT();
    upload(nullptr);
}

int VX_GLDDSTextureLoader2D::upload(const char* path) {
    int index = 0;
    for (const vx::DDSLevel& level :
         vx::levelsOfDDS(m_Width, m_Height, m_Data ? m_MipMapCount : 0, m_Format, m_DataSize)) {
        glCompressedTexImage2D(GL_TEXTURE_2D, index++, m_Format, level.width, level.height, 0,
                               static_cast<GLsizei>(level.size), m_Data + level.offset);
        if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
            NSLog("WARNING: OpenGL Error 0x%x while loading texture with glCompressedTexImage2D(). %s", error,
                  gluErrorString(error));
            vx::keepGLError(path, error);
        }
    }
    return index;
}
