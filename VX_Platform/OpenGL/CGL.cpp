// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/CGL.h>

#include <VX_Platform/OpenGL/NSOpenGLContext.h>

CGLError CGLSetCurrentContext(CGLContextObj context) {
    if (!context) {
        NSOpenGLContext::clearCurrentContext();
        return kCGLNoError;
    }
    return context->tryMakeCurrentContext() ? kCGLNoError : kCGLBadContext;
}

CGLContextObj CGLGetCurrentContext() {
    return NSOpenGLContext::currentContext();
}

CGLError CGLLockContext(CGLContextObj context) {
    if (!context)
        return kCGLBadContext;
    context->lock();
    return kCGLNoError;
}

CGLError CGLUnlockContext(CGLContextObj context) {
    if (!context)
        return kCGLBadContext;
    context->unlock();
    return kCGLNoError;
}
