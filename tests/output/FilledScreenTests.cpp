// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLFilledScreenWindow.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <tests/support/ScriptedPipeline.h>

#include <sstream>

using namespace vx::test;

namespace {

constexpr std::uint32_t kAttributes[] = {NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 24, 0};
constexpr CGRect kWall = {{1920, 0}, {320, 200}};

class FilledScreen : public HeadlessTest {
protected:
    FilledScreen() {
        NSApplication::plugHeadlessDisplay("wall", kWall, 60.0);
        window = NSInit(new VX_GLFilledScreenWindow, kWall, NSBorderlessWindowMask);
    }
    ~FilledScreen() override {
        endWindow();
        NSApplication::unplugHeadlessDisplay("wall");
    }

    // Hands the window the reference to the view that it releases, and takes the one to the pipeline.
    void endWindow() {
        if (window && window->MainGLView()) {
            stage.view->retain();
            stage.pipeline->autorelease();
        }
        window = nullptr;
    }
    std::string attach() {
        window->attachGLViewWithPixelFormat(stage.view.get(), kAttributes, stage.pipeline.get());
        window->makeKeyAndOrderFront();
        stage.step();
        return hooksOfTheMove();
    }
    std::string detach() {
        window->detachGLViewWithPixelFormat(kAttributes);
        stage.step();
        return hooksOfTheMove();
    }
    // Without those of frames, which come in between.
    std::string hooksOfTheMove() {
        std::istringstream all(stage.pipeline->takeCalls());
        std::string moving;
        for (std::string hook; all >> hook;)
            if (hook != "callBack" && hook != "render" && hook != "afterFlush")
                moving += hook + " ";
        return moving;
    }
    bool drawsOn(double width) {
        const auto size = [&] {
            stage.view->RenderThreadLock();
            const double now = stage.pipeline->lastBounds.size.width;
            stage.view->RenderThreadUnLock();
            return now;
        };
        const std::uint64_t before = stage.view->GetDrawnFrames();
        return waitFor([&] { return size() == width && stage.view->GetDrawnFrames() > before + 3; },
                       [&] { stage.step(); });
    }

    Stage stage{Stage::Draws::byItself, {64, 48}};
    NSRef<VX_GLFilledScreenWindow> window;
};

bool has(const CGRect& frame, double x, double y, double width, double height) {
    return CGRectEqualToRect(frame, CGRectMake(x, y, width, height));
}

} // namespace

TEST_F(FilledScreen, TakesAViewInAndGivesItBackToItsWindowAsOftenAsWanted) {
    EXPECT_EQ(window->MainGLView(), nullptr);
    const std::string moved = "notify stop detach detach attach start ";
    stage.view->setFrame(CGRectMake(3, 5, 50, 40));
    stage.view->stopRenderThread(); // a frame holds both
    stage.pipeline->takeCalls();
    const int views = stage.view->retainCount(), pipelines = stage.pipeline->retainCount();
    bool current = true;
    stage.pipeline->onStop = [&] {
        current &= stage.view->existingOpenGLContext() && stage.view->existingOpenGLContext()->isCurrent();
    };
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(attach(), moved);
        EXPECT_TRUE(has(stage.view->frame(), 0, 0, 320, 200) && window->contentView() == stage.view.get());
        EXPECT_TRUE(window->isKeyWindow() && !window->isClosed());
        EXPECT_TRUE(drawsOn(320));
        EXPECT_EQ(detach(), moved);
        EXPECT_TRUE(has(stage.view->frame(), 3, 5, 50, 40) &&
                    stage.window->contentView() == stage.view.get());
        EXPECT_EQ(window->MainGLView(), stage.view.get()) << "it still knows the view";
        EXPECT_TRUE(!window->isVisible() && drawsOn(50));
    }
    EXPECT_TRUE(current) << "the pipeline could not delete its objects";
    stage.step(); // posts what holds the view
    stage.view->stopRenderThread();
    EXPECT_EQ(stage.view->retainCount(), views);
    EXPECT_EQ(stage.pipeline->retainCount(), pipelines);
    endWindow();
    EXPECT_FALSE(stage.view->displayLink()) << "a window that ends after it gave the view back tears it down";
    EXPECT_TRUE(!stage.view->window() && !stage.view->renderpipeline());
    EXPECT_EQ(stage.view->retainCount(), 1);
    EXPECT_EQ(stage.pipeline->retainCount(), pipelines) << "what the view held is the host's to release";
}

TEST_F(FilledScreen, GivesBackToAParentUnlessThatHasEnded) {
    auto parent = NSInit(new NSView, CGRectMake(10, 10, 60, 60));
    const auto holder = NSInit(new NSView, CGRectMake(0, 0, 90, 90));
    stage.window->setContentView(holder.get());
    holder->addSubview(parent.get());
    parent->addSubview(stage.view.get());
    stage.view->setFrame(CGRectMake(1, 2, 30, 20));
    attach();
    detach();
    EXPECT_EQ(stage.view->superview(), parent.get());
    EXPECT_TRUE(has(stage.view->frame(), 1, 2, 30, 20) && drawsOn(30));

    attach();
    parent->removeFromSuperview();
    parent = nullptr;
    detach();
    EXPECT_TRUE(!stage.view->superview() && !stage.view->window());
    window->attachGLViewWithPixelFormat(nullptr, kAttributes, stage.pipeline.get());
    EXPECT_TRUE(!window->MainGLView() && !window->contentView());
    window->detachGLViewWithPixelFormat(kAttributes);
    window->releaseResources();
}

TEST_F(FilledScreen, WaitsForADisplayThatIsOffAndFindsItAgain) {
    LogCollector log;
    attach();
    ASSERT_TRUE(drawsOn(320));
    NSApplication::unplugHeadlessDisplay("wall");
    NSApplication::plugHeadlessDisplay("another", CGRectMake(5000, 0, 100, 100), 60.0);
    NSApplication::unplugHeadlessDisplay("another");
    EXPECT_EQ(log.count("Display wall is off"), 1);
    EXPECT_TRUE(drawsOn(320));
    NSApplication::plugHeadlessDisplay("wall", CGRectMake(1920, 0, 400, 300), 60.0);
    EXPECT_TRUE(has(window->frame(), 1920, 0, 400, 300)) << "it comes back with another mode";
    NSApplication::plugHeadlessDisplay("wall", CGRectMake(1900, 0, 480, 270), 60.0);
    EXPECT_TRUE(has(window->frame(), 1900, 0, 480, 270)) << "and changes that";
    NSApplication::unplugHeadlessDisplay("wall");
    EXPECT_EQ(log.count("Display wall is off"), 2);
    NSApplication::plugHeadlessDisplay("wall", CGRectMake(1920, 0, 400, 300), 60.0);
    detach();
    EXPECT_TRUE(drawsOn(64));
    NSApplication::plugHeadlessDisplay("wall", CGRectMake(1920, 0, 500, 300), 60.0);
    EXPECT_NE(window->frame().size.width, 500.0) << "a window that is not in use follows no display";
    attach();
    EXPECT_TRUE(drawsOn(320)) << "nor does it fill one whose mode is another now";
    detach();
}
