// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

class NSOpenGLContext;
class NSOpenGLPixelFormat;

/// CGL's names for context and pixel format; they are the objects themselves.
using CGLContextObj = NSOpenGLContext*;
using CGLPixelFormatObj = NSOpenGLPixelFormat*;

/// Result of an operation on a context.
enum CGLError { kCGLNoError = 0, kCGLBadContext = 10004, kCGLBadConnection = 10017 };

/// Makes the context current on the calling thread without waiting; null releases the one that is current
/// there. Answers `kCGLBadContext` when another thread has it current, and leaves everything as it was.
VX_EXPORT CGLError CGLSetCurrentContext(CGLContextObj context);
/// The calling thread's current context, borrowed, or null.
VX_EXPORT CGLContextObj CGLGetCurrentContext();
/// Takes the context's lock, which is recursive and guards nothing by itself. Null does nothing.
VX_EXPORT CGLError CGLLockContext(CGLContextObj context);
/// Gives one hold of the lock back, on the thread that has it. Null does nothing.
VX_EXPORT CGLError CGLUnlockContext(CGLContextObj context);
