// SPDX-License-Identifier: MIT
#pragma once

#include <examples/gallery/Overlay.h>

#include <array>

class VX_GLMainView;

/// How long the last frames took, as bars, with the view's rate and lost refreshes.
class FrameGraph {
public:
    /// Once a frame.
    void noteFrame();
    /// At the upper left. Needs the view's context; GL state is as before afterwards.
    void draw(const VX_GLMainView* view, int width, int height);
    void clear() { m_Figures.clear(); }

private:
    static constexpr int kFrames = 240;
    void drawBars(const glm::vec2& from, const glm::vec2& size) const;
    void tell(const VX_GLMainView* view, float textSize);

    std::array<float, kFrames> m_Seconds{};
    int m_Next = 0;
    double m_LastFrame = 0.0;
    double m_Told = 0.0;
    Label m_Figures;
};
