// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/tags/VX_GLDynamicTexture.h>

#include <string>
#include <vector>

/// What the chart says in its middle.
struct ChartCaption {
    std::string name, size;
    std::vector<std::string> lines;
};

/// A picture to set a projector up by: every edge of the display, its corners, squares and circles that must
/// be square and round, colours, greys, stripes of one pixel, and the display's name.
class Chart : public VX_GLDynamicTexture {
public:
    Chart(int width, int height, ChartCaption caption)
        : VX_GLDynamicTexture(width, height), m_Caption(std::move(caption)) {}
    void Draw() override;

private:
    void drawGrid() const;
    void drawEdges() const;
    void drawCircles() const;
    void drawBars() const;
    void drawFocus() const;
    void drawCaption() const;
    float drawLine(const std::string& text, float size, float top, float shade) const;
    /// In units from the middle; there are 18 from edge to edge of the shorter side.
    void fill(float x, float y, float width, float height) const;
    void drawCircle(float x, float y, float radius, float lineWidth) const;

    ChartCaption m_Caption;
    float m_Unit = 0.0f;
    float m_MiddleX = 0.0f, m_MiddleY = 0.0f;
};
