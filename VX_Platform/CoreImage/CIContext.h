// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/CGL.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

/// Where images are made from the textures of a GL context. Colour profiles are ignored: device colours in,
/// device colours out.
class VX_EXPORT CIContext : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(CIContext)

    /// `context` is retained and may be null. Returns a borrowed, autoreleased image context. Any thread,
    /// with no context current; makes no GL call.
    static CIContext* contextWithCGLContext(CGLContextObj context);

    /// Returns the GL context, borrowed, or null.
    CGLContextObj CGLContext() const { return m_Context.get(); }

protected:
    ~CIContext() override = default;

private:
    NSRef<NSOpenGLContext> m_Context;
};
