// SPDX-License-Identifier: MIT
// A lit room of boxes and balls, drawn into a texture and brought to the screen through a chain of filters.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr glm::vec3 kRoom{4.4f, 2.3f, 4.2f}, kLamp{0.0f, 4.55f, -0.4f}, kEye{0.0f, 1.9f, 8.6f};

struct Box {
    glm::vec3 center, extent, color;
};
constexpr std::array<Box, 5> kBoxes = {{{{-2.5f, 0.45f, -0.5f}, {0.5f, 0.45f, 0.5f}, {0.14f, 0.5f, 0.5f}},
                                        {{-1.3f, 0.85f, -1.8f}, {0.5f, 0.85f, 0.5f}, {0.9f, 0.78f, 0.6f}},
                                        {{0.0f, 0.3f, -0.3f}, {0.7f, 0.3f, 0.7f}, {0.16f, 0.16f, 0.3f}},
                                        {{1.3f, 1.1f, -1.9f}, {0.5f, 1.1f, 0.5f}, {0.85f, 0.35f, 0.24f}},
                                        {{2.5f, 0.6f, -0.4f}, {0.5f, 0.6f, 0.5f}, {0.85f, 0.6f, 0.2f}}}};
constexpr int kBalls = 8, kSolidBalls = 5;
// The last three glow.
constexpr std::array<glm::vec4, kBalls> kBallColors = {{{0.9f, 0.32f, 0.25f, 0.0f},
                                                        {0.2f, 0.55f, 0.62f, 0.0f},
                                                        {0.92f, 0.88f, 0.82f, 0.0f},
                                                        {0.95f, 0.7f, 0.25f, 0.0f},
                                                        {0.4f, 0.3f, 0.68f, 0.0f},
                                                        {1.0f, 0.42f, 0.2f, 1.0f},
                                                        {0.2f, 0.8f, 0.9f, 1.0f},
                                                        {1.0f, 0.3f, 0.55f, 1.0f}}};

enum Program { kSolid, kAntialias, kBright, kBloom, kShift, kKaleidoscope, kShow };
enum Texture { kScene, kOther, kSmall, kTextures };

class LitRoom : public Scene {
public:
    LitRoom() : Scene("lit_room") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;
    std::vector<std::string> keys() const override;
    void takeKey(unsigned key) override;

private:
    struct Filter {
        unsigned key;
        const char* name;
        Program program;
        bool isOn;
    };

    void moveBalls();
    void look();
    void drawRoom();
    void drawSolid(VX_Program* program, const glm::vec3& center, const glm::vec3& extent,
                   const glm::vec4& color, float mirrors);
    void drawBright();
    void setParameters(VX_Program* program);
    void filter();

    std::array<Filter, 4> m_Filters = {{{'a', "anti-aliasing", kAntialias, true},
                                        {'b', "bloom", kBloom, true},
                                        {'c', "colour shift", kShift, true},
                                        {'k', "kaleidoscope", kKaleidoscope, false}}};
    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box, m_Ball, m_Room;
    std::array<glm::vec4, kBalls> m_Balls;
    VX_GLCamera m_Camera;
};

void LitRoom::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(),
                                        Passes::Rows{{"solid.vert", "solid.frag"},
                                                     {"pass.vert", "antialias.frag"},
                                                     {"pass.vert", "bright.frag"},
                                                     {"pass.vert", "bloom.frag"},
                                                     {"pass.vert", "shift.frag"},
                                                     {"pass.vert", "kaleidoscope.frag"},
                                                     {"pass.vert", "show.frag"}},
                                        kTextures, GL_RGBA16F_ARB);
    VX_GLGeometryCube box;
    box.m_HalfSize = glm::vec3(1.0f);
    box.Generate(VX_GLVertexPN);
    m_Box = std::make_unique<VX_GLMeshDataRenderer>();
    m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    VX_GLGeometryCube::MakeRoom(box.m_Vertex->m_Data, VX_GLVertexPN, glm::vec3(0.0f), glm::vec3(1.0f));
    m_Room = std::make_unique<VX_GLMeshDataRenderer>();
    m_Room->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    VX_GLGeometryUVSphere ball;
    ball.m_Radius = 1.0f;
    ball.m_Divisions = 64;
    ball.Generate(VX_GLVertexPN);
    m_Ball = std::make_unique<VX_GLMeshDataRenderer>();
    m_Ball->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
}

void LitRoom::doStopRender() {
    m_Passes.reset();
    for (auto* mesh : {&m_Box, &m_Ball, &m_Room})
        mesh->reset();
    Scene::doStopRender();
}

std::vector<std::string> LitRoom::keys() const {
    std::string line;
    for (const Filter& filter : m_Filters)
        line += std::string(1, static_cast<char>(filter.key - 'a' + 'A')) + ": " + filter.name +
                (filter.isOn ? " is on   " : " is off   ");
    return {line, "Mouse: how strong, and how many slices"};
}

void LitRoom::takeKey(unsigned key) {
    for (Filter& filter : m_Filters)
        if (filter.key == key)
            filter.isOn = !filter.isOn;
}

void LitRoom::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    moveBalls();
    look();
    m_Passes->Bind(kScene);
    drawRoom();
    filter();
}

// Each ball dances over its box; the glowing ones go around.
void LitRoom::moveBalls() {
    for (int i = 0; i < kBalls; ++i) {
        const float number = static_cast<float>(i), at = 0.9f * time() + 1.9f * number;
        glm::vec4& ball = m_Balls[static_cast<std::size_t>(i)];
        if (i < kSolidBalls) {
            const Box& box = kBoxes[static_cast<std::size_t>(i)];
            const float radius = i == 2 ? 0.75f : 0.42f;
            const float height = box.center.y + box.extent.y + radius;
            ball = {box.center.x, height + 0.55f * std::abs(std::sin(at)), box.center.z, radius};
        } else {
            const float angle = 0.6f * time() + 2.0944f * number;
            ball = {2.6f * std::cos(angle), 1.7f + 1.0f * std::sin(at), 0.3f + 2.4f * std::sin(angle), 0.16f};
        }
    }
}

void LitRoom::look() {
    // What is narrower sees more above and below, and all boxes still.
    const float half = std::max(std::tan(glm::radians(17.5f)), std::tan(glm::radians(22.0f)) / aspect());
    m_Camera.m_Fovy = 2.0f * glm::degrees(std::atan(half));
    m_Camera.m_Aspect = aspect();
    m_Camera.m_EyeAt = kEye + glm::vec3(1.2f * std::sin(0.3f * time()), 0.2f * std::sin(0.4f * time()), 0.0f);
    m_Camera.m_LookAt = {0.0f, 1.55f, 0.0f};
    glMatrixMode(GL_PROJECTION);
    m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
}

void LitRoom::drawSolid(VX_Program* program, const glm::vec3& center, const glm::vec3& extent,
                        const glm::vec4& color, float mirrors) {
    program->set3fv("center", 1, &center[0]);
    program->set3fv("extent", 1, &extent[0]);
    program->set3fv("color", 1, &color[0]);
    program->set1f("glow", color.a);
    program->set1f("mirrors", mirrors);
}

void LitRoom::drawRoom() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    VX_Program* const program = m_Passes->use(kSolid);
    program->set4fv("balls", kBalls, &m_Balls[0][0]);
    program->set4fv("ballColors", kBalls, &kBallColors[0][0]);
    std::array<glm::vec3, kBoxes.size()> centers, extents, colors;
    for (std::size_t i = 0; i < kBoxes.size(); ++i) {
        centers[i] = kBoxes[i].center;
        extents[i] = kBoxes[i].extent;
        colors[i] = kBoxes[i].color;
    }
    program->set3fv("boxes", 5, &centers[0][0]);
    program->set3fv("boxExtents", 5, &extents[0][0]);
    program->set3fv("boxColors", 5, &colors[0][0]);
    program->set3fv("room", 1, &kRoom[0]);
    program->set3fv("lamp", 1, &kLamp[0]);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set1f("isRoom", 0.0f);
    for (const Box& box : kBoxes) {
        drawSolid(program, box.center, box.extent, glm::vec4(box.color, 0.0f), 0.0f);
        m_Box->Draw(GL_QUADS, VX_GLVertexPN, 0, 0);
    }
    for (std::size_t i = 0; i < kBalls; ++i) {
        drawSolid(program, m_Balls[i], glm::vec3(m_Balls[i].w), kBallColors[i], 1.0f);
        m_Ball->Draw(GL_TRIANGLE_STRIP, VX_GLVertexPN, 0, 0);
    }
    drawSolid(program, kLamp, {1.1f, 0.05f, 0.6f}, {1.6f, 1.38f, 1.06f, 1.0f}, 0.0f);
    m_Box->Draw(GL_QUADS, VX_GLVertexPN, 0, 0);
    program->set1f("isRoom", 1.0f);
    drawSolid(program, {0.0f, kRoom.y, 0.0f}, kRoom, glm::vec4(0.0f), 0.0f);
    m_Room->Draw(GL_QUADS, VX_GLVertexPN, 0, 0);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
}

void LitRoom::drawBright() {
    m_Passes->Bind(kSmall);
    glViewport(0, 0, m_Width / 4, m_Height / 4);
    m_Passes->use(kBright);
    m_Passes->drawOver();
}

void LitRoom::setParameters(VX_Program* program) {
    program->set1f("strength", 0.3f + 1.4f * m_Mouse.y);
    program->set1f("slices", std::floor(3.0f + 8.0f * m_Mouse.x));
}

// Each filter that is on reads what the one before it has drawn.
void LitRoom::filter() {
    int from = kScene, to = kOther;
    for (const Filter& filter : m_Filters) {
        if (!filter.isOn)
            continue;
        m_Passes->read(0, from);
        if (filter.program == kBloom)
            drawBright();
        m_Passes->read(1, kSmall);
        VX_Program* const program = m_Passes->use(filter.program);
        setParameters(program);
        program->set1f("turn", filter.program == kShift ? 6.2832f * (m_Mouse.x - 0.5f) : 0.2f * time());
        m_Passes->Bind(to);
        m_Passes->drawOver();
        std::swap(from, to);
    }
    m_Passes->Unbind();
    m_Passes->read(0, from);
    VX_Program* const show = m_Passes->use(kShow);
    m_Passes->drawOver();
    show->deactiveProgram();
}

} // namespace

Scene* makeLitRoom() {
    return new LitRoom;
}
