// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLPictureFile.h>

#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_OpenGL64/targets/private/ReadSource.h>
#include <VX_Platform/CoreGraphics/private/PNGFile.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>
#include <VX_Platform/OpenGL/private/PlainPacking.h>

#include <epoxy/gl.h>

#include <cstddef>
#include <vector>

namespace {

bool save(const char* path, int x, int y, int width, int height, int channels) {
    if (!path || width < 1 || height < 1) {
        NSLog("A picture of %d x %d cannot be saved to %s: there is no path, or no pixel", width, height,
              path ? path : "(null)");
        return false;
    }
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * height * channels);
    {
        const vx::PlainPacking packing;
        glReadPixels(x, y, width, height, channels == 4 ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    }
    return vx::writePNGFile(path, width, height, channels, pixels.data());
}

} // namespace

bool VX_GLSavePicture(const char* path, int x, int y, int width, int height) {
    VX_NEEDS_CONTEXT();
    return save(path, x, y, width, height, 3);
}

bool VX_GLSaveRenderTarget(const char* path, VX_GLRenderTarget* target, int index) {
    if (!vx::ReadSource::isThere(target, index)) {
        NSLog("Colour attachment %d cannot be saved to %s: there is none", index, path ? path : "(null)");
        return false;
    }
    VX_NEEDS_CONTEXT();
    const vx::ReadSource source(*target, index);
    return save(path, 0, 0, target->m_Width, target->m_Height, 4);
}
