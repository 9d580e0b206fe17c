// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/X11Input.h>

#include <csignal>

// Behind the others: its macros take common words.
#include <X11/Xlib.h>
#include <X11/keysym.h>

using namespace vx::test;

namespace {

// Steps the run loop until the condition holds.
bool runUntil(const std::function<bool()>& condition) {
    return waitFor(condition, [] { NSApplication::sharedApplication()->runStep(0.005); });
}

// What the X server shows at a place of a window, as 0xRRGGBB.
unsigned long shownPixel(unsigned long window, int x, int y) {
    return X11Input().pixels({std::uint32_t(window), x, y, 1, 1})[0];
}

// Fills each frame with the colour and counts them.
void fill(Stage& stage, std::atomic<int>& frames, float red, float green, float blue) {
    stage.onRender([&frames, red, green, blue] {
        clearTo(red, green, blue);
        ++frames;
    });
}

} // namespace

TEST(Window, ShowsFramesAtTheDisplaysRateFollowsItsSizeAndGoesToAnotherWindow) {
    Stage stage(Stage::Draws::byItself, {200, 150});
    std::atomic<int> frames{0};
    const auto drawsOn = [&] { return runUntil([&, before = int(frames)] { return frames > before + 5; }); };
    fill(stage, frames, 0, 1, 0);
    EXPECT_STREQ(CVDisplayLinkGetThrottleName(stage.view->displayLink()), "Present events");
    ASSERT_TRUE(drawsOn());
    EXPECT_EQ(shownPixel(stage.window->nativeWindow().handle, 100, 75), 0x00FF00u);

    stage.window->setFrame(CGRectMake(30, 30, 320, 240));
    ASSERT_TRUE(runUntil([&] { return stage.view->bounds().size.width == 320.0; }));
    ASSERT_TRUE(drawsOn());
    EXPECT_EQ(shownPixel(stage.window->nativeWindow().handle, 310, 230), 0x00FF00u);

    auto second = NSInit(new NSWindow, CGRectMake(400, 300, 150, 120), NSBorderlessWindowMask);
    second->makeKeyAndOrderFront();
    stage.view->stopRenderThread();
    second->setContentView(stage.view.get());
    stage.window->orderOut();
    fill(stage, frames, 0, 0, 1);
    stage.view->startRenderThread();
    ASSERT_TRUE(drawsOn());
    EXPECT_EQ(shownPixel(second->nativeWindow().handle, 140, 110), 0x0000FFu);
}

TEST(Window, ComesBackToTheDisplaysPaceFromEachStallOfTheServer) {
    Stage stage(Stage::Draws::byItself, {64, 48});
    std::atomic<int> frames{0};
    fill(stage, frames, 0, 1, 0);
    ASSERT_TRUE(runUntil([&] { return frames > 5; }));
    const int server = std::atoi(std::getenv("XVFB_PID"));
    LogCollector log;
    for (int stall = 1; stall <= 3; ++stall) {
        kill(server, SIGSTOP);
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
        kill(server, SIGCONT);
        const int before = frames;
        EXPECT_TRUE(waitFor([&] { return log.count("are back") == stall && frames > before + 10; }));
        EXPECT_STREQ(CVDisplayLinkGetThrottleName(stage.view->displayLink()), "Present events");
    }
}

TEST(Window, HandsKeysAndMouseThroughTheViewToTheHost) {
    class Keys : public VX_GLMainView {
    public:
        using VX_GLMainView::initWithFrame;
        void keyDown(NSEvent* event) override { last = NSRef<NSEvent>::retain(event); }
        void mouseDown(NSEvent* event) override { keyDown(event); }
        void otherMouseDown(NSEvent* event) override { keyDown(event); }
        NSRef<NSEvent> last;
    };
    Stage stage(Stage::Draws::byItself, {200, 150});
    auto view = NSInit(new Keys, CGRectMake(0, 0, 200, 150), nullptr);
    stage.window->setContentView(view.get());
    stage.window->makeKeyAndOrderFront();
    stage.window->setTitle("Input");
    X11Input input;
    ASSERT_TRUE(runUntil([&] { return !input.windows("Input").empty(); }));
    const auto shown = input.windows("Input").front();
    input.click(shown.x + 60, shown.y + 40);
    const auto comes = [&](NSEventType type, unsigned key) {
        return runUntil([&] {
            return view->last && view->last->type() == type &&
                   (type != NSKeyDown || view->last->key() == key);
        });
    };
    EXPECT_TRUE(comes(NSLeftMouseDown, 0));
    EXPECT_NEAR(view->last->locationInWindow().x, 60.0, 1.0);
    EXPECT_NEAR(view->last->locationInWindow().y, 40.0, 1.0);
    input.press(XK_Escape);
    EXPECT_TRUE(comes(NSKeyDown, NSEscapeKey));
    input.press(XK_F5, XK_Shift_L);
    EXPECT_TRUE(comes(NSKeyDown, NSF1FunctionKey + 4));
    EXPECT_EQ(view->last->modifierFlags(), unsigned(NSShiftKeyMask));
    input.click(shown.x + 60, shown.y + 40, 2);
    EXPECT_TRUE(comes(NSOtherMouseDown, 0));
    EXPECT_EQ(view->last->buttonNumber(), 2);
    input.close(shown);
    EXPECT_TRUE(runUntil([&] { return stage.window->isClosed(); }));
}

TEST(Window, GivesAViewToAWindowOfAnotherToolkit) {
    Display* other = XOpenDisplay(nullptr);
    ::Window foreign = XCreateSimpleWindow(other, DefaultRootWindow(other), 10, 10, 120, 90, 0, 0, 0);
    XMapWindow(other, foreign);
    XSync(other, False);
    {
        auto pipeline = NSInit(new ScriptedPipeline);
        pipeline->onRender = [] { clearTo(0, 1, 1); };
        VX_GLHostOptions options;
        options.inside = vx::NativeWindow::x11(foreign);
        auto host = VX_GLHost::open(pipeline.get(), options);
        ASSERT_NE(host, nullptr);
        EXPECT_TRUE(runUntil([&] { return shownPixel(foreign, 100, 80) == 0x00FFFFu; }));
        XResizeWindow(other, foreign, 180, 160);
        XSync(other, False);
        EXPECT_TRUE(runUntil([&] { return shownPixel(foreign, 170, 150) == 0x00FFFFu; }));
        EXPECT_EQ(host->view()->bounds().size.width, 180.0);
        options.inside.handle = 0x7fffff1;
        EXPECT_EQ(VX_GLHost::open(pipeline.get(), options), nullptr);
    }
    XWindowAttributes attributes;
    EXPECT_TRUE(XGetWindowAttributes(other, foreign, &attributes)) << "it stays its owner's";
    XCloseDisplay(other);
}

TEST(Window, ClosesWithTheViewStillDrawingAndEndsTheRunLoop) {
    Stage stage(Stage::Draws::byItself, {100, 100});
    std::atomic<int> frames{0};
    fill(stage, frames, 0, 0, 0);
    ASSERT_TRUE(runUntil([&] { return frames > 3; }));
    int closed = 0;
    NSNotificationCenter::defaultCenter()->addObserver(
        &closed, [&](NSNotification*) { ++closed; }, NSWindowWillCloseNotification, stage.window.get());
    NSTimer::scheduledTimerWithTimeInterval(
        0.05, [&](NSTimer*) { stage.window->performClose(); }, false);
    NSApplication::sharedApplication()->run();
    stage.window->close();
    NSNotificationCenter::defaultCenter()->removeObserver(&closed);
    EXPECT_EQ(closed, 1);
    stage.window = NSInit(new NSWindow, CGRectMake(0, 0, 10, 10), 0);
    const int before = frames;
    EXPECT_TRUE(runUntil([&] { return frames > before + 3; })) << "hooks run on, with nothing to show";
}
