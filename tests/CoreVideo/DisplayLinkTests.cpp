// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <tests/support/ScriptedPipeline.h>

#include <cmath>

using namespace vx::test;

namespace {

// What a link gave its callback.
struct Beat {
    CVTimeStamp now, output; // of the last call
    std::uint64_t callbacks = 0;
    bool ahead = false; // output lay ahead of now at least once
};

struct Beats {
    std::mutex lock;
    Beat last;

    // Every third one takes longer than a refresh.
    static CVReturn take(CVDisplayLinkRef, const CVTimeStamp* now, const CVTimeStamp* output, CVOptionFlags,
                         CVOptionFlags*, void* user) {
        auto* beats = static_cast<Beats*>(user);
        std::lock_guard guard(beats->lock);
        const std::uint64_t count = beats->last.callbacks + 1;
        beats->last = {*now, *output, count, beats->last.ahead || output->hostTime > now->hostTime};
        if (count % 3 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return 0;
    }
    Beat get() {
        std::lock_guard guard(lock);
        return last;
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

// The headless platform with surfaces of which a test decides what they say.
class WrappedPlatform : public std::enable_shared_from_this<WrappedPlatform>, public vx::Platform {
public:
    std::atomic<bool> takesFrames{true};
    std::atomic<int> sources{0};
    const std::shared_ptr<vx::Platform> real = vx::runningPlatform();

    const char* name() const override { return real->name(); }
    vx::GLDriver& gl() override { return real->gl(); }
    std::vector<vx::DisplayInfo> displays() override { return real->displays(); }
    std::unique_ptr<vx::WindowBackend> makeWindow(CGRect frame, vx::WindowStyle style) override {
        return real->makeWindow(frame, style);
    }
    std::unique_ptr<vx::WindowBackend> adoptWindow(const vx::NativeWindow&) override { return nullptr; }
    std::unique_ptr<vx::Surface> makeSurface(vx::GLDriver::Handle config, vx::WindowBackend* window,
                                             CGRect frame) override {
        return std::make_unique<Surface>(shared_from_this(), real->makeSurface(config, window, frame));
    }
    bool drawsWithoutWindow() const override { return true; }
    int presentAlert(const vx::AlertContents&) override { return 0; }
    void handleEvents(double seconds) override { real->handleEvents(seconds); }
    void wake() override { real->wake(); }

private:
    struct Surface : vx::Surface {
        Surface(std::shared_ptr<WrappedPlatform> platform, std::unique_ptr<vx::Surface> real)
            : platform(std::move(platform)), real(std::move(real)) {}
        vx::GLDriver::Handle handle() const override { return real->handle(); }
        const vx::WindowBackend* window() const override { return real->window(); }
        void follow(CGRect frame) override { real->follow(frame); }
        vx::DisplayInfo display() const override { return real->display(); }
        std::unique_ptr<vx::RefreshSource> makeRefreshSource() const override {
            ++platform->sources;
            return nullptr;
        }
        bool takesFrame() override { return platform->takesFrames; }

        std::shared_ptr<WrappedPlatform> platform;
        std::unique_ptr<vx::Surface> real;
    };
};

} // namespace

TEST_F(DisplayLink, TellsTheTimeOfTheCallAndOfTheRefreshItIsForAndCountsEveryOne) {
    Stage stage;
    stage.window->setFrame(CGRectMake(5900, 10, 64, 48));
    Beats beats;
    CVDisplayLinkRef link = nullptr;
    CVDisplayLinkCreateWithActiveCGDisplays(&link);
    CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(link, stage.view->openGLContext(), nullptr);
    CVDisplayLinkSetOutputCallback(link, Beats::take, &beats);
    ASSERT_EQ(CVDisplayLinkStart(link), kCVReturnSuccess);
    EXPECT_EQ(CVDisplayLinkStart(link), kCVReturnDisplayLinkAlreadyRunning);
    ASSERT_TRUE(waitFor([&] { return beats.get().callbacks > 2; }));
    const CVTimeStamp from = beats.get().output;
    ASSERT_TRUE(waitFor([&] { return beats.get().output.frameCount > from.frameCount + 60; }));
    const std::uint64_t missed = CVDisplayLinkGetMissedRefreshes(link);
    EXPECT_EQ(CVDisplayLinkStop(link), kCVReturnSuccess);
    EXPECT_EQ(CVDisplayLinkStop(link), kCVReturnDisplayLinkNotRunning);
    const auto [now, to, stopped, ahead] = beats.get();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(beats.get().callbacks, stopped);
    EXPECT_EQ(to.frameCount, now.frameCount + 1);
    EXPECT_TRUE(ahead);
    EXPECT_LE(to.hostTime, now.hostTime + now.videoRefreshPeriod) << "the next refresh, and no later one";
    EXPECT_NEAR(1e9 / double(now.videoRefreshPeriod), 75.0, 0.01);
    EXPECT_NEAR(double(to.frameCount - from.frameCount) / double(to.hostTime - from.hostTime) * 1e9, 75, 0.1);
    EXPECT_GT(missed, 10u);
    EXPECT_LE(stopped + missed, to.frameCount + 3);
    CVDisplayLinkRelease(link);
}

TEST_F(DisplayLink, FollowsTheViewBetweenDisplaysWhileDrawing) {
    Stage stage(Stage::Draws::byItself);
    const auto rate = [&] {
        return 1.0 / CVDisplayLinkGetActualOutputVideoRefreshPeriod(stage.view->displayLink());
    };
    for (int round = 0; round < 3; ++round) {
        stage.window->setFrame(CGRectMake(5900, 10, 64, 48));
        EXPECT_TRUE(waitFor([&] { return std::abs(rate() - 75.0) < 3.0; })) << rate();
        stage.window->setFrame(CGRectMake(5100, 10, 64, 48));
        EXPECT_TRUE(waitFor([&] { return std::abs(rate() - 60.0) < 3.0; })) << rate();
    }
    NSApplication::plugHeadlessDisplay("Left", CGRectMake(5000, 0, 800, 600), 120.0);
    EXPECT_TRUE(waitFor([&] { return std::abs(rate() - 120.0) < 8.0; })) << "its display has another rate";
    NSApplication::unplugHeadlessDisplay("Left");
    EXPECT_TRUE(waitFor([&] { return std::abs(rate() - 60.0) < 3.0; })) << "the first one there is";
}

TEST_F(DisplayLink, TakesTheRefreshesOfTheSurfaceItsViewHasNowAndCountsTheFramesThatItRefuses) {
    const auto platform = std::make_shared<WrappedPlatform>();
    vx::replacePlatform(platform);
    {
        Stage stage(Stage::Draws::byItself);
        EXPECT_EQ(platform->sources, 1);
        auto other = NSInit(new NSWindow, CGRectMake(0, 0, 64, 48), 0);
        other->makeKeyAndOrderFront();
        other->setContentView(stage.view.get());
        EXPECT_TRUE(waitFor([&] { return platform->sources == 2; })) << "another window, another source";
        stage.window->setContentView(stage.view.get());
        EXPECT_TRUE(waitFor([&] { return platform->sources == 3; }));
        stage.attachPipeline();
        stage.step();
        EXPECT_TRUE(waitFor([&] { return platform->sources == 4; })) << "a new context while drawing";
        stage.view->stopRenderThread();
        stage.pipeline->takeCalls();
        const std::uint64_t lost = stage.view->GetLostRefreshes();
        platform->takesFrames = false;
        EXPECT_EQ(stage.frame(), "callBack render afterFlush");
        platform->takesFrames = true;
        stage.frame();
        EXPECT_EQ(stage.view->GetLostRefreshes(), lost + 1);
    }
    vx::replacePlatform(platform->real);
}

TEST_F(DisplayLink, RefusesRatesOutsideOf1To1000HertzAndEmptyDisplays) {
    LogCollector log;
    int refused = 0;
    for (const double rate : std::vector{0.0, -60.0, 0.001, 1e10, double(NAN), HUGE_VAL, -HUGE_VAL}) {
        EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 100, 100), rate)) << rate;
        EXPECT_EQ(log.count("is refused"), ++refused);
    }
    EXPECT_FALSE(NSApplication::plugHeadlessDisplay("Odd", CGRectMake(0, 0, 0, 100), 60.0));
    EXPECT_FALSE(NSApplication::unplugHeadlessDisplay("Odd"));
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
