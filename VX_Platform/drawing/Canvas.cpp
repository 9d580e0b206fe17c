// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/Canvas.h>

#include <VX_Platform/drawing/PixelOrder.h>

#include <cairo/cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace vx {

namespace {

constexpr double kQuarter = std::numbers::pi / 2;

bool isSide(long long length) {
    return length > 0 && length <= Canvas::kMaxSide;
}

bool holdsRows(const void* pixels, long long width, long long stride) {
    return pixels && reinterpret_cast<std::uintptr_t>(pixels) % 4 == 0 && stride % 4 == 0 &&
           stride >= width * 4 && stride <= std::numeric_limits<int>::max();
}

bool isExtent(const Canvas::Area& area) {
    return std::isfinite(area.x) && std::isfinite(area.y) && area.width > 0 && std::isfinite(area.width) &&
           area.height > 0 && std::isfinite(area.height);
}

// Within the canvas, whatever the number.
int pixelAt(double place, int end) {
    return place > 0 ? (place < end ? int(place) : end) : 0;
}

} // namespace

void Canvas::ContextDeleter::operator()(cairo_t* context) const {
    cairo_destroy(context);
}

Canvas::Canvas() {
    take(nullptr);
}

Canvas::Canvas(long long width, long long height, Origin origin) : m_Origin(origin) {
    const bool fits = isSide(width) && isSide(height);
    take(fits ? cairo_image_surface_create(CAIRO_FORMAT_ARGB32, int(width), int(height)) : nullptr);
}

Canvas::Canvas(void* pixels, long long width, long long height, long long stride, Origin origin)
    : m_Origin(origin) {
    const bool fits = isSide(width) && isSide(height) && holdsRows(pixels, width, stride);
    take(fits ? cairo_image_surface_create_for_data(static_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32,
                                                    int(width), int(height), int(stride))
              : nullptr);
}

// Without a usable surface cairo gives a context that takes every call and does nothing.
void Canvas::take(cairo_surface_t* surface) {
    m_Context.reset(cairo_create(surface));
    if (cairo_status(m_Context.get()) == CAIRO_STATUS_SUCCESS) {
        m_Width = cairo_image_surface_get_width(surface);
        m_Height = cairo_image_surface_get_height(surface);
        if (m_Origin == Origin::bottomLeft) {
            cairo_translate(m_Context.get(), 0, m_Height);
            cairo_scale(m_Context.get(), 1, -1);
        }
    }
    cairo_surface_destroy(surface);
}

std::ptrdiff_t Canvas::stride() const {
    return isEmpty() ? 0 : cairo_image_surface_get_stride(cairo_get_target(context()));
}

unsigned char* Canvas::pixels() {
    if (isEmpty())
        return nullptr;
    cairo_surface_t* surface = cairo_get_target(context());
    cairo_surface_flush(surface);
    cairo_surface_mark_dirty(surface);
    return cairo_image_surface_get_data(surface);
}

void Canvas::copyTo(cairo_surface_t* surface) const {
    cairo_t* there = cairo_create(surface);
    cairo_set_source_surface(there, cairo_get_target(context()), 0, 0);
    cairo_paint(there);
    cairo_destroy(there);
}

void Canvas::save() {
    cairo_save(context());
    ++m_Saves;
}

// One too many would put cairo's context out of order for good.
void Canvas::restore() {
    if (m_Saves == 0)
        return;
    cairo_restore(context());
    --m_Saves;
}

void Canvas::setColor(const Color& color) {
    cairo_set_source_rgba(context(), color.red, color.green, color.blue, color.alpha);
}

void Canvas::setOperator(Operator op) {
    cairo_set_operator(context(), op == Operator::copy ? CAIRO_OPERATOR_SOURCE : CAIRO_OPERATOR_OVER);
}

void Canvas::setAntialias(bool smooth) {
    m_IsSmooth = smooth;
    cairo_set_antialias(context(), smooth ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}

void Canvas::clipTo(double x, double y, double width, double height) {
    const double left = std::floor(x), bottom = std::floor(y);
    cairo_new_path(context());
    cairo_rectangle(context(), left, bottom, std::ceil(x + width) - left, std::ceil(y + height) - bottom);
    cairo_clip(context());
}

void Canvas::clear(const Color& color) {
    save();
    setColor(color);
    setOperator(Operator::copy);
    cairo_paint(context());
    restore();
}

void Canvas::fillRectangle(double x, double y, double width, double height) {
    cairo_new_path(context());
    cairo_rectangle(context(), x, y, width, height);
    cairo_set_antialias(context(), CAIRO_ANTIALIAS_NONE);
    cairo_fill(context());
    setAntialias(m_IsSmooth);
}

Canvas::Area Canvas::fromTop(const Area& area) const {
    return m_Origin == Origin::topLeft
               ? area
               : Area{area.x, m_Height - area.y - area.height, area.width, area.height};
}

void Canvas::drawCanvas(Canvas& other, const Area& part, const Area& into, double alpha) {
    if (other.isEmpty() || !isExtent(part) || !isExtent(into))
        return;
    const Area from = other.fromTop(part), to = fromTop(into);
    cairo_save(context());
    cairo_identity_matrix(context());
    cairo_rectangle(context(), to.x, to.y, to.width, to.height);
    cairo_clip(context());
    cairo_translate(context(), to.x, to.y);
    cairo_scale(context(), to.width / from.width, to.height / from.height);
    cairo_surface_t* source = cairo_surface_create_for_rectangle(cairo_get_target(other.context()), from.x,
                                                                 from.y, from.width, from.height);
    cairo_set_source_surface(context(), source, 0, 0);
    if (from.width != to.width || from.height != to.height)
        cairo_pattern_set_extend(cairo_get_source(context()), CAIRO_EXTEND_PAD); // no soft edge
    cairo_paint_with_alpha(context(), alpha);
    cairo_restore(context());
    cairo_surface_destroy(source);
}

Canvas::PixelArea Canvas::touchedBy(const Area& area) const {
    const Area from = fromTop(area);
    const int left = pixelAt(std::floor(from.x), m_Width),
              right = pixelAt(std::ceil(from.x + from.width), m_Width);
    const int top = pixelAt(std::floor(from.y), m_Height);
    const int bottom = pixelAt(std::ceil(from.y + from.height), m_Height);
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

void Canvas::readPixels(const PixelArea& area, unsigned char* bytes) {
    const unsigned char* const all = pixels();
    if (all && area.width == m_Width && area.width * 4LL == stride()) {
        swapRedAndBlue(all + area.y * stride(), bytes, std::size_t(area.width) * std::size_t(area.height));
        return;
    }
    for (int row = 0; row < area.height; ++row)
        swapRedAndBlue(all + (area.y + row) * stride() + area.x * 4LL, bytes + row * (area.width * 4LL),
                       std::size_t(area.width));
}

void Canvas::moveTo(double x, double y) {
    cairo_move_to(context(), x, y);
}

void Canvas::lineTo(double x, double y) {
    cairo_line_to(context(), x, y);
}

void Canvas::curveTo(double x1, double y1, double x2, double y2, double x, double y) {
    cairo_curve_to(context(), x1, y1, x2, y2, x, y);
}

void Canvas::closePath() {
    cairo_close_path(context());
}

void Canvas::addEllipse(double x, double y, double width, double height) {
    if (!(width > 0 && height > 0)) // a scale of 0 would put the context out of order
        return;
    cairo_matrix_t axes;
    cairo_get_matrix(context(), &axes);
    cairo_translate(context(), x + width / 2, y + height / 2);
    cairo_scale(context(), width / 2, height / 2);
    cairo_new_sub_path(context());
    cairo_arc(context(), 0, 0, 1, 0, 4 * kQuarter);
    cairo_close_path(context());
    cairo_set_matrix(context(), &axes);
}

void Canvas::addRoundedRectangle(double x, double y, double width, double height, double radius) {
    const double r = std::min(radius, std::min(width, height) / 2);
    cairo_new_sub_path(context());
    cairo_arc(context(), x + width - r, y + r, r, -kQuarter, 0);
    cairo_arc(context(), x + width - r, y + height - r, r, 0, kQuarter);
    cairo_arc(context(), x + r, y + height - r, r, kQuarter, 2 * kQuarter);
    cairo_arc(context(), x + r, y + r, r, 2 * kQuarter, 3 * kQuarter);
    cairo_close_path(context());
}

void Canvas::fillPath() {
    cairo_fill(context());
}

void Canvas::fillPathAndKeep() {
    cairo_fill_preserve(context());
}

void Canvas::strokePath(double lineWidth) {
    cairo_set_line_width(context(), lineWidth);
    cairo_stroke(context());
}

} // namespace vx
