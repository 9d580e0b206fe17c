// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/DriverMessages.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/LineAMinute.h>

#include <epoxy/gl.h>

#include <map>
#include <mutex>
#include <string>

namespace {

// A fault in a hook comes with each frame.
constexpr std::size_t kMostTexts = 256;

class Folder {
public:
    // Logs a text when it is new, and then once a minute at most.
    void log(const std::string& text) {
        std::lock_guard guard(m_Lock);
        const std::uint64_t now = vx::Clock::current().now();
        if (m_Known.size() >= kMostTexts)
            m_Known.clear();
        const auto [lines, isNew] = m_Known.try_emplace(text);
        const std::optional<unsigned> untold = lines->second.ask(now);
        if (isNew)
            NSLog("OpenGL %s", text.c_str());
        else if (untold)
            NSLog("OpenGL %s (%u times more)", text.c_str(), *untold + 1);
    }

private:
    std::mutex m_Lock;
    std::map<std::string, vx::LineAMinute> m_Known;
};

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
    static auto* folder = new Folder;
    const std::size_t size = length < 0 ? std::char_traits<char>::length(text) : std::size_t(length);
    folder->log(kindOf(type) + (" " + std::to_string(id)) + ": " + std::string(text, size));
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
