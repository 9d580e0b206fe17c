// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/AppKit/private/EventRouter.h>
#include <VX_Platform/AppKit/private/WindowInternals.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>

#include <gtest/gtest.h>
#include <tests/support/LogCollector.h>

using vx::InputEvent;
using Kind = vx::InputEvent::Kind;

namespace {

std::string told; // by views and windows, in order

class NamedView : public NSView {
public:
    explicit NamedView(const char* name) : m_Name(name) {}
    void keyDown(NSEvent* event) override { tell("keyDown", event); }
    void keyUp(NSEvent* event) override { tell("keyUp", event); }
    void mouseDown(NSEvent* event) override { tell("down", event); }
    void mouseUp(NSEvent* event) override { tell("up", event); }
    void mouseDragged(NSEvent* event) override { tell("dragged", event); }
    void mouseMoved(NSEvent* event) override { tell("moved", event); }
    void rightMouseDown(NSEvent* event) override { tell("right down", event); }
    void rightMouseUp(NSEvent* event) override { tell("right up", event); }
    void rightMouseDragged(NSEvent* event) override { tell("right dragged", event); }
    void otherMouseDown(NSEvent* event) override { tell("other down", event); }
    void otherMouseUp(NSEvent* event) override { tell("other up", event); }
    void otherMouseDragged(NSEvent* event) override { tell("other dragged", event); }
    void scrollWheel(NSEvent* event) override { tell("scroll", event); }
    NSRef<NSEvent> last;

private:
    void tell(const char* what, NSEvent* event) {
        told += std::string(m_Name) + " " + what + "; ";
        last = NSRef<NSEvent>::retain(event);
    }
    const char* m_Name;
};

class Window : public NSWindow {
public:
    VX_RETURNS_OWN_TYPE(Window)
    void windowDidResize() override { told += "resized; "; }
    void windowDidMove() override { told += "moved; "; }
    bool windowShouldClose() override {
        told += "close?; ";
        return closes;
    }
    bool closes = false;
};

// Tells of its end; who is in the middle of an operation of its own must not see it.
class Mortal : public NSView {
public:
    ~Mortal() override { told += "view ended; "; }
    void mouseDown(NSEvent*) override {
        removeFromSuperview();
        told += "down; ";
    }
    void displayDidChange() override {
        told += "display; ";
        if (auto* window = std::exchange(doomed, nullptr))
            window->release();
    }
    static inline NSWindow* doomed = nullptr;
};

class MortalWindow : public Window {
public:
    ~MortalWindow() override { told += "window ended; "; }
    static MortalWindow* make() {
        auto* window = new MortalWindow;
        window->initWithContentRect(CGRectMake(0, 0, 9, 9), 0);
        window->setContentView(NSInit(new Mortal).get());
        window->closes = true;
        return window;
    }
};

// A window with a view at 20, 10 and another one inside that at 5, 5.
class WindowEvents : public testing::Test {
protected:
    WindowEvents() {
        NSApplication::useHeadlessPlatform();
        window->initWithContentRect(CGRectMake(0, 0, 200, 100), NSTitledWindowMask);
        outer->initWithFrame(CGRectMake(20, 10, 100, 50));
        inner->initWithFrame(CGRectMake(5, 5, 20, 20));
        window->contentView()->addSubview(outer.get());
        outer->addSubview(inner.get());
        window->makeKeyAndOrderFront();
        told.clear();
    }
    ~WindowEvents() override { window->close(); }

    vx::WindowBackend& backend() { return *NSWindow::Internals::backendOf(window.get()); }
    std::string send(Kind kind, double x = 0, double y = 0, int button = -1) {
        InputEvent event;
        event.kind = kind;
        event.location = {x, y};
        event.button = button;
        vx::eventRouter().input(backend(), event);
        return std::exchange(told, {});
    }

    NSRef<Window> window = NSRef<Window>::adopt(new Window);
    NSRef<NamedView> outer = NSRef<NamedView>::adopt(new NamedView("outer"));
    NSRef<NamedView> inner = NSRef<NamedView>::adopt(new NamedView("inner"));
};

} // namespace

TEST_F(WindowEvents, ReachTheInnermostViewUnderThePointerAndDragsStayWhereTheyBegan) {
    EXPECT_EQ(send(Kind::motion, 26, 16), "inner moved; ");
    EXPECT_EQ(send(Kind::motion, 46, 16), "outer moved; ") << "beyond the inner view's right edge";
    EXPECT_EQ(send(Kind::scroll, 24, 16), "outer scroll; ") << "left of the inner view";
    EXPECT_EQ(send(Kind::buttonDown, 26, 16, 0), "inner down; ");
    EXPECT_EQ(send(Kind::motion, 150, 90, 0), "inner dragged; ");
    EXPECT_EQ(send(Kind::motion, 150, 90, 1), "inner right dragged; ");
    EXPECT_EQ(send(Kind::buttonUp, 150, 90, 0), "inner up; ");
    EXPECT_EQ(send(Kind::buttonDown, 30, 50, 2), "outer other down; ");
    EXPECT_EQ(outer->last->buttonNumber(), 2);
}

TEST_F(WindowEvents, OfEachTypeGoUpToWhoKeepsThem) {
    auto plain = NSInit(new NSView);
    inner->addSubview(plain.get());
    NSEvent::Fields fields;
    fields.deltaY = 2.5;
    for (const NSEventType type : {NSKeyDown, NSKeyUp, NSLeftMouseDown, NSLeftMouseUp, NSLeftMouseDragged,
                                   NSMouseMoved, NSRightMouseDown, NSRightMouseUp, NSRightMouseDragged,
                                   NSOtherMouseDown, NSOtherMouseUp, NSOtherMouseDragged, NSScrollWheel}) {
        fields.type = type;
        plain->handle(NSEvent::eventWithFields(fields, window.get()));
    }
    EXPECT_EQ(told,
              "inner keyDown; inner keyUp; inner down; inner up; inner dragged; inner moved; "
              "inner right down; inner right up; inner right dragged; inner other down; inner other up; "
              "inner other dragged; inner scroll; ");
    EXPECT_EQ(inner->last->deltaY(), 2.5);
}

TEST_F(WindowEvents, KeysGoToTheFirstResponderAndTheHandlerSeesAllFirstAndMayKeepThem) {
    const auto neverShown = NSInit(new NSWindow, CGRectMake(0, 0, 9, 9), 0);
    for (const auto leave : {+[](NSRef<NSWindow>& window) { window->orderOut(); },
                             +[](NSRef<NSWindow>& window) { window = nullptr; }}) {
        auto other = NSInit(new NSWindow, CGRectMake(0, 0, 9, 9), 0);
        other->makeKeyAndOrderFront();
        EXPECT_TRUE(other->isKeyWindow() && !window->isKeyWindow()) << "one window is key at a time";
        leave(other);
        EXPECT_TRUE(window->isKeyWindow() && !neverShown->isKeyWindow());
    }
    window->makeFirstResponder(outer.get());
    InputEvent event;
    event.kind = Kind::keyDown;
    event.key = static_cast<unsigned>(vx::Key::f1) + 4;
    event.modifiers = vx::kShift | vx::kCommand;
    vx::eventRouter().input(backend(), event);
    EXPECT_EQ(told, "outer keyDown; ");
    EXPECT_EQ(outer->last->key(), NSF1FunctionKey + 4u);
    EXPECT_EQ(outer->last->modifierFlags(), unsigned(NSShiftKeyMask | NSCommandKeyMask));
    told.clear();
    int seen = 0;
    window->setEventHandler([&](NSEvent* event) { return ++seen, event->type() == NSMouseMoved; });
    EXPECT_EQ(send(Kind::motion, 26, 16), "");
    EXPECT_EQ(send(Kind::buttonDown, 26, 16, 0), "inner down; ");
    EXPECT_EQ(seen, 2);
}

TEST_F(WindowEvents, AChangeOfTheFrameIsToldByHookAndNotificationEachOnce) {
    auto* centre = NSNotificationCenter::defaultCenter();
    for (const char* name : {NSWindowDidResizeNotification, NSWindowDidMoveNotification})
        centre->addObserver(
            this, [name](NSNotification*) { told += std::string(name) + "; "; }, name, window.get());
    window->setFrame(CGRectMake(0, 0, 300, 100));
    EXPECT_EQ(window->contentView()->frame().size.width, 300.0);
    window->setFrame(CGRectMake(7, 0, 300, 100));
    window->setFrame(CGRectMake(7, 0, 300, 100));
    EXPECT_EQ(told, "resized; NSWindowDidResizeNotification; moved; NSWindowDidMoveNotification; ");
    centre->removeObserver(this);
}

TEST_F(WindowEvents, MayEndWhomTheyAreToldTo) {
    window->contentView()->addSubview(NSInit(new Mortal, CGRectMake(0, 0, 9, 9)).get());
    EXPECT_EQ(send(Kind::buttonDown, 1, 1, 0), "down; view ended; ");
    EXPECT_EQ(send(Kind::motion, 2, 2, 0) + send(Kind::buttonUp, 2, 2, 0), "");
    window->makeFirstResponder(inner.get());
    inner->removeFromSuperview();
    EXPECT_EQ(send(Kind::keyDown), "") << "it has left";

    auto* centre = NSNotificationCenter::defaultCenter();
    for (const auto change : {+[](NSWindow* window) { window->performClose(); },
                              +[](NSWindow* window) { window->setFrame(CGRectMake(0, 0, 20, 20)); }}) {
        auto* mortal = MortalWindow::make();
        const auto release = [&](NSNotification*) {
            centre->removeObserver(this);
            mortal->release();
            told += "released; ";
        };
        centre->addObserver(this, release, nullptr, mortal);
        change(mortal);
        EXPECT_LT(told.find("released"), told.find("window ended"));
        told.clear();
    }
    auto* first = MortalWindow::make();
    Mortal::doomed = MortalWindow::make();
    vx::eventRouter().displaysChanged();
    EXPECT_EQ(told, "display; display; view ended; window ended; ");
    first->release();
}

TEST_F(WindowEvents, TheCloseButtonAsksFirst) {
    vx::eventRouter().closeAsked(backend());
    EXPECT_FALSE(window->isClosed());
    window->closes = true;
    vx::eventRouter().closeAsked(backend());
    EXPECT_TRUE(window->isClosed());
    EXPECT_EQ(told, "close?; close?; ");
}

TEST(NSApplication, KeepsAStopForTheNextRunAndItsPlatformWhileThereAreWindows) {
    vx::test::LogCollector log;
    NSApplication::useHeadlessPlatform();
    NSApplication* app = NSApplication::sharedApplication();
    app->stop();
    app->run();
    EXPECT_FALSE(app->isRunning());
    auto window = NSInit(new NSWindow);
    EXPECT_FALSE(app->terminatePlatform());
    EXPECT_EQ(log.count("1 windows are still there"), 1);
    window = nullptr;
    EXPECT_TRUE(app->terminatePlatform());
}
