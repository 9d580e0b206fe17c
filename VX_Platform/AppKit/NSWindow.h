// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSResponder.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/CoreGraphics/NativeWindow.h>

#include <functional>
#include <memory>
#include <string>

class NSScreen;
class NSView;

/// What a window has around its content, as bits.
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
/// thread only; no operation needs a GL context or makes a GL call, but that a view which moves between
/// windows takes its surface along (`NSOpenGLContext::setView`).
///
/// A host receives events in three ways: by a subclass of window or view that overrides the operations of
/// `NSResponder`, by `setEventHandler`, and by the notifications above.
class VX_EXPORT NSWindow : public NSResponder {
public:
    VX_RETURNS_OWN_TYPE(NSWindow)

    NSWindow();

    /// An empty one without a border, as by the next.
    NSWindow* init() override;
    /// A window that is not shown yet, with an empty content view: `rect` is its frame, `styleMask` bits of
    /// `NSWindowStyleMask`. Starts the platform if need be. Returns the object, or releases it and returns
    /// null, with one line in the log, when there is no platform.
    NSWindow* initWithContentRect(CGRect rect, unsigned styleMask);
    /// Takes over a window of another toolkit, so that views can be put into it. That toolkit keeps the
    /// window and its events; this object follows its size and its end, and ends without closing it. Returns
    /// null, as above, where there is no such window or it is of another window system.
    NSWindow* initWithNativeWindow(const vx::NativeWindow& window);
    /// The same for an X11 window id.
    NSWindow* initWithX11Window(unsigned long window);
    /// Closes the window if it is open.
    void dealloc() override;

    /// Sets the text of the title bar, UTF-8; copied. A null `NSString` is an empty title.
    void setTitle(NSString* title);
    void setTitle(const char* title);
    /// Returns the text, borrowed, autoreleased.
    NSString* title() const;

    /// Returns where the content is now.
    CGRect frame() const;
    /// Returns the display that shows most of the frame, also while the window is not shown; borrowed,
    /// autoreleased. Null where no display is.
    NSScreen* screen() const;
    /// Moves and sizes the content, to 1 x 1 pixels at least. A window manager may grant something else,
    /// which the run loop then tells. The content view follows, and the hooks and notifications below are
    /// called.
    void setFrame(CGRect frame);
    /// `NSWindowStyleMask` bits: a title bar and border, and whether the user can change the size. The others
    /// are the window manager's to grant.
    void setStyleMask(unsigned styleMask);

    /// Covers the display of that name, or else the one at the output of that name, entirely, without a
    /// border, until `leaveDisplay` or another display. False, and nothing changes, where there is no such
    /// display.
    bool fillDisplay(const char* name);
    /// The same for that very display, also where others have its name.
    bool fillDisplay(const NSScreen* screen);
    /// Back to the frame and style of before; nothing where the window fills no display.
    void leaveDisplay();

    /// Puts in the view that fills the content and is resized with it, retained; null for none. It leaves its
    /// former parent or window, the former content view leaves this one, and the keyboard goes to the new
    /// one.
    void setContentView(NSView* view);
    /// Returns that view, borrowed, or null.
    NSView* contentView() const { return m_ContentView; }

    /// Shows the window, in front and with the keyboard, also one that has been closed. Nothing where the
    /// window system or another client has ended it.
    void makeKeyAndOrderFront();
    /// Hook: false shows the window without giving it the keyboard.
    virtual bool canBecomeKeyWindow() { return true; }
    /// Returns where the content of a window with that frame is: the same, since frames are the content's.
    CGRect contentRectForFrameRect(CGRect frame) const { return frame; }
    /// Takes the window from the screen; its views stay prepared and go on drawing.
    void orderOut();
    /// Whether the window has been shown and not taken from the screen again.
    bool isVisible() const { return m_Visible; }
    /// Whether the window has the keyboard, as the window system last told.
    bool isKeyWindow() const { return m_Key; }

    /// As the close button does: asks `windowShouldClose`, then closes.
    void performClose();
    /// Posts `NSWindowWillCloseNotification`, takes the window from the screen and its content view out of
    /// it. The run loop ends when the last shown window has closed. Harmless when repeated.
    void close();
    /// Whether `close` has been called since the window was last shown.
    bool isClosed() const { return m_Closed; }

    /// Hook: false keeps the window open.
    virtual bool windowShouldClose() { return true; }
    /// Hook: the content has another size; the content view has it already.
    virtual void windowDidResize() {}
    /// Hook: the content has another place.
    virtual void windowDidMove() {}

    /// Sees each event before the views; returns true to keep it from them.
    using EventHandler = std::function<bool(NSEvent*)>;
    /// Puts a handler in place, owned; an empty one for none.
    void setEventHandler(EventHandler handler);
    /// Hands an event to the handler, then to the view it belongs to: keys to the first responder, else the
    /// content view; mouse events to the view under the pointer, drags to the view they began in.
    void sendEvent(NSEvent* event);
    /// Sets the view that gets the keys, borrowed; null for the content view. One that leaves the window gets
    /// none any more; what is no view must leave before it ends.
    void makeFirstResponder(NSResponder* responder) { m_FirstResponder = responder; }

    /// The window as the window system knows it; false where there is no window system.
    vx::NativeWindow nativeWindow() const;

    /// The display pass of the run loop: displays the views of a shown window that ask for it.
    void displayIfNeeded();

    /// For `NSView`: it has left the window.
    void forgetResponder(const NSResponder* responder);

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
    std::shared_ptr<EventHandler> m_EventHandler;
    std::string m_Title;
    CGRect m_Frame;
    bool m_Visible = false;
    bool m_Key = false;
    bool m_Closed = false;
};
