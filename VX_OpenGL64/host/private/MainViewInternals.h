// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/host/private/FailureLog.h>
#include <VX_OpenGL64/host/private/FrameMeter.h>
#include <VX_Platform/OpenGL/private/FormerContext.h>

#include <condition_variable>
#include <optional>
#include <thread>

/// All that one frame works with, asked for once.
struct VX_GLMainView::Frame {
    NSRef<NSOpenGLContext> context;
    NSRef<VX_GLRenderpipeline> pipeline;
    /// Whether it is still wanted, and by which display link: see `Internals`.
    unsigned ending = 0;
    unsigned run = 0;
    const CVTimeStamp* time = nullptr;
    /// Where the picture goes and whether it got there, for a frame that was asked for with a picture.
    const char* savePath = nullptr;
    bool* saved = nullptr;
};

/// The render lock alone, for as long as it lives.
class VX_GLMainView::Exclusive {
public:
    explicit Exclusive(VX_GLMainView* view) : m_View(view) { view->takeRenderLock(); }
    ~Exclusive() { m_View->m_RenderThreadLock->unlock(); }
    Exclusive(const Exclusive&) = delete;
    Exclusive& operator=(const Exclusive&) = delete;

private:
    VX_GLMainView* m_View;
};

/// The render lock with the hand-over of the contexts.
class VX_GLMainView::Hold {
public:
    explicit Hold(VX_GLMainView* view) : m_View(view) { view->RenderThreadLock(); }
    ~Hold() { m_View->RenderThreadUnLock(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    VX_GLMainView* m_View;
};

/// The context of another view, or a host's own, that is current on the thread when it is made; it is again
/// at its end.
class VX_GLMainView::OthersContext {
public:
    explicit OthersContext(VX_GLMainView* view) {
        m_Former.emplace();
        if (m_Former->isEmpty() || view->isOwn(m_Former->context()))
            m_Former.reset();
    }
    ~OthersContext() {
        if (m_Former)
            m_Former->restore();
    }
    OthersContext(const OthersContext&) = delete;
    OthersContext& operator=(const OthersContext&) = delete;

private:
    std::optional<vx::FormerContext> m_Former;
};

/// What a view measures of its frames, and what it has been asked to do with the next one.
struct VX_GLMainView::Internals {
    vx::FrameMeter meter;
    std::atomic<bool> followsSize{false};
    std::atomic<bool> stepped{false};

    /// Nanoseconds at which drawing began, and the seconds of the present frame.
    std::atomic<std::uint64_t> drawingSince{0};
    std::atomic<double> frameTime{0.0};
    std::uint64_t steppedFrames = 0;
    /// The thread that is inside a frame, if one is.
    std::atomic<std::thread::id> frameThread{};
    bool isInFrame() const { return frameThread == std::this_thread::get_id(); }

    /// Grows when the frame in progress is to go no further.
    std::atomic<unsigned> ending{0};
    /// Grows with each display link; guarded by the view's `m_FrameObjectsLock`.
    unsigned run = 0;
    /// Of the thread that holds the render lock.
    std::optional<OthersContext> othersContext;
    vx::FailureLog failures;

    /// A wish for a picture of the next frame.
    struct SaveRequest {
        const char* path;
        bool done = false;
        bool saved = false;
    };
    std::mutex saveLock;
    std::condition_variable saveDone;
    SaveRequest* save = nullptr;

    bool waitForSave(const char* path);

    /// The view, for what may outlive it.
    std::shared_ptr<VX_GLMainView*> self;
    void tellIfNeverShown(VX_GLMainView* view);
};
