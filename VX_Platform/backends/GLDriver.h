// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

/// What a pixel format asks for; sizes in bits, -1 where nothing was asked.
struct GLFormatRequest {
    int colorBits = -1;
    int alphaBits = -1;
    int depthBits = -1;
    int stencilBits = -1;
    int sampleBuffers = -1;
    int samples = -1;
};

/// The GL side of a platform: configurations, contexts, surfaces. Handles are those of EGL and stay opaque
/// here. Any thread, but for the rule that a context is current on one thread at most.
class GLDriver {
public:
    using Handle = void*;

    /// Kind of surface that a platform's views draw to, as EGL's surface type bit.
    enum class SurfaceKind { window, pbuffer };

    /// Takes over an EGL display that has been initialised and ends it in the destructor.
    GLDriver(Handle display, SurfaceKind kind);
    ~GLDriver();
    GLDriver(const GLDriver&) = delete;
    GLDriver& operator=(const GLDriver&) = delete;

    /// The best configuration for the request, or null.
    Handle chooseConfig(const GLFormatRequest& request) const;
    /// The native visual of a configuration (an X11 visual id), 0 without one.
    unsigned long nativeVisual(Handle config) const;

    /// A compatibility context sharing with `share` (may be null), or null with a line in the log. A debug
    /// context tells of faults by GL's debug output.
    Handle createContext(Handle config, Handle share, bool debug) const;
    void destroyContext(Handle context) const;

    /// A surface on a native window, or null with a line in the log.
    Handle createWindowSurface(Handle config, unsigned long window) const;
    bool canMakePbuffers(Handle config) const;
    /// An off-screen surface in pixels; sizes below 1 count as 1.
    Handle createPbuffer(Handle config, int width, int height) const;
    void destroySurface(Handle surface) const;

    /// Binds context and surface (may be null) to the calling thread.
    bool makeCurrent(Handle context, Handle surface) const;
    void clearCurrent() const;
    bool swapBuffers(Handle surface) const;
    /// After a swap: the end of what the calling thread's context has drawn so far. Null where swapping waits
    /// by itself, as it does for windows, and where EGL has no fences.
    Handle createFence() const;
    /// Waits until that end is reached, at the most two seconds, and ends the fence, which may be null.
    void awaitFence(Handle fence) const;
    /// For the surface bound on the calling thread.
    void setSwapInterval(int interval) const;

    /// "name: version" of the EGL implementation.
    std::string description() const;
    /// What EGL has current on a thread, whoever made it so.
    struct Binding {
        Handle display = nullptr;
        Handle draw = nullptr;
        Handle read = nullptr;
        Handle context = nullptr;
    };
    static Binding currentBinding();
    /// The context of it alone: each question to EGL takes a third of a microsecond.
    static Handle currentContext();
    static void restore(const Binding& binding);
    /// Whether a GL context of whatever owner is current on the calling thread: one of EGL's, or of GLX's
    /// where the process uses that.
    static bool anyContextIsCurrent();
    /// Text of the calling thread's last EGL error.
    static std::string lastError();

private:
    std::vector<Handle> collectConfigs(const GLFormatRequest& request) const;
    int rank(Handle config, const GLFormatRequest& request) const;
    int attribute(Handle config, int name) const;

    Handle m_Display;
    SurfaceKind m_Kind;
};

} // namespace vx
