// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

class NSOpenGLContext;
class NSOpenGLPixelFormat;
class NSTimer;
class VX_CheckGLExtensions;
class VX_FinalOutputManager;
class VX_GLMainView;
class VX_GLSharedView;
struct CVTimeStamp;

/// What a host derives from to put its drawing into the render cycle of `VX_GLMainView`. The library owns
/// thread, context, locks and swapping; the subclass owns the scene.
///
/// Hooks are empty here and called by the library:
///
/// | Hook                          | Thread       | State                                                    |
/// |-------------------------------|--------------|----------------------------------------------------------|
/// | `attachGLContext` (context)   | host's       | context current, render lock held, screen cleared        |
/// | `doStartRender`               | host's       | the same                                                 |
/// | `callBackRender`              | display link | context current, both locks held                         |
/// | `renderPipeline`              | display link | the same                                                 |
/// | `renderSubPipeline`           | display link | the child's context current                              |
/// | `afterGLFlushBuffer`          | display link | swapped; with children, the last child's context current |
/// | `onNotify_StopRenderThread`   | the caller's | no lock held: a frame may be running                     |
/// | `doStopRender`                | the caller's | display link gone, context current                       |
/// | `attachGLContext` (two nulls) | the caller's | context current; may come more than once in a row        |
///
/// A per-frame hook that throws ends its frame; the text is logged once and drawing goes on with the next
/// refresh. An exception from another hook passes to the caller of the operation that called it.
class VX_EXPORT VX_GLRenderpipeline : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(VX_GLRenderpipeline)

    /// Makes the output settings. An override begins with this one.
    VX_GLRenderpipeline* init() override;
    /// Hook that nothing in the library calls.
    virtual void freeInstance() {}
    /// Releases the output settings and deletes the capability record. The timer must have been ended by
    /// `doStopRender`.
    void dealloc() override;

    /// Hook that nothing in the library calls; the argument's meaning is the host's.
    virtual void UpdateChannelResolution(int /*channel*/) {}
    /// Hook: work in progress is to come to its end, since a stop is about to wait for the frame.
    virtual void onNotify_StopRenderThread() {}
    /// Hook: per-frame work ahead of drawing.
    virtual void callBackRender() {}
    /// Hook: the moment to make filters, textures and meshes.
    virtual void doStartRender() {}
    /// Hook with a behaviour of its own: ends `m_PrimaryThreadTimer`. An override calls it, or ends the timer
    /// itself.
    virtual void doStopRender();

    /// From the next refresh on, the view only clears to black and no hook runs. Any thread.
    void DoSuspend();
    /// Undoes `DoSuspend`. Any thread.
    void DoResume();

    /// Sets the link to the view, not retained. The host calls it; without it `DoSuspend` and `DoResume`
    /// reach nothing.
    void setTargetGLView(VX_GLMainView* view) { m_TargetGLView = view; }
    /// The view that was set; borrowed, or null.
    VX_GLMainView* targetGLView() const { return m_TargetGLView; }
    /// Borrowed.
    VX_FinalOutputManager* finalOutputManager() const { return m_FinalOutputManager; }
    /// What a subclass stored in `m_GLExtension`, or null.
    VX_CheckGLExtensions* glextension() const { return m_GLExtension; }

    /// Hook that nothing in the library calls: the work of a subclass's timer.
    virtual void primaryThreadLoop() {}
    /// Hook: draw the frame. `bounds` has origin (0, 0) and the view's `width` and `height`, which are those
    /// of the last `prepareOpenGL` unless the view follows its size; it is valid during the call. No viewport
    /// is set.
    virtual void renderPipeline(CGRect* /*bounds*/) {}
    /// Hook: draw into a child view; `bounds` is the child's.
    virtual void renderSubPipeline(CGRect* /*bounds*/, VX_GLSharedView* /*targetView*/) {}
    /// Hook: the frame has been handed to the display. `outputTime` is that of its refresh, valid during the
    /// call.
    virtual void afterGLFlushBuffer(const CVTimeStamp* /*outputTime*/) {}
    /// Hook: make GL objects for a context, or drop them when both are null. The result is ignored.
    virtual bool attachGLContext(NSOpenGLContext* /*context*/, NSOpenGLPixelFormat* /*pixelFormat*/) {
        return true;
    }

protected:
    ~VX_GLRenderpipeline() override = default;

    /// What `setTargetGLView` was given; not retained.
    VX_GLMainView* m_TargetGLView = nullptr;
    /// Made by `init`, owned.
    VX_FinalOutputManager* m_FinalOutputManager = nullptr;
    /// For a subclass that makes a record of the driver, in `attachGLContext` for example; deleted by
    /// `dealloc`.
    VX_CheckGLExtensions* m_GLExtension = nullptr;
    /// For a subclass that makes a timer, retained; ended and released by `doStopRender`.
    NSTimer* m_PrimaryThreadTimer = nullptr;
    /// Seconds between two calls of that timer; 1/30. For subclasses.
    double m_IdleTimerInterval = 0.0;
    /// False from `DoSuspend` to `DoResume`, and at first. For subclasses.
    bool m_StartUpInitialized = false;
    /// -1 from `DoResume` on, else what a subclass puts there.
    double m_TimeCounter = 0.0;
};
