// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <VX_Platform/Foundation/private/Clock.h>
#include <tests/support/ScriptedDisplay.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/WrappedPlatform.h>

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

using vx::test::LogCollector;
using vx::test::Stage;
using vx::test::WrappedPlatform;

namespace {

double hertz(const CVTimeStamp& time) {
    return 1e9 / static_cast<double>(time.videoRefreshPeriod);
}

// The last time stamps that a link gave its callback.
struct Beats {
    std::mutex lock;
    CVTimeStamp now, output;
    std::uint64_t callbacks = 0;
    bool ahead = false; // output lay ahead of now at least once
    std::function<void()> inside;

    static CVReturn take(CVDisplayLinkRef, const CVTimeStamp* now, const CVTimeStamp* output, CVOptionFlags,
                         CVOptionFlags*, void* user) {
        auto* beats = static_cast<Beats*>(user);
        {
            std::lock_guard guard(beats->lock);
            beats->now = *now;
            beats->output = *output;
            ++beats->callbacks;
            beats->ahead = beats->ahead || output->hostTime > now->hostTime;
        }
        if (beats->inside)
            beats->inside();
        return 0;
    }
    std::pair<CVTimeStamp, CVTimeStamp> last() {
        std::lock_guard guard(lock);
        return {now, output};
    }
    std::uint64_t count() {
        std::lock_guard guard(lock);
        return callbacks;
    }
};

class Link {
public:
    explicit Link(NSOpenGLContext* context) {
        CVDisplayLinkCreateWithActiveCGDisplays(&m_Link);
        CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(m_Link, context, nullptr);
        CVDisplayLinkSetOutputCallback(m_Link, Beats::take, &beats);
    }
    ~Link() { CVDisplayLinkRelease(m_Link); }
    CVDisplayLinkRef get() const { return m_Link; }
    Beats beats;

private:
    CVDisplayLinkRef m_Link = nullptr;
};

class DisplayLink : public testing::Test {
protected:
    DisplayLink() {
        NSApplication::useHeadlessPlatform();
        NSApplication::plugHeadlessDisplay("Left", CGRectMake(5000, 0, 800, 600), 60.0);
        NSApplication::plugHeadlessDisplay("Right", CGRectMake(5800, 0, 800, 600), 75.0);
    }
    ~DisplayLink() override {
        NSApplication::unplugHeadlessDisplay("Left");
        NSApplication::unplugHeadlessDisplay("Right");
    }
};

} // namespace

TEST_F(DisplayLink, TellsTheTimeOfTheCallAndOfTheRefreshItIsFor) {
    Stage stage;
    Link link(stage.view->openGLContext());
    ASSERT_EQ(CVDisplayLinkStart(link.get()), kCVReturnSuccess);
    EXPECT_EQ(CVDisplayLinkStart(link.get()), kCVReturnDisplayLinkAlreadyRunning);
    ASSERT_TRUE(vx::test::waitFor([&] { return link.beats.count() > 5; }));
    EXPECT_EQ(CVDisplayLinkStop(link.get()), kCVReturnSuccess);
    EXPECT_EQ(CVDisplayLinkStop(link.get()), kCVReturnDisplayLinkNotRunning);
    const auto [now, output] = link.beats.last();
    EXPECT_EQ(output.frameCount, now.frameCount + 1);
    EXPECT_TRUE(link.beats.ahead);
    EXPECT_LE(output.hostTime, now.hostTime + now.videoRefreshPeriod) << "the next refresh, and no later one";
    EXPECT_NEAR(hertz(now), 60.0, 0.01);
    const std::uint64_t stopped = link.beats.count();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(link.beats.count(), stopped);
}

TEST_F(DisplayLink, CountsEveryRefreshOfTheClockAtTheDisplaysRate) {
    Stage stage;
    stage.window->setFrame(CGRectMake(5900, 10, 64, 48));
    Link link(stage.view->openGLContext());
    // Every third callback takes longer than a refresh.
    link.beats.inside = [&] {
        if (link.beats.count() % 3 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    };
    CVDisplayLinkStart(link.get());
    ASSERT_TRUE(vx::test::waitFor([&] { return link.beats.count() > 2; }));
    const CVTimeStamp from = link.beats.last().second;
    ASSERT_TRUE(
        vx::test::waitFor([&] { return link.beats.last().second.frameCount > from.frameCount + 60; }));
    const CVTimeStamp to = link.beats.last().second;
    const double seconds = static_cast<double>(to.hostTime - from.hostTime) * 1e-9;
    EXPECT_NEAR(static_cast<double>(to.frameCount - from.frameCount) / seconds, 75.0, 0.1);
    EXPECT_GT(CVDisplayLinkGetMissedRefreshes(link.get()), 10u);
    EXPECT_LE(link.beats.count() + CVDisplayLinkGetMissedRefreshes(link.get()), to.frameCount + 3);
}

TEST_F(DisplayLink, FollowsTheViewBetweenDisplaysWhileDrawing) {
    Stage stage(Stage::Draws::byItself);
    const auto rate = [&] {
        return 1.0 / CVDisplayLinkGetActualOutputVideoRefreshPeriod(stage.view->displayLink());
    };
    for (int round = 0; round < 3; ++round) {
        stage.window->setFrame(CGRectMake(5900, 10, 64, 48));
        EXPECT_TRUE(vx::test::waitFor([&] { return std::abs(rate() - 75.0) < 3.0; })) << rate();
        stage.window->setFrame(CGRectMake(5100, 10, 64, 48));
        EXPECT_TRUE(vx::test::waitFor([&] { return std::abs(rate() - 60.0) < 3.0; })) << rate();
    }
    NSApplication::plugHeadlessDisplay("Left", CGRectMake(5000, 0, 800, 600), 120.0);
    EXPECT_TRUE(vx::test::waitFor([&] { return std::abs(rate() - 120.0) < 8.0; }))
        << "its display has another rate";
    NSApplication::unplugHeadlessDisplay("Left");
    EXPECT_TRUE(vx::test::waitFor([&] { return std::abs(rate() - 60.0) < 3.0; })) << "the first one there is";
}

TEST_F(DisplayLink, TakesTheRefreshesOfTheSurfaceItsViewHasNow) {
    const auto platform = WrappedPlatform::use();
    std::atomic<int> made{0};
    platform->makeSource = [&]() -> std::unique_ptr<vx::RefreshSource> {
        ++made;
        return nullptr;
    };
    {
        Stage stage(Stage::Draws::byItself);
        EXPECT_EQ(made, 1);
        auto other = NSRef<NSWindow>::adopt((new NSWindow)->initWithContentRect({{}, {64, 48}}, 0));
        other->makeKeyAndOrderFront();
        other->setContentView(stage.view.get());
        EXPECT_TRUE(vx::test::waitFor([&] { return made == 2; })) << "another window, another source";
        stage.window->setContentView(stage.view.get());
        EXPECT_TRUE(vx::test::waitFor([&] { return made == 3; }));
    }
    platform->giveBack();
}

TEST_F(DisplayLink, ASurfaceThatTakesNoFrameLosesARefreshAndNoHook) {
    const auto platform = WrappedPlatform::use();
    {
        Stage stage;
        platform->takesFrames = false;
        EXPECT_EQ(stage.frame(), "callBack render afterFlush");
        EXPECT_EQ(stage.view->GetLostRefreshes(), 1u);
        platform->takesFrames = true;
        stage.frame();
        EXPECT_EQ(stage.view->GetLostRefreshes(), 1u);
    }
    platform->giveBack();
}

TEST(DisplayLinkRates, OutsideOf1To1000HertzAreRefused) {
    NSApplication::useHeadlessPlatform();
    LogCollector log;
    int refused = 0;
    for (const double rate :
         std::initializer_list<double>{0.0, -60.0, 0.001, 1e10, std::nan(""), INFINITY, -INFINITY}) {
        EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 100, 100), rate)) << rate;
        EXPECT_EQ(log.count("is refused"), ++refused);
    }
    EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 0, 100), 60.0));
    EXPECT_FALSE(NSApplication::unplugHeadlessDisplay("Odd"));
}
