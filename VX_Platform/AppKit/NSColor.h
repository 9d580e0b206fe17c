// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// A device colour with straight alpha: components from 0 to 1, what lies outside counts as the nearest.
/// Immutable. Results of the class functions are borrowed and autoreleased. Any thread.
class VX_EXPORT NSColor : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSColor)

    /// Returns the colour with these components; the second makes a gray.
    static NSColor* colorWithDeviceRed(double red, double green, double blue, double alpha);
    static NSColor* colorWithDeviceWhite(double white, double alpha);

    /// Return the colour of that name, opaque; the grays are 1/3, 1/2 and 2/3 of white.
    static NSColor* blackColor();
    static NSColor* darkGrayColor();
    static NSColor* grayColor();
    static NSColor* lightGrayColor();
    static NSColor* whiteColor();
    static NSColor* redColor();
    static NSColor* greenColor();
    static NSColor* blueColor();
    static NSColor* cyanColor();
    static NSColor* magentaColor();
    static NSColor* yellowColor();
    /// Black without any alpha.
    static NSColor* clearColor();

    /// Makes it the colour of fills and strokes in the calling thread's focused image, until another is set
    /// or the focus changes. Nothing without a focus.
    void set() const;

    /// Return the components, from 0 to 1, not multiplied by alpha.
    double redComponent() const { return m_Red; }
    double greenComponent() const { return m_Green; }
    double blueComponent() const { return m_Blue; }
    double alphaComponent() const { return m_Alpha; }

protected:
    ~NSColor() override = default;

private:
    double m_Red = 0.0;
    double m_Green = 0.0;
    double m_Blue = 0.0;
    double m_Alpha = 1.0;
};
