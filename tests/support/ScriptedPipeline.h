// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <tests/support/LogCollector.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace vx::test {

/// The headless platform for the process.
struct HeadlessTest : testing::Test {
    HeadlessTest() { NSApplication::useHeadlessPlatform(); }
};

/// Notes each hook, and does in `onRender` and the like what a test asks for.
class ScriptedPipeline : public VX_GLRenderpipeline {
public:
    VX_RETURNS_OWN_TYPE(ScriptedPipeline)

    std::function<void()> onCallBack, onRender, onStart, onStop, onAfterFlush;

    void onNotify_StopRenderThread() override { noteCall("notify"); }
    void callBackRender() override { note("callBack", onCallBack); }
    void doStartRender() override { note("start", onStart); }
    void doStopRender() override {
        note("stop", onStop);
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        lastBounds = *bounds;
        note("render", onRender);
    }
    void afterGLFlushBuffer(const CVTimeStamp* time) override {
        {
            std::lock_guard guard(m_Lock);
            m_LastStamp = *time;
        }
        note("afterFlush", onAfterFlush);
    }
    bool attachGLContext(NSOpenGLContext* context, NSOpenGLPixelFormat* format) override {
        noteCall(context && format ? "attach" : "detach");
        return false; // ignored
    }

    /// What was noted since the last call, joined by blanks.
    std::string takeCalls() {
        std::lock_guard guard(m_Lock);
        return std::exchange(m_Calls, {});
    }
    void noteCall(const char* name) {
        std::lock_guard guard(m_Lock);
        m_Calls += (m_Calls.empty() ? "" : " ") + std::string(name);
    }

    CGRect lastBounds;
    /// What the last frame was drawn for.
    CVTimeStamp lastStamp() {
        std::lock_guard guard(m_Lock);
        return m_LastStamp;
    }

private:
    void note(const char* name, const std::function<void()>& action) {
        noteCall(name);
        if (action)
            action();
    }

    std::mutex m_Lock;
    std::string m_Calls;
    CVTimeStamp m_LastStamp;
};

/// A main view in a window, with a scripted pipeline: attached, and prepared by one step of the run loop.
/// Drawing by itself only when asked for; else a test draws frame by frame with `frame`.
class Stage {
public:
    enum class Draws { byHand, byItself };

    explicit Stage(Draws draws = Draws::byHand, CGSize size = {64, 48}, bool attach = true) {
        window = NSInit(new NSWindow, CGRect{{}, size}, NSTitledWindowMask | NSResizableWindowMask);
        view = NSInit(new VX_GLMainView, CGRect{{}, size}, nullptr);
        pipeline = NSInit(new ScriptedPipeline);
        pipeline->setTargetGLView(view.get());
        window->setContentView(view.get());
        window->makeKeyAndOrderFront();
        if (!attach)
            return;
        attachPipeline();
        step();
        if (draws == Draws::byHand)
            view->stopRenderThread();
        pipeline->takeCalls();
    }
    ~Stage() {
        if (!view)
            return; // ended by the test
        view->stopRender();
        view->releaseResources();
        window->close();
    }

    bool attachPipeline() {
        view->ResetPixelFormatAttributes();
        view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
        view->AddPixelFormatAttribute(NSOpenGLPFAColorSize, 24);
        view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
        return view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes());
    }
    /// One step of the run loop.
    void step() { NSApplication::sharedApplication()->runStep(0.0); }
    /// One refresh on the calling thread; the hooks that it ran.
    std::string frame() {
        view->DisplayLink_Render(&time);
        return pipeline->takeCalls();
    }
    /// What frames do from now on; waits for the one in progress.
    void onRender(std::function<void()> action) {
        view->RenderThreadLock();
        pipeline->onRender = std::move(action);
        view->RenderThreadUnLock();
    }
    /// Whether another thread gets the render lock: hangs where it was left held.
    void expectUnlocked() {
        std::thread([this] { onRender({}); }).join();
    }

    CVTimeStamp time;
    NSRef<NSWindow> window;
    NSRef<VX_GLMainView> view;
    NSRef<ScriptedPipeline> pipeline;
};

} // namespace vx::test
