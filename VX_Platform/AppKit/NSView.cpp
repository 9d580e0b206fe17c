// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSView.h>

#include <VX_Platform/AppKit/NSWindow.h>

#include <algorithm>

NSView* NSView::initWithFrame(CGRect frame) {
    m_Frame = frame;
    return this;
}

void NSView::dealloc() {
    for (NSView* view : m_Subviews) {
        view->m_Superview = nullptr;
        view->moveToWindow(nullptr);
        view->release();
    }
    m_Subviews.clear();
    NSResponder::dealloc();
}

void NSView::setFrame(CGRect frame) {
    m_Frame = frame;
    tellFrameChange();
}

void NSView::tellFrameChange() {
    frameDidChange();
    for (NSView* view : m_Subviews)
        view->tellFrameChange();
}

void NSView::tellDisplayChange() {
    displayDidChange();
    for (NSView* view : m_Subviews)
        view->tellDisplayChange();
}

CGRect NSView::frameInWindow() const {
    CGRect frame = m_Frame;
    for (const NSView* parent = m_Superview; parent; parent = parent->m_Superview) {
        frame.origin.x += parent->m_Frame.origin.x;
        frame.origin.y += parent->m_Frame.origin.y;
    }
    return frame;
}

void NSView::addSubview(NSView* view) {
    NSRef<NSView> keep = NSRef<NSView>::retain(view);
    view->removeFromSuperview();
    view->m_Superview = this;
    m_Subviews.push_back(view->retain());
    view->moveToWindow(m_Window);
}

void NSView::removeFromSuperview() {
    if (!m_Superview) {
        if (m_Window && m_Window->contentView() == this)
            m_Window->setContentView(nullptr);
        return;
    }
    std::erase(m_Superview->m_Subviews, this);
    m_Superview = nullptr;
    moveToWindow(nullptr);
    release();
}

void NSView::moveToWindow(NSWindow* window) {
    if (m_Window != window) {
        m_Window = window;
        viewDidMoveToWindow();
    }
    for (NSView* view : m_Subviews)
        view->moveToWindow(window);
}

void NSView::display() {
    setNeedsDisplay(false);
    drawRect(bounds());
}

void NSView::displayIfNeeded() {
    if (needsDisplay())
        display();
    // By index: what a view does in its first display may add others.
    for (std::size_t i = 0; i < m_Subviews.size(); ++i)
        m_Subviews[i]->displayIfNeeded();
}

NSResponder* NSView::nextResponder() const {
    return m_Superview ? static_cast<NSResponder*>(m_Superview) : m_Window;
}

NSView* NSView::hitTest(CGPoint point) {
    const CGRect frame = frameInWindow();
    if (point.x < frame.origin.x || point.y < frame.origin.y ||
        point.x >= frame.origin.x + frame.size.width || point.y >= frame.origin.y + frame.size.height)
        return nullptr;
    for (auto view = m_Subviews.rbegin(); view != m_Subviews.rend(); ++view)
        if (NSView* hit = (*view)->hitTest(point))
            return hit;
    return this;
}
