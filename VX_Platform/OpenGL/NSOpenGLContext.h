// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/CGL.h>

#include <memory>
#include <mutex>

class NSOpenGLPixelFormat;
class NSOpenGLView;

namespace vx {
struct GLCapabilities;
} // namespace vx

/// `NSOpenGLCPSwapInterval`: retraces that a swap waits for; 1 ties it to the display, 0 lets it go at once.
enum NSOpenGLContextParameter { NSOpenGLCPSwapInterval = 222 };

/// A GL context of the compatibility profile, and the surface of the view it draws to.
///
/// A context is current on one thread at most. `makeCurrentContext` waits while another thread is about to
/// hand it over; `tryMakeCurrentContext` never waits. A thread keeps what it made current (and a reference to
/// it) until it makes another current, calls `clearCurrentContext` or ends.
class VX_EXPORT NSOpenGLContext : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSOpenGLContext)

    NSOpenGLContext();

    /// A context of the format that shares textures, buffers, shaders and programs with `share` (may be
    /// null). Any thread. Returns the object, or releases it and returns null, with a line in the log.
    NSOpenGLContext* initWithFormat(NSOpenGLPixelFormat* format, NSOpenGLContext* share);
    void dealloc() override;

    /// Makes this context current on the calling thread, with its surface if it has one. Waits up to two
    /// seconds while it is current on another thread; when that does not hand it over, logs one line and
    /// returns false.
    bool makeCurrentContext();
    /// The same without waiting.
    bool tryMakeCurrentContext();
    /// Whether this context is current on the calling thread.
    bool isCurrent() const;
    /// Whether both have textures, buffers, shaders and programs in common; so has each with itself.
    bool sharesWith(const NSOpenGLContext* other) const;
    /// The calling thread's current context, borrowed, or null.
    static NSOpenGLContext* currentContext();
    /// Releases whatever context is current on the calling thread.
    static void clearCurrentContext();

    /// Presents the back buffer (`eglSwapBuffers`); nothing without a surface. Where another context is
    /// current on the calling thread, this one is made current for the swap and the other one afterwards
    /// again. Without a window it waits, as a window's swap does, until the frame before is drawn, at the
    /// most two seconds (`eglCreateSync`, `eglClientWaitSync`). False when the frame was given up: the
    /// context could not be had, or the window system does not take a frame now and a swap would wait for it.
    bool flushBuffer();

    /// Sets `NSOpenGLCPSwapInterval` from `values[0]`; remembered and applied to each surface bound from now
    /// on.
    void setValues(const int* values, NSOpenGLContextParameter parameter);
    /// Writes the value that was set last, 0 at first, to `values[0]`; another parameter leaves it.
    void getValues(int* values, NSOpenGLContextParameter parameter) const;

    /// Gives the context the view's surface, or none for null; the view is not retained. Waits as
    /// `makeCurrentContext` does when the context is current on another thread.
    void setView(NSOpenGLView* view);
    /// The view that was set; borrowed, or null.
    NSOpenGLView* view() const { return m_View; }
    /// Size in pixels of what the context draws to now, (0, 0) without a surface. On the thread that has it
    /// current.
    CGSize drawableSize() const;
    /// Takes the surface away.
    void clearDrawable();
    /// Follows a change of the view's frame or window, at the next time that the context is made current. On
    /// the view's thread.
    void update();

    /// The object itself, under CGL's name for it.
    NSOpenGLContext* CGLContextObj() { return this; }
    /// The context's recursive lock, which guards nothing by itself; frames hold it. Any thread.
    void lock() { m_Lock.lock(); }
    void unlock() { m_Lock.unlock(); }

    /// For the view: its window may be on another display now, or the display may have another rate; a
    /// display link on this context follows. Main thread.
    void noteDisplay();
    /// What the share group's driver can do; read when a context of the group is first made current.
    vx::GLCapabilities& capabilities();

    /// The library's own side of a context.
    struct VX_HIDDEN Internals;

protected:
    ~NSOpenGLContext() override;

private:
    bool becomeCurrent(bool wait);

    std::unique_ptr<Internals> m_Internals;
    NSOpenGLView* m_View = nullptr;
    std::recursive_mutex m_Lock;
};
