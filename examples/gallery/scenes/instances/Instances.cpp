// SPDX-License-Identifier: MIT
// 10,000 boxes by one instanced draw, a hundred rows of a hundred.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace instances {

constexpr int kRows = 100, kBoxesInRow = 100, kCorners = 12;
constexpr glm::vec3 kHaze{0.99f, 0.80f, 0.66f}, kZenith{0.20f, 0.34f, 0.58f}, kGround{0.03f, 0.08f, 0.2f};

// The top of a box and two of its sides, as GL_QUADS, and its number in the row. The layout is
// VX_GLVertexPNT's, the format that is drawn in instances.
struct Vertex {
    glm::vec3 corner, side;
    glm::vec2 number;
};

std::vector<Vertex> makeRow() {
    constexpr glm::vec2 kAround[] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    std::vector<Vertex> row;
    for (int box = 0; box < kBoxesInRow; ++box)
        for (const glm::vec3 side : {glm::vec3(1, 0, 0), glm::vec3(0, 1, 0), glm::vec3(0, 0, 1)})
            for (const glm::vec2 at : kAround) {
                const glm::vec3 corner = side.x > 0.0f   ? glm::vec3(1.0f, at)
                                         : side.y > 0.0f ? glm::vec3(at.x, 1.0f, at.y)
                                                         : glm::vec3(at, 1.0f);
                row.push_back({corner, side, {box, 0}});
            }
    return row;
}

class Instances : public Scene {
public:
    Instances() : Scene("instances") {}

    void doStartRender() override;
    void doStopRender() override {
        m_Passes.reset();
        m_Row.reset();
        Scene::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override;
    std::vector<std::string> keys() const override { return {"Mouse: where the stone falls"}; }

private:
    void drawSky();
    void look();
    void drawBoxes();

    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Row;
    VX_GLCamera m_Camera;
};

void Instances::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{{"boxes.vert", "boxes.frag"}});
    std::vector<Vertex> row = makeRow();
    m_Row = std::make_unique<VX_GLMeshDataRenderer>();
    m_Row->makeVBOVertex(GL_STATIC_DRAW, sizeof(Vertex), static_cast<int>(row.size()), row.data());
}

void Instances::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    glClear(GL_DEPTH_BUFFER_BIT);
    drawSky();
    look();
    if (m_Passes->fit(m_Width, m_Height))
        drawBoxes();
}

void Instances::drawSky() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glBegin(GL_QUAD_STRIP);
    for (const auto& [height, color] :
         {std::pair(-1.0f, kGround), {-0.2f, kGround}, {0.2f, kHaze}, {1.2f, kZenith}})
        for (const float x : {-1.0f, 1.0f}) {
            glColor3fv(&color[0]);
            glVertex2f(x, height);
        }
    glEnd();
}

void Instances::look() {
    const float angle = 0.6f + 0.05f * time();
    m_Camera.m_Fovy = 2.0f * glm::degrees(std::atan(std::max(0.3f, 0.34f / aspect())));
    m_Camera.m_Aspect = aspect();
    m_Camera.m_EyeAt = {62.0f * std::sin(angle), 27.0f, 62.0f * std::cos(angle)};
    m_Camera.m_LookAt = {0.0f, -4.0f, 0.0f};
    m_Camera.m_ZNear = 5.0f;
    m_Camera.m_ZFar = 200.0f;
    glMatrixMode(GL_PROJECTION);
    m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
}

void Instances::drawBoxes() {
    glEnable(GL_DEPTH_TEST);
    VX_Program* const program = m_Passes->use(0);
    program->set1f("time", time());
    program->set2f("stone", 60.0f * (m_Mouse.x - 0.5f), 60.0f * (0.5f - m_Mouse.y));
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set3fv("haze", 1, &kHaze[0]);
    m_Row->DrawPNTInstanced(GL_QUADS, 0, kCorners * kBoxesInRow, program->getAttribLocation("corner"),
                            program->getAttribLocation("side"), program->getAttribLocation("number"), kRows);
    program->deactiveProgram();
    glDisable(GL_DEPTH_TEST);
}

} // namespace instances

Scene* makeInstances() {
    return new instances::Instances;
}
