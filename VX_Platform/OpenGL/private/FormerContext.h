// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/backends/GLDriver.h>

namespace vx {

/// What was current on the calling thread when it was made, to be current there again: one of the library's
/// contexts, which no other thread gets meanwhile, or one of the host's own, or none.
class FormerContext {
public:
    FormerContext();
    /// Forgets it without a change of what is current.
    ~FormerContext();
    FormerContext(const FormerContext&) = delete;
    FormerContext& operator=(const FormerContext&) = delete;

    NSOpenGLContext* context() const { return m_Context.get(); }
    bool isEmpty() const { return !m_Context && !m_Foreign.context; }
    /// On the same thread.
    void restore() const;

private:
    NSRef<NSOpenGLContext> m_Context;
    GLDriver::Binding m_Foreign;
};

} // namespace vx
