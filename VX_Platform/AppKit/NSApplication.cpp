// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>

#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/AppKit/private/WindowInternals.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSNotificationQueue.h>
#include <VX_Platform/Foundation/NSRunLoop.h>

#include <algorithm>
#include <exception>

namespace {
// Longest wait of one step of `run`: requests for display made on other threads are seen after it at the
// latest.
constexpr double kLongestWait = 0.05;

// One `run`, which may be inside another and which an exception may end.
struct Run {
    Run(std::atomic<bool>& running, std::atomic<bool>& stopAsked)
        : running(running), stopAsked(stopAsked), former(running.exchange(true)) {}
    ~Run() {
        running = former;
        stopAsked = false;
    }
    std::atomic<bool>&running, &stopAsked;
    bool former;
};
} // namespace

NSApplication* NSApplication::sharedApplication() {
    static NSApplication* application = new NSApplication;
    return application;
}

bool NSApplication::usePlatform(const char* name) {
    return vx::choosePlatform(name, {});
}

void NSApplication::useHeadlessPlatform(int device) {
    vx::choosePlatform("headless", {.device = device});
}

void NSApplication::useHeadlessPlatform(int device, CGSize displaySize, double refreshRate) {
    vx::choosePlatform("headless", {device, displaySize, refreshRate});
}

bool NSApplication::plugHeadlessDisplay(const char* name, CGRect bounds, double refreshRate) {
    const auto platform = vx::isPlatformChosen("headless") ? vx::runningPlatform() : nullptr;
    if (!platform)
        NSLog("Display \"%s\" is refused: virtual displays are the headless platform's", name);
    return platform && platform->plugDisplay(name, bounds, refreshRate);
}

bool NSApplication::unplugHeadlessDisplay(const char* name) {
    const auto platform = vx::startedPlatform();
    return platform && platform->unplugDisplay(name);
}

bool NSApplication::finishLaunching() {
    return vx::runningPlatform() != nullptr;
}

const char* NSApplication::platformName() const {
    const auto platform = vx::startedPlatform();
    return platform ? platform->name() : nullptr;
}

void NSApplication::run() {
    if (!finishLaunching())
        return;
    const Run run(m_Running, m_StopAsked);
    while (!m_StopAsked)
        runStep(kLongestWait);
}

void NSApplication::runStep(double seconds) {
    NSAutoreleasePool::drainThreadPool();
    NSRef<NSAutoreleasePool> pool = NSRef<NSAutoreleasePool>::adopt((new NSAutoreleasePool)->init());
    const double timer = NSRunLoop::currentRunLoop()->secondsToNextTimer();
    if (const auto platform = vx::runningPlatform())
        platform->handleEvents(timer < 0.0 ? seconds : std::min(seconds, timer));
    NSRunLoop::currentRunLoop()->fireDueTimers();
    displayPass();
    NSNotificationQueue::defaultQueue()->postWaiting();
}

void NSApplication::displayPass() {
    for (const NSRef<NSWindow>& window : vx::presentWindows()) {
        // A view that fails to set itself up must not take the other windows' pictures with it.
        try {
            window->displayIfNeeded();
        } catch (const std::exception& failure) {
            NSLog("Setting up a view of window \"%@\" failed: %s", window->title(), failure.what());
        }
    }
}

void NSApplication::stop() {
    m_StopAsked = true;
    if (const auto platform = vx::startedPlatform())
        platform->wake();
}

void NSApplication::setComposesText(bool composes) {
    if (const auto platform = vx::runningPlatform())
        platform->composeText(composes);
}

void NSApplication::setKeepsScreenOn(bool keep) {
    if (const auto platform = vx::runningPlatform())
        platform->keepScreenOn(keep);
}

bool NSApplication::terminatePlatform() {
    if (!m_Windows.empty()) {
        NSLog("NSApplication::terminatePlatform: %zu windows are still there; release them first",
              m_Windows.size());
        return false;
    }
    vx::endPlatform();
    return true;
}

std::vector<NSRef<NSWindow>> vx::presentWindows() {
    std::vector<NSRef<NSWindow>> present;
    for (NSWindow* window : NSApplication::sharedApplication()->windows())
        present.push_back(NSRef<NSWindow>::retain(window));
    return present;
}

void NSApplication::addWindow(NSWindow* window) {
    m_Windows.push_back(window);
}

void NSApplication::removeWindow(NSWindow* window) {
    std::erase(m_Windows, window);
}

void NSApplication::windowDidClose() {
    if (m_Running &&
        std::none_of(m_Windows.begin(), m_Windows.end(), [](const NSWindow* w) { return w->isVisible(); }))
        stop();
}
