// SPDX-License-Identifier: MIT
// Points that a geometry shader, in the dialect of GL_EXT_geometry_shader4, makes into streaks of light.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/VX_GLVertex.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace particles {

constexpr int kParticles = 6500, kNumbersOfEach = 6;

class Particles : public Scene {
public:
    Particles() : Scene("particles") {}

    void doStartRender() override;
    void doStopRender() override {
        m_Passes.reset();
        m_Points.reset();
        Scene::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override;
    std::vector<std::string> keys() const override { return {"Mouse: the wind"}; }

private:
    void drawSky();
    void look();
    void drawParticles();

    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Points;
    VX_GLCamera m_Camera;
};

void Particles::doStartRender() {
    openShaders();
    const Passes::GeometryRows rows{
        {"spark.vert", "spark.frag", "spark.geom", GL_POINTS, GL_TRIANGLE_STRIP, 4}};
    m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{}, 0, 0u, rows);
    std::mt19937 random(7);
    std::vector<float> numbers(kParticles * kNumbersOfEach);
    for (float& number : numbers)
        number = static_cast<float>(random()) / 4294967296.0f;
    m_Points = std::make_unique<VX_GLMeshDataRenderer>();
    m_Points->makeVBOVertex(GL_STATIC_DRAW, kNumbersOfEach * sizeof(float), kParticles, numbers.data());
}

void Particles::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    drawSky();
    look();
    if (m_Passes->fit(m_Width, m_Height))
        drawParticles();
}

// Dark plum, and night at the edges.
void Particles::drawSky() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glBegin(GL_TRIANGLE_FAN);
    glColor3f(0.17f, 0.07f, 0.20f);
    glVertex2f(0.0f, -0.1f);
    for (int i = 0; i <= 32; ++i) {
        const float angle = 6.2831853f * static_cast<float>(i) / 32.0f;
        glColor3f(0.02f, 0.02f, 0.07f);
        glVertex2f(1.5f * std::cos(angle), 1.5f * std::sin(angle));
    }
    glEnd();
}

void Particles::look() {
    m_Camera.m_Aspect = aspect();
    m_Camera.m_Fovy = 2.0f * glm::degrees(std::atan(std::max(0.25f, 0.37f / aspect())));
    m_Camera.m_EyeAt = {1.2f * std::sin(0.2f * time()), 2.3f, 6.2f};
    m_Camera.m_LookAt = {0.0f, 0.22f, 0.0f};
    glMatrixMode(GL_PROJECTION);
    m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
}

void Particles::drawParticles() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    VX_Program* const program = m_Passes->use(0);
    program->set1f("time", time());
    program->set1f("aspect", aspect());
    program->set2f("wind", 1.2f * (m_Mouse.x - 0.5f), 1.2f * (0.5f - m_Mouse.y));
    m_Points->Draw(GL_POINTS, VX_GLVertexPN, 0, 0);
    program->deactiveProgram();
    glDisable(GL_BLEND);
}

} // namespace particles

Scene* makeParticles() {
    return new particles::Particles;
}
