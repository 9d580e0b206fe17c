// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSResponder.h>

#include <VX_Platform/AppKit/NSEvent.h>

namespace {

using Operation = void (NSResponder::*)(NSEvent*);

Operation operationFor(NSEventType type) {
    switch (type) {
        case NSKeyDown:
            return &NSResponder::keyDown;
        case NSKeyUp:
            return &NSResponder::keyUp;
        case NSLeftMouseDown:
            return &NSResponder::mouseDown;
        case NSLeftMouseUp:
            return &NSResponder::mouseUp;
        case NSLeftMouseDragged:
            return &NSResponder::mouseDragged;
        case NSMouseMoved:
            return &NSResponder::mouseMoved;
        case NSRightMouseDown:
            return &NSResponder::rightMouseDown;
        case NSRightMouseUp:
            return &NSResponder::rightMouseUp;
        case NSRightMouseDragged:
            return &NSResponder::rightMouseDragged;
        case NSOtherMouseDown:
            return &NSResponder::otherMouseDown;
        case NSOtherMouseUp:
            return &NSResponder::otherMouseUp;
        case NSOtherMouseDragged:
            return &NSResponder::otherMouseDragged;
        case NSScrollWheel:
            return &NSResponder::scrollWheel;
    }
    return nullptr;
}

void passOn(const NSResponder* from, NSEvent* event) {
    if (NSResponder* next = from->nextResponder())
        next->handle(event);
}

} // namespace

std::weak_ptr<NSResponder> NSResponder::weak() {
    if (!m_Self)
        m_Self = std::shared_ptr<NSResponder>(this, [](NSResponder*) {});
    return m_Self;
}

void NSResponder::dealloc() {
    m_Self = nullptr;
    NSObject::dealloc();
}

void NSResponder::handle(NSEvent* event) {
    // What is told may end its receiver.
    const NSRef<NSResponder> keep = NSRef<NSResponder>::retain(this);
    if (Operation operation = operationFor(event->type()))
        (this->*operation)(event);
}

void NSResponder::keyDown(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::keyUp(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::mouseDown(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::mouseUp(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::mouseDragged(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::mouseMoved(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::rightMouseDown(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::rightMouseUp(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::rightMouseDragged(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::otherMouseDown(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::otherMouseUp(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::otherMouseDragged(NSEvent* event) {
    passOn(this, event);
}
void NSResponder::scrollWheel(NSEvent* event) {
    passOn(this, event);
}
