// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSMutableParagraphStyle.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

#include <string>

class NSColor;
class NSFont;
class NSMutableDictionary;

/// Keys of a text's attributes: an `NSFont` (without one: 12 pixels of the system's sans), an `NSColor`
/// (black), an `NSMutableParagraphStyle` (words wrap).
inline constexpr const char* NSFontAttributeName = "NSFont";
inline constexpr const char* NSForegroundColorAttributeName = "NSColor";
inline constexpr const char* NSParagraphStyleAttributeName = "NSParagraphStyle";

/// A text with font and colour, ready to be measured and drawn: shaped, in the direction that its letters
/// run. Lengths are in pixels of the canvas. Immutable once it is set up, any thread.
class VX_EXPORT NSAttributedString : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSAttributedString)

    using NSObject::init;
    /// Both are copied as they are now; `attributes` may be null, and an object of another class counts as
    /// none. What lies beyond 65536 bytes of the text is not drawn. Returns the text; null for `string`
    /// raises NSInvalidArgumentException.
    NSAttributedString* initWithString(NSString* string, NSMutableDictionary* attributes);
    /// As `initWithString`, for `NSInit`.
    NSAttributedString* init(NSString* string, NSMutableDictionary* attributes) {
        return initWithString(string, attributes);
    }

    /// Returns the size of its lines where nothing wraps them, with the room that letters may take above and
    /// below; 0 x 0 for an empty text.
    NSSize size() const;
    /// Draws on the calling thread's focused image, with the point as the corner of the text's box that lies
    /// nearest to the origin: its lower left, or where the image is flipped its upper left. Nothing without a
    /// focus.
    void drawAtPoint(NSPoint point) const;
    /// Draws into the rectangle, from its top, wrapped to its width as the paragraph style says, and cut off
    /// at its edges. Text that runs from right to left begins at the right edge.
    void drawInRect(NSRect rect) const;

    /// Returns the text, borrowed.
    NSString* string() const { return m_String.get(); }

protected:
    ~NSAttributedString() override = default;

private:
    struct VX_HIDDEN Layout;

    NSRef<NSString> m_String;
    std::string m_Family = "Sans";
    int m_Weight = 400;
    double m_Size = 12.0;
    NSRef<NSColor> m_Color;
    NSLineBreakMode m_LineBreakMode = NSLineBreakByWordWrapping;
};
