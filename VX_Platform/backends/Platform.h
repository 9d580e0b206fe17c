// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/backends/GLDriver.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class NSEvent;
class NSWindow;

namespace vx {

/// One display as the platform sees it now; bounds in pixels from the top left of the desktop.
struct DisplayInfo {
    std::uint32_t id = 0;
    std::string name;
    CGRect bounds;
    double refreshRate = 60.0;
};

/// Waits for the refreshes of one display, on the display link's thread only.
class RefreshSource {
public:
    enum class Outcome { refresh, silent, woken };

    virtual ~RefreshSource() = default;
    /// Asks for the next refresh. One that has been asked for and not yet waited for counts once.
    virtual void ask() = 0;
    /// Waits for the one asked for: `silent` when none came within `seconds`, `woken` when `wakeDescriptor`
    /// became readable.
    virtual Outcome wait(double seconds, int wakeDescriptor) = 0;
    virtual const char* name() const = 0;
};

class WindowBackend;

/// What a view draws to.
class Surface {
public:
    virtual ~Surface() = default;
    virtual GLDriver::Handle handle() const = 0;
    /// The window the surface was made for; compared, never used.
    virtual const WindowBackend* window() const = 0;
    /// Follows the view's frame, which is given in its window's coordinates. Called where the surface's
    /// context is current or on no thread, since the handle may change.
    virtual void follow(CGRect frame) = 0;
    /// The display that shows the surface.
    virtual DisplayInfo display() const = 0;
    /// A source of that display's refreshes, or null where only the clock serves.
    virtual std::unique_ptr<RefreshSource> makeRefreshSource() const = 0;
};

/// A top-level window. Main thread only.
class WindowBackend {
public:
    virtual ~WindowBackend() = default;
    virtual void setTitle(const char* title) = 0;
    /// Frame of the content in desktop coordinates.
    virtual void setFrame(CGRect frame) = 0;
    virtual CGRect frame() const = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void setBordered(bool bordered) = 0;
    /// The native window, 0 where there is none.
    virtual unsigned long nativeWindow() const = 0;
};

/// The seam between the platform classes and the system below them. It reports events upward through
/// `NSWindow::sendEvent` and the window's `backend...` operations and decides nothing by itself.
class Platform {
public:
    virtual ~Platform() = default;

    /// The process's platform, started on the first call; null, with one line in the log, when it cannot
    /// start.
    static Platform* current();
    /// Whether one has been started.
    static bool isStarted();
    /// Ends the platform; every window, view and context must be gone.
    static void shutDown();

    virtual const char* name() const = 0;
    virtual GLDriver& gl() = 0;
    virtual std::vector<DisplayInfo> displays() = 0;
    virtual std::unique_ptr<WindowBackend> makeWindow(NSWindow* window, CGRect frame, bool bordered) = 0;
    /// A window on one that another toolkit owns; null where the platform has no such thing.
    virtual std::unique_ptr<WindowBackend> adoptWindow(NSWindow* window, unsigned long nativeWindow) = 0;
    /// A surface for a view inside `window` (null for a view that is in none), or null.
    virtual std::unique_ptr<Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                                 CGRect frame) = 0;
    /// Whether a view can be drawn to without being in a window.
    virtual bool drawsWithoutWindow() const = 0;
    /// Hands waiting events to their windows; waits up to `seconds` for the first. Main thread only.
    virtual void handleEvents(double seconds) = 0;
    /// Ends a wait in `handleEvents`. Any thread.
    virtual void wake() = 0;
};

/// How the headless platform is to be set up.
struct HeadlessOptions {
    /// Index among EGL's devices; negative for the first that gives a desktop GL context.
    int device = -1;
    CGSize displaySize = {1920.0, 1080.0};
    double refreshRate = 60.0;
};

std::unique_ptr<Platform> makeX11Platform();
std::unique_ptr<Platform> makeHeadlessPlatform(const HeadlessOptions& options);

/// Chooses what `Platform::current` starts. To be called before it.
void chooseHeadlessPlatform(const HeadlessOptions& options);

} // namespace vx
