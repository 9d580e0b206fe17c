// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSResponder.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>

#include <atomic>
#include <vector>

class NSWindow;

/// A rectangle of a window. Frames are in pixels in the parent's coordinates, from its top left. Main thread
/// only, but for `setNeedsDisplay`.
class VX_EXPORT NSView : public NSResponder {
public:
    VX_RETURNS_OWN_TYPE(NSView)

    virtual NSView* initWithFrame(CGRect frame);
    void dealloc() override;

    CGRect frame() const { return m_Frame; }
    void setFrame(CGRect frame);
    /// Origin (0, 0) and the frame's size.
    CGRect bounds() const { return {{}, m_Frame.size}; }
    /// The frame in the coordinates of the window's content.
    CGRect frameInWindow() const;

    /// Adds a view on top, retained; it leaves its former parent.
    void addSubview(NSView* view);
    void removeFromSuperview();
    NSView* superview() const { return m_Superview; }
    const std::vector<NSView*>& subviews() const { return m_Subviews; }
    /// The window the view is in, borrowed, or null.
    NSWindow* window() const { return m_Window; }

    /// Asks for `display` in the run loop's next display pass. Any thread.
    void setNeedsDisplay(bool needs) { m_NeedsDisplay = needs; }
    bool needsDisplay() const { return m_NeedsDisplay; }
    /// Draws the view where it can be drawn; the base clears the request and calls `drawRect`.
    virtual void display();
    /// Hook: drawing on the main thread. A view drawn by a render thread leaves it empty.
    virtual void drawRect(CGRect) {}
    /// Displays this view and those inside it, if they ask for it.
    void displayIfNeeded();

    /// Hook: the view has come into a window, or has left it (`window` is null).
    virtual void viewDidMoveToWindow() {}
    /// Hook: the frame, or that of a parent, has changed.
    virtual void frameDidChange() {}
    /// Hook: the window may be on another display now, or its display may have another rate.
    virtual void displayDidChange() {}

    NSResponder* nextResponder() const override;
    /// The innermost view at a point of the window's content, or null.
    NSView* hitTest(CGPoint pointInWindow);

    /// For `NSWindow`: moves the view and those inside it to the window, or to none.
    void moveToWindow(NSWindow* window);
    /// For `NSWindow`: calls `displayDidChange` of this view and those inside it.
    void tellDisplayChange();

private:
    void tellFrameChange();

    CGRect m_Frame;
    NSView* m_Superview = nullptr;
    NSWindow* m_Window = nullptr;
    std::vector<NSView*> m_Subviews;
    std::atomic<bool> m_NeedsDisplay{true};
};
