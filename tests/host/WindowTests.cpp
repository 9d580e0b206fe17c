// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_OpenGL64/host/VX_GLSharedView.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/X11Input.h>

#include <cmath>
#include <csignal>
#include <utility>

// Behind the others: its macros take common words.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

using namespace vx::test;

namespace {

bool runUntil(const std::function<bool()>& condition) {
    return waitFor(condition, [] { NSApplication::sharedApplication()->runStep(0.005); });
}

// What the X server shows at a place of a window, as 0xRRGGBB.
unsigned long shownPixel(unsigned long window, int x, int y) {
    return X11Input().pixels({std::uint32_t(window), x, y, 1, 1})[0];
}

void fill(Stage& stage, float red, float green, float blue) {
    stage.onRender([=] { clearTo(red, green, blue); });
}

bool drawsOn(const Stage& stage) {
    const std::uint64_t before = stage.view->GetDrawnFrames();
    return runUntil([&] { return stage.view->GetDrawnFrames() > before + 5; });
}

} // namespace

TEST(Window, ShowsFramesAtTheDisplaysRateFollowsItsSizeAndGoesToAnotherWindow) {
    Stage stage(Stage::Draws::byItself, {200, 150});
    fill(stage, 0, 1, 0);
    ASSERT_TRUE(drawsOn(stage));
    EXPECT_EQ(shownPixel(stage.window->nativeWindow().handle, 100, 75), 0x00FF00u);

    stage.window->setFrame(CGRectMake(30, 30, 320, 240));
    ASSERT_TRUE(runUntil([&] { return stage.view->bounds().size.width == 320.0; }) && drawsOn(stage));
    EXPECT_EQ(shownPixel(stage.window->nativeWindow().handle, 310, 230), 0x00FF00u);

    auto second = NSInit(new NSWindow, CGRectMake(400, 300, 150, 120), NSBorderlessWindowMask);
    second->makeKeyAndOrderFront();
    second->setContentView(stage.view.get());
    stage.window->orderOut();
    fill(stage, 0, 0, 1);
    ASSERT_TRUE(drawsOn(stage));
    EXPECT_EQ(shownPixel(second->nativeWindow().handle, 140, 110), 0x0000FFu);
    EXPECT_STREQ(CVDisplayLinkGetThrottleName(stage.view->displayLink()), "Present events");
}

TEST(Window, ChildrenInThisWindowAndInOthersDrawAllFramesAtTheMainViewsRate) {
    struct Painter : ScriptedPipeline {
        VX_RETURNS_OWN_TYPE(Painter)
        void renderSubPipeline(CGRect*, VX_GLSharedView*) override {
            clearTo(0, 0, 1);
            ++drawn;
        }
        int drawn = 0;
    };
    Stage stage(Stage::Draws::byItself, {200, 150});
    const auto painter = NSInit(new Painter);
    const auto area = NSInit(new NSView, CGRectMake(0, 0, 200, 150));
    const auto other = NSInit(new NSWindow, CGRectMake(400, 300, 150, 120), NSBorderlessWindowMask);
    std::vector<NSRef<VX_GLSharedView>> children;
    for (const double x : {20.0, 100.0, 0.0})
        children.push_back(NSInit(new VX_GLSharedView, CGRectMake(x, 30, 60, 60), nullptr));
    stage.window->setContentView(area.get());
    area->addSubview(stage.view.get());
    area->addSubview(children[0].get());
    area->addSubview(children[1].get());
    other->setContentView(children[2].get());
    other->makeKeyAndOrderFront();
    stage.view->RenderThreadLock();
    for (const auto& child : children) {
        child->setRenderpipeline(painter.get());
        stage.view->addChildSharedView(child.get());
    }
    stage.view->RenderThreadUnLock();
    stage.view->initChildShardedViews();
    int frames = 0, incomplete = 0;
    stage.onRender([&] {
        clearTo(0, 1, 0);
        incomplete += std::exchange(painter->drawn, 0) != 3 && frames > 0;
        ++frames;
    });
    std::this_thread::sleep_for(std::chrono::seconds(1));
    fill(stage, 0, 1, 0);
    EXPECT_EQ(incomplete, 0);
    EXPECT_GT(frames, 10);
    const unsigned long window = stage.window->nativeWindow().handle;
    EXPECT_EQ(shownPixel(window, 5, 5), 0x00FF00u);
    EXPECT_EQ(shownPixel(window, 50, 60), 0x0000FFu);
    EXPECT_EQ(shownPixel(window, 130, 60), 0x0000FFu);
    EXPECT_EQ(shownPixel(other->nativeWindow().handle, 140, 110), 0x0000FFu);
    stage.view->stopRender();
    stage.view->releaseResources();
    stage.view->removeAllChildSharedViews();
    other->close();
}

TEST(Window, ComesBackToTheDisplaysPaceFromEachStallOfTheServer) {
    Stage stage(Stage::Draws::byItself);
    ASSERT_TRUE(drawsOn(stage));
    const int server = std::atoi(std::getenv("XVFB_PID"));
    LogCollector log;
    for (int stall = 1; stall <= 3; ++stall) {
        kill(server, SIGSTOP);
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
        kill(server, SIGCONT);
        EXPECT_TRUE(waitFor([&] { return log.count("are back") == stall; }) && drawsOn(stage));
        EXPECT_STREQ(CVDisplayLinkGetThrottleName(stage.view->displayLink()), "Present events");
    }
}

TEST(Window, HandsKeysAndMouseToTheHost) {
    Stage stage(Stage::Draws::byItself, {200, 150});
    NSRef<NSEvent> last;
    stage.window->setEventHandler([&](NSEvent* event) {
        if (event->type() != NSKeyUp && event->type() != NSOtherMouseUp) // which follow at once
            last = NSRef<NSEvent>::retain(event);
        return true;
    });
    stage.window->setTitle("Input");
    X11Input input;
    ASSERT_TRUE(runUntil([&] { return !input.windows("Input").empty(); }));
    const auto shown = input.windows("Input").front();
    const auto comes = [&](NSEventType type, double x, double y) {
        return runUntil([&] {
            return last && last->type() == type &&
                   std::hypot(last->locationInWindow().x - x, last->locationInWindow().y - y) < 2;
        });
    };
    input.moveTo(shown.x + 60, shown.y + 40);
    input.hold();
    EXPECT_TRUE(comes(NSLeftMouseDown, 60, 40));
    input.moveTo(shown.x + 500, shown.y + 400);
    EXPECT_TRUE(comes(NSLeftMouseDragged, 500, 400));
    input.letGo();
    EXPECT_TRUE(comes(NSLeftMouseUp, 500, 400)) << "outside the window";
    input.moveTo(shown.x + 70, shown.y + 40);
    EXPECT_TRUE(comes(NSMouseMoved, 70, 40)) << "a drag no more";
    input.click(shown.x + 60, shown.y + 40, 2);
    EXPECT_TRUE(comes(NSOtherMouseDown, 60, 40));
    EXPECT_EQ(last->buttonNumber(), 2);
    const struct {
        unsigned symbol, held, key;
        const char* characters;
    } keys[] = {{XK_a, XK_Shift_L, 'a', "A"},
                {XK_KP_Multiply, 0, '*', "*"},
                {XK_KP_Home, 0, NSHomeFunctionKey, ""},
                {XK_Escape, 0, NSEscapeKey, ""},
                {XK_F5, XK_Shift_L, NSF1FunctionKey + 4, ""}};
    for (const auto& each : keys) {
        input.press(each.symbol, each.held);
        std::this_thread::sleep_for(std::chrono::milliseconds(30)); // both ends of both keys come at once
        EXPECT_TRUE(runUntil([&] { return last->type() == NSKeyDown && last->key() == each.key; }))
            << each.symbol;
        EXPECT_STREQ(last->characters()->UTF8String(), each.characters);
    }
    EXPECT_EQ(last->modifierFlags(), unsigned(NSShiftKeyMask));
    Display* other = XOpenDisplay(nullptr);
    XSizeHints hints;
    long given = 0;
    stage.window->setStyleMask(0);
    EXPECT_TRUE(runUntil([&] {
        return XGetWMNormalHints(other, shown.id, &hints, &given) && hints.min_width == hints.max_width;
    }));
    XCloseDisplay(other);
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
        EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr) << "as before";
        EXPECT_TRUE(runUntil([&] { return shownPixel(foreign, 100, 80) == 0x00FFFFu; }));
        XResizeWindow(other, foreign, 180, 160);
        XSync(other, False);
        EXPECT_TRUE(runUntil([&] { return shownPixel(foreign, 170, 150) == 0x00FFFFu; }));
        EXPECT_EQ(host->view()->width(), 180.0f);
        EXPECT_EQ(pipeline->takeCalls().find("stop"), std::string::npos) << "it goes on in the new size";
        options.inside.handle = 0x7fffff1;
        EXPECT_EQ(VX_GLHost::open(pipeline.get(), options), nullptr);
    }
    XWindowAttributes attributes;
    EXPECT_TRUE(XGetWindowAttributes(other, foreign, &attributes)) << "it stays its owner's";
    XCloseDisplay(other);
}

TEST(Window, ThatAnotherClientEndsClosesAndTheProcessLives) {
    Display* other = XOpenDisplay(nullptr);
    const auto end = [other](::Window window) {
        XDestroyWindow(other, window);
        XSync(other, False);
    };
    Stage stage(Stage::Draws::byItself, {100, 100});
    end(stage.window->nativeWindow().handle);
    EXPECT_TRUE(runUntil([&] { return stage.window->isClosed(); }));
    stage.window->setFrame(CGRectMake(5, 5, 50, 50));

    const ::Window foreign = XCreateSimpleWindow(other, DefaultRootWindow(other), 0, 0, 90, 90, 0, 0, 0);
    XSync(other, False);
    const auto gone = NSRef<NSWindow>::adopt((new NSWindow)->initWithX11Window(foreign));
    end(foreign);
    LogCollector log;
    gone->setContentView(stage.view.get());
    EXPECT_EQ(log.count("is gone; its view has nothing to draw to"), 1);
    EXPECT_EQ(log.count("X11: Bad"), 0) << "one line is enough";
    EXPECT_TRUE(runUntil([&] { return gone->isClosed(); }));
    stage.view->stopRender();

    stage.window = NSInit(new NSWindow, CGRectMake(0, 0, 50, 50), 0);
    stage.view->setFrame(CGRectMake(0, 0, 40000, 40000));
    stage.window->contentView()->addSubview(stage.view.get());
    EXPECT_EQ(log.count("is drawn as far as 16384"), 1) << "the server lives on too";
    XCloseDisplay(other);
}

TEST(Window, ThatIsGoneFillsNoLogWithWhatTheServerRefuses) {
    LogCollector log;
    const auto window = NSInit(new NSWindow, CGRectMake(0, 0, 50, 50), 0);
    window->makeKeyAndOrderFront();
    Display* other = XOpenDisplay(nullptr);
    XDestroyWindow(other, window->nativeWindow().handle);
    XSync(other, False);
    for (int i = 0; i < 3; ++i) // before it is known
        window->setFrame(CGRectMake(i, 5, 50, 50));
    EXPECT_TRUE(runUntil([&] { return window->isClosed(); }));
    EXPECT_EQ(log.count("X11: BadWindow (invalid Window parameter) (request 12."), 1) << "one for each kind";
    XCloseDisplay(other);
}

// Both ways of a host: in the run loop when the server ends, and busy with its own work.
class ServerEnd : public testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Window, ServerEnd, testing::Values(false, true));

TEST_P(ServerEnd, IsToldToTheHostWhichEndsInOrder) {
    int told = 0;
    NSNotificationCenter::defaultCenter()->addObserver(
        &told, [&](NSNotification*) { ++told; }, NSApplicationDidLoseWindowServerNotification, nullptr);
    {
        Stage stage(Stage::Draws::byItself);
        ASSERT_TRUE(drawsOn(stage));
        kill(std::atoi(std::getenv("XVFB_PID")), SIGKILL);
        const bool busy = GetParam();
        EXPECT_TRUE(!busy || waitFor([&] { return stage.view->GetLostRefreshes() > 5; }))
            << "frames for nobody";
        NSApplication::sharedApplication()->run();
        EXPECT_EQ(told, 1);
        EXPECT_TRUE(stage.window->isClosed() && !stage.view->displayLink());
        stage.view->stopRender();
        EXPECT_NE(stage.pipeline->takeCalls().find("stop"), std::string::npos);
    }
    EXPECT_FALSE(NSInit(new NSWindow, CGRectMake(0, 0, 9, 9), 0));
    NSApplication::sharedApplication()->terminatePlatform();
    EXPECT_FALSE(NSApplication::sharedApplication()->finishLaunching());
    NSNotificationCenter::defaultCenter()->removeObserver(&told);
}

TEST(Window, ClosesWithTheViewStillDrawingAndEndsTheRunLoop) {
    Stage stage(Stage::Draws::byItself);
    ASSERT_TRUE(drawsOn(stage));
    NSTimer::scheduledTimerWithTimeInterval(
        0.05, [&](NSTimer*) { stage.window->performClose(); }, false);
    NSApplication::sharedApplication()->run();
    stage.window->close();
    stage.window = NSInit(new NSWindow, CGRectMake(0, 0, 10, 10), 0);
    EXPECT_TRUE(drawsOn(stage)) << "hooks run on, with nothing to show";
}
