// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAttributedString.h>

#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/AppKit/private/Focus.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/drawing/TextLayout.h>

#include <atomic>
#include <optional>

namespace {

template <class Attribute>
Attribute* attribute(const NSMutableDictionary* attributes, const char* key) {
    return attributes ? dynamic_cast<Attribute*>(attributes->objectForKey(key)) : nullptr;
}

std::uint64_t nextSerial() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

} // namespace

/// The layout that the calling thread made last, kept since most texts are measured and then drawn. A layout
/// is its thread's own, so it cannot be kept by the text.
struct NSAttributedString::Layout {
    static constexpr double kUnwrapped = -1.0;

    static const vx::TextLayout& of(const NSAttributedString& text, double width = kUnwrapped) {
        thread_local Layout kept;
        if (kept.m_Serial != text.m_Serial || kept.m_Width != width)
            kept.make(text, width);
        return *kept.m_Layout;
    }
    static vx::Color color(const NSAttributedString& text) {
        const NSColor* color = text.m_Color.get();
        return color ? vx::Color{color->redComponent(), color->greenComponent(), color->blueComponent(),
                                 color->alphaComponent()}
                     : vx::Color{};
    }

private:
    void make(const NSAttributedString& text, double width) {
        m_Layout.emplace(text.m_String->string(), vx::FontFace{text.m_Family, text.m_Weight}, text.m_Size);
        if (width != kUnwrapped)
            m_Layout->wrapAt(width);
        m_Serial = text.m_Serial;
        m_Width = width;
    }

    std::optional<vx::TextLayout> m_Layout;
    std::uint64_t m_Serial = 0;
    double m_Width = kUnwrapped;
};

NSAttributedString* NSAttributedString::initWithString(NSString* string, NSMutableDictionary* attributes) {
    if (!string) {
        release();
        NSException::raise(NSInvalidArgumentException,
                           "NSAttributedString::initWithString: the string is null");
    }
    m_String = NSRef<NSString>::retain(string);
    m_Serial = nextSerial();
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
        Layout::of(*this).draw(vx::focusedCanvas(), point.x, point.y, Layout::color(*this));
}

void NSAttributedString::drawInRect(NSRect rect) const {
    if (!m_String || !(rect.size.width > 0.0 && rect.size.height > 0.0))
        return;
    const bool wraps = m_LineBreakMode != NSLineBreakByClipping;
    const vx::TextLayout& layout = Layout::of(*this, wraps ? rect.size.width : Layout::kUnwrapped);
    const vx::TextLayout::Size size = layout.size();
    vx::Canvas& canvas = vx::focusedCanvas();
    const bool isFlipped = canvas.origin() == vx::Canvas::Origin::topLeft;
    const double left =
        !wraps && layout.runsRightToLeft() ? rect.origin.x + rect.size.width - size.width : rect.origin.x;
    canvas.save();
    canvas.clipTo(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    layout.draw(canvas, left, isFlipped ? rect.origin.y : rect.origin.y + rect.size.height - size.height,
                Layout::color(*this));
    canvas.restore();
}
