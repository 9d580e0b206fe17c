// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreImage/CIContext.h>

CIContext* CIContext::contextWithCGLContext(CGLContextObj context) {
    auto* made = new CIContext;
    made->m_Context = NSRef<NSOpenGLContext>::retain(context);
    return made->autorelease();
}
