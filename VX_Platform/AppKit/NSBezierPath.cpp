// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSBezierPath.h>

#include <VX_Platform/AppKit/private/Focus.h>

namespace {

thread_local double defaultLineWidth = 1.0;

} // namespace

void NSRectFill(NSRect rect) {
    vx::Canvas& canvas = vx::focusedCanvas();
    canvas.save();
    canvas.setOperator(vx::Canvas::Operator::copy);
    canvas.fillRectangle(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    canvas.restore();
}

NSBezierPath::NSBezierPath() : m_LineWidth(defaultLineWidth) {}
NSBezierPath::~NSBezierPath() = default;

NSBezierPath* NSBezierPath::bezierPath() {
    return (new NSBezierPath)->autorelease();
}

NSBezierPath* NSBezierPath::bezierPathWithOvalInRect(NSRect rect) {
    NSBezierPath* path = bezierPath();
    path->m_Elements.push_back({Kind::oval, rect});
    return path;
}

void NSBezierPath::setDefaultLineWidth(double width) {
    defaultLineWidth = width;
}

void NSBezierPath::moveToPoint(NSPoint point) {
    m_Elements.push_back({Kind::move, {point, {}}});
}

void NSBezierPath::lineToPoint(NSPoint point) {
    m_Elements.push_back({Kind::line, {point, {}}});
}

void NSBezierPath::closePath() {
    m_Elements.push_back({Kind::close, {}});
}

void NSBezierPath::play() const {
    vx::Canvas& canvas = vx::focusedCanvas();
    for (const auto& [kind, rect] : m_Elements) {
        if (kind == Kind::move)
            canvas.moveTo(rect.origin.x, rect.origin.y);
        else if (kind == Kind::line)
            canvas.lineTo(rect.origin.x, rect.origin.y);
        else if (kind == Kind::close)
            canvas.closePath();
        else
            canvas.addEllipse(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    }
}

void NSBezierPath::fill() const {
    play();
    vx::focusedCanvas().fillPath();
}

void NSBezierPath::stroke() const {
    play();
    vx::focusedCanvas().strokePath(m_LineWidth);
}
