// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <iterator>

namespace {

constexpr std::size_t kExtensionWidth = 31;

glExtension extensions[] = {{"GL_EXT_framebuffer_object", 3.0f, false},
                            {"GL_EXT_framebuffer_blit", 3.0f, false},
                            {"GL_EXT_framebuffer_multisample", 3.0f, false},
                            {"GL_ARB_texture_rectangle", 3.1f, false},
                            {"GL_EXT_texture_compression_s3tc", 0.0f, false},
                            {"GL_ARB_draw_instanced", 3.1f, false},
                            {"GL_EXT_geometry_shader4", 0.0f, false},
                            {"GL_EXT_clip_volume_hint", 0.0f, false},
                            {"GL_APPLE_client_storage", 0.0f, false},
                            {"GL_APPLE_texture_range", 0.0f, false},
                            {"GL_ARB_multi_bind", 4.4f, false},
                            {"GL_ARB_sync", 3.2f, false},
                            {"GL_KHR_debug", 4.3f, false}};

// What stands in for each, in their order.
constexpr const char* kInstead[] = {
    "no render targets, so no filters",
    "no multisampled render targets",
    "no multisampled render targets",
    "no rectangle textures and render targets",
    "no compressed DDS textures",
    "no instanced drawing",
    nullptr, // goes by what else there is
    "the hint is left out",
    "GL copies the pixels of a texture at once",
    "the hint is left out",
    "the kind of a texture is found by trial",
    "recording waits for its pixels",
    "diagnostics tell nothing of the driver",
};
static_assert(std::size(kInstead) == std::size(extensions));

const char* geometryShaders() {
    return vx::currentGLCapabilities().geometryShaders
               ? "shaders in its dialect are adapted to GLSL's own geometry shaders"
               : "no geometry shaders";
}

std::string driverText(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? reinterpret_cast<const char*>(text) : "(not told)";
}

std::string driverText(EGLDisplay display, EGLint name) {
    const char* text = eglQueryString(display, name);
    return text ? text : "(not told)";
}

void printDriver(const VX_CheckGLExtensions& check) {
    const EGLDisplay display = eglGetCurrentDisplay();
    printRow("EGL vendor", driverText(display, EGL_VENDOR));
    printRow("EGL version", driverText(display, EGL_VERSION));
    printRow("EGL client APIs", driverText(display, EGL_CLIENT_APIS));
    printRow("GL vendor", driverText(GL_VENDOR));
    printRow("GL renderer", driverText(GL_RENDERER));
    printRow("GL version", driverText(GL_VERSION));
    printRow("GLSL version", driverText(GL_SHADING_LANGUAGE_VERSION));
    GLint size = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
    printRow("largest texture", textOf("%d x %d", size, size));
    printRow("most samples", std::to_string(check.m_MaxSamples));
}

void printExtensions(VX_CheckGLExtensions& check) {
    printSection("Extensions", kExtensionWidth);
    check.CheckGLExtensions(static_cast<int>(std::size(extensions)), extensions, nullptr);
    for (std::size_t i = 0; i < std::size(extensions); ++i) {
        const char* instead = kInstead[i] ? kInstead[i] : geometryShaders();
        printRow(extensions[i].Name, extensions[i].Supported ? "there" : std::string("missing: ") + instead);
    }
}

void printCurrentContext() {
    // It logs what the rows say.
    showLog(false);
    VX_CheckGLExtensions check;
    showLog(true);
    printDriver(check);
    printExtensions(check);
}

} // namespace

const unsigned* doctorPixelFormat() {
    static const unsigned words[] = {
        NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 24, NSOpenGLPFADepthSize, 24, 0};
    return words;
}

std::string printOpenGL() {
    printSection("OpenGL");
    const auto format =
        NSRef<NSOpenGLPixelFormat>::adopt((new NSOpenGLPixelFormat)->initWithAttributes(doctorPixelFormat()));
    if (!format)
        return "no pixel format: " + lastLogLine();
    const auto context =
        NSRef<NSOpenGLContext>::adopt((new NSOpenGLContext)->initWithFormat(format.get(), nullptr));
    if (!context || !context->makeCurrentContext())
        return "no context: " + lastLogLine();
    printCurrentContext();
    NSOpenGLContext::clearCurrentContext();
    return {};
}
