// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSEvent.h>

#include <VX_Platform/Foundation/NSString.h>

NSEvent* NSEvent::eventWithFields(const Fields& fields, NSWindow* window) {
    auto* event = new NSEvent;
    event->m_Fields = fields;
    event->m_Window = window;
    return event->autorelease();
}

NSString* NSEvent::characters() const {
    return NSString::stringWithUTF8String(m_Fields.characters.c_str());
}
