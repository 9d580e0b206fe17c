// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/SteppedClock.h>

#include <stdexcept>

using namespace vx::test;
using FrameTest = HeadlessTest;

TEST_F(FrameTest, RunsTheHooksInOrderWithTheContextCurrentAndNoErrorLeft) {
    Stage stage;
    GLenum error = GL_INVALID_ENUM;
    bool current = false;
    stage.pipeline->onCallBack = [&] {
        current = stage.view->openGLContext()->isCurrent();
        error = glGetError();
    };
    // An object that this frame, and no later one, ends.
    stage.pipeline->onRender = [&] { stage.pipeline->retain()->autorelease(); };
    const int count = stage.pipeline->retainCount();
    stage.time.frameCount = 77;
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
    EXPECT_TRUE(current && error == GL_NO_ERROR);
    const CGSize size = stage.pipeline->lastBounds.size;
    EXPECT_EQ(ints(size.width, size.height), ints(64, 48));
    EXPECT_EQ(stage.pipeline->lastStamp().frameCount, 77u);
    EXPECT_EQ(stage.pipeline->retainCount(), count);
}

TEST_F(FrameTest, AveragesItsFramesAndFromThe31stCallOnAllOfThemSinceTheStart) {
    Stage stage;
    SteppedClock clock;
    stage.view->SetStepped(true);
    stage.pipeline->onRender = [&] { clock.step(SteppedClock::kSecond / 100); };
    for (int start = 0; start < 2; ++start) {
        stage.view->startRenderThread();
        EXPECT_EQ(stage.view->GetAvgFPS(), 0.0);
        double expected = 0.0;
        for (int call = 1; call <= 60; ++call) {
            stage.frame();
            expected = (expected + 0.010) * 0.5;
            if (call > 30)
                expected = ((call == 31 ? 31 * 0.010 : 0.010) / call + expected) * 0.5;
            ASSERT_NEAR(1.0 / stage.view->GetAvgFPS(), expected, 1e-6) << call;
        }
        EXPECT_NEAR(stage.view->GetFrameRate(), 100.0, 1e-6);
    }
}

TEST_F(FrameTest, IsGivenUpSkippedOrFailsAndTheNextOneIsDrawn) {
    Stage stage;
    NSOpenGLContext::clearCurrentContext();
    stage.view->RenderThreadLock();
    std::thread([&] { EXPECT_EQ(stage.frame(), "") << "it never waits for the lock"; }).join();
    EXPECT_EQ(stage.view->GetLostRefreshes(), 1u);
    stage.pipeline->onRender = [] { clearTo(1, 1, 1); };
    EXPECT_EQ(stage.frame(), "callBack render afterFlush") << "the lock is recursive";
    stage.view->RenderThreadUnLock();

    stage.pipeline->DoSuspend();
    EXPECT_EQ(stage.frame(), "");
    EXPECT_EQ(pixelAt(5, 5) >> 8, 0u);
    stage.pipeline->DoResume();
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");

    LogCollector log;
    SteppedClock clock;
    stage.pipeline->onRender = [] { throw std::runtime_error("the scene is broken"); };
    for (int second = 0; second < 70; ++second, clock.step(SteppedClock::kSecond))
        stage.frame();
    EXPECT_EQ(log.count("the scene is broken"), 2) << "once, and again after a minute";
    EXPECT_EQ(log.count("and 59 times since"), 1);
    clock.step(20 * SteppedClock::kSecond);
    stage.pipeline->onRender = [] { throw 7; };
    stage.frame();
    EXPECT_EQ(log.count("without a text"), 1) << "it had been good for a while";
    stage.expectUnlocked();
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");

    stage.view->detachRenderpipeline();
    EXPECT_EQ(stage.frame(), "");
    stage.pipeline->release(); // the view's reference, which is the caller's now
}

TEST_F(FrameTest, OfAViewThatNobodySeesAreMissedAfterASecond) {
    SteppedClock clock;
    LogCollector log;
    VX_SetDiagnostics(true);
    const CGRect frame{{}, {8, 8}};
    const auto window = NSInit(new NSWindow, frame, 0), shown = NSInit(new NSWindow, frame, 0);
    shown->makeKeyAndOrderFront();
    const auto pipeline = NSInit(new ScriptedPipeline);
    NSRef<VX_GLMainView> views[4]; // without a window, in one never shown, in one that is, and gone
    for (NSRef<VX_GLMainView>& view : views) {
        view = NSInit(new VX_GLMainView, frame, nullptr);
        view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
        ASSERT_TRUE(view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()));
    }
    VX_SetDiagnostics(false);
    window->setContentView(views[1].get());
    shown->setContentView(views[2].get());
    views[3] = nullptr;
    clock.step(SteppedClock::kSecond * 9 / 10);
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(log.count("draws nothing"), 0);
    clock.step(SteppedClock::kSecond / 5);
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(ints(log.count("nothing: it is in no window"), log.count("in a window that was never shown")),
              ints(1, 1));
    EXPECT_EQ(log.count("draws nothing"), 2);
    views[2]->stopRender();
}
