// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLChildView.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/SteppedClock.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

using vx::test::LogCollector;
using vx::test::ScriptedPipeline;
using vx::test::Stage;
using vx::test::SteppedClock;

namespace {

class FrameTest : public testing::Test {
protected:
    FrameTest() { NSApplication::useHeadlessPlatform(); }
};

class Child : public NSObject, public VX_GLChildView {
public:
    explicit Child(ScriptedPipeline* pipeline) : m_Pipeline(pipeline) {}
    void initialization(VX_GLMainView* owner) override {
        m_Pipeline->noteCall("childInit");
        context = NSRef<NSOpenGLContext>::adopt(
            (new NSOpenGLContext)->initWithFormat(owner->pixelFormat(), owner->openGLContext()));
    }
    void callBackRender() override {
        m_Pipeline->noteCall("child");
        if (context)
            context->makeCurrentContext();
    }
    void releaseResources() override {
        m_Pipeline->noteCall("childRelease");
        context = nullptr;
    }
    NSRef<NSOpenGLContext> context;

private:
    ScriptedPipeline* m_Pipeline;
};

constexpr std::uint64_t kMillisecond = 1000000;

// Holds the render lock on a thread of its own.
class LockHolder {
public:
    explicit LockHolder(VX_GLMainView* view)
        : m_Thread([this, view] {
              view->RenderThreadLock();
              m_Held = true;
              m_Held.notify_one();
              m_Held.wait(true);
              view->RenderThreadUnLock();
          }) {
        m_Held.wait(false);
    }
    ~LockHolder() {
        m_Held = false;
        m_Held.notify_one();
        m_Thread.join();
    }

private:
    std::atomic<bool> m_Held{false};
    std::thread m_Thread;
};

} // namespace

TEST_F(FrameTest, RunsTheHooksInOrderWithTheContextCurrentAndNoErrorLeft) {
    Stage stage;
    GLenum error = GL_INVALID_ENUM;
    bool current = false;
    stage.pipeline->onCallBack = [&] {
        current = stage.view->openGLContext()->isCurrent();
        error = glGetError();
    };
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
    EXPECT_TRUE(current);
    EXPECT_EQ(error, GLenum(GL_NO_ERROR));
    EXPECT_EQ(stage.pipeline->lastBounds.size.width, 64.0);
    EXPECT_EQ(stage.pipeline->lastBounds.size.height, 48.0);
    EXPECT_EQ(stage.pipeline->lastTime, &stage.time);
}

TEST_F(FrameTest, DrawsChildrenInOrderAndLeavesTheLastOnesContextCurrent) {
    Stage stage(Stage::Draws::byHand, {64, 48}, false);
    auto first = NSRef<Child>::adopt(new Child(stage.pipeline.get()));
    auto second = NSRef<Child>::adopt(new Child(stage.pipeline.get()));
    stage.view->addChildSharedView(first.get());
    stage.view->addChildSharedView(second.get());
    ASSERT_TRUE(stage.attachPipeline());
    stage.step();
    stage.view->stopRenderThread();
    // Taken up by the first attachment, initialised by the second.
    EXPECT_EQ(stage.pipeline->takeCalls().substr(0, 57),
              "childRelease childRelease childInit childInit attach star");
    NSOpenGLContext* afterFlush = nullptr;
    stage.pipeline->onAfterFlush = [&] { afterFlush = NSOpenGLContext::currentContext(); };
    EXPECT_EQ(stage.frame(), "callBack render child child afterFlush");
    EXPECT_EQ(afterFlush, second->context.get());
    NSOpenGLContext::clearCurrentContext();
    stage.view->removeAllChildSharedViews();
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
}

TEST_F(FrameTest, AveragesItsFramesAndFromThe31stCallOnAllOfThem) {
    Stage stage;
    SteppedClock clock;
    stage.view->SetStepped(true);
    stage.view->startRenderThread();
    stage.pipeline->onRender = [&] { clock.step(10 * kMillisecond); };
    double expected = 0.0;
    for (int call = 1; call <= 40; ++call) {
        stage.frame();
        expected = (expected + 0.010) * 0.5;
        if (call > 30)
            expected = ((call == 31 ? 31 * 0.010 : 0.010) / call + expected) * 0.5;
        ASSERT_NEAR(1.0 / stage.view->GetAvgFPS(), expected, 1e-6) << call;
    }
    stage.view->SetSkipRenderThread(true);
    stage.view->startRenderThread();
    EXPECT_EQ(stage.view->GetAvgFPS(), 0.0) << "a new display link begins at 0";
    for (int call = 1; call <= 30; ++call)
        stage.frame();
    EXPECT_EQ(stage.view->GetAvgFPS(), 0.0)
        << "a skipped frame has no time of its own, and the 30th call blends nothing";
}

TEST_F(FrameTest, GivesUpTheFrameWhileAnotherThreadHoldsTheLock) {
    Stage stage;
    NSOpenGLContext::clearCurrentContext();
    {
        LockHolder holder(stage.view.get());
        EXPECT_EQ(stage.frame(), "") << "it never waits";
    }
    EXPECT_EQ(stage.view->GetLostRefreshes(), 1u);
    stage.view->RenderThreadLock();
    EXPECT_EQ(stage.frame(), "callBack render afterFlush") << "the lock is recursive";
    stage.view->RenderThreadUnLock();
}

TEST_F(FrameTest, SkipsToBlackWithoutHooksBetweenSuspendAndResume) {
    Stage stage;
    stage.pipeline->onRender = [] { vx::test::clearTo(1, 1, 1); };
    stage.frame();
    stage.pipeline->DoSuspend();
    EXPECT_EQ(stage.frame(), "");
    EXPECT_EQ(vx::test::pixelAt(5, 5) >> 8, 0u);
    stage.pipeline->DoResume();
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
}

TEST_F(FrameTest, SurvivesAHookThatThrowsAndLogsItsTextOnce) {
    Stage stage;
    LogCollector log;
    stage.pipeline->onRender = [] { throw std::runtime_error("the scene is broken"); };
    for (int i = 0; i < 5; ++i)
        stage.frame();
    EXPECT_EQ(log.count("the scene is broken"), 1);
    stage.pipeline->onRender = [] { throw 7; };
    stage.frame();
    EXPECT_EQ(log.count("without a text"), 1);
    stage.pipeline->takeCalls();
    stage.pipeline->onRender = {};
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
    stage.expectUnlocked();
}

TEST_F(FrameTest, EndsWhatAFrameAutoreleases) {
    Stage stage;
    int atRender = 0;
    stage.pipeline->onRender = [&] {
        (new ScriptedPipeline)->autorelease();
        atRender = ScriptedPipeline::living;
    };
    stage.frame();
    EXPECT_EQ(ScriptedPipeline::living, atRender - 1);
}

TEST_F(FrameTest, DrawsWithoutAPipeline) {
    Stage stage;
    stage.view->detachRenderpipeline();
    EXPECT_EQ(stage.frame(), "");
    EXPECT_EQ(stage.view->GetLostRefreshes(), 0u);
    EXPECT_GT(stage.view->GetAvgFPS(), 0.0) << "the frame ran, with its hooks left out";
    stage.pipeline->release(); // the view's reference, which is the caller's now
}

using FrameDeathTest = FrameTest;

TEST_F(FrameDeathTest, DiesOfAChangeOfTheChildrenDuringTheirWalk) {
    Stage stage;
    class Remover : public Child {
    public:
        Remover(Stage& stage) : Child(stage.pipeline.get()), m_View(stage.view.get()) {}
        void callBackRender() override { m_View->removeAllChildSharedViews(); }

    private:
        VX_GLMainView* m_View;
    };
    auto child = NSRef<Remover>::adopt(new Remover(stage));
    stage.view->addChildSharedView(child.get());
    EXPECT_DEATH(stage.frame(), "changed while it was being walked");
    stage.view->removeAllChildSharedViews();
}
