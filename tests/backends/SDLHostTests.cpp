// SPDX-License-Identifier: MIT
// Beside a host that uses SDL itself.
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSCursor.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/LogCollector.h>
#include <tests/support/WaitFor.h>

#include <SDL.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <thread>

// Behind the others: its macros take common words.
#include <X11/Xlib.h>

namespace {

NSRef<NSWindow> shownWindow() {
    auto window = NSInit(new NSWindow, CGRectMake(0, 0, 50, 50), NSTitledWindowMask);
    window->makeKeyAndOrderFront();
    NSApplication::sharedApplication()->runStep(0.0);
    return window;
}

} // namespace

TEST(SDLHost, ReceivesAllItsEventsBesideARunLoopThatTheyWake) {
    SDL_SetMainReady();
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0);
    SDL_Window* own = SDL_CreateWindow("Host", 300, 0, 50, 50, 0);
    const auto ours = shownWindow();
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    SDL_Event key{}, user{};
    key.type = SDL_KEYDOWN;
    key.key.windowID = SDL_GetWindowID(own);
    key.key.keysym.sym = SDLK_F24;
    user.type = SDL_RegisterEvents(1);
    const auto begin = std::chrono::steady_clock::now();
    std::thread sender([&] {
        for (int i = 0; i < 20; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            SDL_PushEvent(&key);
            SDL_PushEvent(&user);
        }
    });
    int received = 0;
    while (received < 40 && std::chrono::steady_clock::now() - begin < std::chrono::seconds(10)) {
        NSApplication::sharedApplication()->runStep(10.0);
        SDL_Event event;
        while (SDL_PollEvent(&event))
            received +=
                event.type == user.type || (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_F24);
    }
    sender.join();
    EXPECT_EQ(received, 40);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    EXPECT_TRUE(SDL_IsTextInputActive()) << "as the host left it";
    SDL_DestroyWindow(own);
    SDL_Quit();
}

TEST(SDLHost, OutlivesTheServerInItsOwnCallsToo) {
    const auto window = shownWindow();
    kill(std::atoi(std::getenv("XVFB_PID")), SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    SDL_PumpEvents();
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_TRUE(window->isClosed());
}

TEST(Windows, DoNotWaitForAWindowManagerThatHangs) {
    vx::test::LogCollector log;
    Display* const manager = XOpenDisplay(nullptr);
    XSelectInput(manager, DefaultRootWindow(manager), SubstructureRedirectMask);
    XSync(manager, False);
    const auto window = shownWindow();
    const auto isShown = [&] {
        XWindowAttributes attributes;
        return XGetWindowAttributes(manager, window->nativeWindow().handle, &attributes) &&
               attributes.map_state == IsViewable;
    };
    EXPECT_EQ(log.count("The window manager does not answer"), 1);
    EXPECT_FALSE(isShown());
    ASSERT_TRUE(window->fillDisplay(NSScreen::mainScreen()));

    XMapWindow(manager, window->nativeWindow().handle); // it is back
    const auto isAskedToCover = [&] {
        XEvent event;
        return XCheckTypedEvent(manager, ClientMessage, &event) &&
               event.xclient.message_type == XInternAtom(manager, "_NET_WM_STATE", False);
    };
    EXPECT_TRUE(vx::test::waitFor(isAskedToCover, [] { NSApplication::sharedApplication()->runStep(0.01); }));
    EXPECT_TRUE(isShown());
    XCloseDisplay(manager);
}

TEST(Windows, TakeComposedTextWithItsKeyAndTheRestWithoutOne) {
    const auto window = shownWindow();
    std::string told;
    window->setEventHandler([&](NSEvent* event) {
        told += std::to_string(event->key()) + event->characters()->UTF8String() + " ";
        return true;
    });
    NSApplication::sharedApplication()->setComposesText(true);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    SDL_Event key{}, text{};
    key.type = SDL_KEYDOWN;
    key.key.keysym.sym = SDLK_e;
    text.type = SDL_TEXTINPUT;
    std::strcpy(text.text.text, "\xc3\xaa");
    for (Uint32 id = 1; id < 9; ++id) // one of these is the window's
        for (SDL_Event* event : {&key, &text, &text, &key}) {
            event->key.windowID = event->text.windowID = id;
            SDL_PushEvent(event);
        }
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(told, "101\xc3\xaa 0\xc3\xaa 101 ");
}

TEST(Windows, LeaveTextAndScreenSaverToTheUserAndThePointerAndItToTheHost) {
    const auto window = shownWindow();
    EXPECT_FALSE(SDL_IsTextInputActive()) << "an input method would keep keys";
    EXPECT_TRUE(SDL_IsScreenSaverEnabled());
    NSApplication::sharedApplication()->setKeepsScreenOn(true);
    EXPECT_FALSE(SDL_IsScreenSaverEnabled());
    NSApplication::sharedApplication()->setKeepsScreenOn(false);
    EXPECT_TRUE(SDL_IsScreenSaverEnabled());
    NSCursor::unhide();
    NSCursor::hide();
    NSCursor::hide();
    NSCursor::unhide();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    NSCursor::unhide();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
}
