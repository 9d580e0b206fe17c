// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/private/UnpackState.h>

#include <VX_Platform/OpenGL/GLCapabilities.h>

#include <epoxy/gl.h>

#include <cstdint>

namespace {

std::size_t stateOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return static_cast<std::size_t>(value);
}

std::size_t skippedBytes(std::size_t rowBytes, std::size_t bytesPerPixel) {
    return stateOf(GL_UNPACK_SKIP_ROWS) * rowBytes + stateOf(GL_UNPACK_SKIP_PIXELS) * bytesPerPixel;
}

} // namespace

vx::UnpackLayout vx::currentUnpackLayout() {
    return {stateOf(GL_UNPACK_ALIGNMENT), stateOf(GL_UNPACK_ROW_LENGTH)};
}

const void* vx::unpackedFrom(const void* pixels, std::size_t rowBytes, std::size_t bytesPerPixel) {
    return reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(pixels) -
                                         skippedBytes(rowBytes, bytesPerPixel));
}

const void* vx::skippedInto(const void* given, std::size_t rowBytes, std::size_t bytesPerPixel) {
    return reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(given) +
                                         skippedBytes(rowBytes, bytesPerPixel));
}

void vx::setClientStorage(int value) {
    if (currentGLCapabilities().clientStorage)
        glPixelStorei(GL_UNPACK_CLIENT_STORAGE_APPLE, value);
}

void vx::askForCachedStorage(unsigned target) {
    if (currentGLCapabilities().textureRange)
        glTexParameteri(target, GL_TEXTURE_STORAGE_HINT_APPLE, GL_STORAGE_CACHED_APPLE);
}

vx::KeptUnpackState::KeptUnpackState() {
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &m_Alignment);
    glGetIntegerv(GL_UNPACK_ROW_LENGTH, &m_RowLength);
    if (currentGLCapabilities().clientStorage)
        glGetIntegerv(GL_UNPACK_CLIENT_STORAGE_APPLE, &m_ClientStorage);
}

vx::KeptUnpackState::~KeptUnpackState() {
    setClientStorage(m_ClientStorage);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, m_RowLength);
    glPixelStorei(GL_UNPACK_ALIGNMENT, m_Alignment);
}
