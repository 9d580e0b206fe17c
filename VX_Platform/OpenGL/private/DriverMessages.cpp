// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/DriverMessages.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

namespace {

const char* kindOf(GLenum type) {
    switch (type) {
        case GL_DEBUG_TYPE_ERROR:
            return "error";
        case GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR:
            return "deprecated";
        case GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR:
            return "undefined behaviour";
        case GL_DEBUG_TYPE_PERFORMANCE:
            return "performance";
        case GL_DEBUG_TYPE_PORTABILITY:
            return "portability";
        default:
            return "message";
    }
}

void GLAPIENTRY toLog(GLenum, GLenum type, GLuint id, GLenum severity, GLsizei length, const GLchar* text,
                      const void*) {
    if (severity == GL_DEBUG_SEVERITY_NOTIFICATION || severity == GL_DEBUG_SEVERITY_LOW)
        return;
    NSLog("OpenGL %s %u: %.*s", kindOf(type), id, static_cast<int>(length), text);
}

} // namespace

void vx::logDriverMessages() {
    if (!epoxy_has_gl_extension("GL_KHR_debug"))
        return;
    glEnable(GL_DEBUG_OUTPUT);
    // On the thread and inside the call that is to blame.
    glEnable(GL_DEBUG_OUTPUT_SYNCHRONOUS);
    glDebugMessageCallback(toLog, nullptr);
}
