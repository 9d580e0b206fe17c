// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreImage/CIContext.h>

#include <VX_Platform/OpenGL/NSOpenGLContext.h>

CIContext* CIContext::contextWithCGLContext(CGLContextObj context) {
    auto* made = new CIContext;
    made->m_Context = context ? context->retain() : nullptr;
    return made->autorelease();
}

void CIContext::dealloc() {
    if (m_Context)
        m_Context->release();
    NSObject::dealloc();
}
