// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSResponder.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/CoreGraphics/NativeWindow.h>

#include <functional>
#include <memory>
#include <string>

class NSView;

enum NSWindowStyleMask : unsigned {
    NSBorderlessWindowMask = 0,
    NSTitledWindowMask = 1 << 0,
    NSClosableWindowMask = 1 << 1,
    NSMiniaturizableWindowMask = 1 << 2,
    NSResizableWindowMask = 1 << 3
};

/// Names of the notifications a window posts, with itself as their object.
inline constexpr const char* NSWindowDidMoveNotification = "NSWindowDidMoveNotification";
inline constexpr const char* NSWindowDidResizeNotification = "NSWindowDidResizeNotification";
inline constexpr const char* NSWindowWillCloseNotification = "NSWindowWillCloseNotification";

/// A top-level window. Frames are those of its content, in pixels, from the top left of the desktop. Main
/// thread only.
///
/// A host receives events in three ways: by a subclass of window or view that overrides the operations of
/// `NSResponder`, by `setEventHandler`, and by the notifications above.
class VX_EXPORT NSWindow : public NSResponder {
public:
    VX_RETURNS_OWN_TYPE(NSWindow)

    NSWindow();

    /// A window that is not shown yet, with an empty content view. Starts the platform if need be. Returns
    /// the object, or releases it and returns null, with one line in the log, when there is no platform.
    NSWindow* initWithContentRect(CGRect rect, unsigned styleMask);
    /// Takes over a window of another toolkit, so that views can be put into it. That toolkit keeps the
    /// window and its events; this object follows its size and its end, and ends without closing it. Returns
    /// null, as above, where there is no such window or it is of another window system.
    NSWindow* initWithNativeWindow(const vx::NativeWindow& window);
    /// The same for an X11 window id.
    NSWindow* initWithX11Window(unsigned long window);
    void dealloc() override;

    void setTitle(NSString* title);
    void setTitle(const char* title);
    /// Borrowed, autoreleased.
    NSString* title() const;

    CGRect frame() const;
    void setFrame(CGRect frame);
    /// `NSWindowStyleMask` bits: a title bar and border, and whether the user can change the size. The others
    /// are the window manager's to grant.
    void setStyleMask(unsigned styleMask);

    /// Covers the display of that name entirely, without a border, until `leaveDisplay` or another display.
    /// False, and nothing changes, where there is no such display.
    bool fillDisplay(const char* name);
    /// Back to the frame and style of before; nothing where the window fills no display.
    void leaveDisplay();

    /// The view that fills the content and is resized with it, retained; null for none.
    void setContentView(NSView* view);
    NSView* contentView() const { return m_ContentView; }

    /// Shows the window, in front and with the keyboard.
    void makeKeyAndOrderFront();
    void orderOut();
    bool isVisible() const { return m_Visible; }
    bool isKeyWindow() const { return m_Key; }

    /// As the close button does: asks `windowShouldClose`, then closes.
    void performClose();
    /// Posts `NSWindowWillCloseNotification`, takes the window from the screen and its content view out of
    /// it. The run loop ends when the last shown window has closed. Harmless when repeated.
    void close();
    bool isClosed() const { return m_Closed; }

    /// Hook: false keeps the window open.
    virtual bool windowShouldClose() { return true; }
    /// Hook: the content has another size or place.
    virtual void windowDidResize() {}
    virtual void windowDidMove() {}

    /// Sees each event before the views; returns true to keep it from them.
    using EventHandler = std::function<bool(NSEvent*)>;
    void setEventHandler(EventHandler handler) { m_EventHandler = std::move(handler); }
    /// Hands an event to the handler, then to the view it belongs to: keys to the first responder, else the
    /// content view; mouse events to the view under the pointer, drags to the view they began in.
    void sendEvent(NSEvent* event);
    /// The view that gets the keys, borrowed; null for the content view.
    void makeFirstResponder(NSResponder* responder) { m_FirstResponder = responder; }

    /// The window as the window system knows it; false where there is no window system.
    vx::NativeWindow nativeWindow() const;

    /// The display pass of the run loop: displays the views of a shown window that ask for it.
    void displayIfNeeded();

    /// The library's own side of a window.
    struct VX_HIDDEN Internals;

protected:
    ~NSWindow() override;

private:
    NSWindow* start();
    NSResponder* receiverOf(NSEvent* event);
    void post(const char* notification);

    std::unique_ptr<Internals> m_Internals;
    NSView* m_ContentView = nullptr;
    NSResponder* m_FirstResponder = nullptr;
    NSView* m_DragView = nullptr;
    EventHandler m_EventHandler;
    std::string m_Title;
    CGRect m_Frame;
    bool m_Visible = false;
    bool m_Key = false;
    bool m_Closed = false;
};
