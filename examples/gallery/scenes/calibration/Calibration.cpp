// SPDX-License-Identifier: MIT
// The calibration picture in the size of the picture, with marks that travel over it: what tears, stutters or
// is scaled shows at once. F, or --display NAME, puts it onto a whole display.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace calibration {

constexpr glm::vec3 kRunning{1.0f, 0.42f, 0.24f}, kDial{0.32f, 0.85f, 0.80f};

class Calibration : public Scene {
public:
    Calibration() : Scene("calibration") {}

    void doStartRender() override { openShaders(); }
    void doStopRender() override {
        VX_GLTagTexture::Release(m_Pattern);
        m_Pattern = nullptr;
        Scene::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override;
    std::vector<std::string> keys() const override { return {"F: over the whole display, and back"}; }

private:
    void fit();
    void drawRunners(float width, float height);
    void drawDial(float radius);

    VX_GLTestPattern* m_Pattern = nullptr;
};

void Calibration::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    fit();
    const float width = static_cast<float>(m_Width), height = static_cast<float>(m_Height);
    const PixelState state(m_Width, m_Height);
    glColor3f(1.0f, 1.0f, 1.0f);
    m_Pattern->RenderRH_W3({0.0f, 0.0f, 0.0f}, width);
    glMatrixMode(GL_MODELVIEW);
    drawRunners(width, height);
    glTranslatef(0.5f * width, 0.5f * height, 0.0f);
    drawDial(0.125f * width);
}

void Calibration::fit() {
    if (!m_Pattern)
        m_Pattern = new VX_GLTestPattern(m_Width, m_Height);
    else if (m_Pattern->contentSize().width != m_Width || m_Pattern->contentSize().height != m_Height)
        m_Pattern->Resize(m_Width, m_Height);
    else
        return;
    m_Pattern->UpdateRectangleTexture();
}

// A column and a row, some pixels in each frame, never half of one.
void Calibration::drawRunners(float width, float height) {
    const float wide = std::max(2.0f, std::round(std::min(width, height) / 120.0f));
    const auto place = [this](float pace, float whole) {
        const float part = std::fmod(pace * time(), 2.0f);
        return std::floor((part < 1.0f ? part : 2.0f - part) * whole);
    };
    const float x = place(0.25f, width - wide), y = place(0.4f, height - wide);
    glColor3fv(&kRunning[0]);
    glRectf(x, 0.0f, x + wide, height);
    glRectf(0.0f, y, width, y + wide);
}

// A turn a second, in sixty marks.
void Calibration::drawDial(float radius) {
    constexpr int kMarks = 60;
    const int steps = 2, count = VX_GLGeometryPrimitive2D::DotDonut(0.0f, 0.0f, kMarks, steps, 0.6f, nullptr);
    std::vector<glm::vec3> marks(static_cast<std::size_t>(count));
    VX_GLGeometryPrimitive2D::DotDonut(0.86f * radius, 0.95f * radius, kMarks, steps, 0.6f, marks.data());
    marks.front().z = 0.0f;
    const int lit = static_cast<int>(std::floor(std::fmod(time(), 1.0f) * kMarks + 0.5f)) * count / kMarks;
    glRotatef(90.0f, 0.0f, 0.0f, 1.0f);
    glScalef(1.0f, -1.0f, 1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, marks.data());
    glColor3f(0.36f, 0.36f, 0.38f);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, count);
    glColor3fv(&kDial[0]);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, lit);
    glDisableClientState(GL_VERTEX_ARRAY);
    const float turn = 6.283185f * std::fmod(time() / 4.0f, 1.0f);
    const VXVector2 end = VXVector2{0.72f * radius * std::cos(turn), 0.72f * radius * std::sin(turn)};
    glLineWidth(std::max(2.0f, radius / 30.0f));
    glColor3fv(&kRunning[0]);
    VX_GLConvenienceDraw::drawLine(VXVector2{0.0f, 0.0f}, end);
    VX_GLConvenienceDraw::drawSolidCircle(VXVector2{0.0f, 0.0f}, 0.08f * radius, 40);
    VX_GLConvenienceDraw::drawSolidCircle(end, 0.05f * radius, 40);
}

} // namespace calibration

Scene* makeCalibration() {
    return new calibration::Calibration;
}
