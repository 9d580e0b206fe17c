// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/FormerContext.h>

#include <VX_Platform/OpenGL/private/ContextInternals.h>

namespace vx {

FormerContext::FormerContext() {
    NSOpenGLContext* current = NSOpenGLContext::currentContext();
    if (current && NSOpenGLContext::Internals::of(current).isBound()) {
        m_Context = NSRef<NSOpenGLContext>::retain(current);
        NSOpenGLContext::Internals::of(current).claim(false);
    } else {
        m_Foreign = GLDriver::currentBinding();
    }
}

FormerContext::~FormerContext() {
    if (m_Context)
        NSOpenGLContext::Internals::of(m_Context.get()).handOver();
}

void FormerContext::restore() const {
    if (m_Context) {
        m_Context->makeCurrentContext();
        return;
    }
    NSOpenGLContext::clearCurrentContext();
    GLDriver::restore(m_Foreign);
}

} // namespace vx
