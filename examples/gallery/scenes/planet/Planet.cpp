// SPDX-License-Identifier: MIT
// A compressed texture with its smaller levels, from a DDS file, on a sphere, with a ring around it.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <cmath>

namespace planet {

constexpr glm::vec2 kRing{1.45f, 2.35f};
constexpr glm::vec3 kSun{-0.72f, 0.36f, 0.6f};

class Planet : public Scene {
public:
    Planet() : Scene("planet") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    enum Program { kSpace, kPlanet, kRingOfDust };

    VX_Program* use(Program number);
    void drawSpace();
    void drawPlanet();
    void drawRing();

    std::unique_ptr<Passes> m_Passes;
    VX_GLTexture2D m_Ground;
    VX_GLMeshDataRenderer m_Ball, m_Dust;
    VX_GLCamera m_Camera;
};

void Planet::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{{"space.vert", "space.frag"},
                                                                      {"planet.vert", "planet.frag"},
                                                                      {"ring.vert", "ring.frag"}});
    m_Ground.LoadDDSFromPath(NSString::stringWithUTF8String(path("planet.dds").c_str()));
    VX_GLGeometryUVSphere ball;
    ball.m_Radius = 1.0f;
    ball.m_Divisions = 128;
    ball.Generate(VX_GLVertexPNT);
    m_Ball.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
    std::vector<glm::vec3> dust(static_cast<std::size_t>(
        VX_GLGeometryPrimitive2D::DotDonut(kRing.x, kRing.y, 1, 192, 1.0f, nullptr)));
    VX_GLGeometryPrimitive2D::DotDonut(kRing.x, kRing.y, 1, 192, 1.0f, dust.data());
    dust.front().z = 0.0f;
    m_Dust.makeVBOVertex(GL_STATIC_DRAW, sizeof dust[0], static_cast<int>(dust.size()), dust.data());
}

void Planet::doStopRender() {
    m_Passes.reset();
    m_Ground.discardData();
    m_Ball.ClearAll();
    m_Dust.ClearAll();
    Scene::doStopRender();
}

void Planet::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    m_Camera.m_EyeAt = {0.5f * std::sin(0.13f * time()), 1.9f + 0.35f * std::sin(0.17f * time()), 7.5f};
    look(m_Camera, {0.33f, 0.205f});
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    drawPlanet();
    drawSpace(); // where the planet is not
    drawRing();
    glDisable(GL_DEPTH_TEST);
}

// The planet turns around an axis that leans; the ring lies across it.
VX_Program* Planet::use(Program number) {
    const float turn = number == kPlanet ? -0.12f * time() - 1.0f : 0.0f;
    const glm::vec3 axis = glm::normalize(glm::vec3(-0.34f, 1.0f, 0.12f));
    const glm::vec3 side = glm::normalize(glm::cross(axis, glm::vec3(0.0f, 0.0f, 1.0f)));
    const glm::vec3 front = glm::cross(side, axis);
    const glm::vec3 right = std::cos(turn) * side + std::sin(turn) * front, ahead = glm::cross(right, axis);
    const glm::vec3 sun = glm::normalize(kSun);
    VX_Program* const program = m_Passes->use(number);
    program->set3fv("axis", 1, &axis[0]);
    program->set3fv("right", 1, &right[0]);
    program->set3fv("ahead", 1, &ahead[0]);
    program->set3fv("sun", 1, &sun[0]);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set2f("ring", kRing.x, kRing.y);
    program->set1f("time", time());
    return program;
}

void Planet::drawSpace() {
    const float distance = glm::length(m_Camera.m_EyeAt),
                half = std::tan(glm::radians(0.5f * m_Camera.m_Fovy));
    VX_Program* const program = use(kSpace);
    program->set2f("planet", 0.0f, 0.0f);
    program->set1f("radius", 1.0f / std::sqrt(distance * distance - 1.0f) / half);
    m_Passes->drawOver();
}

void Planet::drawPlanet() {
    use(kPlanet);
    glBindTexture(GL_TEXTURE_2D, m_Ground.Name());
    m_Ball.Draw(GL_TRIANGLE_STRIP, VX_GLVertexPNT, 0, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
}

void Planet::drawRing() {
    VX_Program* const program = use(kRingOfDust);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    m_Dust.Draw(GL_TRIANGLE_STRIP, VX_GLVertexP, 0, 0);
    glDisable(GL_BLEND);
    program->deactiveProgram();
}

} // namespace planet

Scene* makePlanet() {
    return new planet::Planet;
}
