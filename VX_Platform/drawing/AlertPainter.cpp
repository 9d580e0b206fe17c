// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/AlertPainter.h>

#include <VX_Platform/drawing/Canvas.h>

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

constexpr double kMargin = 20;
constexpr double kTextGap = 8;
constexpr double kButtonGap = 10;
constexpr double kButtonHeight = 30;
constexpr double kButtonPadding = 16;
constexpr double kButtonRadius = 5;
constexpr double kMinButtonWidth = 80;
constexpr double kMaxButtonWidth = 400;
constexpr double kMinTextHeight = 40;
constexpr double kTextWidth = 440;
constexpr double kMinWidth = 300;

constexpr double kMessageSize = 14;
constexpr double kTextSize = 13;
constexpr int kBold = 700;

constexpr Color kBackground = Color::rgb(0xf2f2f2);
constexpr Color kInk = Color::rgb(0x202020);
constexpr Color kDefaultInk = Color::rgb(0xffffff);
constexpr Color kEdge = Color::rgb(0xa0a0a0);
constexpr Color kFocusedEdge = Color::rgb(0x103a70);

Color faceColor(bool isDefault, bool pressed) {
    if (isDefault)
        return Color::rgb(pressed ? 0x1f5fae : 0x2f74c8);
    return Color::rgb(pressed ? 0xd0d0d0 : 0xffffff);
}

} // namespace

AlertPainter::AlertPainter(const AlertTexts& texts, double scale, int maxWidth, int maxHeight)
    : m_Scale(scale),
      m_Message(texts.message, {"Sans", kBold}, scaled(kMessageSize)),
      m_InformativeText(texts.informativeText, {"Sans", FontFace::kRegular}, scaled(kTextSize)) {
    const double count = double(texts.buttons.size());
    const double room = maxWidth - scaled(2 * kMargin) - scaled(kButtonGap) * (count - 1);
    for (const std::string& label : texts.buttons)
        makeButton(label, std::min(scaled(kMaxButtonWidth), std::floor(room / count)));
    chooseWidth(maxWidth);
    placeTexts(maxHeight);
}

void AlertPainter::makeButton(const std::string& label, double maxWidth) {
    TextLayout layout(label, {"Sans", FontFace::kRegular}, scaled(kTextSize));
    const double padding = scaled(2 * kButtonPadding);
    layout.keepToOneLine(std::max(maxWidth - padding, 1.0), TextLayout::Ellipsis::middle);
    const double width = std::max(std::ceil(layout.size().width) + padding, scaled(kMinButtonWidth));
    m_Buttons.push_back({std::move(layout), 0, 0, std::min(width, maxWidth), scaled(kButtonHeight)});
}

void AlertPainter::chooseWidth(int maxWidth) {
    double row = scaled(2 * kMargin - kButtonGap);
    for (const Button& button : m_Buttons)
        row += button.width + scaled(kButtonGap);
    const double text = std::max(m_Message.size().width, m_InformativeText.size().width);
    const double wanted =
        std::max({scaled(kMinWidth), std::min(text, scaled(kTextWidth)) + scaled(2 * kMargin), row});
    m_Width = std::min(int(std::ceil(wanted)), maxWidth);
}

void AlertPainter::placeTexts(int maxHeight) {
    const double margin = scaled(kMargin);
    const double room =
        std::max(maxHeight - 3 * margin - scaled(kButtonHeight + kTextGap), scaled(kMinTextHeight));
    const double kept = m_InformativeText.size().height > 0 ? room / 4 : 0; // for the text below the message
    m_Message.wrapAt(m_Width - 2 * margin);
    m_Message.limitHeight(room - kept);
    m_InformativeText.wrapAt(m_Width - 2 * margin);
    m_InformativeText.limitHeight(room - m_Message.size().height);
    m_InformativeTop = margin + m_Message.size().height;
    if (m_InformativeTop > margin)
        m_InformativeTop += scaled(kTextGap);
    placeButtons(m_InformativeTop + m_InformativeText.size().height + margin);
}

// From right to left, the default button at the right end.
void AlertPainter::placeButtons(double top) {
    double right = m_Width - scaled(kMargin);
    for (Button& button : m_Buttons) {
        button.x = right - button.width;
        button.y = top;
        right = button.x - scaled(kButtonGap);
    }
    m_Height = int(std::ceil(top + scaled(kButtonHeight + kMargin)));
}

int AlertPainter::buttonAt(double x, double y) const {
    const auto hit = std::find_if(m_Buttons.begin(), m_Buttons.end(), [&](const Button& button) {
        return x >= button.x && x < button.x + button.width && y >= button.y && y < button.y + button.height;
    });
    return hit == m_Buttons.end() ? -1 : int(hit - m_Buttons.begin());
}

void AlertPainter::paint(Canvas& canvas, int focused, int pressed) const {
    canvas.clear(kBackground);
    m_Message.draw(canvas, scaled(kMargin), scaled(kMargin), kInk);
    m_InformativeText.draw(canvas, scaled(kMargin), m_InformativeTop, kInk);
    for (int index = 0; index < buttonCount(); ++index)
        paintButton(canvas, index, index == focused, index == pressed);
}

void AlertPainter::paintButton(Canvas& canvas, int index, bool focused, bool pressed) const {
    const Button& button = m_Buttons[std::size_t(index)];
    const bool isDefault = index == 0;
    canvas.addRoundedRectangle(button.x + 0.5, button.y + 0.5, button.width - 1, button.height - 1,
                               scaled(kButtonRadius));
    canvas.setColor(faceColor(isDefault, pressed));
    canvas.fillPathAndKeep();
    canvas.setColor(focused ? kFocusedEdge : kEdge);
    canvas.strokePath(scaled(focused ? 2 : 1));

    const TextLayout::Size label = button.label.size();
    button.label.draw(canvas, button.x + (button.width - label.width) / 2,
                      button.y + (button.height - label.height) / 2, isDefault ? kDefaultInk : kInk);
}

} // namespace vx
