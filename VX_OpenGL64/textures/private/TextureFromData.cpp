// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/private/TextureFromData.h>

#include <VX_OpenGL64/textures/private/UnpackState.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

namespace {

void setRectangleState(unsigned format, int width) {
    if (format == GL_RGBA) {
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, width);
    } else {
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    }
    vx::setClientStorage(0);
    glTexParameterf(GL_TEXTURE_RECTANGLE_ARB, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameterf(GL_TEXTURE_RECTANGLE_ARB, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

} // namespace

unsigned vx::makeTextureFromData(unsigned target, unsigned internalFormat, unsigned format, unsigned type,
                                 int width, int height, const void* data) {
    const KeptUnpackState kept;
    GLuint name = 0;
    glEnable(target);
    glGenTextures(1, &name);
    glBindTexture(target, name);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    askForCachedStorage(target);
    if (target == GL_TEXTURE_RECTANGLE_ARB)
        setRectangleState(format, width);
    else
        setClientStorage(0);
    glTexImage2D(target, 0, static_cast<GLint>(internalFormat), width, height, 0, format, type, data);
    if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
        NSLog("WARNING: OpenGL Error 0x%x while creating texture with glTexImage2D(). %s", error,
              gluErrorString(error));
        glDeleteTextures(1, &name);
        name = 0;
    }
    glDisable(target);
    return name;
}
