// SPDX-License-Identifier: MIT
// A mesh from a file, with smooth normals, mirrors the cube map that is its surroundings.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/textures/VX_GLTextureCubeMap2D.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>
#include <glm/gtc/matrix_transform.hpp>

#include <cmath>

namespace reflection {

class Reflection : public Scene {
public:
    Reflection() : Scene("reflection") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    enum Program { kSky, kKnot };

    void drawSky();
    void drawKnot();

    std::unique_ptr<Passes> m_Passes;
    VX_GLTextureCubeMap2D m_Surroundings;
    VX_GLMeshDataRenderer m_Knot, m_Sky;
    VX_GLCamera m_Camera;
};

void Reflection::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(),
                                        Passes::Rows{{"sky.vert", "sky.frag"}, {"knot.vert", "knot.frag"}});
    m_Surroundings.LoadFromPath(NSString::stringWithUTF8String(path("sky_0.webp").c_str()), false);
    VX_GLMeshXLoader file;
    if (file.Load(path("knot.x").c_str())) {
        file.Triangulate();
        file.shiftToCenterScale(1.0f, 0);
        m_Knot.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, file.m_Meshes[0]);
    }
    VX_GLGeometryCube sky;
    sky.m_HalfSize = glm::vec3(10.0f);
    sky.Generate(VX_GLVertexP);
    m_Sky.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &sky);
}

void Reflection::doStopRender() {
    m_Passes.reset();
    m_Surroundings.discardData();
    m_Knot.ClearAll();
    m_Sky.ClearAll();
    Scene::doStopRender();
}

void Reflection::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    // The sun stays in the picture.
    const float around = 0.25f + 0.35f * std::sin(0.25f * time());
    m_Camera.m_EyeAt =
        3.4f * glm::vec3(std::sin(-around), -0.1f + 0.04f * std::sin(0.4f * time()), std::cos(around));
    m_Camera.m_LookAt = {0.0f, 0.08f, 0.0f};
    look(m_Camera, {0.31f, 0.32f});
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glBindTexture(GL_TEXTURE_CUBE_MAP, m_Surroundings.Name());
    drawSky();
    drawKnot();
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
}

void Reflection::drawSky() {
    VX_Program* const program = m_Passes->use(kSky);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    m_Sky.Draw(GL_QUADS, VX_GLVertexP, 0, 0);
}

void Reflection::drawKnot() {
    glm::mat4 turn = glm::rotate(glm::mat4(1.0f), 0.4f * time(), glm::vec3(0.0f, 1.0f, 0.0f));
    turn = glm::rotate(turn, 0.9f + 0.3f * std::sin(0.5f * time()), glm::vec3(1.0f, 0.0f, 0.0f));
    turn = glm::rotate(turn, 0.55f * time(), glm::vec3(0.0f, 0.0f, 1.0f));
    const glm::mat3 turned(turn);
    VX_Program* const program = m_Passes->use(kKnot);
    program->set3fv("turned", 3, &turned[0][0]);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set3f("metal", 0.96f, 0.8f, 0.66f);
    glEnable(GL_DEPTH_TEST);
    m_Knot.DrawWithIndex(GL_TRIANGLES, VX_GLVertexPNT);
    glDisable(GL_DEPTH_TEST);
    program->deactiveProgram();
}

} // namespace reflection

Scene* makeReflection() {
    return new reflection::Reflection;
}
