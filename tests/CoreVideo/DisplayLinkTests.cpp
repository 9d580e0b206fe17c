// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <tests/support/ScriptedPipeline.h>

#include <cmath>
#include <vector>

using namespace vx::test;

namespace {

// What the calls were told: their time, and that of the refresh.
struct Calls {
    std::vector<std::pair<CVTimeStamp, CVTimeStamp>> stamps; // to be read when the link has stopped
    std::atomic<std::size_t> count{0};

    static CVReturn take(CVDisplayLinkRef, const CVTimeStamp* now, const CVTimeStamp* output, CVOptionFlags,
                         CVOptionFlags*, void* user) {
        auto* calls = static_cast<Calls*>(user);
        calls->stamps.emplace_back(*now, *output);
        if (++calls->count % 3 == 0) // longer than a refresh
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return 0;
    }
};

class DisplayLink : public HeadlessTest {
protected:
    DisplayLink() {
        NSApplication::plugHeadlessDisplay("Left", CGRectMake(5000, 0, 800, 600), 60.0);
        NSApplication::plugHeadlessDisplay("Right", CGRectMake(5800, 0, 800, 600), 75.0);
    }
    ~DisplayLink() override {
        NSApplication::unplugHeadlessDisplay("Left");
        NSApplication::unplugHeadlessDisplay("Right");
    }
};

} // namespace

TEST_F(DisplayLink, TellsTheTimeOfTheCallAndOfTheRefreshItIsForAndCountsEveryOne) {
    Stage stage;
    stage.window->setFrame(CGRectMake(5900, 10, 64, 48));
    Calls calls;
    CVDisplayLinkRef link = nullptr;
    CVDisplayLinkCreateWithActiveCGDisplays(&link);
    CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(link, stage.view->openGLContext(), nullptr);
    CVDisplayLinkSetOutputCallback(link, Calls::take, &calls);
    ASSERT_EQ(CVDisplayLinkStart(link), kCVReturnSuccess);
    ASSERT_TRUE(waitFor([&] { return calls.count > 45; }));
    const std::uint64_t missed = CVDisplayLinkGetMissedRefreshes(link);
    EXPECT_EQ(CVDisplayLinkStop(link), kCVReturnSuccess);
    const std::size_t stopped = calls.count;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(calls.count, stopped);
    const CVTimeStamp from = calls.stamps[2].second, to = calls.stamps.back().second;
    bool ahead = false; // at least once
    for (const auto& [now, output] : calls.stamps) {
        ahead |= output.hostTime > now.hostTime;
        EXPECT_EQ(output.frameCount, now.frameCount + 1);
        EXPECT_LE(output.hostTime, now.hostTime + now.videoRefreshPeriod) << "no later one than the next";
    }
    EXPECT_TRUE(ahead);
    EXPECT_NEAR(1e9 / double(to.videoRefreshPeriod), 75.0, 0.01);
    EXPECT_NEAR(double(to.frameCount - from.frameCount) / double(to.hostTime - from.hostTime) * 1e9, 75, 0.1);
    EXPECT_GT(missed, 10u);
    EXPECT_LE(stopped + missed, to.frameCount + 3);
    CVDisplayLinkRelease(link);
}

TEST_F(DisplayLink, FollowsTheViewBetweenDisplaysWindowsAndContextsWhileDrawing) {
    Stage stage(Stage::Draws::byItself);
    const auto hasRate = [&](double rate) {
        return waitFor([&] {
            const double period = CVDisplayLinkGetActualOutputVideoRefreshPeriod(stage.view->displayLink());
            return std::abs(1.0 / period - rate) < rate / 20;
        });
    };
    const auto showOnBoth = [&] { // which side of the border shows most of it
        stage.window->setFrame(CGRectMake(5770, 10, 64, 48));
        EXPECT_TRUE(hasRate(75.0));
        stage.window->setFrame(CGRectMake(5766, 10, 64, 48));
        EXPECT_TRUE(hasRate(60.0));
    };
    showOnBoth();
    stage.attachPipeline();
    stage.step();
    showOnBoth();
    stage.window = NSInit(new NSWindow, CGRectMake(5900, 10, 64, 48), 0);
    stage.window->setContentView(stage.view.get());
    EXPECT_TRUE(hasRate(75.0)) << "that of another window";
    showOnBoth();
    EXPECT_TRUE(!stage.window->fillDisplay("None") && stage.window->fillDisplay("Right") && hasRate(75.0));
    EXPECT_TRUE(stage.window->fillDisplay("Left") && hasRate(60.0));
    EXPECT_EQ(stage.window->frame().size.width, 800.0);
    stage.window->leaveDisplay();
    EXPECT_TRUE(CGRectEqualToRect(stage.window->frame(), CGRectMake(5766, 10, 64, 48)));
    stage.window->setFrame(CGRectMake(5100, 10, 64, 48));
    stage.window->leaveDisplay();
    EXPECT_EQ(stage.window->frame().origin.x, 5100.0) << "it had left";
    NSApplication::plugHeadlessDisplay("Left", CGRectMake(5000, 0, 800, 600), 120.0);
    EXPECT_TRUE(hasRate(120.0)) << "its display has another rate";
    NSApplication::unplugHeadlessDisplay("Left");
    EXPECT_TRUE(hasRate(60.0)) << "the first one there is";
}

TEST_F(DisplayLink, RefusesRatesOutsideOf1To1000HertzAndEmptyDisplays) {
    LogCollector log;
    for (const double rate : {0.0, 0.001, 1e10, double(NAN), -HUGE_VAL})
        EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 100, 100), rate)) << rate;
    EXPECT_EQ(log.count("is refused"), 5);
    EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 0, 100), 60.0));
}

TEST_F(DisplayLink, TellsOfAThreadThatTheSystemDoesNotGive) {
    Stage stage;
    LogCollector log;
    pthread_attr_t usual, huge;
    pthread_getattr_default_np(&usual);
    pthread_attr_init(&huge);
    pthread_attr_setstacksize(&huge, std::size_t(1) << 46);
    pthread_setattr_default_np(&huge);
    stage.view->startRender();
    pthread_setattr_default_np(&usual);
    EXPECT_EQ(log.count("no thread to draw on"), 1);
    EXPECT_FALSE(CVDisplayLinkIsRunning(stage.view->displayLink()));
    stage.expectUnlocked();
    stage.view->stopRender();
    stage.view->startRender();
    EXPECT_TRUE(CVDisplayLinkIsRunning(stage.view->displayLink())) << "it can be tried again";
}
