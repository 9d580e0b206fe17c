// SPDX-License-Identifier: MIT
#pragma once

class NSOpenGLContext;

namespace vx {

/// The library's context that the calling thread has made current, if it has, retained by the thread. Read
/// ahead of every GL operation, so it is reached without a call.
extern constinit thread_local NSOpenGLContext* currentOnThread [[gnu::tls_model("initial-exec")]];

/// Ends the process with the operation's name unless a GL context of whatever owner is current on the calling
/// thread. `function` is what the compiler calls it at length.
void needContext(const char* function);
/// The same for an operation that is told by two names.
void needForeignContext(const char* className, const char* operation);
inline void needContext(const char* className, const char* operation) {
    if (!currentOnThread)
        needForeignContext(className, operation);
}
/// Whether a GL object of that name may be deleted. Without a current context it must stay, which the log
/// tells; it goes with its last context.
bool mayDelete(const char* className, unsigned name);

} // namespace vx

/// At the top of an operation that makes GL calls.
#define VX_NEEDS_CONTEXT() (::vx::currentOnThread ? void() : ::vx::needContext(__PRETTY_FUNCTION__))
