// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <string>

class NSString;
class NSWindow;

/// What happened. Drags and moves are told apart: a motion with a button down is a drag of that button.
enum NSEventType {
    NSLeftMouseDown = 1,
    NSLeftMouseUp = 2,
    NSRightMouseDown = 3,
    NSRightMouseUp = 4,
    NSMouseMoved = 5,
    NSLeftMouseDragged = 6,
    NSRightMouseDragged = 7,
    NSKeyDown = 10,
    NSKeyUp = 11,
    NSScrollWheel = 22,
    NSOtherMouseDown = 25,
    NSOtherMouseUp = 26,
    NSOtherMouseDragged = 27
};

/// Keys held down with the event, as bits. The command key is the one of the window system (Super).
enum NSEventModifierFlags : unsigned {
    NSShiftKeyMask = 1u << 17,
    NSControlKeyMask = 1u << 18,
    NSAlternateKeyMask = 1u << 19,
    NSCommandKeyMask = 1u << 20
};

/// Keys that have no character, and those control characters that have a name.
enum NSKey : unsigned {
    NSBackspaceKey = 8,
    NSTabKey = 9,
    NSReturnKey = 13,
    NSEscapeKey = 27,
    NSUpArrowFunctionKey = 0xF700,
    NSDownArrowFunctionKey = 0xF701,
    NSLeftArrowFunctionKey = 0xF702,
    NSRightArrowFunctionKey = 0xF703,
    NSF1FunctionKey = 0xF704, ///< F2 to F12 follow
    NSInsertFunctionKey = 0xF727,
    NSDeleteFunctionKey = 0xF728,
    NSHomeFunctionKey = 0xF729,
    NSEndFunctionKey = 0xF72B,
    NSPageUpFunctionKey = 0xF72C,
    NSPageDownFunctionKey = 0xF72D
};

/// One key or mouse event, immutable. Any thread.
class VX_EXPORT NSEvent : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSEvent)

    /// What an event holds; fields that a type has no use for stay 0.
    struct Fields {
        /// What happened.
        NSEventType type = NSMouseMoved;
        /// Unicode code point of the key without modifiers in lower case, or an `NSKey`.
        unsigned key = 0;
        /// Whether the key was held down and types again.
        bool isRepeat = false;
        /// UTF-8.
        std::string characters;
        /// `NSEventModifierFlags`.
        unsigned modifiers = 0;
        /// Pixels from the top left of the window's content.
        CGPoint location;
        /// 0 left, 1 right, 2 and more the others.
        int button = 0;
        /// 1 for a click, 2 for the second of two in a row, and so on.
        int clickCount = 0;
        /// Pixels moved since the last event, or lines scrolled, to the right and down (scrolling: up).
        double deltaX = 0.0;
        double deltaY = 0.0;
    };

    /// The window is not retained and may be null. Returns an event; borrowed, autoreleased. Any thread; a
    /// host or a test may make events of its own and hand them to `NSResponder::handle`.
    static NSEvent* eventWithFields(const Fields& fields, NSWindow* window);

    /// Each returns the field of that name; the window is borrowed.
    NSEventType type() const { return m_Fields.type; }
    NSWindow* window() const { return m_Window; }
    unsigned key() const { return m_Fields.key; }
    /// What the key types, by the keyboard's layout and with the modifiers held, in upper case with shift for
    /// example; borrowed, autoreleased. Empty for a key that types nothing (`NSReturnKey` and other controls,
    /// keys with control, alternate or command held, accents that wait for a letter:
    /// `NSApplication::setComposesText`) and for every type but
    /// `NSKeyDown`.
    NSString* characters() const;
    /// Each returns the field of that name.
    bool isARepeat() const { return m_Fields.isRepeat; }
    unsigned modifierFlags() const { return m_Fields.modifiers; }
    CGPoint locationInWindow() const { return m_Fields.location; }
    int buttonNumber() const { return m_Fields.button; }
    int clickCount() const { return m_Fields.clickCount; }
    double deltaX() const { return m_Fields.deltaX; }
    double deltaY() const { return m_Fields.deltaY; }

protected:
    ~NSEvent() override = default;

private:
    Fields m_Fields;
    NSWindow* m_Window = nullptr;
};
