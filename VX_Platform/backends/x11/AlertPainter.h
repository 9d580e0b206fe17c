// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Alert.h>

#include <memory>

typedef struct _cairo cairo_t;
typedef struct _PangoLayout PangoLayout;

namespace vx {

/// Lays an alert's texts and buttons out and paints them. Lengths are in pixels, with the origin at the top
/// left. Belongs to one thread.
class AlertPainter {
public:
    /// `scale` enlarges everything (1 at 96 dots per inch). Texts wrap, and what does not fit into
    /// `maxHeight` is cut with an ellipsis, so that the buttons stay within reach.
    AlertPainter(const AlertContents& contents, double scale, int maxHeight);
    ~AlertPainter();

    int width() const { return m_Width; }
    int height() const { return m_Height; }
    int buttonCount() const { return int(m_Buttons.size()); }
    /// Index of the button at the point, -1 if there is none.
    int buttonAt(double x, double y) const;

    /// Paints the whole window. `focused` is the button with the focus ring, `pressed` the one held down by
    /// the mouse or -1.
    void paint(cairo_t* canvas, int focused, int pressed) const;

private:
    struct LayoutDeleter {
        void operator()(PangoLayout* layout) const;
    };
    using Layout = std::unique_ptr<PangoLayout, LayoutDeleter>;
    struct Button {
        Layout label;
        double x, y, width, height;
    };

    Layout makeLayout(const std::string& text, const char* font) const;
    void placeButtons(const AlertContents& contents);
    void placeTexts(int maxHeight);
    void paintButton(cairo_t* canvas, int index, bool focused, bool pressed) const;

    double m_Scale;
    Layout m_Message;
    Layout m_InformativeText;
    double m_InformativeTop = 0;
    std::vector<Button> m_Buttons;
    int m_Width = 0;
    int m_Height = 0;
};

} // namespace vx
