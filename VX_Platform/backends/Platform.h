// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/NativeWindow.h>
#include <VX_Platform/backends/Alert.h>
#include <VX_Platform/backends/Displays.h>
#include <VX_Platform/backends/GLDriver.h>
#include <VX_Platform/backends/PlatformEvents.h>
#include <VX_Platform/backends/RefreshSource.h>

#include <memory>
#include <string>
#include <vector>

namespace vx {

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
    /// The display that shows the surface now. Any thread.
    virtual DisplayInfo display() const = 0;
    /// A source of that display's refreshes, or null where only the clock serves. Any thread.
    virtual std::unique_ptr<RefreshSource> makeRefreshSource() const = 0;
    /// Whether the frame just drawn may be handed over. Where it is not, a swap would wait for a display that
    /// does not answer; the refresh counts as lost. On the thread that has the surface's context current.
    virtual bool takesFrame() { return true; }
};

struct WindowStyle {
    bool bordered = true;
    bool resizable = true;
};

/// A top-level window. Main thread only.
class WindowBackend {
public:
    virtual ~WindowBackend() = default;
    virtual void setTitle(const char* title) = 0;
    /// Frame of the content in desktop coordinates.
    virtual void setFrame(CGRect frame) = 0;
    virtual CGRect frame() const = 0;
    /// In front, and with the keyboard if that is wanted; false where the window is gone for good.
    virtual bool show(bool withKeyboard) = 0;
    virtual void hide() = 0;
    virtual void setStyle(WindowStyle style) = 0;
    /// Covers the display of that name entirely until `leaveDisplay` or another display; false where there is
    /// no such display, or the window is another toolkit's.
    virtual bool fillDisplay(const std::string& display) = 0;
    /// Back to frame and style of before; nothing where the window fills no display.
    virtual void leaveDisplay() = 0;
    /// Displays have come, gone or changed.
    virtual void displaysChanged() {}
    virtual NativeWindow nativeWindow() const = 0;
};

/// A system below the platform classes: window system or none, and its GL. Everything it has to tell goes
/// through the `PlatformEvents` that it was started with.
class Platform {
public:
    virtual ~Platform() = default;

    virtual const char* name() const = 0;
    virtual GLDriver& gl() = 0;
    /// The displays there are now, the primary one first. Any thread.
    virtual std::vector<DisplayInfo> displays() = 0;
    virtual std::unique_ptr<WindowBackend> makeWindow(CGRect frame, WindowStyle style) = 0;
    /// A window on one that another toolkit owns; null, with a line in the log, where that cannot be.
    virtual std::unique_ptr<WindowBackend> adoptWindow(const NativeWindow& native) = 0;
    /// A surface for a view inside `window` (null for a view that is in none), or null.
    virtual std::unique_ptr<Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                                 CGRect frame) = 0;
    /// Whether a view can be drawn to without being in a window.
    virtual bool drawsWithoutWindow() const = 0;
    /// Shows the alert and blocks the calling thread, and no other, until a button is pressed; returns that
    /// button's result. Any thread.
    virtual int presentAlert(const AlertContents& contents) = 0;
    /// Reports waiting events; waits up to `seconds` for the first. Main thread only.
    virtual void handleEvents(double seconds) = 0;
    /// Ends a wait in `handleEvents`. Any thread.
    virtual void wake() = 0;
    /// Keeps the screen saver off, or leaves it to the user again. Main thread only.
    virtual void keepScreenOn(bool keep) {}
    /// Whether input methods and accents of two keys make the text of keys. Main thread only.
    virtual void composeText(bool compose) {}
    /// Whether the pointer is seen over the windows. Main thread only.
    virtual void showPointer(bool show) {}

    /// Plugs a virtual display in, or changes the one of that name; false where displays are real. Main
    /// thread only.
    virtual bool plugDisplay(const std::string& name, CGRect bounds, double refreshRate) { return false; }
    /// False where there is no such virtual display. Main thread only.
    virtual bool unplugDisplay(const std::string& name) { return false; }
};

} // namespace vx
