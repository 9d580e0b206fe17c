// SPDX-License-Identifier: MIT
#include <examples/gallery/FrameGraph.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_Platform/CoreVideo/CVDisplayLink.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

// The height of the graph; a refresh of a display with 60 Hz is two fifths of it.
constexpr float kHighest = 1.0f / 24.0f;
constexpr double kTellEvery = 0.5;

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

glm::vec3 colorOf(float seconds) {
    return seconds < 0.020f   ? glm::vec3(0.35f, 0.85f, 0.65f)
           : seconds < 0.037f ? glm::vec3(1.0f, 0.75f, 0.25f)
                              : glm::vec3(1.0f, 0.35f, 0.3f);
}

} // namespace

void FrameGraph::noteFrame() {
    const double time = now();
    if (m_LastFrame > 0.0)
        m_Seconds[static_cast<std::size_t>(m_Next++ % kFrames)] = static_cast<float>(time - m_LastFrame);
    m_LastFrame = time;
}

void FrameGraph::tell(const VX_GLMainView* view, float textSize) {
    if (m_LastFrame - m_Told < kTellEvery)
        return;
    m_Told = m_LastFrame;
    CVDisplayLinkRef link = view->displayLink();
    const auto lost = view->GetLostRefreshes() + (link ? CVDisplayLinkGetMissedRefreshes(link) : 0);
    char text[96];
    std::snprintf(text, sizeof text, "%.1f frames/s, slowest %.1f ms, lost refreshes: %llu",
                  view->GetFrameRate(), 1000.0f * *std::max_element(m_Seconds.begin(), m_Seconds.end()),
                  static_cast<unsigned long long>(lost));
    m_Figures.set(text, "sans-serif", textSize, {1.0f, 0.98f, 0.94f});
}

void FrameGraph::drawBars(const glm::vec2& from, const glm::vec2& size) const {
    glBegin(GL_QUADS);
    for (int i = 0; i < kFrames; ++i) {
        const float seconds = m_Seconds[static_cast<std::size_t>((m_Next + i) % kFrames)];
        const float left = from.x + size.x * static_cast<float>(i) / kFrames;
        const float top = from.y + size.y * std::min(seconds / kHighest, 1.0f);
        glColor3fv(&colorOf(seconds)[0]);
        glVertex2f(left, from.y);
        glVertex2f(left + size.x / kFrames, from.y);
        glVertex2f(left + size.x / kFrames, top);
        glVertex2f(left, top);
    }
    glEnd();
}

void FrameGraph::draw(const VX_GLMainView* view, int width, int height) {
    const float text = Overlay::textSize(width, height);
    tell(view, 0.8f * text);
    const glm::vec2 size(std::min(26.0f * text, static_cast<float>(width) - 2.0f * text), 5.0f * text);
    const glm::vec2 from(text, static_cast<float>(height) - text - size.y);
    const float below = 0.5f * text + m_Figures.size().y;
    const PixelState state(width, height);
    glColor4f(0.0f, 0.0f, 0.0f, 0.7f);
    glRectf(from.x - 0.5f * text, from.y - below, from.x + size.x + 0.5f * text,
            from.y + size.y + 0.5f * text);
    drawBars(from, size);
    m_Figures.draw({from.x, from.y - below + 0.2f * text}, size.x);
}
