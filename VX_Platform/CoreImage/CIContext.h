// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/CGL.h>

/// Where images are made from the textures of a GL context. Colour profiles are ignored: device colours in,
/// device colours out.
class VX_EXPORT CIContext : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(CIContext)

    /// Borrowed, autoreleased. Retains the GL context.
    static CIContext* contextWithCGLContext(CGLContextObj context);
    void dealloc() override;

    CGLContextObj CGLContext() const { return m_Context; }

private:
    CGLContextObj m_Context = nullptr;
};
