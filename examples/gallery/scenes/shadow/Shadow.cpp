// SPDX-License-Identifier: MIT
// Stones around a ball, as a sundial: what the sun sees is drawn into a depth texture, by which the picture
// knows its shadows.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>

#include <epoxy/gl.h>
#include <glm/gtc/matrix_transform.hpp>

#include <cmath>

namespace shadow {

constexpr int kStones = 18, kMoons = 5, kSide = 1024;
constexpr glm::vec3 kSand{0.93f, 0.72f, 0.55f}, kHaze{0.98f, 0.74f, 0.58f};
constexpr glm::vec3 kStoneColors[] = {{0.96f, 0.89f, 0.78f}, {0.90f, 0.45f, 0.34f}, {0.25f, 0.50f, 0.54f}};
constexpr glm::vec3 kMoonColors[] = {{0.13f, 0.45f, 0.50f},
                                     {0.86f, 0.30f, 0.34f},
                                     {0.97f, 0.93f, 0.86f},
                                     {0.20f, 0.42f, 0.55f},
                                     {0.62f, 0.34f, 0.50f}};

class Shadow : public Scene {
public:
    Shadow() : Scene("shadow") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    enum Program { kDepth, kStone, kSky };

    void moveSun();
    VX_Program* use(Program number);
    void drawAt(VX_Program* program, const glm::vec3& center, const glm::vec3& extent, const glm::vec3& color,
                float turn = 0.0f, bool isBall = false);
    void drawGround(VX_Program* program);
    void drawStones(VX_Program* program);
    void drawBalls(VX_Program* program);
    void drawDepth();
    void drawSky();

    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLRenderTarget> m_FromSun;
    VX_GLMeshDataRenderer m_Box, m_Ball;
    VX_GLCamera m_Camera;
    glm::vec3 m_Sun{0.0f};
    glm::mat4 m_SunView{1.0f};
};

void Shadow::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(
        m_Shaders.get(),
        Passes::Rows{{"depth.vert", "depth.frag"}, {"stone.vert", "stone.frag"}, {"sky.vert", "sky.frag"}});
    m_FromSun = std::make_unique<VX_GLRenderTarget>();
    m_FromSun->SetResolution(kSide, kSide);
    m_FromSun->CreateFrameBufferDepthTexture2D();
    m_FromSun->AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    VX_GLGeometryCube box;
    box.m_HalfSize = glm::vec3(1.0f);
    box.Generate(VX_GLVertexPN);
    m_Box.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    VX_GLGeometryUVSphere ball;
    ball.m_Radius = 1.0f;
    ball.m_Divisions = 64;
    ball.Generate(VX_GLVertexPN);
    m_Ball.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
}

void Shadow::doStopRender() {
    m_Passes.reset();
    if (m_FromSun)
        glDeleteTextures(1, &m_FromSun->m_DepthBuffer); // a depth texture is left to its user
    m_FromSun.reset();
    m_Box.ClearAll();
    m_Ball.ClearAll();
    Scene::doStopRender();
}

void Shadow::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    moveSun();
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    drawDepth();
    glViewport(0, 0, m_Width, m_Height);
    const float around = 0.35f * std::sin(0.11f * time());
    m_Camera.m_EyeAt = {7.6f * std::sin(around), 4.1f, 7.6f * std::cos(around)};
    m_Camera.m_LookAt = {0.0f, 0.24f, 0.0f};
    m_Camera.m_ZFar = 60.0f;
    look(m_Camera, {0.5f, 0.315f});
    drawSky();
    VX_Program* const program = use(kStone);
    glBindTexture(GL_TEXTURE_2D, m_FromSun->m_DepthBuffer);
    drawGround(program);
    drawStones(program);
    drawBalls(program);
    glBindTexture(GL_TEXTURE_2D, 0);
    program->deactiveProgram();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
}

// It goes around, now higher, now lower.
void Shadow::moveSun() {
    const float around = 0.3f * time() + 2.4f, height = 0.62f + 0.22f * std::sin(0.23f * time());
    m_Sun = glm::normalize(glm::vec3(std::cos(around), height, std::sin(around)));
    m_SunView = glm::ortho(-4.6f, 4.6f, -4.6f, 4.6f, 1.0f, 20.0f) *
                glm::lookAt(10.0f * m_Sun, glm::vec3(0.0f), glm::vec3(0.0f, 1.0f, 0.0f));
}

VX_Program* Shadow::use(Program number) {
    VX_Program* const program = m_Passes->use(number);
    program->setMatrix4fv("fromSun", 1, GL_FALSE, &m_SunView[0][0]);
    program->set3fv("sun", 1, &m_Sun[0]);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set3fv("sky", 1, &kHaze[0]);
    program->set1f("side", kSide);
    program->set1f("ground", 0.0f);
    return program;
}

void Shadow::drawAt(VX_Program* program, const glm::vec3& center, const glm::vec3& extent,
                    const glm::vec3& color, float turn, bool isBall) {
    program->set3fv("center", 1, &center[0]);
    program->set3fv("extent", 1, &extent[0]);
    program->set3fv("color", 1, &color[0]);
    program->set3f("right", std::cos(turn), 0.0f, -std::sin(turn));
    program->set3f("ahead", std::sin(turn), 0.0f, std::cos(turn));
    (isBall ? m_Ball : m_Box).Draw(isBall ? GL_TRIANGLE_STRIP : GL_QUADS, VX_GLVertexPN, 0, 0);
}

void Shadow::drawGround(VX_Program* program) {
    program->set1f("ground", 1.0f);
    drawAt(program, {0.0f, -0.5f, 0.0f}, {40.0f, 0.5f, 40.0f}, kSand);
    program->set1f("ground", 0.0f);
}

// They rise and sink as a wave that goes around.
void Shadow::drawStones(VX_Program* program) {
    for (int i = 0; i < kStones; ++i) {
        const float angle = 6.28319f * static_cast<float>(i) / kStones;
        const float height = 0.55f + 0.33f * std::sin(3.0f * angle - 0.8f * time());
        const glm::vec3 place(3.1f * std::sin(angle), height, 3.1f * std::cos(angle));
        drawAt(program, place, {0.16f, height, 0.3f}, kStoneColors[i % 3], angle);
    }
    for (int i = 0; i < 3; ++i) {
        const float wide = 1.35f - 0.35f * static_cast<float>(i);
        drawAt(program, {0.0f, 0.08f + 0.16f * static_cast<float>(i), 0.0f}, {wide, 0.08f, wide},
               kStoneColors[i == 1 ? 1 : 0],
               0.1f * time() * (i == 1 ? -1.0f : 1.0f) + 0.4f * static_cast<float>(i));
    }
}

void Shadow::drawBalls(VX_Program* program) {
    drawAt(program, {0.0f, 1.25f + 0.12f * std::sin(0.9f * time()), 0.0f}, glm::vec3(0.62f),
           {0.96f, 0.66f, 0.22f}, 0.0f, true);
    for (int i = 0; i < kMoons; ++i) {
        const float angle = -0.55f * time() + 1.25664f * static_cast<float>(i);
        const float height = 0.75f + 0.45f * std::sin(2.0f * angle + static_cast<float>(i));
        drawAt(program, {1.95f * std::sin(angle), height, 1.95f * std::cos(angle)},
               glm::vec3(0.17f + 0.025f * static_cast<float>(i)), kMoonColors[i], 0.0f, true);
    }
}

void Shadow::drawDepth() {
    m_FromSun->Bind(0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    VX_Program* const program = use(kDepth);
    drawStones(program);
    drawBalls(program);
    m_FromSun->Unbind();
}

void Shadow::drawSky() {
    glClear(GL_DEPTH_BUFFER_BIT);
    glDisable(GL_DEPTH_TEST);
    // Where the ground ends for a camera that looks down.
    const glm::vec3 ahead = glm::normalize(m_Camera.m_LookAt - m_Camera.m_EyeAt);
    const float half = std::tan(glm::radians(0.5f * m_Camera.m_Fovy));
    use(kSky)->set1f("horizon", -ahead.y / std::sqrt(1.0f - ahead.y * ahead.y) / half);
    m_Passes->drawOver();
    glEnable(GL_DEPTH_TEST);
}

} // namespace shadow

Scene* makeShadow() {
    return new shadow::Shadow;
}
