// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>

#include <stdexcept>

using namespace vx::test;
using LifecycleTest = HeadlessTest;

namespace {

class PipelineWithTimer : public ScriptedPipeline {
public:
    void useTimer(NSTimer* timer) { m_PrimaryThreadTimer = timer->retain(); }
    bool started() const { return m_StartUpInitialized; }
    double timeCounter() const { return m_TimeCounter; }
};

bool waitForFrame(Stage& stage) {
    return waitFor([&] { return stage.pipeline->takeCalls().find("render") != std::string::npos; });
}

} // namespace

TEST_F(LifecycleTest, GathersAttributesUpTo63) {
    Stage stage(Stage::Draws::byHand, {8, 8}, false);
    VX_GLMainView* view = stage.view.get();
    view->ResetPixelFormatAttributes();
    EXPECT_EQ(view->GetPixelFormatAttributes()[0], 0u);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    view->GetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer); // over the terminator
    const std::uint32_t* list = view->GetPixelFormatAttributes();
    EXPECT_EQ(std::vector(list, list + 4),
              (std::vector<std::uint32_t>{NSOpenGLPFADepthSize, 24, NSOpenGLPFADoubleBuffer, 0}));
    for (int i = 0; i < 59; ++i)
        view->AddPixelFormatAttribute(1000 + i);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    EXPECT_EQ(view->GetPixelFormatAttributes()[62], 0u) << "a pair is not split";
    for (int i = 0; i < 200; ++i)
        view->AddPixelFormatAttribute(NSOpenGLPFADepthSize);
    list = view->GetPixelFormatAttributes();
    EXPECT_EQ(std::vector(list + 62, list + 65), (std::vector<std::uint32_t>{NSOpenGLPFADepthSize, 0, 0}));
    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize);
    EXPECT_EQ(view->GetPixelFormatAttributes()[2], 0u) << "closed even where a value is missing";
}

TEST_F(LifecycleTest, StartsFromTheDisplayPassAndPostsItsNotificationAfterwards) {
    Stage stage(Stage::Draws::byHand, {64, 48}, false);
    LogCollector log;
    stage.view->SetStepped(true);
    ASSERT_TRUE(stage.attachPipeline());
    EXPECT_EQ(stage.pipeline->takeCalls(), "") << "nothing runs before the display pass";
    std::string atNotification;
    NSNotificationCenter::defaultCenter()->addObserver(
        this, [&](NSNotification*) { atNotification = stage.pipeline->takeCalls(); },
        VX_GLMainView_PreparedOpenGLNotification, stage.view.get());
    stage.step();
    NSNotificationCenter::defaultCenter()->removeObserver(this);
    EXPECT_EQ(atNotification, "attach start");
    int interval = 0;
    stage.view->openGLContext()->getValues(&interval, NSOpenGLCPSwapInterval);
    EXPECT_EQ(interval, 1) << "swaps wait for the retrace";
    stage.view->setFrame(CGRectMake(0, 0, 100, 100));
    EXPECT_EQ(stage.view->width(), 64.0f) << "sampled in prepareOpenGL alone";

    stage.view->releaseResources();
    stage.view->SetStepped(false);
    ASSERT_TRUE(stage.attachPipeline());
    stage.pipeline->onStart = [] { throw std::runtime_error("no shaders"); };
    stage.step();
    EXPECT_EQ(log.count("no shaders"), 1);
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    stage.expectUnlocked();
}

TEST_F(LifecycleTest, StopsAndStartsFromAnyState) {
    Stage stage;
    stage.view->startRender();
    EXPECT_EQ(stage.pipeline->takeCalls().substr(0, 12), "attach start");
    CVDisplayLinkRef link = stage.view->displayLink();
    ASSERT_NE(link, nullptr);
    stage.view->startRender();
    EXPECT_EQ(stage.view->displayLink(), link) << "two starts make one link";
    ASSERT_TRUE(waitForFrame(stage));
    stage.view->stopRender();
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    const std::string calls = stage.pipeline->takeCalls();
    EXPECT_EQ(calls.substr(calls.find("stop")), "stop detach");
    stage.view->stopRender();
    EXPECT_EQ(stage.pipeline->takeCalls(), "notify stop detach") << "stopping twice is harmless";

    std::atomic<int> framesOfTheHook{0};
    stage.onRender([&] {
        ++framesOfTheHook;
        stage.view->stopRender();
    });
    stage.view->startRender();
    ASSERT_TRUE(waitFor([&] { return framesOfTheHook > 0; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    EXPECT_EQ(framesOfTheHook, 1);
    stage.onRender({});
    stage.pipeline->takeCalls();
    stage.view->startRender();
    EXPECT_TRUE(waitForFrame(stage));
}

TEST_F(LifecycleTest, ClearsTheScreenAheadOfTheFirstHookAndComesBackAfterItsResourcesWereReleased) {
    Stage stage;
    stage.view->SetStepped(true);
    stage.pipeline->onRender = [] { clearTo(1, 1, 1); };
    stage.frame();
    unsigned atStart = 0;
    GLint viewport[4] = {};
    bool contextAtStop = false;
    stage.pipeline->onStart = [&] {
        atStart = pixelAt(5, 5);
        glGetIntegerv(GL_VIEWPORT, viewport);
    };
    stage.pipeline->onStop = [&] { contextAtStop = stage.view->existingOpenGLContext()->isCurrent(); };
    glViewport(1, 2, 3, 4);
    stage.view->startRender();
    EXPECT_EQ(atStart >> 8, 0u);
    EXPECT_EQ(std::vector<int>(viewport, viewport + 4), ints(0, 0, 64, 48));
    stage.view->stopRender();
    EXPECT_TRUE(contextAtStop) << "a host deletes its GL objects there";
    EXPECT_EQ(stage.pipeline->takeCalls(), "attach start notify stop detach");
    stage.view->releaseResources();
    EXPECT_EQ(stage.pipeline->takeCalls(), "detach");
    EXPECT_EQ(stage.view->existingOpenGLContext(), nullptr);
    EXPECT_EQ(stage.frame(), "") << "no context, no hook";
    ASSERT_TRUE(stage.attachPipeline());
    stage.step();
    EXPECT_EQ(stage.pipeline->takeCalls(), "detach attach start");

    const std::uint32_t unusable[] = {NSOpenGLPFADepthSize, 400, 0};
    EXPECT_FALSE(stage.view->initializationWithPixelFormat(stage.pipeline.get(), unusable));
    EXPECT_EQ(stage.view->renderpipeline(), stage.pipeline.get()) << "the pipeline stays attached";
    const int count = stage.pipeline->retainCount();
    EXPECT_FALSE(stage.view->initializationWithPixelFormat(nullptr, stage.view->GetPixelFormatAttributes()));
    EXPECT_EQ(stage.view->renderpipeline(), nullptr);
    EXPECT_EQ(stage.pipeline->retainCount(), count - 1);
}

TEST_F(LifecycleTest, EndsWithoutAStop) {
    LogCollector log;
    auto view = (new VX_GLMainView)->initWithFrame(CGRectMake(0, 0, 16, 16), nullptr);
    auto pipeline = NSInit(new ScriptedPipeline);
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    ASSERT_TRUE(view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()));
    view->prepareOpenGL();
    view->stopRenderThread();
    view->startRenderThread();
    // A notification of the view waits with a reference to it; the run loop posts it.
    NSApplication::sharedApplication()->runStep(0.0);
    view->release();
    EXPECT_EQ(log.count("was still drawing"), 1);
    EXPECT_EQ(pipeline->retainCount(), 1);
}

TEST_F(LifecycleTest, KeepsTwoViewsApart) {
    Stage first(Stage::Draws::byItself), second(Stage::Draws::byItself, {32, 32});
    std::atomic<bool> mixed{false};
    for (Stage* stage : {&first, &second})
        stage->onRender([&, stage] { mixed = mixed || !stage->view->existingOpenGLContext()->isCurrent(); });
    for (int i = 0; i < 10; ++i)
        EXPECT_TRUE(waitForFrame(first) && waitForFrame(second));
    EXPECT_FALSE(mixed);
    first.view->stopRender();
    second.pipeline->takeCalls();
    EXPECT_TRUE(waitForFrame(second)) << "one stops, the other goes on";
}

TEST(VX_GLRenderpipeline, EndsItsTimerWhenItStopsAndSuspendsWithoutAView) {
    auto pipeline = NSInit(new PipelineWithTimer);
    NSTimer* timer = NSTimer::scheduledTimerWithTimeInterval(
        60.0, [](NSTimer*) {}, true);
    pipeline->useTimer(timer);
    for (int i = 0; i < 2; ++i) {
        pipeline->doStopRender();
        EXPECT_FALSE(timer->isValid());
    }
    pipeline->DoResume();
    EXPECT_TRUE(pipeline->started());
    EXPECT_EQ(pipeline->timeCounter(), -1.0);
    pipeline->DoSuspend();
    EXPECT_FALSE(pipeline->started());
}
