// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/AlertPainter.h>

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vx {

namespace {

constexpr double Margin = 20;
constexpr double TextGap = 8;
constexpr double ButtonGap = 10;
constexpr double ButtonHeight = 30;
constexpr double ButtonPadding = 16;
constexpr double MinButtonWidth = 80;
constexpr double MaxButtonWidth = 400;
constexpr double TextWidth = 440;
constexpr double MinWidth = 300;

void source(cairo_t* canvas, unsigned color) {
    cairo_set_source_rgb(canvas, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0,
                         (color & 255) / 255.0);
}

void roundedRectangle(cairo_t* canvas, double x, double y, double width, double height, double radius) {
    constexpr double quarter = std::numbers::pi / 2;
    cairo_new_sub_path(canvas);
    cairo_arc(canvas, x + width - radius, y + radius, radius, -quarter, 0);
    cairo_arc(canvas, x + width - radius, y + height - radius, radius, 0, quarter);
    cairo_arc(canvas, x + radius, y + height - radius, radius, quarter, 2 * quarter);
    cairo_arc(canvas, x + radius, y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(canvas);
}

double naturalWidth(PangoLayout* layout) {
    int width = 0;
    pango_layout_get_pixel_size(layout, &width, nullptr);
    return width;
}

double heightOf(PangoLayout* layout) {
    int height = 0;
    pango_layout_get_pixel_size(layout, nullptr, &height);
    return pango_layout_get_character_count(layout) ? height : 0;
}

} // namespace

void AlertPainter::LayoutDeleter::operator()(PangoLayout* layout) const {
    g_object_unref(layout);
}

AlertPainter::AlertPainter(const AlertContents& contents, double scale, int maxHeight) : m_Scale(scale) {
    m_Message = makeLayout(contents.message, "Sans Bold 14px");
    m_InformativeText = makeLayout(contents.informativeText, "Sans 13px");
    placeButtons(contents);
    placeTexts(maxHeight);
}

AlertPainter::~AlertPainter() = default;

AlertPainter::Layout AlertPainter::makeLayout(const std::string& text, const char* font) const {
    // The default font map belongs to the thread, which is what lets any thread show an alert.
    PangoContext* context = pango_font_map_create_context(pango_cairo_font_map_get_default());
    Layout layout(pango_layout_new(context));
    g_object_unref(context);

    PangoFontDescription* description = pango_font_description_from_string(font);
    pango_font_description_set_absolute_size(description,
                                             pango_font_description_get_size(description) * m_Scale);
    pango_layout_set_font_description(layout.get(), description);
    pango_font_description_free(description);
    pango_layout_set_text(layout.get(), text.data(), int(std::min<std::size_t>(text.size(), 1 << 16)));
    return layout;
}

// From right to left, the default button at the right end; y follows when the texts are placed.
void AlertPainter::placeButtons(const AlertContents& contents) {
    double row = 2 * Margin * m_Scale - ButtonGap * m_Scale;
    for (const AlertButton& button : contents.buttons) {
        Layout label = makeLayout(button.label, "Sans 13px");
        pango_layout_set_single_paragraph_mode(label.get(), true);
        const double natural = naturalWidth(label.get()) + 2 * ButtonPadding * m_Scale;
        const double width = std::clamp(natural, MinButtonWidth * m_Scale, MaxButtonWidth * m_Scale);
        if (natural > width) {
            pango_layout_set_ellipsize(label.get(), PANGO_ELLIPSIZE_MIDDLE);
            pango_layout_set_width(label.get(), int((width - 2 * ButtonPadding * m_Scale) * PANGO_SCALE));
        }
        m_Buttons.push_back({std::move(label), 0, 0, width, ButtonHeight * m_Scale});
        row += width + ButtonGap * m_Scale;
    }
    const double text = std::min(
        TextWidth * m_Scale, std::max(naturalWidth(m_Message.get()), naturalWidth(m_InformativeText.get())));
    m_Width = int(std::ceil(std::max({MinWidth * m_Scale, text + 2 * Margin * m_Scale, row})));
    double right = m_Width - Margin * m_Scale;
    for (Button& button : m_Buttons) {
        button.x = right - button.width;
        right = button.x - ButtonGap * m_Scale;
    }
}

void AlertPainter::placeTexts(int maxHeight) {
    const double margin = Margin * m_Scale;
    double room = std::max(maxHeight - 3 * margin - (ButtonHeight + TextGap) * m_Scale, 40 * m_Scale);
    for (PangoLayout* layout : {m_Message.get(), m_InformativeText.get()}) {
        pango_layout_set_width(layout, int((m_Width - 2 * margin) * PANGO_SCALE));
        pango_layout_set_wrap(layout, PANGO_WRAP_WORD_CHAR);
        pango_layout_set_ellipsize(layout, PANGO_ELLIPSIZE_END);
        pango_layout_set_height(layout, int(std::max(room, 1.0) * PANGO_SCALE));
        room -= heightOf(layout);
    }
    m_InformativeTop = margin + heightOf(m_Message.get());
    if (m_InformativeTop > margin)
        m_InformativeTop += TextGap * m_Scale;
    const double buttonTop = m_InformativeTop + heightOf(m_InformativeText.get()) + margin;
    for (Button& button : m_Buttons)
        button.y = buttonTop;
    m_Height = int(std::ceil(buttonTop + ButtonHeight * m_Scale + margin));
}

int AlertPainter::buttonAt(double x, double y) const {
    const auto hit = std::find_if(m_Buttons.begin(), m_Buttons.end(), [&](const Button& button) {
        return x >= button.x && x < button.x + button.width && y >= button.y && y < button.y + button.height;
    });
    return hit == m_Buttons.end() ? -1 : int(hit - m_Buttons.begin());
}

void AlertPainter::paint(cairo_t* canvas, int focused, int pressed) const {
    cairo_push_group(canvas); // one copy to the window, so that nothing flickers
    source(canvas, 0xf2f2f2);
    cairo_paint(canvas);
    source(canvas, 0x202020);
    cairo_move_to(canvas, Margin * m_Scale, Margin * m_Scale);
    pango_cairo_show_layout(canvas, m_Message.get());
    cairo_move_to(canvas, Margin * m_Scale, m_InformativeTop);
    pango_cairo_show_layout(canvas, m_InformativeText.get());
    for (int index = 0; index < buttonCount(); ++index)
        paintButton(canvas, index, index == focused, index == pressed);
    cairo_pop_group_to_source(canvas);
    cairo_paint(canvas);
}

void AlertPainter::paintButton(cairo_t* canvas, int index, bool focused, bool pressed) const {
    const Button& button = m_Buttons[std::size_t(index)];
    const bool isDefault = index == 0;
    roundedRectangle(canvas, button.x + 0.5, button.y + 0.5, button.width - 1, button.height - 1,
                     5 * m_Scale);
    source(canvas, isDefault ? (pressed ? 0x1f5fae : 0x2f74c8) : (pressed ? 0xd0d0d0 : 0xffffff));
    cairo_fill_preserve(canvas);
    source(canvas, focused ? 0x103a70 : 0xa0a0a0);
    cairo_set_line_width(canvas, (focused ? 2 : 1) * m_Scale);
    cairo_stroke(canvas);

    int width = 0;
    int height = 0;
    pango_layout_get_pixel_size(button.label.get(), &width, &height);
    source(canvas, isDefault ? 0xffffff : 0x202020);
    cairo_move_to(canvas, button.x + (button.width - width) / 2, button.y + (button.height - height) / 2);
    pango_cairo_show_layout(canvas, button.label.get());
}

} // namespace vx
