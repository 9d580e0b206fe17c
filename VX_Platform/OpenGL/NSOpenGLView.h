// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

/// A view that owns a GL context and draws with it.
///
/// The run loop's display pass calls `prepareOpenGL` once for each new context, with that context current, as
/// soon as the view needs display in a shown window.
class VX_EXPORT NSOpenGLView : public NSView {
public:
    VX_RETURNS_OWN_TYPE(NSOpenGLView)

    /// As by the next, without a format.
    NSOpenGLView* initWithFrame(CGRect frame) override;
    /// Frame in the parent's coordinates, in pixels; the format is retained and may be null, in which case
    /// the view has no context until `setPixelFormat`.
    virtual NSOpenGLView* initWithFrame(CGRect frame, NSOpenGLPixelFormat* format);
    void dealloc() override;

    /// The view's context, borrowed; made on the first call. Null without a pixel format or when the driver
    /// gives none.
    NSOpenGLContext* openGLContext();
    /// The context if there is one by now; never makes one.
    NSOpenGLContext* existingOpenGLContext() const { return m_Context.get(); }
    /// Puts another context in place, retained, which is then prepared like a new one; null for none. The
    /// former one loses its surface where that is this view's.
    void setOpenGLContext(NSOpenGLContext* context);
    /// Drops the context: its surface goes at once, the context with its last reference. Where it is current
    /// on the calling thread it is released there.
    void clearGLContext();
    /// The format, borrowed, or null.
    NSOpenGLPixelFormat* pixelFormat() const { return m_PixelFormat.get(); }
    /// Puts a format in place, retained, for the next context; null for none. The present context stays.
    void setPixelFormat(NSOpenGLPixelFormat* format);

    /// Hook: the context is new, current, and has its surface.
    virtual void prepareOpenGL() {}
    /// Called after a change of the view's frame or window: the context follows when it is next made current.
    virtual void update();
    /// Accepted and ignored: one unit is one pixel on every display here.
    void setWantsBestResolutionOpenGLSurface(bool) {}

    void display() override;
    void viewDidMoveToWindow() override;
    void frameDidChange() override;
    void displayDidChange() override;

    /// Whether the view can be drawn to where it is now: in a window, or anywhere without a window system.
    bool canHaveSurface() const;

protected:
    ~NSOpenGLView() override = default;

private:
    NSRef<NSOpenGLPixelFormat> m_PixelFormat;
    NSRef<NSOpenGLContext> m_Context;
    bool m_Prepared = false;
};
