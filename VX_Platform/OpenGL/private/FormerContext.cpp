// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/FormerContext.h>

#include <VX_Platform/OpenGL/private/ContextInternals.h>

namespace vx {

ContextClaim::ContextClaim(NSOpenGLContext* context) : m_Context(NSRef<NSOpenGLContext>::retain(context)) {
    NSOpenGLContext::Internals::of(context).claim(false);
}

ContextClaim::~ContextClaim() {
    NSOpenGLContext::Internals::of(m_Context.get()).handOver();
}

FormerContext::FormerContext() {
    NSOpenGLContext* current = NSOpenGLContext::currentContext();
    if (current && current->isCurrent())
        m_Claim.emplace(current);
    else
        m_Foreign = GLDriver::currentBinding();
}

void FormerContext::restore() const {
    if (m_Claim) {
        m_Claim->context()->makeCurrentContext();
        return;
    }
    NSOpenGLContext::clearCurrentContext();
    GLDriver::restore(m_Foreign);
}

} // namespace vx
