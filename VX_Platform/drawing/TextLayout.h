// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/drawing/Color.h>
#include <VX_Platform/drawing/FontMap.h>

#include <memory>
#include <string_view>

typedef struct _PangoLayout PangoLayout;
typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

namespace vx {

class Canvas;
class KeptLayouts;

/// A text laid out in lines: shaped, in the direction its letters run, with other fonts where its own lacks a
/// letter. Lengths are in pixels of the canvas. Belongs to the thread that made it.
class TextLayout {
public:
    /// Longest text, in bytes: what lies beyond is not laid out.
    static constexpr std::size_t kMaxBytes = 1 << 16;

    /// Where a text that does not fit gets its ellipsis.
    enum class Ellipsis { middle, end };

    struct Size {
        double width = 0.0;
        double height = 0.0;
    };

    /// UTF-8, up to its first NUL; what is not valid shows as the replacement character. `size` is the
    /// font's, from 1 to `kMaxFontSize`; what lies outside counts as the nearest.
    TextLayout(std::string_view text, const FontFace& face, double size);
    static constexpr double kMaxFontSize = 10000.0;

    /// The same, wrapped at a width if that is not below 0, out of what the calling thread has laid out
    /// lately: most texts are measured and then drawn, and drawn again in the next picture. For the thread
    /// alone, until it asks for the next one.
    static const TextLayout& kept(std::string_view text, const FontFace& face, double size, double width);

    /// Breaks lines between words, or inside one that is too long, so that they fit into `width`. A paragraph
    /// that runs from right to left then ends its lines at the right end of the width.
    void wrapAt(double width);
    /// Ends lines with an ellipsis once `height` is full, but not before the first; only where the text
    /// wraps.
    void limitHeight(double height);
    /// Line ends show as signs, and a text wider than `width` is cut with an ellipsis.
    void keepToOneLine(double width, Ellipsis ellipsis);

    /// Whether its first letters run from right to left.
    bool runsRightToLeft() const;
    /// The lines' size, with the room that letters may take above and below; 0 x 0 for no text.
    Size size() const;
    /// Draws with the box of `size` at its corner (x, y) that lies nearest to the canvas's origin; upright
    /// whichever way the canvas's y axis runs.
    void draw(Canvas& canvas, double x, double y, const Color& color) const;

private:
    struct LayoutDeleter {
        void operator()(PangoLayout* layout) const;
    };
    friend class KeptLayouts;

    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const;
    };
    /// How much of each pixel the letters cover, once they have been drawn, for the next time.
    struct Mask {
        std::unique_ptr<cairo_surface_t, SurfaceDeleter> coverage;
        int left = 0;
        int top = 0;
    };

    const Mask* maskFor(cairo_t* context) const;
    Mask makeMask() const;

    std::unique_ptr<PangoLayout, LayoutDeleter> m_Layout;
    bool m_IsKept = false;
    mutable int m_Draws = 0;
    mutable Mask m_Mask;
};

} // namespace vx
