// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <atomic>
#include <vector>

class NSWindow;

/// The process's application: which platform it runs on, and the main thread's run loop.
class VX_EXPORT NSApplication : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSApplication)

    /// Borrowed, never ends.
    static NSApplication* sharedApplication();

    /// Chooses the platform without windows, before the first window, view or pixel format is made. It is
    /// never fallen into by itself. `device` is the index of an EGL device, or negative for the first that
    /// gives desktop OpenGL.
    static void useHeadlessPlatform(int device = -1);
    /// The same with another size in pixels and rate in refreshes per second of its one display.
    static void useHeadlessPlatform(int device, CGSize displaySize, double refreshRate);

    /// Starts the platform, as the first window or pixel format otherwise does. Main thread. False, with one
    /// line in the log, when it cannot start: without a display and without `useHeadlessPlatform`, for
    /// example.
    bool finishLaunching();
    /// "x11" or "headless"; null before the start.
    const char* platformName() const;

    /// Runs the loop until `stop` or until the last shown window has closed. Main thread.
    void run();
    /// One step of the loop, for a host with a loop of its own: events, timers, the display pass, posted
    /// notifications, in this order. Waits up to `seconds` for an event or timer.
    void runStep(double seconds);
    /// Ends `run` after its present step. Any thread.
    void stop();
    bool isRunning() const { return m_Running; }

    /// Ends the platform, once windows, views and contexts are gone; a later start begins anew. Main thread.
    void terminatePlatform();

    /// For `NSWindow`.
    void addWindow(NSWindow* window);
    void removeWindow(NSWindow* window);
    void windowDidClose();
    const std::vector<NSWindow*>& windows() const { return m_Windows; }

private:
    void displayPass();

    std::vector<NSWindow*> m_Windows;
    std::atomic<bool> m_Running{false};
};
