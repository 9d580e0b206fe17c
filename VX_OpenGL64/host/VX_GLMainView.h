// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <VX_Platform/Foundation/NSRecursiveLock.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

class CIContext;
class NSImage;
class NSMutableArray;
class NSOpenGLContext;
class VX_GLChildView;
class VX_GLMainView;
class VX_GLRenderpipeline;

/// Name of the notification that a view posts, with itself as the object, after `prepareOpenGL` has returned.
inline constexpr const char* VX_GLMainView_PreparedOpenGLNotification =
    "VX_GLMainView_PreparedOpenGLNotification";

/// All that `Heartbeat` knows of a view. Context and view are not retained.
struct _VX_GLMainViewCallbackContext {
    /// The context of the frames; null while there is none.
    NSOpenGLContext* GLContext;
    /// The view that the record belongs to.
    VX_GLMainView* MainView;
    /// Seconds spent drawing since the mean was last taken, and in how many frames.
    double FrameTimeSum;
    std::int32_t FrameCount;
};

/// One refresh of the view whose callback record `user` is: makes its context current without waiting, takes
/// the CGL lock, calls `DisplayLink_Render` with `output`, and releases both. Called by the display link on
/// its thread; a test may call it on its own. Returns 0.
VX_EXPORT CVReturn Heartbeat(CVDisplayLinkRef link, const CVTimeStamp* now, const CVTimeStamp* output,
                             CVOptionFlags flagsIn, CVOptionFlags* flagsOut, void* user);

/// The view that draws by itself, at its display's refresh rate and on a thread of its own, by calling the
/// hooks of a pipeline.
///
/// A host creates it with `initWithFrame`, gathers a pixel format, puts the view into a window and calls
/// `initializationWithPixelFormat`; the run loop then calls `prepareOpenGL`, which starts drawing. To end it
/// calls `stopRender`, `releaseResources` and `release`.
///
/// A context is current on one thread at most, so the render lock is also the hand-over of the view's
/// contexts: a host that works on GL objects calls `RenderThreadLock`, `makeCurrentContext`, does its work
/// and calls `RenderThreadUnLock`, which releases the context from its thread. A refresh that does not get
/// the lock or the context draws nothing and runs no hook.
class VX_EXPORT VX_GLMainView : public NSOpenGLView {
public:
    VX_RETURNS_OWN_TYPE(VX_GLMainView)

    VX_GLMainView();

    using NSOpenGLView::initWithFrame;
    /// Frame in the parent's coordinates, in pixels. The format may be null. Host's thread. Returns the view,
    /// or null.
    VX_GLMainView* initWithFrame(CGRect frame, NSOpenGLPixelFormat* format) override;
    /// Detaches the pipeline (its `attachGLContext` with two nulls, the context current where there is one),
    /// releases the children's contexts, the image context and the view's own. Does not stop the display
    /// link; waits for a frame in progress, or from a hook leaves its rest out. Host's thread.
    void releaseResources();
    /// The host has called `stopRender` and `releaseResources` before. A display link that still runs is
    /// stopped without a hook, with a line in the log. A pipeline that ends with the view finds the view's
    /// context current, where there is one still.
    void dealloc() override;

    /// Asks for an image context, made in the next `prepareOpenGL`.
    void SetNeedCIContext() { m_NeedCIContext = true; }

    /// Empties the list of pixel format words.
    void ResetPixelFormatAttributes();
    /// Appends one word. A list holds 63 words and its terminator; the view does not tell a host of more, and
    /// keeps the first 63.
    void AddPixelFormatAttribute(std::uint32_t word);
    /// Appends an attribute and its value, or neither where there is not room for both.
    void AddPixelFormatAttribute(std::uint32_t attribute, std::uint32_t value);
    /// Terminates the list and returns it; borrowed, valid as long as the view.
    const std::uint32_t* GetPixelFormatAttributes();

    /// Releases what the view had, retains the pipeline and takes a pixel format from a list closed by 0; the
    /// view then prepares itself in the next display pass. Host's thread; the new context is current there
    /// afterwards. False for a null pipeline, an unusable list, or without a platform; the earlier resources
    /// are gone then too. To change pipelines call `stopRender` first: without it the former one gets no
    /// `doStopRender`, only its detaching `attachGLContext`.
    bool initializationWithPixelFormat(VX_GLRenderpipeline* pipeline, const std::uint32_t* attributes);
    /// Forgets the pipeline without releasing it: the view's reference becomes the caller's. Not while
    /// drawing.
    void detachRenderpipeline();

    /// Called by the display pass, once for each new context: samples the view's size, sets hints and the
    /// swap interval of 1, initialises the children and starts drawing. Nothing without a context. Host's
    /// thread. GL: glHint (for the clip volume only where the driver has it), then those of `startRender`.
    void prepareOpenGL() override;
    /// Stops the drawing, as `stopRenderThread` does.
    void windowServerDidEnd() override { stopRenderThread(); }

    /// Makes the view's context current and calls `initialization` of each child.
    void initChildShardedViews();
    /// Appends a child, retained; it must be an `NSObject` (null does nothing, with a line in the log). While
    /// drawing the host holds `RenderThreadLock` around this and the next one: a change during the walk of a
    /// frame ends the process.
    void addChildSharedView(VX_GLChildView* view);
    /// Empties the list without releasing the children's GL resources.
    void removeAllChildSharedViews();

    /// Clears the screen to black, hands the context to the pipeline (`attachGLContext`, `doStartRender`) and
    /// starts the display link. Waits for the render lock; releases the context from the calling thread if
    /// that held no render lock before, as `RenderThreadUnLock` does. Where another thread keeps the context,
    /// nothing is started and the log says so. Always true. GL: glViewport over the whole view,
    /// glClearColor(0, 0, 0, 0) and glClear of the colour buffer, all of which stay set; eglSwapBuffers.
    bool startRender();
    /// Stops the display link, then calls `doStopRender` and the detaching `attachGLContext` with the context
    /// current, which stays current on the calling thread unless another view's or a host's own was before:
    /// that one is again. Harmless in any state, when repeated, and from a hook: the rest of that frame is
    /// left out, hooks and flush. What `onNotify_StopRenderThread` or `doStopRender` throw goes to the log.
    void stopRender();
    /// Makes and starts the display link if there is none, and sets the frame average to 0.
    void startRenderThread();
    /// Calls `onNotify_StopRenderThread`, waits for the frame and ends the display link.
    void stopRenderThread();

    /// Makes the view's context current on the calling thread, waiting up to two seconds for a frame in
    /// progress; the next turn is the caller's, at the cost of a lost refresh. False, with a line in the log,
    /// when it cannot be had.
    bool makeCurrentContext();

    /// One frame: hooks, children, flush. With the skip set: clear and flush alone. Needs the render lock,
    /// and the context current or free. GL of its own only when skipping: glViewport, glClearColor, glClear.
    /// Bindings and state that the hooks leave behind are there in the next frame.
    void callBackRender(const CVTimeStamp* time);
    /// Tries the render lock, draws a frame if it gets it, and measures. Never waits.
    void DisplayLink_Render(const CVTimeStamp* time);

    /// Whether the view is in a window that is shown; before it once was, nothing is prepared or drawn.
    /// Host's thread.
    bool IsShown() const;
    /// Borrowed; null unless `SetNeedCIContext` came before `prepareOpenGL`.
    CIContext* ciContext() const { return m_ciContext.get(); }
    /// Borrowed, or null.
    VX_GLRenderpipeline* renderpipeline() const { return m_TargetRenderpipeline.get(); }
    /// Size in pixels as of the last `prepareOpenGL`, which is what the hooks get as bounds; a later resize
    /// leaves it alone unless `SetFollowsSize` was asked for. Any thread.
    float width() const { return m_Width; }
    float height() const { return m_Height; }
    /// From the next frame on, and for good, `width`, `height` and the hooks' bounds are the drawable's own
    /// size at the beginning of each frame, so that a resize needs no stop. Off by default. Any thread.
    void SetFollowsSize(bool follows);

    /// A rough figure of how fast frames are drawn: 1 over the smoothed seconds spent in one; 0 before the
    /// first. It is not the display's rate. Any thread.
    double GetAvgFPS() const;
    /// Frames drawn since the display link was made, those of `StepFrame` included. Any thread.
    std::uint64_t GetDrawnFrames() const;
    /// Drawn frames per second, counted over the last half second of drawing; 0 before that. Any thread.
    double GetFrameRate() const;
    /// Seconds that the present frame is drawn for: since drawing began, or as `StepFrame` was told. A
    /// picture that moves by it moves alike on every display, and in a recording. In the hooks.
    double GetFrameTime() const;

    /// Writes a frame as a PNG file of the view's size, RGB. Inside a hook of the frame, after drawing, it
    /// writes what is drawn by then; on another thread it waits for the next frame and lets that write it, up
    /// to two seconds, and must not hold the render lock. `path` is borrowed. False, with one line in the
    /// log, when no frame comes or the file cannot be written. GL: see `VX_GLSavePicture`; the back buffer of
    /// the default framebuffer is read, whatever the host reads from, and all bindings are as before.
    bool SaveFrame(const char* path);
    /// The picture in a 2D or a rectangle texture of the view's share group, taken to have the view's shape:
    /// fitted into an image of width x height pixels, in the middle, on black. The texture's first row is
    /// the lowest; its colours count as multiplied by its alpha. Borrowed, autoreleased.
    ///
    /// Call `SetNeedCIContext` before `prepareOpenGL`: without an image context the image is black. Null for
    /// the name 0, and with one line in the log for one that is no such texture and where the context cannot
    /// be had. Any thread; waits for the frame in progress, and for the GPU. What was current on the thread
    /// is again, but for the view's own context without the render lock: see `RenderThreadUnLock`. GL:
    /// glGetIntegerv, glIsTexture, glBindTextures, glBindTexture, glGetTexLevelParameteriv,
    /// glPushClientAttrib, glPixelStorei, glBindBuffer, glGetTexImage, glPopClientAttrib; nothing stays
    /// changed.
    NSImage* CreateNSImageFromTexture(unsigned int texture, float width, float height);

    /// Whether `startRender` makes no display link, and frames come by `StepFrame` alone: for recording, and
    /// for tests. Set before `prepareOpenGL`, or while stopped.
    void SetStepped(bool stepped);
    /// Draws one frame on the calling thread, with all hooks, for the time `seconds` (`GetFrameTime`), and
    /// writes it to `path` if that is not null. Takes as long as it takes: no display is waited for but by
    /// the swap. The context is released from the thread afterwards unless the render lock is held. False,
    /// with one line in the log, when the view has not been prepared, draws by itself, or the file cannot be
    /// written.
    bool StepFrame(double seconds, const char* path = nullptr);

    /// Refreshes since the display link was made whose picture did not reach the display: the render lock or
    /// the context was taken and nothing was drawn, or the window system did not take the frame. Any thread.
    std::uint64_t GetLostRefreshes() const { return m_LostRefreshes; }
    /// The display link, for its throttle and rate; null while not drawing. Under the render lock.
    CVDisplayLinkRef displayLink() const { return m_DisplayLink; }

    /// Waits for the frame in progress and pauses drawing until `RenderThreadUnLock`. Recursive. Any thread.
    /// While it waits, it gives other threads a context of the view that is current here.
    /// Of two views whose hooks take each other's lock both can wait for good: let one side alone do so.
    void RenderThreadLock();
    /// Resumes drawing. With its last hold the thread also gives back the view's context, or a child's, if
    /// one is current on it, and what was current at `RenderThreadLock` is again: another view's context or a
    /// host's own. From a hook, a hold that the hook has not taken itself is not given back; the log says so.
    void RenderThreadUnLock();
    /// While true, frames only clear to black and swap. Any thread; seen by the next frame.
    void SetSkipRenderThread(bool skip) { m_SkipRenderThread = skip; }

protected:
    ~VX_GLMainView() override;

private:
    friend CVReturn Heartbeat(CVDisplayLinkRef, const CVTimeStamp*, const CVTimeStamp*, CVOptionFlags,
                              CVOptionFlags*, void*);

    bool isOwn(NSOpenGLContext* context);
    void endFrame();
    void makeDisplayLink();
    void startCounting();
    void tieDisplayLink();
    void clearToBlack();
    void makeImageContext();
    void detachPipelineFromContext();
    void endPipeline();
    bool makeExistingContextCurrent();
    struct VX_HIDDEN Internals;
    struct VX_HIDDEN Frame;
    class VX_HIDDEN Exclusive;
    class VX_HIDDEN Hold;
    class VX_HIDDEN OthersContext;

    void takeRenderLock();
    void setFrameContext(NSOpenGLContext* context);
    void setPipeline(VX_GLRenderpipeline* pipeline);
    Frame takeFrame(const CVTimeStamp* time);
    void refresh(const Frame& frame);
    bool drawLocked(const Frame& frame);
    void saveIfAsked(const Frame& frame);
    bool savePicture(const char* path);
    NSRef<NSImage> readTexture(unsigned int texture);
    void draw(const Frame& frame);
    void drawFrame(const Frame& frame);
    bool drawPicture(const Frame& frame);
    bool drawChildren(const Frame& frame);
    bool hasEnded(const Frame& frame) const;
    void skipFrame(const Frame& frame);
    void present(const Frame& frame);
    void forEachChild(const std::function<void(VX_GLChildView*)>& visit);
    void noteLostRefresh(const Frame& frame, bool contextWasTaken);
    void countLostRefresh(const Frame& frame);
    void measure(const Frame& frame, double seconds);

    NSRef<NSRecursiveLock> m_RenderThreadLock;
    std::atomic<float> m_Width{0.0f};
    std::atomic<float> m_Height{0.0f};
    std::int32_t m_PixelFormatAttributeIndex = 0;
    // Closed twice, for a list whose last attribute lacks its value.
    std::uint32_t m_PixelFormatAttributes[64 + 1] = {};
    std::atomic<double> m_BenchMarkSum{0.0};
    NSRef<CIContext> m_ciContext;
    bool m_NeedCIContext = false;
    std::atomic<bool> m_SkipRenderThread{false};
    NSRef<VX_GLRenderpipeline> m_TargetRenderpipeline;
    NSRef<NSMutableArray> m_ChildSharedViews;
    CVDisplayLinkRef m_DisplayLink = nullptr;
    _VX_GLMainViewCallbackContext* m_cbCtx = nullptr;

    // Guards the record and the pipeline: a frame works with them while the host may put others in place.
    std::mutex m_FrameObjectsLock;
    NSRef<NSOpenGLContext> m_FrameContext;
    std::atomic<std::uint64_t> m_LostRefreshes{0};
    std::unique_ptr<Internals> m_Internals;
    int m_ContextRefusals = 0;
};
