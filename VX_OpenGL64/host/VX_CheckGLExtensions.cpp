// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <charconv>
#include <cstring>

namespace {

const char* driverText(GLenum name) {
    return reinterpret_cast<const char*>(glGetString(name));
}

/// The number that a text of the driver begins with, with a point whatever the host's locale has; `number`
/// stays where there is none.
void readNumber(GLenum name, float& number) {
    const char* text = driverText(name);
    if (!text)
        return;
    text += std::strspn(text, " \t\n");
    std::from_chars(text, text + std::strlen(text), number);
}

NSString* stringOf(const char* text) {
    return NSString::stringWithCString(text, NSUTF8StringEncoding);
}

NSString* rendererLine() {
    return NSString::stringWithFormat("%@ %@", stringOf(driverText(GL_RENDERER)),
                                      stringOf(driverText(GL_VERSION)));
}

// glutExtensionSupported ends the process unless a GLUT window exists, so libepoxy is asked. Ahead of OpenGL
// 3.0 that takes the tail of a name, or two names with a blank, for a name, and never ends with an empty one.
bool isReported(const char* name) {
    return name && std::strncmp(name, "GL_", 3) == 0 && !std::strchr(name, ' ') &&
           epoxy_has_gl_extension(name);
}

void add(NSMutableArray* messages, NSString* message) {
    if (messages)
        messages->addObject(message);
}

} // namespace

VX_CheckGLExtensions::VX_CheckGLExtensions() {
    VX_NEEDS_CONTEXT();
    readNumber(GL_VERSION, m_GLVersion);
    NSLog("%@", rendererLine());
    float language = 0.0f;
    readNumber(GL_SHADING_LANGUAGE_VERSION, language);
    m_ShadingLanguageVersion = static_cast<int>(language * 100.0f); // in 64 bits 4.60 would give 459
    NSLog("SHADING_LANGUAGE_VERSION: %d", m_ShadingLanguageVersion);
    if (vx::currentGLCapabilities().framebufferMultisample)
        glGetIntegerv(GL_MAX_SAMPLES_EXT, &m_MaxSamples);
    NSLog("GL_MAX_SAMPLES_EXT: %d", m_MaxSamples);
    GLint attachments = 0;
    glGetIntegerv(GL_MAX_COLOR_ATTACHMENTS_EXT, &attachments);
    NSLog("GL_MAX_COLOR_ATTACHMENTS: %d", attachments);
}

bool VX_CheckGLExtensions::CheckGLExtensions(int count, glExtension* table, NSMutableArray* messages) {
    VX_NEEDS_CONTEXT();
    if (messages)
        messages->removeAllObjects();
    readNumber(GL_VERSION, m_GLVersion);
    add(messages, rendererLine());
    bool isComplete = true;
    for (int i = 0; table && (count < 0 ? table[i].Name != nullptr : i < count); ++i) {
        glExtension& record = table[i];
        const bool isInCore = record.Version != 0.0f && m_GLVersion >= record.Version;
        record.Supported = isReported(record.Name) || isInCore;
        if (record.Supported)
            continue;
        isComplete = false;
        add(messages, NSString::stringWithFormat("%@ is not supported.", stringOf(record.Name)));
    }
    return isComplete;
}
