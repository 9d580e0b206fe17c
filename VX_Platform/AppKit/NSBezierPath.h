// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <vector>

/// Fills the pixels whose centres lie in the rectangle with the current colour, in place of what was there,
/// alpha included. On the calling thread's focused image; nothing without one.
VX_EXPORT void NSRectFill(NSRect rect);

/// Lines and ovals to be drawn, with smooth edges, on the calling thread's focused image; nothing is drawn
/// without one. Lengths are in pixels, in the axes of the focus. One thread at a time.
class VX_EXPORT NSBezierPath : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSBezierPath)

    /// Returns an empty path, borrowed and autoreleased.
    static NSBezierPath* bezierPath();
    /// Returns the oval that touches the rectangle's sides, borrowed and autoreleased.
    static NSBezierPath* bezierPathWithOvalInRect(NSRect rect);
    /// The line width of the paths that the calling thread makes from now on; 1 at first.
    static void setDefaultLineWidth(double width);

    /// Width of the path's own lines, in pixels.
    void setLineWidth(double width) { m_LineWidth = width; }
    double lineWidth() const { return m_LineWidth; }
    /// Begins a line at the point.
    void moveToPoint(NSPoint point);
    /// Goes on to the point; begins there when nothing has begun.
    void lineToPoint(NSPoint point);
    /// Goes back to where the line began.
    void closePath();

    /// Draw the path in the current colour and keep it: its inside, or its lines, which end at their points
    /// without a cap.
    void fill() const;
    void stroke() const;

protected:
    NSBezierPath();
    ~NSBezierPath() override;

private:
    enum class Kind { move, line, close, oval };
    struct Element {
        Kind kind;
        NSRect rect;
    };

    void play() const;

    std::vector<Element> m_Elements;
    double m_LineWidth;
};
