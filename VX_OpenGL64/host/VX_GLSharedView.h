// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLChildView.h>
#include <VX_Platform/Foundation/NSRecursiveLock.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>

#include <atomic>
#include <mutex>

class NSMutableDictionary;
class VX_GLRenderpipeline;

/// A further view beside the main view, in its window or in another one: the main view's frame draws it once
/// in each refresh, by `renderSubPipeline` of the pipeline.
///
/// Textures, buffers, shaders and programs of the main context serve in its hook, and whatever is made there
/// serves in the others. Vertex arrays and framebuffers belong to the context that made them: a render
/// target's `Bind` in a child's hook needs a target made there, while a target's textures can be drawn
/// anywhere.
///
/// A host creates the view, calls `setRenderpipeline`, puts it into a window and hands it to
/// `VX_GLMainView::addChildSharedView`. The main view then sets it up in its `prepareOpenGL`, or, for one
/// that is added later, in `initChildShardedViews`.
class VX_EXPORT VX_GLSharedView : public NSOpenGLView, public VX_GLChildView {
public:
    VX_RETURNS_OWN_TYPE(VX_GLSharedView)

    VX_GLSharedView();

    using NSOpenGLView::initWithFrame;
    /// Frame in the parent's coordinates, in pixels. The format may be null: the view takes the main view's.
    /// Host's thread. Returns the view, or null.
    VX_GLSharedView* initWithFrame(CGRect frame, NSOpenGLPixelFormat* format) override;
    void dealloc() override;

    /// Sets whose `renderSubPipeline` draws the view; borrowed, and kept by the host for as long as the view
    /// is drawn. Makes the dictionary of properties if there is none.
    void setRenderpipeline(VX_GLRenderpipeline* pipeline);
    /// Borrowed, or null.
    VX_GLRenderpipeline* renderpipeline() const { return m_TargetRenderpipeline; }

    /// Makes a context that shares with the owner's, gives the former one up, and asks for `prepareOpenGL`.
    /// The owner is retained until `releaseResources`. Host's thread, where the new context is current
    /// afterwards; frames may be running. Without a context of the owner the view stays without one and is
    /// not drawn.
    void initialization(VX_GLMainView* owner) override;
    /// Called by the display pass once for each new context: samples the size, sets the swap interval to 0 (1
    /// where `m_SwapIntervalEnable` is set) and clears to black. Waits for the frame in progress. Host's
    /// thread. GL: glViewport over the whole view, glClearColor(0, 0, 0, 0) and glClear of the colour buffer,
    /// all of which stay set in the view's context; eglSwapBuffers.
    void prepareOpenGL() override;
    /// Called when the view's frame or window changes; nothing unless `SetFollowsSize` was asked for: the
    /// picture keeps its place and size until the view is set up again. Host's thread.
    void update() override;
    /// One frame: `renderSubPipeline` with the view's context current, then the flush. A frame whose context
    /// another thread has is left out. Without a context, which is so after `releaseResources`, the hook runs
    /// on the one that is current. On the display link's thread, from the owner's frame; the view's context
    /// stays current there.
    void callBackRender() override;
    /// Empty: all drawing is the render thread's.
    void drawRect(CGRect) override {}
    /// Gives up context and owner; `initialization` brings both back. Harmless when repeated. Host's thread,
    /// without frames that draw the view: stopped, or under the owner's `RenderThreadLock`.
    void releaseResources() override;

    /// Keeps a host's object for the view, retained, under a copy of the key; without effect ahead of
    /// `setRenderpipeline`. Not locked: of hooks and the host's thread, one at a time.
    void setObject(NSObject* object, NSString* key);
    /// Returns the object of that key, borrowed, or null.
    NSObject* objectForKey(NSString* key) const;

    /// Size in pixels as of the last `prepareOpenGL`, 0 before it: the hook's bounds. A later resize leaves
    /// it alone unless `SetFollowsSize` was asked for. Any thread.
    float width() const { return m_Width; }
    float height() const { return m_Height; }
    /// From the next frame on, and for good, `width`, `height` and the hook's bounds are the drawable's own
    /// size at the beginning of each frame, so that a resize needs no new set-up; the viewport stays the
    /// hook's to set. Off by default. Host's thread.
    void SetFollowsSize(bool follows);

protected:
    ~VX_GLSharedView() override;

    /// The main view, from set-up to `releaseResources`.
    NSRef<VX_GLMainView> m_OwnerView;
    /// The view's own context, which shares with the main view's; guarded by the class itself.
    NSRef<NSOpenGLContext> m_GLContext;
    /// For subclasses; the class itself does not take it.
    NSRef<NSRecursiveLock> m_Lock;
    /// What `width` and `height` tell.
    std::atomic<float> m_Width{0.0f};
    std::atomic<float> m_Height{0.0f};
    /// What `setRenderpipeline` was given; not retained.
    VX_GLRenderpipeline* m_TargetRenderpipeline = nullptr;
    /// What `setObject` keeps; null until `setRenderpipeline`.
    NSRef<NSMutableDictionary> m_UserProperties;
    /// Whether the view waits for the retrace by itself, where by default the main view alone paces.
    bool m_SwapIntervalEnable = false;

private:
    void setContext(NSRef<NSOpenGLContext> context);
    NSRef<NSOpenGLContext> context() const;

    /// `m_GLContext` is replaced while frames may be running.
    mutable std::mutex m_ContextGuard;
    /// From the beginning of a set-up until its context is there: no hook may run on the main view's instead.
    std::atomic<bool> m_AwaitsContext{false};
    std::atomic<bool> m_FollowsSize{false};
};
