// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/backends/GLDriver.h>

#include <optional>

namespace vx {

/// Keeps a context, which is the calling thread's, from every other thread while it lives.
class ContextClaim {
public:
    explicit ContextClaim(NSOpenGLContext* context);
    ~ContextClaim();
    ContextClaim(const ContextClaim&) = delete;
    ContextClaim& operator=(const ContextClaim&) = delete;

    NSOpenGLContext* context() const { return m_Context.get(); }

private:
    NSRef<NSOpenGLContext> m_Context;
};

/// What was current on the calling thread when it was made, to be current there again: one of the library's
/// contexts, which no other thread gets meanwhile, or one of the host's own, or none.
class FormerContext {
public:
    FormerContext();
    FormerContext(const FormerContext&) = delete;
    FormerContext& operator=(const FormerContext&) = delete;

    NSOpenGLContext* context() const { return m_Claim ? m_Claim->context() : nullptr; }
    bool isEmpty() const { return !m_Claim && !m_Foreign.context; }
    /// On the same thread.
    void restore() const;

private:
    std::optional<ContextClaim> m_Claim;
    GLDriver::Binding m_Foreign;
};

} // namespace vx
