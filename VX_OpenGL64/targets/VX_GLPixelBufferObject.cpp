// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLPixelBufferObject.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <limits>

namespace {

// Two factors never leave 64 bits, three can: GL refuses the largest number for want of memory.
GLsizeiptr storageSize(GLsizeiptr width, GLsizeiptr height, GLsizeiptr bytesPerPixel) {
    GLsizeiptr size = 0;
    if (__builtin_mul_overflow(width * height, bytesPerPixel, &size))
        size = std::numeric_limits<GLsizeiptr>::max();
    return size;
}

} // namespace

VX_GLPixelBufferObject::VX_GLPixelBufferObject(int width, int height, int bytesPerPixel, unsigned int usage)
    : m_Width(width), m_Height(height), m_BytesPerPixel(bytesPerPixel) {
    VX_NEEDS_CONTEXT();
    glGenBuffers(1, &m_Buffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, m_Buffer);
    glBufferData(GL_PIXEL_PACK_BUFFER, storageSize(width, height, bytesPerPixel), nullptr, usage);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
}

VX_GLPixelBufferObject::~VX_GLPixelBufferObject() {
    if (m_Buffer && vx::mayDelete("VX_GLPixelBufferObject", m_Buffer))
        glDeleteBuffers(1, &m_Buffer);
}

void VX_GLPixelBufferObject::ReadFrontBuffer() {
    VX_NEEDS_CONTEXT();
    glReadBuffer(GL_FRONT);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, m_Buffer);
    glReadPixels(0, 0, m_Width, m_Height, GL_BGRA, GL_UNSIGNED_BYTE, nullptr);
}

void* VX_GLPixelBufferObject::ReadOnlyBeginLock() {
    VX_NEEDS_CONTEXT();
    return beginLock(GL_READ_ONLY);
}

void* VX_GLPixelBufferObject::WriteOnlyBeginLock() {
    VX_NEEDS_CONTEXT();
    return beginLock(GL_WRITE_ONLY);
}

void* VX_GLPixelBufferObject::ReadWriteBeginLock() {
    VX_NEEDS_CONTEXT();
    return beginLock(GL_READ_WRITE);
}

void* VX_GLPixelBufferObject::beginLock(unsigned int access) {
    glBindBuffer(GL_PIXEL_PACK_BUFFER, m_Buffer);
    return glMapBuffer(GL_PIXEL_PACK_BUFFER, access);
}

void VX_GLPixelBufferObject::EndLock() {
    VX_NEEDS_CONTEXT();
    glUnmapBuffer(GL_PIXEL_PACK_BUFFER);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
}

void VX_GLPixelBufferObject::CopyToTexture2D(unsigned int texture, unsigned int format, unsigned int type) {
    VX_NEEDS_CONTEXT();
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, m_Buffer);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, m_Width, m_Height, format, type, nullptr);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
    glBindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
}
