// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>

#include <string>

namespace vx {

class WindowBackend;

/// Keys without a character, in the range that Unicode leaves to private use.
enum class Key : unsigned {
    upArrow = 0xF700,
    downArrow,
    leftArrow,
    rightArrow,
    f1 = 0xF704, ///< f2 to f12 follow
    insert = 0xF727,
    deleteForward = 0xF728,
    home = 0xF729,
    end = 0xF72B,
    pageUp = 0xF72C,
    pageDown = 0xF72D
};

/// Bits of `InputEvent::modifiers`.
enum Modifier : unsigned {
    kShift = 1u << 17,
    kControl = 1u << 18,
    kAlternate = 1u << 19,
    kCommand = 1u << 20
};

/// One key, button, pointer or wheel event.
struct InputEvent {
    enum class Kind { keyDown, keyUp, buttonDown, buttonUp, motion, scroll };

    Kind kind = Kind::motion;
    /// Code point of the key without modifiers in lower case, or a `Key`.
    unsigned key = 0;
    /// UTF-8 of what the key types.
    std::string text;
    bool isRepeat = false;
    unsigned modifiers = 0;
    /// Pixels from the top left of the window's content.
    CGPoint location;
    /// 0 left, 1 right, 2 middle, 3 and more the others; of a motion the first one held, -1 for none.
    int button = -1;
    int clickCount = 0;
    /// Pixels moved since the last event, or lines scrolled, to the right and down (scrolling: up).
    double deltaX = 0.0;
    double deltaY = 0.0;
};

/// What a platform tells of its windows and displays: on the main thread, from within
/// `Platform::handleEvents` or the operation that caused it. It decides nothing by itself.
class PlatformEvents {
public:
    virtual ~PlatformEvents() = default;
    virtual void frameChanged(WindowBackend& window, CGRect frame) = 0;
    virtual void focusChanged(WindowBackend& window, bool key) = 0;
    virtual void closeAsked(WindowBackend& window) = 0;
    /// The window is gone: another program or toolkit has ended it.
    virtual void windowEnded(WindowBackend& window) = 0;
    virtual void input(WindowBackend& window, const InputEvent& event) = 0;
    /// A display has come, gone, moved or changed its rate.
    virtual void displaysChanged() = 0;
    /// The window system has gone, and all windows with it. Told once.
    virtual void serverEnded() = 0;
};

} // namespace vx
