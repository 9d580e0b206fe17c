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

struct PipelineWithTimer : ScriptedPipeline {
    using VX_GLRenderpipeline::m_PrimaryThreadTimer, VX_GLRenderpipeline::m_StartUpInitialized;
};

bool waitForFrame(Stage& stage) {
    return waitFor([&] { return stage.pipeline->takeCalls().find("render") != std::string::npos; });
}

} // namespace

TEST_F(LifecycleTest, GathersAttributesUpTo63) {
    Stage stage(Stage::Draws::byHand, {8, 8}, false);
    VX_GLMainView* view = stage.view.get();
    const auto words = [view](int from, int to) {
        const std::uint32_t* list = view->GetPixelFormatAttributes();
        return std::vector<int>(list + from, list + to);
    };
    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    view->GetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer); // over the terminator
    EXPECT_EQ(words(0, 4), ints(NSOpenGLPFADepthSize, 24, NSOpenGLPFADoubleBuffer, 0));
    for (int i = 0; i < 59; ++i)
        view->AddPixelFormatAttribute(1000 + i);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    EXPECT_EQ(words(61, 63), ints(1058, 0)) << "a pair is not split";
    for (int i = 0; i < 200; ++i)
        view->AddPixelFormatAttribute(NSOpenGLPFADepthSize);
    EXPECT_EQ(words(62, 64), ints(NSOpenGLPFADepthSize, 0));
    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize);
    EXPECT_EQ(words(0, 3), ints(NSOpenGLPFADepthSize, 0, 0)) << "closed even where a value is missing";
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
    LogCollector log;
    stage.view->startRender();
    EXPECT_EQ(stage.pipeline->takeCalls().substr(0, 12), "attach start");
    CVDisplayLinkRef link = stage.view->displayLink();
    stage.view->startRender();
    EXPECT_TRUE(link && stage.view->displayLink() == link) << "two starts make one link";
    ASSERT_TRUE(waitForFrame(stage));
    stage.view->stopRender();
    stage.pipeline->takeCalls();
    stage.view->stopRender();
    EXPECT_EQ(stage.pipeline->takeCalls(), "notify stop detach") << "stopping twice is harmless";

    stage.view->startRender();
    EXPECT_TRUE(waitForFrame(stage));
    EXPECT_EQ(log.count("Display link:"), 0) << "the pace is told when it changes";
}

TEST_F(LifecycleTest, ClearsTheScreenAheadOfTheFirstHookAndComesBackAfterItsResourcesWereReleased) {
    Stage stage;
    stage.view->SetStepped(true);
    stage.pipeline->onRender = [] { clearTo(1, 1, 1); };
    stage.frame();
    unsigned atStart = 0;
    std::vector<int> viewport(4);
    bool contextAtStop = false;
    stage.pipeline->onStart = [&] {
        atStart = pixelAt(5, 5);
        glGetIntegerv(GL_VIEWPORT, viewport.data());
    };
    stage.pipeline->onStop = [&] { contextAtStop = stage.view->existingOpenGLContext()->isCurrent(); };
    glViewport(1, 2, 3, 4);
    stage.view->startRender();
    EXPECT_EQ(atStart >> 8, 0u);
    EXPECT_EQ(viewport, ints(0, 0, 64, 48));
    stage.view->stopRender();
    EXPECT_TRUE(contextAtStop) << "a host deletes its GL objects there";
    stage.view->releaseResources();
    EXPECT_EQ(stage.pipeline->takeCalls(), "attach start notify stop detach detach");
    EXPECT_EQ(stage.frame(), "") << "no context, no hook";
    ASSERT_TRUE(stage.attachPipeline());
    stage.step();
    EXPECT_EQ(stage.pipeline->takeCalls(), "detach attach start");

    const std::uint32_t unusable[] = {NSOpenGLPFADepthSize, 400, 0};
    EXPECT_FALSE(stage.view->initializationWithPixelFormat(stage.pipeline.get(), unusable));
    EXPECT_EQ(stage.view->renderpipeline(), stage.pipeline.get()) << "the pipeline stays attached";
    const int count = stage.pipeline->retainCount();
    EXPECT_FALSE(stage.view->initializationWithPixelFormat(nullptr, stage.view->GetPixelFormatAttributes()));
    EXPECT_EQ(stage.pipeline->retainCount(), count - 1);
}

TEST(VX_GLRenderpipeline, EndsItsTimerWhenItStopsAndSuspendsWithoutAView) {
    auto pipeline = NSInit(new PipelineWithTimer);
    NSTimer* timer = NSTimer::scheduledTimerWithTimeInterval(
        60.0, [](NSTimer*) {}, true);
    pipeline->m_PrimaryThreadTimer = timer->retain();
    for (int i = 0; i < 2; ++i)
        pipeline->doStopRender();
    EXPECT_FALSE(timer->isValid());
    pipeline->DoResume();
    EXPECT_TRUE(pipeline->m_StartUpInitialized);
    pipeline->DoSuspend();
    EXPECT_FALSE(pipeline->m_StartUpInitialized);
}
