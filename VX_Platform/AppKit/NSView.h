// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSResponder.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>

#include <atomic>
#include <vector>

class NSWindow;

/// A rectangle of a window. Frames are in pixels in the parent's coordinates, from its top left. Main thread
/// only, but for `setNeedsDisplay` and `needsDisplay`; no GL but what the hooks make.
class VX_EXPORT NSView : public NSResponder {
public:
    VX_RETURNS_OWN_TYPE(NSView)

    /// Sets an empty view up, as by the next.
    NSView* init() override;
    /// Sets a view without parent or window up. Returns the view, or releases it and returns null.
    virtual NSView* initWithFrame(CGRect frame);
    /// The views inside leave the window and are released.
    void dealloc() override;

    /// Returns the frame, in the parent's coordinates.
    CGRect frame() const { return m_Frame; }
    /// Places the view in its parent's coordinates; calls `frameDidChange` of this view, then of those
    /// inside.
    void setFrame(CGRect frame);
    /// Returns the origin (0, 0) with the frame's size.
    CGRect bounds() const { return {{}, m_Frame.size}; }
    /// Returns the frame in the coordinates of the window's content.
    CGRect frameInWindow() const;

    /// Adds a view on top of the others, retained; it leaves its former parent or window first. Neither null
    /// nor a view that this one is in.
    void addSubview(NSView* view);
    /// Takes the view out of its parent, or out of the window whose content it is, which releases it. Nothing
    /// when it is in neither.
    void removeFromSuperview();
    /// Returns the parent, borrowed, or null.
    NSView* superview() const { return m_Superview; }
    /// Returns the views inside, the lowest first; borrowed, valid until one comes or goes.
    const std::vector<NSRef<NSView>>& subviews() const { return m_Subviews; }
    /// Returns the window the view is in, borrowed, or null.
    NSWindow* window() const { return m_Window; }

    /// Asks for `display` in the run loop's next display pass. Any thread.
    void setNeedsDisplay(bool needs) { m_NeedsDisplay = needs; }
    /// Returns whether `display` has been asked for and not come yet; true for a new view. Any thread.
    bool needsDisplay() const { return m_NeedsDisplay; }
    /// Draws the view where it can be drawn; the base clears the request and calls `drawRect`.
    virtual void display();
    /// Hook: drawing on the main thread, with the view's bounds; does nothing in the base. A view that a
    /// render thread draws leaves it so.
    virtual void drawRect(CGRect) {}
    /// Displays this view, then those inside it, each if it asks for it.
    void displayIfNeeded();

    /// Hook: the view has come into a window, or has left it (`window` is null).
    virtual void viewDidMoveToWindow() {}
    /// Hook: the frame, or that of a parent, has changed.
    virtual void frameDidChange() {}
    /// Hook: the window may be on another display now, or its display may have another rate.
    virtual void displayDidChange() {}
    /// Hook: the window system has gone, and what the view draws is shown no more.
    virtual void windowServerDidEnd() {}

    /// Returns the parent, or for the content view the window.
    NSResponder* nextResponder() const override;
    /// `pointInWindow` is in pixels from the top left of the window's content. Returns the innermost view
    /// there, the topmost where views overlap, borrowed; null outside this view, edges right and bottom
    /// included. What lies outside its parent is not hit.
    NSView* hitTest(CGPoint pointInWindow);

    /// For `NSWindow`: moves the view and those inside it to the window, or to none.
    void moveToWindow(NSWindow* window);
    /// For `NSWindow`: calls `displayDidChange` of this view and those inside it.
    void tellDisplayChange();
    /// The same for `windowServerDidEnd`.
    void tellServerEnd();

protected:
    ~NSView() override = default;

private:
    template <class Visit>
    void forEachSubview(Visit visit);
    void tellFrameChange();

    CGRect m_Frame;
    NSView* m_Superview = nullptr;
    NSWindow* m_Window = nullptr;
    std::vector<NSRef<NSView>> m_Subviews;
    std::atomic<bool> m_NeedsDisplay{true};
};
