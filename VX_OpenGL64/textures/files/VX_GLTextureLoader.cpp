// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLTextureLoader.h>

#include <VX_OpenGL64/textures/files/private/CubeMapFiles.h>
#include <VX_OpenGL64/textures/files/private/LoadFailure.h>
#include <VX_OpenGL64/textures/files/private/StretchedBitmap.h>
#include <VX_OpenGL64/textures/private/UnpackState.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

namespace {

bool GLImageBitmapFromImageFile(const char* path, GLImageBitmap* bitmap, bool powerOfTwo) {
    std::string why;
    const auto picture = vx::openPicture(path, &why);
    if (picture && vx::readBitmap(*picture, powerOfTwo, *bitmap, why))
        return true;
    vx::tellOfFailure("VX_GLTextureLoader", path, why);
    return false;
}

void warnOfError(const char* path, const char* function) {
    const GLenum error = glGetError();
    if (error == GL_NO_ERROR)
        return;
    NSLog("WARNING: OpenGL Error 0x%x while loading texture with %s(). %s", error, function,
          gluErrorString(error));
    vx::keepGLError(path, error);
}

void setParameters(GLenum target, std::initializer_list<std::pair<GLenum, GLint>> parameters) {
    for (const auto& [name, value] : parameters)
        glTexParameteri(target, name, value);
}

} // namespace

VX_GLTextureLoader::~VX_GLTextureLoader() {
    freeImage();
}

void VX_GLTextureLoader::freeImage() {
    delete[] static_cast<unsigned char*>(m_Bitmap.data);
    GLImageBitmap cleared;
    cleared.orgwidth = m_Bitmap.orgwidth;
    cleared.orgheight = m_Bitmap.orgheight;
    cleared.width = m_Bitmap.width;
    cleared.height = m_Bitmap.height;
    m_Bitmap = cleared;
}

bool VX_GLTextureLoader::read(const char* path, bool powerOfTwo) {
    vx::beginLoad();
    freeImage();
    if (GLImageBitmapFromImageFile(path, &m_Bitmap, powerOfTwo))
        return true;
    NSLog("couldn't load texture:%s", path ? path : "(null)");
    return false;
}

void VX_GLTextureLoader::upload(unsigned int target) const {
    const void* pixels = vx::unpackedFrom(m_Bitmap.data, m_Bitmap.rowBytes, 4);
    glTexImage2D(target, m_Bitmap.level, static_cast<GLint>(m_Bitmap.internalFormat), width(), height(),
                 m_Bitmap.border, m_Bitmap.format, m_Bitmap.type, pixels);
}

unsigned int VX_GLTextureLoader::load2DTextureFromPath(const char* path, bool clamp) {
    VX_NEEDS_CONTEXT();
    return load2D(path, clamp, false);
}

unsigned int VX_GLTextureLoader::load2DMipmapTextureFromPath(const char* path, bool clamp) {
    VX_NEEDS_CONTEXT();
    return load2D(path, clamp, true);
}

unsigned int VX_GLTextureLoader::load2D(const char* path, bool clamp, bool mipmap) {
    if (!read(path, true))
        return 0;
    GLuint name = 0;
    glEnable(GL_TEXTURE_2D);
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    {
        const vx::KeptUnpackState kept;
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        vx::setClientStorage(0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, mipmap ? 1 : 4);
        const GLint wrap = clamp ? GL_CLAMP_TO_EDGE : GL_REPEAT;
        setParameters(GL_TEXTURE_2D, {{GL_TEXTURE_WRAP_S, wrap},
                                      {GL_TEXTURE_WRAP_T, wrap},
                                      {GL_TEXTURE_MAG_FILTER, GL_LINEAR},
                                      {GL_TEXTURE_MIN_FILTER, GL_LINEAR}});
        if (mipmap)
            glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_FALSE);
        upload(m_Bitmap.target);
        warnOfError(path, "glTexImage2D");
        if (mipmap) {
            gluBuild2DMipmaps(m_Bitmap.target, static_cast<GLint>(m_Bitmap.internalFormat), width(), height(),
                              m_Bitmap.format, m_Bitmap.type,
                              vx::unpackedFrom(m_Bitmap.data, m_Bitmap.rowBytes, 4));
            warnOfError(path, "gluBuild2DMipmaps");
        }
    }
    if (mipmap)
        glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
    return name;
}

unsigned int VX_GLTextureLoader::loadRectangleExtTextureFromPath(const char* path) {
    VX_NEEDS_CONTEXT();
    if (!path)
        vx::keepFailure(path, "there is no path");
    if (!path || !read(path, false))
        return 0;
    constexpr GLenum target = GL_TEXTURE_RECTANGLE_ARB;
    GLuint name = 0;
    glEnable(target);
    {
        const vx::KeptUnpackState kept;
        vx::setClientStorage(1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, width());
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        vx::askForCachedStorage(target); // of the texture bound before: the new one is not there yet
        glGenTextures(1, &name);
        glBindTexture(target, name);
        for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
            glTexParameterf(target, wrap, GL_CLAMP_TO_EDGE);
        for (const GLenum filter : {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER})
            glTexParameterf(target, filter, GL_LINEAR);
        upload(m_Bitmap.target);
        warnOfError(path, "glTexImage2D");
    }
    glDisable(target);
    return name;
}

unsigned int VX_GLTextureLoader::loadCubeMapTextureFromPath(const char* path) {
    VX_NEEDS_CONTEXT();
    vx::beginLoad();
    const NSString* text = NSString::stringWithUTF8String(path);
    if (!text) {
        vx::keepFailure(path, path ? "its path is no text" : "there is no path");
        return 0;
    }
    NSString* extension = text->pathExtension();
    NSString* stem = text->stringByDeletingPathExtension();
    GLuint name = 0;
    {
        const vx::KeptUnpackState kept;
        glEnable(GL_TEXTURE_2D); // not the cube map
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_CUBE_MAP, name);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        vx::setClientStorage(0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
        for (int face = 0; face < 6; ++face) {
            freeImage();
            const NSString* file = NSString::stringWithFormat("%@_%d.%@", stem, face, extension);
            if (GLImageBitmapFromImageFile(file->UTF8String(), &m_Bitmap, true))
                upload(vx::cubeMapFaces[face].target);
        }
        setParameters(GL_TEXTURE_CUBE_MAP, {{GL_TEXTURE_MIN_FILTER, GL_LINEAR},
                                            {GL_TEXTURE_MAG_FILTER, GL_LINEAR},
                                            {GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE},
                                            {GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE},
                                            {GL_TEXTURE_WRAP_R, GL_CLAMP_TO_EDGE}});
    }
    glDisable(GL_TEXTURE_2D);
    return name;
}
