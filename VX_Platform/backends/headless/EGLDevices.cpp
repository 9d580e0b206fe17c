// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/headless/EGLDevices.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <vector>

namespace vx {

namespace {

// Whether the display initialises and gives a desktop GL context on a pbuffer; ends it again if not.
bool givesDesktopGL(EGLDisplay display) {
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr))
        return false;
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglBindAPI(EGL_OPENGL_API) && eglChooseConfig(display, wanted, &config, 1, &count) && count == 1) {
        EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
        if (context != EGL_NO_CONTEXT) {
            eglDestroyContext(display, context);
            return true;
        }
    }
    eglTerminate(display);
    return false;
}

std::vector<EGLDeviceEXT> devices() {
    auto query = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    EGLint count = 0;
    if (!query || !query(0, nullptr, &count) || count == 0)
        return {};
    std::vector<EGLDeviceEXT> found(count);
    query(count, found.data(), &count);
    found.resize(count);
    return found;
}

EGLDisplay platformDisplay(EGLenum platform, void* native) {
    auto get =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    return get ? get(platform, native, nullptr) : EGL_NO_DISPLAY;
}

EGLDisplay openDevice(int wanted) {
    const std::vector<EGLDeviceEXT> all = devices();
    const int count = static_cast<int>(all.size());
    if (wanted >= count)
        NSLog("Headless: EGL device %d was asked for, and there are %d, numbered from 0", wanted, count);
    for (int i = wanted < 0 ? 0 : wanted; i < count; ++i) {
        EGLDisplay display = platformDisplay(EGL_PLATFORM_DEVICE_EXT, all[i]);
        if (givesDesktopGL(display)) {
            NSLog(wanted < 0 ? "Headless: EGL device %d of %d, the first that gives desktop OpenGL"
                             : "Headless: EGL device %d of %d, the one asked for",
                  i, count);
            return display;
        }
        if (wanted >= 0) {
            NSLog("Headless: EGL device %d gives no desktop OpenGL", i);
            break;
        }
    }
    return EGL_NO_DISPLAY;
}

} // namespace

GLDriver::Handle openHeadlessDisplay(int device) {
    if (EGLDisplay display = openDevice(device); display != EGL_NO_DISPLAY)
        return display;
    // A device that was named is not replaced by another one.
    if (device >= 0)
        return nullptr;
    EGLDisplay display = platformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY);
    if (!givesDesktopGL(display))
        return nullptr;
    NSLog("Headless: EGL's surfaceless platform, since no EGL device gives desktop OpenGL");
    return display;
}

} // namespace vx
