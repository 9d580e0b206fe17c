// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAttributedString.h>

#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/AppKit/private/Focus.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/drawing/TextLayout.h>

namespace {

template <class Attribute>
Attribute* attribute(const NSMutableDictionary* attributes, const char* key) {
    return attributes ? dynamic_cast<Attribute*>(attributes->objectForKey(key)) : nullptr;
}

constexpr double kUnwrapped = -1.0;

vx::Color colorOf(const NSColor* color) {
    return color ? vx::Color{color->redComponent(), color->greenComponent(), color->blueComponent(),
                             color->alphaComponent()}
                 : vx::Color{};
}

} // namespace

struct NSAttributedString::Layout {
    static const vx::TextLayout& of(const NSAttributedString& text, double width = kUnwrapped) {
        return vx::TextLayout::kept(text.m_String->string(), {text.m_Family, text.m_Weight}, text.m_Size,
                                    width);
    }
};

NSAttributedString* NSAttributedString::initWithString(NSString* string, NSMutableDictionary* attributes) {
    if (!string) {
        release();
        NSException::raise(NSInvalidArgumentException,
                           "NSAttributedString::initWithString: the string is null");
    }
    m_String = NSRef<NSString>::retain(string);
    m_Color = NSRef<NSColor>::retain(attribute<NSColor>(attributes, NSForegroundColorAttributeName));
    if (const NSFont* font = attribute<NSFont>(attributes, NSFontAttributeName)) {
        m_Family = font->m_Family;
        m_Weight = font->m_Weight;
        m_Size = font->m_Size;
    }
    if (const auto* style = attribute<NSMutableParagraphStyle>(attributes, NSParagraphStyleAttributeName))
        m_LineBreakMode = style->lineBreakMode();
    return this;
}

NSSize NSAttributedString::size() const {
    if (!m_String)
        return {};
    const vx::TextLayout::Size size = Layout::of(*this).size();
    return {size.width, size.height};
}

void NSAttributedString::drawAtPoint(NSPoint point) const {
    if (m_String)
        Layout::of(*this).draw(vx::focusedCanvas(), point.x, point.y, colorOf(m_Color.get()));
}

void NSAttributedString::drawInRect(NSRect rect) const {
    if (!m_String || !(rect.size.width > 0.0 && rect.size.height > 0.0))
        return;
    const bool wraps = m_LineBreakMode != NSLineBreakByClipping;
    const vx::TextLayout& lines = Layout::of(*this, wraps ? rect.size.width : kUnwrapped);
    const vx::TextLayout::Size size = lines.size();
    vx::Canvas& canvas = vx::focusedCanvas();
    const bool isFlipped = canvas.origin() == vx::Canvas::Origin::topLeft;
    const double left =
        !wraps && lines.runsRightToLeft() ? rect.origin.x + rect.size.width - size.width : rect.origin.x;
    canvas.save();
    canvas.clipTo(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    lines.draw(canvas, left, isFlipped ? rect.origin.y : rect.origin.y + rect.size.height - size.height,
               colorOf(m_Color.get()));
    canvas.restore();
}
