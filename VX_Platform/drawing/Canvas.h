// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/drawing/Color.h>

#include <cstddef>
#include <memory>

typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

namespace vx {

/// Where 2D drawing goes: pixels in memory, of its own or the caller's. Lengths are in pixels. One thread at
/// a time.
///
/// A pixel is 32 bits, 0xAARRGGBB in the machine's byte order, with its colours multiplied by alpha; the
/// first row in memory is the top one. An empty canvas takes every call and draws nothing.
class Canvas {
public:
    /// Where (0, 0) lies: y runs down from the top left, or up from the bottom left.
    enum class Origin { topLeft, bottomLeft };
    /// Whether what is drawn lies over what is there, or takes its place, alpha included.
    enum class Operator { sourceOver, copy };

    struct Area {
        double x, y, width, height;
    };
    /// Whole pixels, counted from the top left.
    struct PixelArea {
        int x = 0, y = 0, width = 0, height = 0;
    };

    /// Longest side of a canvas.
    static constexpr long long kMaxSide = 32767;

    /// An empty canvas.
    Canvas();
    /// Transparent pixels of its own; empty when a side is not from 1 to `kMaxSide` or memory is short.
    Canvas(long long width, long long height, Origin origin = Origin::topLeft);
    /// The caller's pixels, as they are, which must outlive the canvas; `stride` bytes from row to row. Empty
    /// also when `pixels` or `stride` is no multiple of 4 bytes or a row does not fit into the stride.
    Canvas(void* pixels, long long width, long long height, long long stride,
           Origin origin = Origin::topLeft);

    bool isEmpty() const { return m_Width == 0; }
    int width() const { return m_Width; }
    int height() const { return m_Height; }
    /// Bytes from row to row; 0 when empty.
    std::ptrdiff_t stride() const;
    /// The pixels with all drawing in them, to be read or written until the next drawing; null when empty.
    unsigned char* pixels();
    /// Puts the picture on a surface of cairo's, at its top left.
    void copyTo(cairo_surface_t* surface) const;

    /// `save` keeps colour and operator for the `restore` that belongs to it; one too many does nothing.
    void save();
    void restore();
    /// Opaque black at first.
    void setColor(const Color& color);
    /// `sourceOver` at first.
    void setOperator(Operator op);

    /// Whether paths, their fills and strokes, get smooth edges; so at first.
    void setAntialias(bool smooth);
    /// Limits drawing to the rectangle until the `restore` that belongs to the last `save`, in whole pixels.
    void clipTo(double x, double y, double width, double height);

    /// Gives every pixel the colour, whatever was there.
    void clear(const Color& color);
    /// Fills the pixels whose centres lie inside, with no blending at the edges. Drops the path.
    void fillRectangle(double x, double y, double width, double height);
    /// Draws a part of another canvas, in its axes, into a rectangle: upright, and smoothed where the sizes
    /// differ. What lies outside the other counts as clear.
    void drawCanvas(Canvas& other, const Area& part, const Area& into, double alpha);
    /// Copies the pixels that the rectangle touches, in rows without gaps and the top one first, red before
    /// blue; `bytes` has room for them.
    void readPixels(const PixelArea& area, unsigned char* bytes);
    /// Which they are.
    PixelArea touchedBy(const Area& area) const;

    // The path, which its fill or stroke uses up; both smooth their edges.
    void moveTo(double x, double y);
    void lineTo(double x, double y);
    void curveTo(double x1, double y1, double x2, double y2, double x, double y);
    void closePath();
    void addEllipse(double x, double y, double width, double height);
    void addRoundedRectangle(double x, double y, double width, double height, double radius);
    void fillPath();
    /// Fills and keeps the path, for a stroke over its edge.
    void fillPathAndKeep();
    void strokePath(double lineWidth);

    /// For text: cairo's context, with the axes as `origin` says.
    cairo_t* context() const { return m_Context.get(); }
    Origin origin() const { return m_Origin; }

private:
    struct ContextDeleter {
        void operator()(cairo_t* context) const;
    };

    void take(cairo_surface_t* surface);
    Area fromTop(const Area& area) const;

    std::unique_ptr<cairo_t, ContextDeleter> m_Context;
    int m_Width = 0;
    int m_Height = 0;
    int m_Saves = 0;
    Origin m_Origin = Origin::topLeft;
    bool m_IsSmooth = true;
};

} // namespace vx
