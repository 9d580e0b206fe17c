// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>

#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSBezierPath.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSString.h>

#include <initializer_list>

namespace {

constexpr float kGrid = 40.0f;
constexpr float kLeft = 25.0f;
constexpr float kStripesTop = 40.0f;
constexpr float kCaptionLeft = 20.0f;

void fill(NSColor* color, float x, float y, float width, float height) {
    color->set();
    NSRectFill(CGRectMake(x, y, width, height));
}

void drawLine(float x1, float y1, float x2, float y2) {
    NSBezierPath* path = NSBezierPath::bezierPath();
    path->moveToPoint(CGPointMake(x1, y1));
    path->lineToPoint(CGPointMake(x2, y2));
    path->stroke();
}

void drawGrid(float width, float height) {
    NSBezierPath::setDefaultLineWidth(1.0);
    NSColor::whiteColor()->set();
    for (float x = 0.0f; x < width; x += kGrid)
        drawLine(x + 0.5f, 0.5f, x + 0.5f, height - 0.5f);
    drawLine(width - 0.5f, 0.5f, width - 0.5f, height - 0.5f);
    for (float y = 0.0f; y < height; y += kGrid)
        drawLine(0.5f, y + 0.5f, width - 0.5f, y + 0.5f);
    drawLine(0.5f, height - 0.5f, width - 0.5f, height - 0.5f);
}

// Pairs of white and black stripes, which become finer and more.
void drawResolutionWedge(float width, float height) {
    float place = kLeft;
    for (int stripe = 10; stripe >= 1; --stripe) {
        const auto s = static_cast<float>(stripe);
        const int pairs = static_cast<int>(width / 6.0f / s / s);
        for (int pair = 0; pair < pairs; ++pair) {
            fill(NSColor::whiteColor(), place, kStripesTop, s, height);
            fill(NSColor::blackColor(), place + s, kStripesTop, s, height);
            place += 2.0f * s;
        }
    }
}

void drawColorBars(float top, float width, float height) {
    float place = kLeft;
    for (NSColor* color :
         {NSColor::blackColor(), NSColor::blueColor(), NSColor::redColor(), NSColor::magentaColor(),
          NSColor::greenColor(), NSColor::cyanColor(), NSColor::yellowColor(), NSColor::whiteColor()}) {
        fill(color, place, top, width, height);
        place += width;
    }
}

void drawCornerMarks(float width, float height) {
    const float side = width * 10.0f / 640.0f;
    NSColor* color = NSColor::colorWithDeviceRed(0.4f, 0.0, 0.0, 1.0);
    fill(color, 0.0f, 0.0f, side, side);
    fill(color, width - side, 0.0f, side, side);
    fill(color, width - side, height - side, side, side);
    fill(color, 0.0f, height - side, side, side);
}

void drawDisc(float width, float height) {
    const float diameter = 0.25f * width;
    NSColor::colorWithDeviceRed(0.2f, 0.2f, 0.2f, 1.0)->set();
    NSBezierPath::bezierPathWithOvalInRect(
        CGRectMake(width * 0.5f - diameter * 0.5f, height * 0.5f - diameter * 0.5f, diameter, diameter))
        ->fill();
}

void drawCaption(float width, float height, float fontSize, NSMutableDictionary* attributes) {
    NSString* words = NSString::stringWithFormat("Composition size %d x %d", static_cast<int>(width),
                                                 static_cast<int>(height));
    NSInit(new NSAttributedString, words, attributes)
        ->drawAtPoint(CGPointMake(kCaptionLeft, height - (fontSize + fontSize)));
}

} // namespace

VX_GLTestPattern::VX_GLTestPattern(int width, int height) : VX_GLDynamicTexture(width, height) {}
VX_GLTestPattern::~VX_GLTestPattern() = default;

void VX_GLTestPattern::Draw() {
    const float width = m_ContentSize.x, height = m_ContentSize.y;
    fill(NSColor::grayColor(), 0.0f, 0.0f, width, height);
    const float fontSize = width * 38.0f / 640.0f;
    const auto attributes = NSInit(new NSMutableDictionary);
    attributes->setObject(NSFont::fontWithName(NSString::stringWithUTF8String("Arial Black"), fontSize),
                          NSFontAttributeName);
    attributes->setObject(NSColor::whiteColor(), NSForegroundColorAttributeName);
    drawGrid(width, height);
    drawResolutionWedge(width, height * 0.25f);
    drawColorBars(height - 0.25f * height - (fontSize + fontSize), width / 10.0f, 0.25f * height);
    drawCornerMarks(width, height);
    drawDisc(width, height);
    drawCaption(width, height, fontSize, attributes.get());
}
