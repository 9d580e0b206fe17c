// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/drawing/TextLayout.h>

#include <string>
#include <vector>

namespace vx {

class Canvas;

/// What an alert says, in UTF-8. There is at least one button; the first is the default one.
struct AlertTexts {
    std::string message;
    std::string informativeText;
    std::vector<std::string> buttons;
};

/// Lays an alert's texts and buttons out and paints them. Lengths are in pixels, with the origin at the top
/// left. Belongs to one thread.
class AlertPainter {
public:
    /// `scale` enlarges everything (1 at 96 dots per inch). Texts wrap; what does not fit into `maxWidth` and
    /// `maxHeight` is cut with an ellipsis, so that the buttons stay within reach.
    AlertPainter(const AlertTexts& texts, double scale, int maxWidth, int maxHeight);

    int width() const { return m_Width; }
    int height() const { return m_Height; }
    int buttonCount() const { return int(m_Buttons.size()); }
    /// Index of the button at the point, -1 if there is none.
    int buttonAt(double x, double y) const;

    /// Paints the whole alert on a canvas of its size. `focused` is the button with the focus ring, `pressed`
    /// the one held down by the mouse or -1.
    void paint(Canvas& canvas, int focused, int pressed) const;

private:
    struct Button {
        TextLayout label;
        double x, y, width, height;
    };

    double scaled(double length) const { return length * m_Scale; }
    void makeButton(const std::string& label, double maxWidth);
    void chooseWidth(int maxWidth);
    void placeTexts(int maxHeight);
    void placeButtons(double top);
    void paintButton(Canvas& canvas, int index, bool focused, bool pressed) const;

    double m_Scale;
    TextLayout m_Message;
    TextLayout m_InformativeText;
    double m_InformativeTop = 0;
    std::vector<Button> m_Buttons;
    int m_Width = 0;
    int m_Height = 0;
};

} // namespace vx
