// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/GLDriver.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <EGL/egl.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>

namespace vx {

GLDriver::GLDriver(Handle display, SurfaceKind kind) : m_Display(display), m_Kind(kind) {}

GLDriver::~GLDriver() {
    eglTerminate(m_Display);
}

int GLDriver::attribute(Handle config, int name) const {
    EGLint value = 0;
    eglGetConfigAttrib(m_Display, config, name, &value);
    return value;
}

std::vector<GLDriver::Handle> GLDriver::collectConfigs(const GLFormatRequest& request) const {
    const auto orZero = [](int bits) { return std::max(bits, 0); };
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             m_Kind == SurfaceKind::window ? EGL_WINDOW_BIT : EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_COLOR_BUFFER_TYPE,
                             EGL_RGB_BUFFER,
                             EGL_ALPHA_SIZE,
                             orZero(request.alphaBits),
                             EGL_DEPTH_SIZE,
                             orZero(request.depthBits),
                             EGL_STENCIL_SIZE,
                             orZero(request.stencilBits),
                             EGL_SAMPLE_BUFFERS,
                             orZero(request.sampleBuffers),
                             EGL_SAMPLES,
                             orZero(request.samples),
                             EGL_NONE};
    EGLint count = 0;
    if (!eglChooseConfig(m_Display, wanted, nullptr, 0, &count) || count == 0)
        return {};
    std::vector<Handle> configs(count);
    eglChooseConfig(m_Display, wanted, configs.data(), count, &count);
    configs.resize(count);
    // The colour size of a pixel format counts red, green and blue, and alpha only where it was asked for.
    std::erase_if(configs, [&](Handle config) {
        const int color = attribute(config, EGL_RED_SIZE) + attribute(config, EGL_GREEN_SIZE) +
                          attribute(config, EGL_BLUE_SIZE);
        const int asked = request.colorBits == 32 ? 24 : request.colorBits;
        return color < asked;
    });
    return configs;
}

int GLDriver::rank(Handle config, const GLFormatRequest& request) const {
    // Smaller is better. A slow or unwanted translucent surface hurts most, ten-bit colour that nobody asked
    // for and bits beyond the request less.
    int cost = 0;
    if (attribute(config, EGL_CONFIG_CAVEAT) != EGL_NONE)
        cost += 10000;
    if (request.alphaBits <= 0 && attribute(config, EGL_ALPHA_SIZE) > 0)
        cost += 1000;
    if (request.samples <= 0)
        cost += 100 * attribute(config, EGL_SAMPLES);
    cost += 50 * std::abs(attribute(config, EGL_RED_SIZE) - 8);
    cost += attribute(config, EGL_DEPTH_SIZE) + attribute(config, EGL_STENCIL_SIZE);
    return cost;
}

GLDriver::Handle GLDriver::chooseConfig(const GLFormatRequest& request) const {
    const std::vector<Handle> configs = collectConfigs(request);
    const auto best = std::min_element(configs.begin(), configs.end(), [&](Handle a, Handle b) {
        return rank(a, request) < rank(b, request);
    });
    return best == configs.end() ? nullptr : *best;
}

unsigned long GLDriver::nativeVisual(Handle config) const {
    return attribute(config, EGL_NATIVE_VISUAL_ID);
}

GLDriver::Handle GLDriver::createContext(Handle config, Handle share, bool debug) const {
    eglBindAPI(EGL_OPENGL_API);
    const EGLint wanted[] = {debug ? EGL_CONTEXT_OPENGL_DEBUG : EGL_NONE, EGL_TRUE, EGL_NONE};
    EGLContext context = eglCreateContext(m_Display, config, share, wanted);
    if (context == EGL_NO_CONTEXT)
        NSLog("The driver gives no OpenGL context: %s", lastError().c_str());
    return context;
}

void GLDriver::destroyContext(Handle context) const {
    eglDestroyContext(m_Display, context);
}

GLDriver::Handle GLDriver::createWindowSurface(Handle config, unsigned long window) const {
    EGLSurface surface = eglCreateWindowSurface(m_Display, config, window, nullptr);
    if (surface == EGL_NO_SURFACE)
        NSLog("The driver gives no surface for window 0x%lx: %s", window, lastError().c_str());
    return surface;
}

bool GLDriver::canMakePbuffers(Handle config) const {
    return (attribute(config, EGL_SURFACE_TYPE) & EGL_PBUFFER_BIT) != 0;
}

GLDriver::Handle GLDriver::createPbuffer(Handle config, int width, int height) const {
    const EGLint size[] = {EGL_WIDTH, std::max(width, 1), EGL_HEIGHT, std::max(height, 1), EGL_NONE};
    EGLSurface surface = eglCreatePbufferSurface(m_Display, config, size);
    if (surface == EGL_NO_SURFACE)
        NSLog("The driver gives no off-screen surface of %d x %d: %s", width, height, lastError().c_str());
    return surface;
}

void GLDriver::destroySurface(Handle surface) const {
    eglDestroySurface(m_Display, surface);
}

bool GLDriver::makeCurrent(Handle context, Handle surface) const {
    // The API is bound for each thread on its own.
    eglBindAPI(EGL_OPENGL_API);
    return eglMakeCurrent(m_Display, surface, surface, context);
}

void GLDriver::clearCurrent() const {
    eglMakeCurrent(m_Display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

bool GLDriver::swapBuffers(Handle surface) const {
    return eglSwapBuffers(m_Display, surface);
}

GLDriver::Handle GLDriver::createFence() const {
    return m_Kind == SurfaceKind::pbuffer ? eglCreateSync(m_Display, EGL_SYNC_FENCE, nullptr) : nullptr;
}

void GLDriver::awaitFence(Handle fence) const {
    constexpr EGLTime kBound = 2'000'000'000; // nanoseconds
    if (!fence)
        return;
    eglClientWaitSync(m_Display, fence, EGL_SYNC_FLUSH_COMMANDS_BIT, kBound);
    eglDestroySync(m_Display, fence);
}

void GLDriver::setSwapInterval(int interval) const {
    eglSwapInterval(m_Display, interval);
}

std::string GLDriver::description() const {
    return std::string("EGL ") + eglQueryString(m_Display, EGL_VERSION) + ", " +
           eglQueryString(m_Display, EGL_VENDOR);
}

GLDriver::Handle GLDriver::currentContext() {
    return eglGetCurrentContext();
}

GLDriver::Binding GLDriver::currentBinding() {
    return {eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW), eglGetCurrentSurface(EGL_READ),
            eglGetCurrentContext()};
}

void GLDriver::restore(const Binding& binding) {
    const Binding now = currentBinding();
    if (binding.context && (binding.context != now.context || binding.draw != now.draw))
        eglMakeCurrent(binding.display, binding.draw, binding.read, binding.context);
}

bool GLDriver::anyContextIsCurrent() {
    if (eglGetCurrentContext() != EGL_NO_CONTEXT)
        return true;
    using CurrentContext = void* (*)();
    const auto ofGLX = reinterpret_cast<CurrentContext>(dlsym(RTLD_DEFAULT, "glXGetCurrentContext"));
    return ofGLX && ofGLX() != nullptr;
}

std::string GLDriver::lastError() {
    char text[32];
    std::snprintf(text, sizeof text, "EGL error 0x%04x", static_cast<unsigned>(eglGetError()));
    return text;
}

} // namespace vx
