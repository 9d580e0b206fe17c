// SPDX-License-Identifier: MIT
#include <tests/support/ScriptedPipeline.h>

#include <VX_Platform/OpenGL/private/ContextInternals.h>

#include <epoxy/gl.h>

#include <latch>

using namespace vx::test;
using StopTest = HeadlessTest;

TEST_F(StopTest, ARetiredHookMayWaitForTheViewThatTheHostRestarts) {
    Stage stopped(Stage::Draws::byItself), restarted(Stage::Draws::byItself);
    std::latch waits(1);
    std::atomic<int> frames{0};
    stopped.onRender([&] {
        stopped.view->stopRender();
        if (frames == 0)
            waits.count_down();
        restarted.view->RenderThreadLock();
        restarted.view->RenderThreadUnLock();
        ++frames;
    });
    restarted.view->RenderThreadLock();
    waits.wait();
    restarted.view->stopRenderThread();
    restarted.view->startRenderThread();
    restarted.view->RenderThreadUnLock();
    EXPECT_TRUE(waitFor([&] { return frames > 0; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    EXPECT_EQ(frames, 1) << "a hook that ends drawing runs no more";
}

TEST_F(StopTest, TheRestOfAFrameIsLeftOutOnceAHookHasEndedDrawing) {
    Stage stage;
    VX_GLMainView* view = stage.view.get();
    const auto restart = [&] {
        view->stopRender();
        view->startRender();
        view->stopRenderThread();
    };
    stage.pipeline->onCallBack = [&] { view->stopRender(); };
    EXPECT_EQ(stage.frame(), "callBack notify stop detach");
    stage.pipeline->onCallBack = restart;
    EXPECT_EQ(stage.frame(), "callBack notify stop detach attach start notify");
    stage.pipeline->onCallBack = {};
    stage.pipeline->onRender = restart;
    EXPECT_EQ(stage.frame(), "callBack render notify stop detach attach start notify");
    stage.pipeline->onRender = [&] { view->releaseResources(); };
    EXPECT_EQ(stage.frame(), "callBack render detach");
}

TEST_F(StopTest, StopsWhateverItsHooksThrow) {
    Stage stage(Stage::Draws::byItself);
    LogCollector log;
    stage.pipeline->onStop = [] { throw 7; };
    stage.view->stopRender();
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    EXPECT_EQ(log.count("failed while its view stopped"), 1);
    stage.expectUnlocked();
}

// What one view does in another's hook, or on a thread with a context of the host's own, leaves that one
// current.
TEST_F(StopTest, AViewGivesBackItsOwnContextsOnly) {
    Stage drawing, other;
    VX_GLMainView* view = other.view.get();
    NSOpenGLContext* const outer = drawing.view->existingOpenGLContext();
    const auto useEach = [&](const std::function<void(const char*)>& check) {
        view->RenderThreadLock();
        EXPECT_TRUE(view->makeCurrentContext());
        view->RenderThreadUnLock();
        check("lock");
        view->startRender();
        check("start");
        view->stopRender();
        check("stop");
        view->SetStepped(true);
        view->StepFrame(0.0);
        check("step");
        view->releaseResources();
        check("release");
        other.attachPipeline();
        view->prepareOpenGL();
    };
    drawing.pipeline->onRender = [&] {
        useEach([&](const char* after) { EXPECT_TRUE(outer->isCurrent()) << after; });
        view->makeCurrentContext();
        std::thread([&] {
            EXPECT_FALSE(outer->tryMakeCurrentContext()) << "the frame's until its end";
        }).join();
        outer->makeCurrentContext();
        drawing.view->RenderThreadUnLock();
        EXPECT_TRUE(outer->isCurrent()) << "a hold that the frame has";
    };
    LogCollector log;
    EXPECT_EQ(drawing.frame(), "callBack render afterFlush");
    EXPECT_EQ(log.count("has not locked it"), 1);
    drawing.expectUnlocked();

    const auto& internals = NSOpenGLContext::Internals::of(outer);
    void* const own = internals.driver->createContext(internals.config, nullptr, false);
    std::thread([&] {
        const auto isCurrent = [&](const char* after) {
            EXPECT_EQ(vx::GLDriver::currentBinding().context, own) << after;
        };
        internals.driver->makeCurrent(own, nullptr);
        useEach(isCurrent);
        view->makeCurrentContext();
        internals.driver->makeCurrent(own, nullptr);
        EXPECT_TRUE(view->makeCurrentContext() && view->existingOpenGLContext()->isCurrent());
        internals.driver->makeCurrent(own, nullptr);
        NSOpenGLContext::clearCurrentContext();
        isCurrent("the host has bound its own over the view's");
    }).join();
    internals.driver->destroyContext(own);
}
