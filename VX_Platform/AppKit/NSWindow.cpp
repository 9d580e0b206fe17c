// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSWindow.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/AppKit/private/ScreenInternals.h>
#include <VX_Platform/AppKit/private/WindowInternals.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSString.h>

namespace {

vx::WindowStyle styleOf(unsigned mask) {
    return {.bordered = (mask & NSTitledWindowMask) != 0, .resizable = (mask & NSResizableWindowMask) != 0};
}

} // namespace

NSWindow::NSWindow() : m_Internals(std::make_unique<Internals>()) {}
NSWindow::~NSWindow() = default;

NSWindow* NSWindow::init() {
    return initWithContentRect({}, NSBorderlessWindowMask);
}

NSWindow* NSWindow::initWithContentRect(CGRect rect, unsigned styleMask) {
    m_Internals->platform = vx::runningPlatform();
    if (m_Internals->platform)
        m_Internals->backend = m_Internals->platform->makeWindow(rect, styleOf(styleMask));
    return start();
}

NSWindow* NSWindow::initWithNativeWindow(const vx::NativeWindow& window) {
    m_Internals->platform = vx::runningPlatform();
    if (m_Internals->platform)
        m_Internals->backend = m_Internals->platform->adoptWindow(window);
    m_Visible = true;
    return start();
}

NSWindow* NSWindow::initWithX11Window(unsigned long window) {
    return initWithNativeWindow(vx::NativeWindow::x11(window));
}

NSWindow* NSWindow::start() {
    if (!m_Internals->backend) {
        release();
        return nullptr;
    }
    m_Frame = m_Internals->backend->frame();
    NSApplication::sharedApplication()->addWindow(this);
    NSRef<NSView> content = NSRef<NSView>::adopt((new NSView)->initWithFrame({{}, m_Frame.size}));
    setContentView(content.get());
    return this;
}

void NSWindow::dealloc() {
    if (m_Internals->backend) {
        // First of all, so that nothing the platform tells from now on reaches an object that is ending.
        NSApplication::sharedApplication()->removeWindow(this);
        close();
        m_Internals->backend.reset();
    }
    NSResponder::dealloc();
}

void NSWindow::setTitle(NSString* title) {
    setTitle(title ? title->UTF8String() : "");
}

void NSWindow::setTitle(const char* title) {
    m_Title = title;
    m_Internals->backend->setTitle(title);
}

NSString* NSWindow::title() const {
    return NSString::stringWithUTF8String(m_Title.c_str());
}

CGRect NSWindow::frame() const {
    return m_Frame;
}

NSScreen* NSWindow::screen() const {
    const std::vector<vx::DisplayInfo> displays = m_Internals->platform->displays();
    const vx::DisplayInfo* const display = vx::displayUnder(displays, m_Frame);
    return display ? NSScreen::Internals::screenOf(*display) : nullptr;
}

void NSWindow::setFrame(CGRect frame) {
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    m_Internals->backend->setFrame(frame);
}

void NSWindow::setStyleMask(unsigned styleMask) {
    m_Internals->backend->setStyle(styleOf(styleMask));
}

bool NSWindow::fillDisplay(const char* name) {
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    return name && m_Internals->backend->fillDisplay(name);
}

bool NSWindow::fillDisplay(const NSScreen* screen) {
    return screen && fillDisplay(NSScreen::Internals::outputOf(screen));
}

void NSWindow::leaveDisplay() {
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    m_Internals->backend->leaveDisplay();
}

void NSWindow::setContentView(NSView* view) {
    if (view == m_ContentView)
        return;
    const NSRef<NSWindow> self = NSRef<NSWindow>::retain(this);
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
    if (!m_Internals->backend->show(canBecomeKeyWindow()))
        return;
    m_Closed = false;
    m_Visible = true;
}

void NSWindow::orderOut() {
    m_Visible = false;
    m_Internals->backend->hide();
}

void NSWindow::performClose() {
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    if (!m_Closed && windowShouldClose())
        close();
}

void NSWindow::close() {
    if (m_Closed)
        return;
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    m_Closed = true;
    post(NSWindowWillCloseNotification);
    setContentView(nullptr);
    orderOut();
    NSApplication::sharedApplication()->windowDidClose();
}

vx::NativeWindow NSWindow::nativeWindow() const {
    return m_Internals->backend->nativeWindow();
}

void NSWindow::post(const char* notification) {
    // A window that ends must not be retained by a notification that outlives it.
    NSRef<NSNotification> made =
        NSRef<NSNotification>::retain(NSNotification::notificationWithName(notification, nullptr));
    made->setUnretainedObject(this);
    NSNotificationCenter::defaultCenter()->postNotification(made.get());
    made->setUnretainedObject(nullptr);
}

void NSWindow::Internals::frameChanged(NSWindow* window, CGRect frame) {
    const CGRect former = window->m_Frame;
    window->m_Frame = frame;
    if (former.size.width != frame.size.width || former.size.height != frame.size.height) {
        if (window->m_ContentView)
            window->m_ContentView->setFrame({{}, frame.size});
        window->windowDidResize();
        window->post(NSWindowDidResizeNotification);
    }
    displaysChanged(window);
    if (former.origin.x != frame.origin.x || former.origin.y != frame.origin.y) {
        window->windowDidMove();
        window->post(NSWindowDidMoveNotification);
    }
}

void NSWindow::Internals::focusChanged(NSWindow* window, bool key) {
    window->m_Key = key;
}

void NSWindow::Internals::displaysChanged(NSWindow* window) {
    if (window->m_ContentView)
        window->m_ContentView->tellDisplayChange();
}

void NSWindow::Internals::serverEnded(NSWindow* window) {
    if (const NSRef<NSView> content = NSRef<NSView>::retain(window->m_ContentView))
        content->tellServerEnd();
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

void NSWindow::setEventHandler(EventHandler handler) {
    m_EventHandler = std::make_shared<EventHandler>(std::move(handler));
}

void NSWindow::sendEvent(NSEvent* event) {
    const NSRef<NSWindow> keep = NSRef<NSWindow>::retain(this);
    // Kept, since it may put another one in its place.
    const std::shared_ptr<EventHandler> handler = m_EventHandler;
    if (handler && *handler && (*handler)(event))
        return;
    NSResponder* receiver = receiverOf(event);
    (receiver ? receiver : this)->handle(event);
}

void NSWindow::forgetResponder(const NSResponder* responder) {
    if (m_FirstResponder == responder)
        m_FirstResponder = nullptr;
    if (m_DragView == responder)
        m_DragView = nullptr;
}

void NSWindow::displayIfNeeded() {
    if (m_Visible && m_ContentView)
        m_ContentView->displayIfNeeded();
}
