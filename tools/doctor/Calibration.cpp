// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/targets/VX_GLPictureFile.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

#include <exception>

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;

// libepoxy ends the process for an entry point that is not there.
bool hasRenderTargets() {
    return epoxy_gl_version() >= 30 || epoxy_has_gl_extension("GL_EXT_framebuffer_object") ||
           epoxy_has_gl_extension("GL_ARB_framebuffer_object");
}

// In a render target: a window's pixels may be covered, and its size is the window manager's.
bool draw(const char* path) {
    VX_GLTestPattern pattern(kWidth, kHeight);
    pattern.UpdateRectangleTexture();
    VX_GLRenderTarget target;
    target.m_UseDepth = false;
    target.SetResolution(kWidth, kHeight);
    target.CreateFrameBuffer();
    if (!target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1))
        return false;
    target.Bind(0);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    target.SetDefaultProjection();
    pattern.RenderRH_W3({0.0f, 0.0f, 0.0f}, kWidth);
    target.Unbind();
    return VX_GLSaveRenderTarget(path, &target, 0);
}

bool drawOrTell(const char* path) {
    if (!hasRenderTargets()) {
        NSLog("The calibration picture cannot be drawn: the driver has no render targets");
        return false;
    }
    try {
        return draw(path);
    } catch (const std::exception& failure) {
        NSLog("The calibration picture cannot be drawn: %s", failure.what());
        return false;
    }
}

} // namespace

bool writeCalibration(VX_GLMainView* view, const char* path) {
    printSection("Calibration picture");
    view->RenderThreadLock();
    const bool isWritten = view->makeCurrentContext() && drawOrTell(path);
    view->RenderThreadUnLock();
    if (isWritten)
        printRow("written", textOf("%s, %d x %d", path, kWidth, kHeight));
    return isWritten;
}
