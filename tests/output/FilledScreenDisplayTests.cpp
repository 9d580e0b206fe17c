// SPDX-License-Identifier: MIT
// On a server with two displays: DUMMY0 and, right of it from x = 1280, DUMMY1.
#include <VX_OpenGL64/output/VX_GLFilledScreenWindow.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/WindowManager.h>
#include <tests/support/X11Input.h>

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <cstdlib>
#include <filesystem>

// Behind the others: its macros take common words.
#include <X11/Xatom.h>
#include <X11/Xlib.h>

using namespace vx::test;

namespace {

constexpr std::uint32_t kAttributes[] = {NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 24, 0};

// A window manager, and a panel along the top of each display. Windows that are shown while it starts may
// stay above those that fill a display, so that it is awaited.
class Desktop : public WindowManager {
public:
    Desktop() {
        const Window panels[] = {addPanel(0, 1280), addPanel(1280, 1024)};
        EXPECT_TRUE(waitFor(
            [&] { return std::ranges::all_of(panels, [this](Window panel) { return isManaged(panel); }); }));
    }
    bool coversPanels(unsigned long window) const {
        return property(window, "_NET_WM_STATE") == std::vector{atom("_NET_WM_STATE_FULLSCREEN")};
    }

private:
    Window addPanel(int left, int width) {
        constexpr long kHeight = 30;
        const Window panel =
            XCreateSimpleWindow(server, DefaultRootWindow(server), left, 0, width, kHeight, 0, 0, 0x808080);
        const Atom dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
        XChangeProperty(server, panel, atom("_NET_WM_WINDOW_TYPE"), XA_ATOM, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(&dock), 1);
        const long strut[12] = {0, 0, kHeight, 0, 0, 0, 0, 0, left, left + width - 1, 0, 0};
        XChangeProperty(server, panel, atom("_NET_WM_STRUT_PARTIAL"), XA_CARDINAL, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(strut), 12);
        XMapRaised(server, panel);
        return panel;
    }
};

int entries(const char* folder) {
    return int(std::distance(std::filesystem::directory_iterator(folder), {}));
}

int windowsOfTheServer() {
    Display* const server = XOpenDisplay(nullptr);
    std::function<int(Window)> count = [&](Window window) {
        Window root = 0, parent = 0, *children = nullptr;
        unsigned number = 0;
        if (!XQueryTree(server, window, &root, &parent, &children, &number))
            return 0;
        int all = int(number);
        for (unsigned i = 0; i < number; ++i)
            all += count(children[i]);
        if (children)
            XFree(children);
        return all;
    };
    const int all = count(DefaultRootWindow(server));
    XCloseDisplay(server);
    return all;
}

class FilledDisplay : public testing::TestWithParam<bool> {
protected:
    static bool runUntil(Stage& stage, const std::function<bool()>& condition) {
        return waitFor(condition, [&] {
            stage.step();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        });
    }
    // The four corner pixels of a display, as the server shows them.
    static bool isCovered(const CGRect& display, unsigned long color) {
        X11Input server;
        const int right = int(display.origin.x + display.size.width) - 1;
        const int bottom = int(display.origin.y + display.size.height) - 1;
        for (const int x : {int(display.origin.x), right})
            for (const int y : {int(display.origin.y), bottom})
                if (server.pixels({server.root(), x, y, 1, 1})[0] != color)
                    return false;
        return true;
    }
};

} // namespace

TEST_P(FilledDisplay, IsCoveredFromCornerToCornerMoveAfterMoveAndNothingIsLeftBehind) {
    const char* const more = std::getenv("VX_TEST_MOVES");
    const int moves = more ? std::atoi(more) : 6;
    std::unique_ptr<Desktop> desktop;
    if (GetParam())
        desktop = std::make_unique<Desktop>();
    Stage stage(Stage::Draws::byItself, {200, 150});
    stage.onRender([] { clearTo(0, 1, 0); });
    const auto window =
        NSInit(new VX_GLFilledScreenWindow, NSScreen::mainScreen()->frame(), NSBorderlessWindowMask);
    // Counted until two counts in a row are the same: a window manager takes its frames away when it has the
    // time.
    const auto count = [&] {
        stage.view->stopRenderThread(); // a frame holds both
        const std::vector<int> counts = {windowsOfTheServer(), entries("/proc/self/task"),
                                         entries("/proc/self/fd"), stage.view->retainCount(),
                                         stage.pipeline->retainCount()};
        stage.view->startRenderThread();
        return counts;
    };
    const auto held = [&] {
        std::vector<int> counts = count();
        EXPECT_TRUE(runUntil(stage, [&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            const std::vector<int> former = std::exchange(counts, count());
            return counts == former;
        }));
        return counts;
    };
    std::vector<int> before;
    for (int i = 0; i < moves; ++i) {
        const auto pool = NSInit(new NSAutoreleasePool);
        auto* const screen = static_cast<NSScreen*>(NSScreen::screens()->objectAtIndex(i % 2));
        window->setFrame(screen->frame());
        window->attachGLViewWithPixelFormat(stage.view.get(), kAttributes, stage.pipeline.get());
        window->makeKeyAndOrderFront();
        const auto isFilled = [&] {
            return stage.view->GetDrawnFrames() > 2 && isCovered(screen->frame(), 0x00FF00) &&
                   (!desktop || desktop->coversPanels(window->nativeWindow().handle));
        };
        EXPECT_TRUE(runUntil(stage, isFilled)) << "move " << i;
        stage.view->RenderThreadLock();
        const CGSize size = stage.pipeline->lastBounds.size;
        stage.view->RenderThreadUnLock();
        EXPECT_TRUE(size.width == screen->frame().size.width && size.height == screen->frame().size.height);

        window->detachGLViewWithPixelFormat(kAttributes);
        EXPECT_TRUE(runUntil(stage, [&] {
            return stage.view->displayLink() && stage.view->GetDrawnFrames() > 2 &&
                   stage.view->bounds().size.width == 200.0;
        }));
        stage.step();
        stage.step(); // has posted what holds the view
        if (i == 1)   // each display has been used once
            before = held();
    }
    EXPECT_EQ(held(), before) << "windows, threads, descriptors, references to view and pipeline";

    // A window with a place of its own finds it again.
    const unsigned long own = stage.window->nativeWindow().handle;
    const CGSize size = stage.window->frame().size;
    for (const char* display : {"DUMMY0", "DUMMY1"})
        ASSERT_TRUE(stage.window->fillDisplay(display));
    EXPECT_TRUE(runUntil(stage, [&] {
        return isCovered(CGRectMake(1280, 0, 1024, 768), 0x00FF00) &&
               (!desktop || desktop->coversPanels(own));
    }));
    stage.window->leaveDisplay();
    EXPECT_TRUE(runUntil(stage, [&] {
        const CGSize is = stage.window->frame().size;
        return is.width == size.width && is.height == size.height &&
               (!desktop || !desktop->coversPanels(own));
    }));
    stage.view->retain();
    stage.pipeline->autorelease();
}

INSTANTIATE_TEST_SUITE_P(X11, FilledDisplay, testing::Values(false, true), [](const auto& info) {
    return info.param ? "UnderAWindowManagerWithPanels" : "WithoutAWindowManager";
});
