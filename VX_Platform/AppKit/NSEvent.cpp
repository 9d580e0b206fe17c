// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSEvent.h>

NSEvent* NSEvent::eventWithFields(const Fields& fields, NSWindow* window) {
    auto* event = new NSEvent;
    event->m_Fields = fields;
    event->m_Window = window;
    return event->autorelease();
}
