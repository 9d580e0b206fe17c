// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/TextLayout.h>

#include <VX_Platform/drawing/Canvas.h>

#include <pango/pangocairo.h>

#include <array>
#include <cmath>
#include <optional>
#include <string>

namespace vx {

namespace {

// Pango counts in fractions of a pixel, as ints.
int toPango(double pixels) {
    constexpr double most = 1000000.0;
    return pixels > 0.0 ? int((pixels < most ? pixels : most) * PANGO_SCALE) : 0;
}

// Not in the middle of a letter.
std::string_view cutAt(std::string_view text, std::size_t length) {
    if (text.size() <= length)
        return text;
    while (length > 0 && (text[length] & 0xC0) == 0x80)
        --length;
    return text.substr(0, length);
}

void setText(PangoLayout* layout, std::string_view text) {
    const std::string_view shown = cutAt(text.substr(0, text.find('\0')), TextLayout::kMaxBytes);
    char* valid = g_utf8_make_valid(shown.data(), gssize(shown.size()));
    pango_layout_set_text(layout, valid, -1);
    g_free(valid);
}

void setFont(PangoLayout* layout, const FontFace& face, double size) {
    const double pixels =
        size >= 1.0 ? (size < TextLayout::kMaxFontSize ? size : TextLayout::kMaxFontSize) : 1.0;
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, face.family.c_str());
    pango_font_description_set_weight(description, PangoWeight(face.weight));
    pango_font_description_set_absolute_size(description, pixels * PANGO_SCALE);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
}

// False when a pixel is not white.
bool copyCoverage(Canvas& white, unsigned char* to, int stride) {
    const unsigned char* const pixels = white.pixels();
    for (int y = 0; pixels && y < white.height(); ++y)
        for (int x = 0; x < white.width(); ++x) {
            const unsigned char* const pixel = pixels + y * white.stride() + x * 4;
            if (pixel[0] != pixel[3] || pixel[1] != pixel[3] || pixel[2] != pixel[3])
                return false;
            to[y * stride + x] = pixel[3];
        }
    return pixels != nullptr;
}

} // namespace

/// The layouts that a thread asked for lately, and what they were asked by.
class KeptLayouts {
public:
    const TextLayout& find(std::string_view text, const FontFace& face, double size, double width) {
        for (Entry& entry : m_Entries)
            if (entry.layout && entry.size == size && entry.width == width &&
                entry.face.weight == face.weight && entry.text == text && entry.face.family == face.family)
                return *entry.layout;
        Entry& entry = m_Entries[text.size() > kLongest ? 0 : m_Next];
        m_Next = m_Next + 1 < kCount ? m_Next + 1 : 1;
        entry.layout.emplace(text, face, size);
        if (width >= 0.0)
            entry.layout->wrapAt(width);
        entry.layout->m_IsKept = true;
        entry.text = text;
        entry.face = face;
        entry.size = size;
        entry.width = width;
        return *entry.layout;
    }

private:
    static constexpr std::size_t kCount = 32;
    /// Longer ones, in bytes, share the first place.
    static constexpr std::size_t kLongest = 1024;

    struct Entry {
        std::optional<TextLayout> layout;
        std::string text;
        FontFace face;
        double size = 0.0;
        double width = 0.0;
    };
    std::array<Entry, kCount> m_Entries;
    std::size_t m_Next = 1;
};

const TextLayout& TextLayout::kept(std::string_view text, const FontFace& face, double size, double width) {
    thread_local KeptLayouts layouts;
    return layouts.find(text, face, size, width);
}

void TextLayout::SurfaceDeleter::operator()(cairo_surface_t* surface) const {
    cairo_surface_destroy(surface);
}

void TextLayout::LayoutDeleter::operator()(PangoLayout* layout) const {
    g_object_unref(layout);
}

TextLayout::TextLayout(std::string_view text, const FontFace& face, double size)
    : m_Layout(pango_layout_new(FontMap::current().context())) {
    setFont(m_Layout.get(), face, size);
    setText(m_Layout.get(), text);
}

void TextLayout::wrapAt(double width) {
    pango_layout_set_width(m_Layout.get(), toPango(width));
    pango_layout_set_wrap(m_Layout.get(), PANGO_WRAP_WORD_CHAR);
}

void TextLayout::limitHeight(double height) {
    pango_layout_set_height(m_Layout.get(), toPango(height));
    pango_layout_set_ellipsize(m_Layout.get(), PANGO_ELLIPSIZE_END);
}

void TextLayout::keepToOneLine(double width, Ellipsis ellipsis) {
    pango_layout_set_single_paragraph_mode(m_Layout.get(), true);
    if (size().width <= width) // a text from right to left would move to the far end of a wider line
        return;
    pango_layout_set_width(m_Layout.get(), toPango(width));
    pango_layout_set_ellipsize(m_Layout.get(),
                               ellipsis == Ellipsis::middle ? PANGO_ELLIPSIZE_MIDDLE : PANGO_ELLIPSIZE_END);
}

bool TextLayout::runsRightToLeft() const {
    return pango_layout_get_direction(m_Layout.get(), 0) == PANGO_DIRECTION_RTL;
}

TextLayout::Size TextLayout::size() const {
    int width = 0;
    int height = 0;
    if (pango_layout_get_character_count(m_Layout.get()) > 0)
        pango_layout_get_size(m_Layout.get(), &width, &height);
    return {double(width) / PANGO_SCALE, double(height) / PANGO_SCALE};
}

void TextLayout::draw(Canvas& canvas, double x, double y, const Color& color) const {
    cairo_t* context = canvas.context();
    cairo_save(context);
    canvas.setColor(color);
    cairo_new_path(context);
    cairo_translate(context, x, y);
    if (canvas.origin() == Canvas::Origin::bottomLeft) {
        cairo_translate(context, 0, size().height);
        cairo_scale(context, 1, -1);
    }
    if (const Mask* mask = maskFor(context))
        cairo_mask_surface(context, mask->coverage.get(), mask->left, mask->top);
    else
        pango_cairo_show_layout(context, m_Layout.get());
    cairo_restore(context);
}

// From the second time on, where a pixel of the mask is a pixel of the canvas.
const TextLayout::Mask* TextLayout::maskFor(cairo_t* context) const {
    if (!m_IsKept)
        return nullptr;
    if (++m_Draws == 2)
        m_Mask = makeMask();
    cairo_matrix_t axes;
    cairo_get_matrix(context, &axes);
    const bool isWhole = axes.xx == 1 && axes.yy == 1 && axes.xy == 0 && axes.yx == 0 &&
                         axes.x0 == std::floor(axes.x0) && axes.y0 == std::floor(axes.y0);
    return isWhole && m_Mask.coverage ? &m_Mask : nullptr;
}

// None for a text without letters, a large one, and one with letters that bring their own colours.
TextLayout::Mask TextLayout::makeMask() const {
    constexpr long long most = 1 << 17;
    PangoRectangle ink;
    pango_layout_get_pixel_extents(m_Layout.get(), &ink, nullptr);
    if (ink.width < 1 || ink.height < 1 || 1LL * ink.width * ink.height > most)
        return {};
    Canvas white(ink.width, ink.height);
    white.setColor({1, 1, 1, 1});
    cairo_translate(white.context(), -ink.x, -ink.y);
    pango_cairo_show_layout(white.context(), m_Layout.get());
    Mask mask;
    mask.coverage.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, ink.width, ink.height));
    mask.left = ink.x;
    mask.top = ink.y;
    cairo_surface_flush(mask.coverage.get());
    unsigned char* to = cairo_image_surface_get_data(mask.coverage.get());
    const int stride = cairo_image_surface_get_stride(mask.coverage.get());
    if (!to || !copyCoverage(white, to, stride))
        return {};
    cairo_surface_mark_dirty(mask.coverage.get());
    return mask;
}

} // namespace vx
