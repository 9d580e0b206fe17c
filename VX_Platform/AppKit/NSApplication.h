// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <atomic>
#include <vector>

class NSWindow;

/// Posted with the application as its object after displays have come, gone, moved or changed their rate.
inline constexpr const char* NSApplicationDidChangeScreenParametersNotification =
    "NSApplicationDidChangeScreenParametersNotification";

/// Posted with the application as its object when the X server has gone, or another client has ended the
/// connection to it: once, from the run loop, after all views have stopped drawing
/// (`VX_GLMainView::stopRender` still calls their pipelines' teardown, and needs no more time than at other
/// times). The windows close behind it, so `run` returns. A host may go on without windows, but not begin
/// anew with X11.
inline constexpr const char* NSApplicationDidLoseWindowServerNotification =
    "NSApplicationDidLoseWindowServerNotification";

/// The process's application: which platform it runs on, and the main thread's run loop.
class VX_EXPORT NSApplication : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSApplication)

    /// Borrowed, never ends.
    static NSApplication* sharedApplication();

    /// Chooses the platform by its name, "x11" or "headless", before the first window, view or pixel format
    /// is made. Without a choice the window system that is there is taken; headless is never fallen into.
    /// Main thread. False, with one line in the log, for any other name, and when another platform runs
    /// already.
    static bool usePlatform(const char* name);
    /// Chooses the platform without windows, as `usePlatform("headless")` does. `device` is the index of an
    /// EGL device, or negative for the first that gives desktop OpenGL. Main thread.
    static void useHeadlessPlatform(int device = -1);
    /// The same with another size in pixels and rate in refreshes per second (1 to 1000) of its display,
    /// which is named "Headless". What is out of range is refused with a line in the log; the display then
    /// has 1920 x 1080 pixels and 60 Hz.
    static void useHeadlessPlatform(int device, CGSize displaySize, double refreshRate);

    /// Plugs a virtual display into the headless platform, or changes the one of that name: bounds in pixels
    /// from the top left of the desktop, at least 1 x 1, the rate from 1 to 1000 refreshes per second. Views
    /// on it follow its rate. Main thread. False, with one line in the log, for what is out of range, and on
    /// another platform.
    static bool plugHeadlessDisplay(const char* name, CGRect bounds, double refreshRate);
    /// Takes a virtual display away; views on it go on at the rate of another one. Main thread. False where
    /// there is none of that name.
    static bool unplugHeadlessDisplay(const char* name);

    /// Starts the platform, as the first window or pixel format otherwise does; one line in the log says
    /// which and why. Main thread. False, with one line in the log, when it cannot start: without a display
    /// and without `useHeadlessPlatform`, for example.
    bool finishLaunching();
    /// "x11" or "headless"; null before the start.
    const char* platformName() const;

    /// Runs the loop until `stop` or until the last shown window has closed; returns at once after a `stop`
    /// that came before it. Main thread.
    void run();
    /// One step of the loop, for a host with a loop of its own: events, timers, the display pass, posted
    /// notifications, in this order. Waits up to `seconds` for an event or timer.
    void runStep(double seconds);
    /// Ends the innermost `run` after its present step, or the next one before its first. Any thread.
    void stop();
    /// Returns whether a `run` is in progress. Any thread.
    bool isRunning() const { return m_Running; }

    /// Lets input methods and accents that take two keys make the text of key events (`NSEvent::characters`),
    /// for a host with text fields. An input method may then keep keys, and text that belongs to no key comes
    /// as an `NSKeyDown` whose key is 0. Off at first, where each key types for itself. Starts the platform
    /// if need be; nothing on the headless one. Main thread.
    void setComposesText(bool composes);
    /// Keeps the screen saver, and the display's going dark, off while `keep`; at first the user's settings
    /// hold. Starts the platform if need be; nothing on the headless one. Main thread.
    void setKeepsScreenOn(bool keep);

    /// Ends the platform, once views and contexts are gone; a later start begins anew. Main thread. False,
    /// with one line in the log, and without effect while there are windows.
    bool terminatePlatform();

    /// For `NSWindow`: the list of windows that there are, borrowed.
    void addWindow(NSWindow* window);
    void removeWindow(NSWindow* window);
    void windowDidClose();
    const std::vector<NSWindow*>& windows() const { return m_Windows; }

protected:
    ~NSApplication() override = default;

private:
    void displayPass();

    std::vector<NSWindow*> m_Windows;
    std::atomic<bool> m_Running{false};
    std::atomic<bool> m_StopAsked{false};
};
