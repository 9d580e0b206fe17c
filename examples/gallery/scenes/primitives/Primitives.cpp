// SPDX-License-Identifier: MIT
// Flat shapes by the fixed functions alone, without a shader, as a clockwork on paper.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace primitives {

constexpr glm::vec3 kPaper{0.956f, 0.918f, 0.843f}, kInk{0.11f, 0.13f, 0.19f}, kRed{0.85f, 0.24f, 0.18f};
constexpr glm::vec3 kBlue{0.12f, 0.33f, 0.58f}, kYellow{0.95f, 0.71f, 0.20f}, kSquares{0.86f, 0.80f, 0.70f};
constexpr float kTurn = 6.283185f;

void paint(const glm::vec3& color) {
    glColor3fv(&color[0]);
}

void drawPoints(unsigned mode, const std::vector<glm::vec3>& points) {
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, points.data());
    glDrawArrays(mode, 0, static_cast<int>(points.size()));
    glDisableClientState(GL_VERTEX_ARRAY);
}

// `turn` in whole turns.
void drawRing(float inner, float outer, int arcs, float fill, float turn) {
    const int steps = std::max(2, 180 / arcs);
    const int count = VX_GLGeometryPrimitive2D::DotDonut(inner, outer, arcs, steps, fill, nullptr);
    std::vector<glm::vec3> points(static_cast<std::size_t>(count));
    VX_GLGeometryPrimitive2D::DotDonut(inner, outer, arcs, steps, fill, points.data());
    points.front().z = 0.0f;
    glPushMatrix();
    glRotatef(360.0f * turn, 0.0f, 0.0f, 1.0f);
    drawPoints(GL_TRIANGLE_STRIP, points);
    glPopMatrix();
}

void drawArrow(float from, float length, float head, float shaft, float turn) {
    std::vector<glm::vec3> points(
        static_cast<std::size_t>(VX_GLGeometryPrimitive2D::Arrow1(length, head, shaft, 0.3f, nullptr)));
    VX_GLGeometryPrimitive2D::Arrow1(length, head, shaft, 0.3f, points.data());
    glPushMatrix();
    glRotatef(360.0f * turn, 0.0f, 0.0f, 1.0f);
    glTranslatef(from + 0.5f * length, 0.0f, 0.0f);
    drawPoints(GL_TRIANGLES, points);
    glPopMatrix();
}

void drawDot(const VXVector2& at, float radius) {
    VX_GLConvenienceDraw::drawSolidCircle(at, radius, 72);
}

VXVector2 onCircle(float radius, float turn) {
    return VXVector2{radius * std::cos(kTurn * turn), radius * std::sin(kTurn * turn)};
}

class Primitives : public Scene {
public:
    Primitives() : Scene("primitives") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    void drawPaper();
    void drawDial();
    void drawPlanets();
    void drawBars();

    std::unique_ptr<VX_GLMultiSampleRenderTarget> m_Target;
};

void Primitives::doStartRender() {
    openShaders();
    m_Target = std::make_unique<VX_GLMultiSampleRenderTarget>();
    m_Target->AllocateResolveCount(1);
    m_Target->m_GenerateMipmap = false;
    m_Target->m_UseDepth = false;
}

void Primitives::doStopRender() {
    if (m_Target) {
        m_Target->FreeTextures();
        m_Target->AllocateResolveCount(0);
    }
    m_Target.reset();
    Scene::doStopRender();
}

void Primitives::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (m_Target->SetResolution(m_Width, m_Height))
        m_Target->CreateFrameBuffer();
    m_Target->Bind(0);
    glClearColor(kPaper.r, kPaper.g, kPaper.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    {
        const PixelState state(m_Width, m_Height);
        const float unit = 0.5f * static_cast<float>(std::min(m_Width, m_Height));
        glTranslatef(0.5f * static_cast<float>(m_Width), 0.5f * static_cast<float>(m_Height), 0.0f);
        glScalef(unit, unit, 1.0f);
        glLineWidth(std::max(1.0f, unit / 180.0f));
        drawPaper();
        drawBars();
        drawDial();
        drawPlanets();
    }
    m_Target->Unbind();
    m_Target->Copy(0);
    const PixelState state(m_Width, m_Height);
    glColor3f(1.0f, 1.0f, 1.0f);
    m_Target->DrawFullScreenMSAA();
}

// Squared, with a frame around all of it.
void Primitives::drawPaper() {
    const float right = std::max(aspect(), 1.0f), top = std::max(1.0f / aspect(), 1.0f);
    paint(kSquares);
    for (float x = 0.0f; x < right; x += 0.125f)
        for (const float side : {x, -x})
            VX_GLConvenienceDraw::drawLine(VXVector2{side, -top}, VXVector2{side, top});
    for (float y = 0.0f; y < top; y += 0.125f)
        for (const float side : {y, -y})
            VX_GLConvenienceDraw::drawLine(VXVector2{-right, side}, VXVector2{right, side});
    paint(kInk);
    VX_GLConvenienceDraw::drawStrokedRect(
        CGRectMake(0.045 - right, 0.045 - top, 2.0 * right - 0.09, 2.0 * top - 0.09));
}

// Rings of arcs, each at its own pace, and the hands.
void Primitives::drawDial() {
    const float t = time();
    paint(kBlue);
    drawDot(VXVector2{0.0f, 0.0f}, 0.86f);
    paint(kPaper);
    drawRing(0.795f, 0.82f, 60, 0.35f, 0.004f * t);
    drawRing(0.745f, 0.82f, 12, 0.1f, 0.004f * t);
    paint(kYellow);
    drawRing(0.60f, 0.70f, 5, 0.72f, -0.02f * t);
    paint(kRed);
    drawRing(0.46f, 0.56f, 3, 0.6f, 0.035f * t);
    paint(kPaper);
    drawRing(0.38f, 0.42f, 24, 0.5f, -0.03f * t);
    paint(kInk);
    drawDot(VXVector2{0.0f, 0.0f}, 0.33f);
    paint(kYellow);
    drawRing(0.25f, 0.28f, 8, 0.6f, 0.06f * t);
    paint(kPaper);
    drawArrow(0.0f, 0.72f, 0.12f, 0.03f, 0.18f - 0.05f * t);
    paint(kRed);
    drawArrow(0.0f, 0.5f, 0.15f, 0.045f, 0.62f - 0.02f * t);
    paint(kPaper);
    drawDot(VXVector2{0.0f, 0.0f}, 0.055f);
}

void Primitives::drawPlanets() {
    const glm::vec3 colors[] = {kRed, kYellow, kPaper};
    for (int i = 0; i < 3; ++i) {
        const float number = static_cast<float>(i);
        const VXVector2 at = onCircle(0.86f, 0.02f * time() * (1.0f + 0.5f * number) + 0.3f * number);
        paint(kInk);
        drawDot(at, 0.085f - 0.015f * number);
        paint(colors[i]);
        drawDot(at, 0.065f - 0.015f * number);
    }
}

// Beside the dial, or above and below it: bars that swell one after the other.
void Primitives::drawBars() {
    const bool isWide = aspect() > 1.0f;
    const float end = (isWide ? aspect() : 1.0f / aspect()) - 0.12f, begin = 1.01f;
    const glm::vec3 colors[] = {kRed, kInk, kYellow, kBlue};
    for (const float side : {-1.0f, 1.0f}) {
        glPushMatrix();
        glRotatef((isWide ? 0.0f : 90.0f) + (side < 0.0f ? 180.0f : 0.0f), 0.0f, 0.0f, 1.0f);
        for (int i = 0; i < 13; ++i) {
            const float number = static_cast<float>(i), y = 0.75f - 0.125f * number;
            const float swell = 0.5f + 0.5f * std::sin(0.9f * time() + 0.55f * number * side);
            const float from = std::sqrt(begin * begin - y * y); // along the dial's edge
            paint(colors[(i + (side < 0.0f ? 2 : 0)) % 4]);
            VX_GLConvenienceDraw::drawSolidRect(
                CGRectMake(from, y - 0.03, (end - from) * (0.2f + 0.8f * swell), 0.06), false);
        }
        glPopMatrix();
    }
}

} // namespace primitives

Scene* makePrimitives() {
    return new primitives::Primitives;
}
