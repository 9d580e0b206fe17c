// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSWindow.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/backends/Platform.h>

NSWindow::NSWindow() = default;
NSWindow::~NSWindow() = default;

NSWindow* NSWindow::initWithContentRect(CGRect rect, unsigned styleMask) {
    vx::Platform* platform = vx::Platform::current();
    return adopt(platform ? platform->makeWindow(this, rect, styleMask & NSTitledWindowMask) : nullptr);
}

NSWindow* NSWindow::initWithX11Window(unsigned long window) {
    vx::Platform* platform = vx::Platform::current();
    NSWindow* self = adopt(platform ? platform->adoptWindow(this, window) : nullptr);
    if (self)
        self->m_Visible = true;
    return self;
}

NSWindow* NSWindow::adopt(std::unique_ptr<vx::WindowBackend> backend) {
    if (!backend) {
        release();
        return nullptr;
    }
    m_Backend = std::move(backend);
    m_Frame = m_Backend->frame();
    NSApplication::sharedApplication()->addWindow(this);
    NSRef<NSView> content = NSRef<NSView>::adopt((new NSView)->initWithFrame({{}, m_Frame.size}));
    setContentView(content.get());
    return this;
}

void NSWindow::dealloc() {
    if (m_Backend) {
        close();
        m_Backend.reset();
        NSApplication::sharedApplication()->removeWindow(this);
    }
    NSResponder::dealloc();
}

void NSWindow::setTitle(NSString* title) {
    setTitle(title ? title->UTF8String() : "");
}

void NSWindow::setTitle(const char* title) {
    m_Title = title;
    m_Backend->setTitle(title);
}

NSString* NSWindow::title() const {
    return NSString::stringWithUTF8String(m_Title.c_str());
}

CGRect NSWindow::frame() const {
    return m_Frame;
}

void NSWindow::setFrame(CGRect frame) {
    m_Backend->setFrame(frame);
}

void NSWindow::setStyleMask(unsigned styleMask) {
    m_Backend->setBordered(styleMask & NSTitledWindowMask);
}

void NSWindow::setContentView(NSView* view) {
    if (view == m_ContentView)
        return;
    NSRef<NSView> former = NSRef<NSView>::adopt(m_ContentView);
    m_ContentView = nullptr;
    m_FirstResponder = nullptr;
    m_DragView = nullptr;
    if (former)
        former->moveToWindow(nullptr);
    if (!view)
        return;
    NSRef<NSView> keep = NSRef<NSView>::retain(view);
    view->removeFromSuperview();
    m_ContentView = view->retain();
    view->setFrame({{}, m_Frame.size});
    view->moveToWindow(this);
}

void NSWindow::makeKeyAndOrderFront() {
    if (m_Closed)
        return;
    m_Visible = true;
    m_Backend->show();
}

void NSWindow::orderOut() {
    m_Visible = false;
    m_Backend->hide();
}

void NSWindow::performClose() {
    if (!m_Closed && windowShouldClose())
        close();
}

void NSWindow::close() {
    if (m_Closed)
        return;
    m_Closed = true;
    post(NSWindowWillCloseNotification);
    setContentView(nullptr);
    orderOut();
    NSApplication::sharedApplication()->windowDidClose();
}

unsigned long NSWindow::nativeWindow() const {
    return m_Backend->nativeWindow();
}

void NSWindow::post(const char* notification) {
    // A window that ends must not be retained by a notification that outlives it.
    NSRef<NSNotification> made =
        NSRef<NSNotification>::retain(NSNotification::notificationWithName(notification, nullptr));
    made->setUnretainedObject(this);
    NSNotificationCenter::defaultCenter()->postNotification(made.get());
    made->setUnretainedObject(nullptr);
}

void NSWindow::backendFrameChanged(CGRect frame) {
    const CGRect former = m_Frame;
    m_Frame = frame;
    if (former.size.width != frame.size.width || former.size.height != frame.size.height) {
        if (m_ContentView)
            m_ContentView->setFrame({{}, frame.size});
        windowDidResize();
        post(NSWindowDidResizeNotification);
    }
    if (former.origin.x != frame.origin.x || former.origin.y != frame.origin.y) {
        windowDidMove();
        post(NSWindowDidMoveNotification);
    }
}

void NSWindow::backendFocusChanged(bool key) {
    m_Key = key;
}

NSResponder* NSWindow::receiverOf(NSEvent* event) {
    switch (event->type()) {
        case NSKeyDown:
        case NSKeyUp:
            return m_FirstResponder ? m_FirstResponder : m_ContentView;
        case NSLeftMouseDown:
        case NSRightMouseDown:
        case NSOtherMouseDown:
            m_DragView = m_ContentView ? m_ContentView->hitTest(event->locationInWindow()) : nullptr;
            return m_DragView;
        case NSMouseMoved:
        case NSScrollWheel:
            return m_ContentView ? m_ContentView->hitTest(event->locationInWindow()) : nullptr;
        default:
            return m_DragView;
    }
}

void NSWindow::sendEvent(NSEvent* event) {
    NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    if (m_EventHandler && m_EventHandler(event))
        return;
    NSResponder* receiver = receiverOf(event);
    (receiver ? receiver : this)->handle(event);
}

void NSWindow::displayIfNeeded() {
    if (m_Visible && m_ContentView)
        m_ContentView->displayIfNeeded();
}
