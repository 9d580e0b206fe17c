// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/private/EventRouter.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/private/WindowInternals.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>

namespace vx {

namespace {

// A key or modifier of the platform is the class's own, value for value.
static_assert(unsigned(Key::upArrow) == NSUpArrowFunctionKey &&
              unsigned(Key::downArrow) == NSDownArrowFunctionKey &&
              unsigned(Key::leftArrow) == NSLeftArrowFunctionKey &&
              unsigned(Key::rightArrow) == NSRightArrowFunctionKey && unsigned(Key::f1) == NSF1FunctionKey &&
              unsigned(Key::insert) == NSInsertFunctionKey &&
              unsigned(Key::deleteForward) == NSDeleteFunctionKey &&
              unsigned(Key::home) == NSHomeFunctionKey && unsigned(Key::end) == NSEndFunctionKey &&
              unsigned(Key::pageUp) == NSPageUpFunctionKey &&
              unsigned(Key::pageDown) == NSPageDownFunctionKey);
static_assert(unsigned(kShift) == NSShiftKeyMask && unsigned(kControl) == NSControlKeyMask &&
              unsigned(kAlternate) == NSAlternateKeyMask && unsigned(kCommand) == NSCommandKeyMask);

// Left, right and other buttons have types of their own.
NSEventType byButton(int button, NSEventType left, NSEventType right, NSEventType other) {
    return button == 0 ? left : button == 1 ? right : other;
}

NSEventType typeOf(const InputEvent& event) {
    switch (event.kind) {
        case InputEvent::Kind::keyDown:
            return NSKeyDown;
        case InputEvent::Kind::keyUp:
            return NSKeyUp;
        case InputEvent::Kind::buttonDown:
            return byButton(event.button, NSLeftMouseDown, NSRightMouseDown, NSOtherMouseDown);
        case InputEvent::Kind::buttonUp:
            return byButton(event.button, NSLeftMouseUp, NSRightMouseUp, NSOtherMouseUp);
        case InputEvent::Kind::scroll:
            return NSScrollWheel;
        case InputEvent::Kind::motion:
            break;
    }
    return event.button < 0
               ? NSMouseMoved
               : byButton(event.button, NSLeftMouseDragged, NSRightMouseDragged, NSOtherMouseDragged);
}

NSEvent::Fields fieldsOf(const InputEvent& event) {
    NSEvent::Fields fields;
    fields.type = typeOf(event);
    fields.key = event.key;
    fields.isRepeat = event.isRepeat;
    fields.characters = event.text;
    fields.modifiers = event.modifiers;
    fields.location = event.location;
    fields.button = event.button < 0 ? 0 : event.button;
    fields.clickCount = event.clickCount;
    fields.deltaX = event.deltaX;
    fields.deltaY = event.deltaY;
    return fields;
}

// Retained, since what it is told may end it.
NSRef<NSWindow> ownerOf(const WindowBackend& backend) {
    for (NSWindow* window : NSApplication::sharedApplication()->windows())
        if (NSWindow::Internals::backendOf(window) == &backend)
            return NSRef<NSWindow>::retain(window);
    return {};
}

void post(const char* name) {
    NSNotificationCenter::defaultCenter()->postNotification(
        NSNotification::notificationWithName(name, NSApplication::sharedApplication()));
}

class EventRouter : public PlatformEvents {
public:
    void frameChanged(WindowBackend& backend, CGRect frame) override {
        if (const NSRef<NSWindow> window = ownerOf(backend))
            NSWindow::Internals::frameChanged(window.get(), frame);
    }
    void focusChanged(WindowBackend& backend, bool key) override {
        if (const NSRef<NSWindow> window = ownerOf(backend))
            NSWindow::Internals::focusChanged(window.get(), key);
    }
    void closeAsked(WindowBackend& backend) override {
        if (const NSRef<NSWindow> window = ownerOf(backend))
            window->performClose();
    }
    void windowEnded(WindowBackend& backend) override {
        if (const NSRef<NSWindow> window = ownerOf(backend))
            window->close();
    }
    void input(WindowBackend& backend, const InputEvent& event) override {
        if (const NSRef<NSWindow> window = ownerOf(backend))
            window->sendEvent(NSEvent::eventWithFields(fieldsOf(event), window.get()));
    }
    void displaysChanged() override {
        for (const NSRef<NSWindow>& window : presentWindows()) {
            NSWindow::Internals::backendOf(window.get())->displaysChanged();
            NSWindow::Internals::displaysChanged(window.get());
        }
        post(NSApplicationDidChangeScreenParametersNotification);
    }
    void serverEnded() override {
        const std::vector<NSRef<NSWindow>> windows = presentWindows();
        for (const NSRef<NSWindow>& window : windows)
            NSWindow::Internals::serverEnded(window.get());
        post(NSApplicationDidLoseWindowServerNotification);
        for (const NSRef<NSWindow>& window : windows)
            window->close();
    }
};

} // namespace

PlatformEvents& eventRouter() {
    static EventRouter* router = new EventRouter;
    return *router;
}

} // namespace vx
