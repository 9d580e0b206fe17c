// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSColor.h>

#include <VX_Platform/AppKit/private/Focus.h>

namespace {

double component(double value) {
    return value > 0.0 ? (value < 1.0 ? value : 1.0) : 0.0;
}

NSColor* rgb(double red, double green, double blue) {
    return NSColor::colorWithDeviceRed(red, green, blue, 1.0);
}

NSColor* gray(double white) {
    return NSColor::colorWithDeviceWhite(white, 1.0);
}

} // namespace

NSColor* NSColor::colorWithDeviceRed(double red, double green, double blue, double alpha) {
    auto* color = new NSColor;
    color->m_Red = component(red);
    color->m_Green = component(green);
    color->m_Blue = component(blue);
    color->m_Alpha = component(alpha);
    return color->autorelease();
}

NSColor* NSColor::colorWithDeviceWhite(double white, double alpha) {
    return colorWithDeviceRed(white, white, white, alpha);
}

NSColor* NSColor::blackColor() {
    return gray(0.0);
}

NSColor* NSColor::darkGrayColor() {
    return gray(1.0 / 3.0);
}

NSColor* NSColor::grayColor() {
    return gray(0.5);
}

NSColor* NSColor::lightGrayColor() {
    return gray(2.0 / 3.0);
}

NSColor* NSColor::whiteColor() {
    return gray(1.0);
}

NSColor* NSColor::redColor() {
    return rgb(1.0, 0.0, 0.0);
}

NSColor* NSColor::greenColor() {
    return rgb(0.0, 1.0, 0.0);
}

NSColor* NSColor::blueColor() {
    return rgb(0.0, 0.0, 1.0);
}

NSColor* NSColor::cyanColor() {
    return rgb(0.0, 1.0, 1.0);
}

NSColor* NSColor::magentaColor() {
    return rgb(1.0, 0.0, 1.0);
}

NSColor* NSColor::yellowColor() {
    return rgb(1.0, 1.0, 0.0);
}

NSColor* NSColor::clearColor() {
    return colorWithDeviceWhite(0.0, 0.0);
}

void NSColor::set() const {
    vx::focusedCanvas().setColor({m_Red, m_Green, m_Blue, m_Alpha});
}
