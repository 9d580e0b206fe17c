// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <string_view>

namespace {

constexpr std::size_t kExtensionWidth = 31;

struct Extension {
    const char* name;
    /// OpenGL's version with it in its core; 0 for none.
    float version;
    /// What becomes of it where it is missing; null where that goes by what else there is.
    const char* instead;
};

constexpr Extension kExtensions[] = {
    {"GL_EXT_framebuffer_object", 3.0f, "no render targets, so no filters"},
    {"GL_EXT_framebuffer_blit", 3.0f, "no multisampled render targets"},
    {"GL_EXT_framebuffer_multisample", 3.0f, "no multisampled render targets"},
    {"GL_ARB_texture_rectangle", 3.1f, "no rectangle textures and render targets"},
    {"GL_EXT_texture_compression_s3tc", 0.0f, "no compressed DDS textures"},
    {"GL_ARB_draw_instanced", 3.1f, "no instanced drawing"},
    {"GL_EXT_geometry_shader4", 0.0f, nullptr},
    {"GL_EXT_clip_volume_hint", 0.0f, "the hint is left out"},
    {"GL_APPLE_client_storage", 0.0f, "GL copies the pixels of a texture at once"},
    {"GL_APPLE_texture_range", 0.0f, "the hint is left out"},
    {"GL_ARB_multi_bind", 4.4f, "the kind of a texture is found by trial"},
    {"GL_ARB_sync", 3.2f, "recording waits for its pixels"},
    {"GL_KHR_debug", 4.3f, "diagnostics tell nothing of the driver"},
};

const char* geometryShaders() {
    return vx::currentGLCapabilities().geometryShaders ? "shaders in its dialect are adapted to GLSL's own"
                                                       : "no geometry shaders";
}

std::string driverText(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? reinterpret_cast<const char*>(text) : "(not told)";
}

std::string driverText(EGLDisplay display, EGLint name) {
    const char* text = eglQueryString(display, name);
    return text ? std::string(text, std::string_view(text).find_last_not_of(' ') + 1) : "(not told)";
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
    for (const Extension& extension : kExtensions) {
        glExtension record = {extension.name, extension.version, false};
        const char* instead = extension.instead ? extension.instead : geometryShaders();
        const bool isThere = check.CheckGLExtensions(1, &record, nullptr);
        printRow(extension.name, isThere ? "there" : std::string("missing: ") + instead);
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
