// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSView.h>

#include <VX_Platform/AppKit/NSWindow.h>

#include <algorithm>

NSView* NSView::init() {
    return initWithFrame({});
}

NSView* NSView::initWithFrame(CGRect frame) {
    m_Frame = frame;
    return this;
}

void NSView::dealloc() {
    std::vector<NSRef<NSView>> views;
    views.swap(m_Subviews);
    for (const NSRef<NSView>& view : views) {
        view->m_Superview = nullptr;
        view->moveToWindow(nullptr);
    }
    views.clear();
    NSResponder::dealloc();
}

void NSView::setFrame(CGRect frame) {
    m_Frame = frame;
    tellFrameChange();
}

// Over those of the start that are still there: a view's hook may add others, or take some out.
template <class Visit>
void NSView::forEachSubview(Visit visit) {
    const std::vector<NSRef<NSView>> present = m_Subviews;
    for (const NSRef<NSView>& view : present)
        if (view->m_Superview == this)
            visit(view.get());
}

// A view's hook may end it: so the operations that call one keep it.
void NSView::tellFrameChange() {
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    frameDidChange();
    forEachSubview([](NSView* view) { view->tellFrameChange(); });
}

void NSView::tellDisplayChange() {
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    displayDidChange();
    forEachSubview([](NSView* view) { view->tellDisplayChange(); });
}

void NSView::tellServerEnd() {
    windowServerDidEnd();
    forEachSubview([](NSView* view) { view->tellServerEnd(); });
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
    m_Subviews.push_back(keep);
    view->moveToWindow(m_Window);
}

void NSView::removeFromSuperview() {
    if (!m_Superview) {
        if (m_Window && m_Window->contentView() == this)
            m_Window->setContentView(nullptr);
        return;
    }
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    std::erase_if(m_Superview->m_Subviews, [this](const NSRef<NSView>& view) { return view.get() == this; });
    m_Superview = nullptr;
    moveToWindow(nullptr);
}

void NSView::moveToWindow(NSWindow* window) {
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    if (m_Window != window) {
        if (m_Window)
            m_Window->forgetResponder(this);
        m_Window = window;
        viewDidMoveToWindow();
    }
    forEachSubview([window](NSView* view) { view->moveToWindow(window); });
}

void NSView::display() {
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    setNeedsDisplay(false);
    drawRect(bounds());
}

void NSView::displayIfNeeded() {
    const NSRef<NSView> keep = NSRef<NSView>::retain(this);
    if (needsDisplay())
        display();
    forEachSubview([](NSView* view) { view->displayIfNeeded(); });
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
