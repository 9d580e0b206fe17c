// SPDX-License-Identifier: MIT
// What runs at each refresh.
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/VX_GLChildView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSLog.h>
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
    const NSRef<NSOpenGLContext> context = view->frameContext();
    CGLContextObj cgl = context ? context->CGLContextObj() : nullptr;
    CGLSetCurrentContext(cgl);
    CGLLockContext(cgl);
    view->DisplayLink_Render(output);
    CGLUnlockContext(cgl);
    // The host's thread may want it before the next refresh.
    NSOpenGLContext::clearCurrentContext();
    return 0;
}

void VX_GLMainView::DisplayLink_Render(const CVTimeStamp* time) {
    const double start = NSDate::timeIntervalSinceReferenceDate();
    if (m_RenderThreadLock->tryLock()) {
        if (!drawLocked(time))
            noteLostRefresh(existingOpenGLContext() != nullptr);
        m_RenderThreadLock->unlock();
    } else {
        noteLostRefresh(false);
    }
    measure(NSDate::timeIntervalSinceReferenceDate() - start);
}

// Draws a frame unless another thread has the context. What a hook throws ends here, so that the locks come
// free and the show goes on.
bool VX_GLMainView::drawLocked(const CVTimeStamp* time) {
    const NSRef<NSOpenGLContext> context = frameContext();
    if (!context || !context->tryMakeCurrentContext())
        return false;
    m_ContextRefusals = 0;
    try {
        callBackRender(time);
    } catch (const std::exception& failure) {
        noteFailure(failure.what());
    } catch (...) {
        noteFailure("an exception without a text");
    }
    return true;
}

void VX_GLMainView::noteFailure(const char* text) {
    if (m_LastFailure == text)
        return;
    m_LastFailure = text;
    NSLog("A render hook failed and its frame was given up: %s", text);
}

void VX_GLMainView::noteLostRefresh(bool contextWasTaken) {
    ++m_LostRefreshes;
    if (contextWasTaken && ++m_ContextRefusals == kPatience)
        NSLog(
            "View %p has not been drawn for %d refreshes: a thread keeps its context current without holding "
            "the "
            "render lock. Work on it between RenderThreadLock and RenderThreadUnLock",
            static_cast<void*>(this), kPatience);
}

void VX_GLMainView::measure(double seconds) {
    m_cbCtx->FrameTimeSum += seconds;
    const int count = m_cbCtx->FrameCount++;
    if (count < kFirstBlend)
        return;
    // The count is not reset with the sum; that is meant, and makes this part fade from the 32nd call on.
    m_BenchMarkSum = (m_cbCtx->FrameTimeSum / (count + 1) + m_BenchMarkSum) * 0.5;
    m_cbCtx->FrameTimeSum = 0.0;
}

double VX_GLMainView::GetAvgFPS() const {
    const double seconds = m_BenchMarkSum;
    return seconds > 0.0 ? 1.0 / seconds : 0.0;
}

void VX_GLMainView::callBackRender(const CVTimeStamp* time) {
    if (m_SkipRenderThread)
        skipFrame();
    else
        drawFrame(time);
}

void VX_GLMainView::skipFrame() {
    NSOpenGLContext* context = existingOpenGLContext();
    if (!context || !context->makeCurrentContext())
        return;
    clearToBlack();
    context->flushBuffer();
}

void VX_GLMainView::clearToBlack() {
    glViewport(0, 0, static_cast<int>(m_Width), static_cast<int>(m_Height));
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

void VX_GLMainView::drawFrame(const CVTimeStamp* time) {
    const auto pool = NSRef<NSAutoreleasePool>::adopt((new NSAutoreleasePool)->init());
    const double start = NSDate::timeIntervalSinceReferenceDate();
    const NSRef<VX_GLRenderpipeline> pipeline = framePipeline();
    if (pipeline)
        pipeline->callBackRender();
    CGRect area = CGRectMake(0.0, 0.0, m_Width, m_Height);
    NSOpenGLContext* context = existingOpenGLContext();
    if (context)
        context->makeCurrentContext();
    if (pipeline)
        pipeline->renderPipeline(&area);
    forEachChild([](VX_GLChildView* child) { child->callBackRender(); });
    // Not made current again first: with children, the last child's context is current from here to the end.
    if (context)
        context->flushBuffer();
    if (pipeline)
        pipeline->afterGLFlushBuffer(time);
    m_BenchMarkSum = (m_BenchMarkSum + (NSDate::timeIntervalSinceReferenceDate() - start)) * 0.5;
}
