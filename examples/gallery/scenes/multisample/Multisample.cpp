// SPDX-License-Identifier: MIT
// Lines and thin shapes, drawn once with one sample a pixel and once with several.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace multisample {

constexpr glm::vec3 kNight{0.055f, 0.07f, 0.16f};
constexpr std::array<glm::vec3, 4> kInks = {
    {{0.99f, 0.45f, 0.36f}, {0.98f, 0.78f, 0.35f}, {0.36f, 0.80f, 0.76f}, {0.80f, 0.62f, 0.95f}}};

class Multisample : public Scene {
public:
    Multisample() : Scene("multisample") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    void fitTargets();
    void drawInto(VX_GLRenderTarget& target);
    void drawWheel();
    void drawFan(float radius, float turn);
    void drawRings(float radius);
    void drawCompared();
    float unit() const { return static_cast<float>(std::min(m_Width, m_Height)); }

    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLRenderTarget> m_Plain;
    std::unique_ptr<VX_GLMultiSampleRenderTarget> m_Sampled;
    Label m_Off, m_On;
};

void Multisample::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{{"over.vert", "compare.frag"}});
    m_Plain = std::make_unique<VX_GLRenderTarget>();
    m_Sampled = std::make_unique<VX_GLMultiSampleRenderTarget>();
    m_Sampled->AllocateResolveCount(1);
    m_Sampled->m_GenerateMipmap = false;
    m_Plain->m_UseDepth = m_Sampled->m_UseDepth = false;
}

void Multisample::doStopRender() {
    m_Passes.reset();
    m_Plain.reset();
    if (m_Sampled) {
        m_Sampled->FreeTextures();
        m_Sampled->AllocateResolveCount(0);
    }
    m_Sampled.reset();
    m_Off.clear();
    m_On.clear();
    Scene::doStopRender();
}

void Multisample::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    fitTargets();
    drawInto(*m_Plain);
    drawInto(*m_Sampled);
    m_Sampled->Copy(0);
    glViewport(0, 0, m_Width, m_Height);
    drawCompared();
    const float size = std::max(11.0f, std::round(0.045f * unit()));
    m_Off.set("1 sample", "sans-serif", size, {0.98f, 0.93f, 0.84f});
    m_On.set("4 samples", "sans-serif", size, {0.98f, 0.93f, 0.84f});
    const PixelState state(m_Width, m_Height);
    const float right = static_cast<float>(m_Width) - size - m_On.size().x;
    const float top = static_cast<float>(m_Height) - 0.6f * size - m_On.size().y;
    m_Off.draw({size, top}, m_Off.size().x);
    m_On.draw({right, top}, m_On.size().x);
}

void Multisample::fitTargets() {
    if (m_Plain->SetResolution(m_Width, m_Height)) {
        m_Plain->CreateFrameBuffer();
        m_Plain->AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    }
    if (m_Sampled->SetResolution(m_Width, m_Height))
        m_Sampled->CreateFrameBuffer();
}

void Multisample::drawInto(VX_GLRenderTarget& target) {
    target.Bind(0);
    glClearColor(kNight.r, kNight.g, kNight.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    drawWheel();
    target.Unbind();
}

// The right half mirrors the left one, so that both show the same edges.
void Multisample::drawWheel() {
    const PixelState state(m_Width, m_Height);
    const bool isWide = m_Width > m_Height;
    const float height = static_cast<float>(m_Height);
    glTranslatef(0.5f * static_cast<float>(m_Width), (isWide ? 0.5f : 0.4f) * height, 0.0f);
    glLineWidth(std::max(1.0f, std::round(unit() / 540.0f)));
    glEnable(GL_SCISSOR_TEST);
    for (const int side : {0, 1}) {
        glScissor(side * m_Width / 2, 0, m_Width / 2, m_Height);
        drawRings(0.44f * unit());
        drawFan(0.44f * unit(), 0.05f * time());
        glScalef(-1.0f, 1.0f, 1.0f);
    }
}

// Lines, slivers and hoops of ever smaller width.
void Multisample::drawFan(float radius, float turn) {
    constexpr int kSpokes = 72;
    for (int i = 0; i < kSpokes; ++i) {
        const float angle = 6.28319f * static_cast<float>(i) / kSpokes + turn;
        const glm::vec2 out(std::cos(angle), std::sin(angle)), across(-out.y, out.x);
        const float wave = 0.85f + 0.12f * std::sin(5.0f * angle + time());
        const glm::vec2 from = 0.12f * radius * out, to = wave * radius * out;
        glColor3fv(&kInks[static_cast<std::size_t>(i) % 4][0]);
        const float wide = 0.009f * radius * static_cast<float>(i % 4);
        glBegin(wide > 0.0f ? GL_TRIANGLES : GL_LINES);
        glVertex2fv(&from[0]);
        if (wide > 0.0f)
            glVertex2fv(&(to + wide * across)[0]);
        glVertex2fv(&(to - wide * across)[0]);
        glEnd();
    }
}

void Multisample::drawRings(float radius) {
    for (int i = 0; i < 9; ++i) {
        const float number = static_cast<float>(i);
        const float at = radius * (0.16f + 0.1f * number + 0.02f * std::sin(0.7f * time() + number));
        glColor3fv(&(0.75f * kInks[static_cast<std::size_t>(i) % 4])[0]);
        glBegin(GL_LINE_LOOP);
        for (int k = 0; k < 120; ++k) {
            const float angle = 6.28319f * static_cast<float>(k) / 120.0f;
            glVertex2f(at * std::cos(angle), at * std::sin(angle));
        }
        glEnd();
    }
}

void Multisample::drawCompared() {
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, m_Sampled->m_ResolveTextures[0]);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, m_Plain->m_Textures[0]);
    VX_Program* const program = m_Passes->use(0);
    const bool isWide = m_Width > m_Height;
    const float below = isWide ? 0.0f : 0.1f * static_cast<float>(m_Height);
    const glm::vec2 glass = isWide ? glm::vec2(0.655f, -0.08f) * unit() : glm::vec2(0.26f, 0.72f) * unit();
    const glm::vec2 spot = isWide ? glm::vec2(0.31f, 0.13f) * unit() : glm::vec2(0.3f, 0.22f) * unit();
    program->set2f("glass", glass.x, glass.y - below);
    program->set2f("spot", spot.x, spot.y - below);
    program->set1f("radius", 0.205f * unit());
    program->set1f("zoom", 9.0f * std::sqrt(std::max(unit() / 360.0f, 1.0f)));
    m_Passes->drawOver();
    program->deactiveProgram();
}

} // namespace multisample

Scene* makeMultisample() {
    return new multisample::Multisample;
}
