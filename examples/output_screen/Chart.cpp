// SPDX-License-Identifier: MIT
#include <examples/output_screen/Chart.h>

#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>

#include <algorithm>
#include <cmath>

namespace {

void setColor(double red, double green, double blue) {
    NSColor::colorWithDeviceRed(red, green, blue, 1.0)->set();
}

void setGray(double white) {
    setColor(white, white, white);
}

// Whole pixels, so that neighbours meet without a gap.
void fillPixels(float left, float top, float width, float height) {
    const float x = std::round(left), y = std::round(top);
    NSRectFill(CGRectMake(x, y, std::round(left + width) - x, std::round(top + height) - y));
}

NSRef<NSAttributedString> makeText(const std::string& words, float size, float shade) {
    const auto attributes = NSInit(new NSMutableDictionary);
    if (NSFont* const font = NSFont::fontWithName(NSString::stringWithUTF8String("Arial Black"), size))
        attributes->setObject(font, NSFontAttributeName);
    attributes->setObject(NSColor::colorWithDeviceWhite(shade, 1.0), NSForegroundColorAttributeName);
    return NSInit(new NSAttributedString, NSString::stringWithUTF8String(words.c_str()), attributes.get());
}

} // namespace

void Chart::fill(float x, float y, float width, float height) const {
    fillPixels(m_MiddleX + x * m_Unit, m_MiddleY + y * m_Unit, width * m_Unit, height * m_Unit);
}

void Chart::drawCircle(float x, float y, float radius, float lineWidth) const {
    const float side = 2.0f * radius;
    NSBezierPath* const circle = NSBezierPath::bezierPathWithOvalInRect(
        CGRectMake(m_MiddleX + x - radius, m_MiddleY + y - radius, side, side));
    circle->setLineWidth(lineWidth);
    circle->stroke();
}

void Chart::Draw() {
    const float width = m_ContentSize.x, height = m_ContentSize.y;
    m_Unit = std::min(width, height) / 18.0f;
    m_MiddleX = 0.5f * width;
    m_MiddleY = 0.5f * height;
    setGray(0.13);
    fillPixels(0.0f, 0.0f, width, height);
    drawGrid();
    drawCircles();
    drawFocus();
    drawEdges();
    drawBars();
    drawCaption();
}

void Chart::drawGrid() const {
    const int across = static_cast<int>(m_MiddleX / m_Unit), down = static_cast<int>(m_MiddleY / m_Unit);
    for (int i = -across; i <= across; ++i) {
        setGray(i == 0 ? 0.6 : 0.3);
        fillPixels(m_MiddleX + static_cast<float>(i) * m_Unit, 0.0f, 1.0f, m_ContentSize.y);
    }
    for (int i = -down; i <= down; ++i) {
        setGray(i == 0 ? 0.6 : 0.3);
        fillPixels(0.0f, m_MiddleY + static_cast<float>(i) * m_Unit, m_ContentSize.x, 1.0f);
    }
}

// The large circle is filled, so that what stands in it can be read.
void Chart::drawCircles() const {
    const float radius = 8.0f * m_Unit, line = std::max(2.0f, m_Unit / 16.0f);
    setGray(0.09);
    NSBezierPath::bezierPathWithOvalInRect(
        CGRectMake(m_MiddleX - radius, m_MiddleY - radius, 2.0f * radius, 2.0f * radius))
        ->fill();
    setGray(0.95);
    drawCircle(0.0f, 0.0f, radius, line);
    const float x = m_MiddleX - 2.0f * m_Unit, y = m_MiddleY - 2.0f * m_Unit;
    setGray(0.7);
    for (const float right : {-x, x})
        for (const float below : {-y, y})
            drawCircle(right, below, m_Unit, line);
}

// A line of one pixel on the outermost row and column, and an angle in each corner.
void Chart::drawEdges() const {
    const float width = m_ContentSize.x, height = m_ContentSize.y;
    setGray(1.0);
    fillPixels(0.0f, 0.0f, width, 1.0f);
    fillPixels(0.0f, height - 1.0f, width, 1.0f);
    fillPixels(0.0f, 0.0f, 1.0f, height);
    fillPixels(width - 1.0f, 0.0f, 1.0f, height);
    const float length = 1.5f * m_Unit, thick = std::max(2.0f, std::round(m_Unit / 6.0f));
    setColor(1.0, 0.55, 0.1);
    for (const float top : {0.0f, height - thick}) {
        fillPixels(0.0f, top, length, thick);
        fillPixels(width - length, top, length, thick);
    }
    for (const float left : {0.0f, width - thick}) {
        fillPixels(left, 0.0f, thick, length);
        fillPixels(left, height - length, thick, length);
    }
}

void Chart::drawBars() const {
    for (int i = 0; i < 8; ++i) { // white, yellow, cyan, green, magenta, red, blue, black
        const int bits = 7 - i;
        setColor(bits & 2 ? 0.75 : 0.0, bits & 4 ? 0.75 : 0.0, bits & 1 ? 0.75 : 0.0);
        fill(-4.8f + 1.2f * static_cast<float>(i), -6.0f, 1.2f, 1.6f);
    }
    const float step = 9.6f / 11.0f;
    for (int i = 0; i <= 10; ++i) {
        setGray(0.1 * i);
        fill(-4.8f + step * static_cast<float>(i), 4.6f, step, 1.4f);
    }
}

// Stripes of one pixel, upright and lying, left and right of the circle where there is room.
void Chart::drawFocus() const {
    const float side = std::floor(2.0f * m_Unit), away = 10.0f * m_Unit;
    if (m_MiddleX < away + m_Unit)
        return;
    for (const float x : {-away, away}) {
        const float left = std::round(m_MiddleX + x - 0.5f * side), top = std::round(m_MiddleY - side);
        setGray(0.0);
        fillPixels(left, top, side, 2.0f * side);
        setGray(1.0);
        for (float i = 0.0f; i < side; i += 2.0f) {
            fillPixels(left + i, top, 1.0f, side);
            fillPixels(left, top + side + i, side, 1.0f);
        }
    }
}

// In the middle, smaller where it would be too wide. Returns how far down the next line begins.
float Chart::drawLine(const std::string& words, float size, float top, float shade) const {
    const float room = 13.0f * m_Unit;
    auto text = makeText(words, size * m_Unit, shade);
    const auto width = static_cast<float>(text->size().width);
    if (width > room)
        text = makeText(words, size * m_Unit * room / width, shade);
    const CGSize extent = text->size();
    text->drawAtPoint(CGPointMake(std::round(m_MiddleX - extent.width * 0.5), m_MiddleY + top * m_Unit));
    return top + static_cast<float>(extent.height) / m_Unit;
}

void Chart::drawCaption() const {
    float top = drawLine(m_Caption.name, 2.0f, -3.8f, 1.0f);
    top = drawLine(m_Caption.size, 0.8f, top, 0.9f) + 0.5f;
    const float size = std::min(0.42f, 2.5f / static_cast<float>(m_Caption.lines.size() + 1));
    for (const std::string& line : m_Caption.lines)
        top = drawLine(line, size, top, 0.75f) + 0.3f * size;
}
