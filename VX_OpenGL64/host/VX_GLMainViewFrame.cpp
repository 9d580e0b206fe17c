// SPDX-License-Identifier: MIT
// What runs at each refresh.
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/VX_GLChildView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/host/private/MainViewInternals.h>
#include <VX_OpenGL64/host/private/SampledSize.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/Clock.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <epoxy/gl.h>

#include <exception>

namespace {

// Refreshes in a row that find the context taken before the log names the remedy: one second of most
// displays.
constexpr int kPatience = 60;
// The first blend of the long average, counted from 0.
constexpr int kFirstBlend = 30;

} // namespace

CVReturn Heartbeat(CVDisplayLinkRef, const CVTimeStamp*, const CVTimeStamp* output, CVOptionFlags,
                   CVOptionFlags*, void* user) {
    auto* record = static_cast<_VX_GLMainViewCallbackContext*>(user);
    if (!record->MainView)
        return 0;
    // A hook may stop and release the view.
    const NSRef<VX_GLMainView> view = NSRef<VX_GLMainView>::retain(record->MainView);
    const VX_GLMainView::Frame frame = view->takeFrame(output);
    CGLContextObj cgl = frame.context ? frame.context->CGLContextObj() : nullptr;
    CGLSetCurrentContext(cgl);
    CGLLockContext(cgl);
    view->refresh(frame);
    CGLUnlockContext(cgl);
    // The host's thread may want it before the next refresh.
    NSOpenGLContext::clearCurrentContext();
    return 0;
}

void VX_GLMainView::DisplayLink_Render(const CVTimeStamp* time) {
    refresh(takeFrame(time));
}

VX_GLMainView::Frame VX_GLMainView::takeFrame(const CVTimeStamp* time) {
    std::lock_guard guard(m_FrameObjectsLock);
    return {NSRef<NSOpenGLContext>::retain(m_cbCtx->GLContext),
            m_TargetRenderpipeline,
            m_Internals->ending,
            m_Internals->run,
            time,
            nullptr,
            nullptr};
}

void VX_GLMainView::refresh(const Frame& frame) {
    const double start = NSDate::timeIntervalSinceReferenceDate();
    if (m_RenderThreadLock->tryLock()) {
        m_Internals->frameTime =
            static_cast<double>(vx::Clock::current().now() - m_Internals->drawingSince) / vx::Clock::kSecond;
        if (!drawLocked(frame))
            noteLostRefresh(frame, frame.context.get() != nullptr);
        m_RenderThreadLock->unlock();
    } else {
        noteLostRefresh(frame, false);
    }
    measure(frame, NSDate::timeIntervalSinceReferenceDate() - start);
}

// Draws a frame unless another thread has the context. What a hook throws ends here, so that the locks come
// free and the show goes on.
bool VX_GLMainView::drawLocked(const Frame& frame) {
    if (!frame.context || !frame.context->tryMakeCurrentContext())
        return false;
    // Nobody else gets it while children or another view's work take its place for a moment.
    const vx::ContextClaim claimed(frame.context.get());
    m_ContextRefusals = 0;
    if (m_Internals->followsSize)
        vx::takeSize(frame.context->drawableSize(), m_Width, m_Height);
    m_Internals->frameThread = std::this_thread::get_id();
    try {
        draw(frame);
    } catch (const std::exception& failure) {
        m_Internals->failures.note(failure.what(), vx::Clock::current().now());
    } catch (...) {
        m_Internals->failures.note("an exception without a text", vx::Clock::current().now());
    }
    m_Internals->frameThread = std::thread::id();
    return true;
}

void VX_GLMainView::countLostRefresh(const Frame& frame) {
    const std::lock_guard guard(m_FrameObjectsLock);
    if (frame.run == m_Internals->run)
        ++m_LostRefreshes;
}

void VX_GLMainView::noteLostRefresh(const Frame& frame, bool contextWasTaken) {
    countLostRefresh(frame);
    if (contextWasTaken && ++m_ContextRefusals == kPatience)
        NSLog(
            "View %p has not been drawn for %d refreshes: a thread keeps its context current without holding "
            "the render lock. Work on it between RenderThreadLock and RenderThreadUnLock",
            static_cast<void*>(this), kPatience);
}

void VX_GLMainView::measure(const Frame& frame, double seconds) {
    const std::lock_guard guard(m_FrameObjectsLock);
    // A frame whose hook has restarted the view is not one of the new display link's.
    if (frame.run != m_Internals->run)
        return;
    m_cbCtx->FrameTimeSum += seconds;
    const int count = m_cbCtx->FrameCount++;
    if (count < kFirstBlend)
        return;
    // The count is not reset with the sum (docs/kept-behaviour.md): this part fades from the 32nd call on.
    m_BenchMarkSum = (m_cbCtx->FrameTimeSum / (count + 1) + m_BenchMarkSum) * 0.5;
    m_cbCtx->FrameTimeSum = 0.0;
}

double VX_GLMainView::GetAvgFPS() const {
    const double seconds = m_BenchMarkSum;
    return seconds > 0.0 ? 1.0 / seconds : 0.0;
}

void VX_GLMainView::callBackRender(const CVTimeStamp* time) {
    draw(takeFrame(time));
}

void VX_GLMainView::draw(const Frame& frame) {
    if (m_SkipRenderThread)
        skipFrame(frame);
    else
        drawFrame(frame);
}

void VX_GLMainView::skipFrame(const Frame& frame) {
    if (!frame.context || !frame.context->makeCurrentContext())
        return;
    clearToBlack();
    present(frame);
}

void VX_GLMainView::present(const Frame& frame) {
    if (frame.context && !frame.context->flushBuffer())
        countLostRefresh(frame);
}

void VX_GLMainView::clearToBlack() {
    glViewport(0, 0, static_cast<int>(m_Width), static_cast<int>(m_Height));
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

void VX_GLMainView::drawFrame(const Frame& frame) {
    const auto pool = NSRef<NSAutoreleasePool>::adopt((new NSAutoreleasePool)->init());
    const double start = NSDate::timeIntervalSinceReferenceDate();
    if (!drawPicture(frame))
        return;
    // Not made current again first: with children, the last child's context is current from here to the end.
    present(frame);
    if (frame.pipeline)
        frame.pipeline->afterGLFlushBuffer(frame.time);
    m_Internals->meter.noteFrame(vx::Clock::current().now());
    m_BenchMarkSum = (m_BenchMarkSum + (NSDate::timeIntervalSinceReferenceDate() - start)) * 0.5;
}

// False when a hook has ended drawing: what is left of the frame would find no pipeline set up, or no
// context.
bool VX_GLMainView::drawPicture(const Frame& frame) {
    if (frame.pipeline)
        frame.pipeline->callBackRender();
    if (hasEnded(frame))
        return false;
    CGRect area = CGRectMake(0.0, 0.0, m_Width, m_Height);
    if (frame.context && !frame.context->makeCurrentContext())
        return false;
    if (frame.pipeline)
        frame.pipeline->renderPipeline(&area);
    if (hasEnded(frame))
        return false;
    saveIfAsked(frame);
    return drawChildren(frame);
}

bool VX_GLMainView::drawChildren(const Frame& frame) {
    forEachChild([&](VX_GLChildView* child) {
        if (!hasEnded(frame))
            child->callBackRender();
    });
    return !hasEnded(frame);
}

bool VX_GLMainView::hasEnded(const Frame& frame) const {
    return m_Internals->ending != frame.ending;
}
