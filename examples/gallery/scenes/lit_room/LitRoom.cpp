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

namespace lit_room {

constexpr glm::vec3 kRoom{4.4f, 2.3f, 7.1f}, kLamp{0.0f, 4.55f, 0.7f}, kEye{0.0f, 1.9f, 8.6f};
constexpr glm::vec3 kMiddle{0.0f, kRoom.y, 2.9f};

struct Box {
    glm::vec3 center, extent, color;
};
constexpr std::array<Box, 5> kBoxes = {{{{-2.5f, 0.45f, -0.5f}, {0.5f, 0.45f, 0.5f}, {0.14f, 0.5f, 0.5f}},
                                        {{-1.3f, 0.85f, -1.8f}, {0.5f, 0.85f, 0.5f}, {0.9f, 0.78f, 0.6f}},
                                        {{0.0f, 0.3f, -0.3f}, {0.7f, 0.3f, 0.7f}, {0.16f, 0.16f, 0.3f}},
                                        {{1.3f, 1.1f, -1.9f}, {0.5f, 1.1f, 0.5f}, {0.85f, 0.35f, 0.24f}},
                                        {{2.5f, 0.6f, -0.4f}, {0.5f, 0.6f, 0.5f}, {0.85f, 0.6f, 0.2f}}}};
constexpr int kBalls = 8, kSolidBalls = 5, kGlowing = 3;
// The last three glow.
constexpr std::array<glm::vec3, kBalls> kBallColors = {{{0.9f, 0.32f, 0.25f},
                                                        {0.2f, 0.55f, 0.62f},
                                                        {0.72f, 0.69f, 0.65f},
                                                        {0.95f, 0.7f, 0.25f},
                                                        {0.4f, 0.3f, 0.68f},
                                                        {1.0f, 0.42f, 0.2f},
                                                        {0.2f, 0.8f, 0.9f},
                                                        {1.0f, 0.3f, 0.55f}}};

enum Program { kSolid, kBall, kShadow, kAntialias, kBright, kBlur, kBloom, kShift, kKaleidoscope, kCopy };
enum Texture { kScreen = -1, kScene, kOther, kSmall, kSmaller, kTextures };

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
    VX_Program* useLit(Program number);
    void draw(VX_GLMeshDataRenderer& mesh, VX_Program* program, const glm::vec3& center,
              const glm::vec3& extent, const glm::vec3& color, float up);
    void drawBoxes(VX_Program* program, float up);
    void drawBalls(VX_Program* program, float up);
    void drawShadows();
    void drawRoom();
    void drawBright();
    void drawFilter(const Filter& filter, int from, int to);
    void drawFilters();

    std::array<Filter, 4> m_Filters = {{{'a', "anti-aliasing", kAntialias, true},
                                        {'b', "bloom", kBloom, true},
                                        {'c', "colour shift", kShift, true},
                                        {'k', "kaleidoscope", kKaleidoscope, false}}};
    std::unique_ptr<Passes> m_Passes;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box, m_Ball, m_CoarseBall, m_Room;
    std::array<glm::vec4, kBalls> m_Balls;
    VX_GLCamera m_Camera;
};

void LitRoom::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(),
                                        Passes::Rows{{"solid.vert", "solid.frag"},
                                                     {"solid.vert", "ball.frag"},
                                                     {"pass.vert", "shadow.frag"},
                                                     {"pass.vert", "antialias.frag"},
                                                     {"pass.vert", "bright.frag"},
                                                     {"pass.vert", "blur.frag"},
                                                     {"pass.vert", "bloom.frag"},
                                                     {"pass.vert", "shift.frag"},
                                                     {"pass.vert", "kaleidoscope.frag"},
                                                     {"pass.vert", "copy.frag"}},
                                        kTextures);
    VX_GLGeometryCube box;
    box.m_HalfSize = glm::vec3(1.0f);
    box.Generate(VX_GLVertexPN);
    m_Box = std::make_unique<VX_GLMeshDataRenderer>();
    m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    VX_GLGeometryCube::MakeRoom(box.m_Vertex->m_Data, VX_GLVertexPN, glm::vec3(0.0f), glm::vec3(1.0f));
    m_Room = std::make_unique<VX_GLMeshDataRenderer>();
    m_Room->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    for (const bool isFine : {false, true}) {
        VX_GLGeometryUVSphere ball;
        ball.m_Radius = 1.0f;
        ball.m_Divisions = isFine ? 56 : 24;
        ball.Generate(VX_GLVertexPN);
        (isFine ? m_Ball : m_CoarseBall) = std::make_unique<VX_GLMeshDataRenderer>();
        (isFine ? m_Ball : m_CoarseBall)->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
    }
}

void LitRoom::doStopRender() {
    m_Passes.reset();
    for (auto* mesh : {&m_Box, &m_Ball, &m_CoarseBall, &m_Room})
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
    drawShadows();
    drawRoom();
    drawFilters();
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

VX_Program* LitRoom::useLit(Program number) {
    VX_Program* const program = m_Passes->use(number);
    program->set4fv("balls", number == kShadow ? kSolidBalls : kBalls, &m_Balls[0][0]);
    program->set3fv("glows", kGlowing, &kBallColors[kSolidBalls][0]);
    program->set3fv("room", 1, &kRoom[0]);
    program->set3fv("middle", 1, &kMiddle[0]);
    program->set3fv("lamp", 1, &kLamp[0]);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    return program;
}

// `up` is -1 for what stands mirrored in the floor.
void LitRoom::draw(VX_GLMeshDataRenderer& mesh, VX_Program* program, const glm::vec3& center,
                   const glm::vec3& extent, const glm::vec3& color, float up) {
    const glm::vec3 flip(1.0f, up, 1.0f), place = center * flip, size = extent * flip;
    program->set3fv("center", 1, &place[0]);
    program->set3fv("extent", 1, &size[0]);
    program->set3fv("color", 1, &color[0]);
    const bool isBox = &mesh == m_Box.get() || &mesh == m_Room.get();
    mesh.Draw(isBox ? GL_QUADS : GL_TRIANGLE_STRIP, VX_GLVertexPN, 0, 0);
}

void LitRoom::drawBoxes(VX_Program* program, float up) {
    for (const Box& box : kBoxes)
        draw(*m_Box, program, box.center, box.extent, box.color, up);
}

void LitRoom::drawBalls(VX_Program* program, float up) {
    program->set1f("gloss", 1.0f);
    for (std::size_t i = 0; i < kBalls; ++i) {
        const bool glows = i >= kSolidBalls;
        program->set1f("glow", glows ? 1.0f : 0.0f);
        draw(glows || up < 0.0f ? *m_CoarseBall : *m_Ball, program, m_Balls[i], glm::vec3(m_Balls[i].w),
             kBallColors[i], up);
    }
    program->set1f("glow", 1.0f);
    draw(*m_Box, program, kLamp, {1.1f, 0.05f, 0.6f}, {1.6f, 1.38f, 1.06f}, up);
    program->set1f("glow", 0.0f);
}

// What stands on the floor casts them, into a quarter of the size.
void LitRoom::drawShadows() {
    std::array<glm::vec3, kBoxes.size()> centers, extents;
    for (std::size_t i = 0; i < kBoxes.size(); ++i) {
        centers[i] = kBoxes[i].center;
        extents[i] = kBoxes[i].extent;
    }
    VX_Program* const program = useLit(kShadow);
    program->set3fv("boxes", 5, &centers[0][0]);
    program->set3fv("boxExtents", 5, &extents[0][0]);
    m_Passes->Bind(kSmall);
    glViewport(0, 0, m_Width / 4, m_Height / 4);
    m_Passes->drawOver();
}

// First what is mirrored, then the floor half over it.
void LitRoom::drawRoom() {
    m_Passes->Bind(kScene);
    glClearColor(0.16f, 0.15f, 0.33f, 1.0f); // the far wall
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glFrontFace(GL_CW);
    VX_Program* program = useLit(kBall);
    drawBalls(program, -1.0f);
    program->set1f("gloss", 0.0f);
    drawBoxes(program, -1.0f);
    glFrontFace(GL_CCW);
    glClear(GL_DEPTH_BUFFER_BIT);
    drawBalls(program, 1.0f);
    m_Passes->read(0, kSmall);
    program = useLit(kSolid);
    program->set1f("isRoom", 0.0f);
    drawBoxes(program, 1.0f);
    program->set1f("isRoom", 1.0f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    draw(*m_Room, program, kMiddle, kRoom, {}, 1.0f);
    for (const GLenum ability : {GL_DEPTH_TEST, GL_CULL_FACE, GL_BLEND})
        glDisable(ability);
}

// The bright parts into a quarter of the size, and blurred there.
void LitRoom::drawBright() {
    m_Passes->Bind(kSmall);
    glViewport(0, 0, m_Width / 4, m_Height / 4);
    m_Passes->use(kBright);
    m_Passes->drawOver();
    for (const bool isUpward : {false, true}) {
        m_Passes->read(0, isUpward ? kSmaller : kSmall);
        m_Passes->use(kBlur)->set2f("along", isUpward ? 0.0f : 1.0f, isUpward ? 1.0f : 0.0f);
        m_Passes->Bind(isUpward ? kSmall : kSmaller);
        glViewport(0, 0, m_Width / 4, m_Height / 4);
        m_Passes->drawOver();
    }
}

void LitRoom::drawFilter(const Filter& filter, int from, int to) {
    m_Passes->read(0, from);
    if (filter.program == kBloom)
        drawBright();
    m_Passes->read(0, from);
    m_Passes->read(1, kSmall);
    VX_Program* const program = m_Passes->use(filter.program);
    program->set1f("strength", 0.4f + 1.2f * m_Mouse.y);
    program->set1f("slices", std::floor(3.0f + 8.0f * m_Mouse.x));
    program->set1f("turn", filter.program == kShift ? 6.2832f * (m_Mouse.x - 0.5f) : 0.2f * time());
    if (to == kScreen)
        m_Passes->Unbind();
    else
        m_Passes->Bind(to);
    m_Passes->drawOver();
    program->deactiveProgram();
}

// Each filter that is on reads what the one before it has drawn; the last one draws to the screen.
void LitRoom::drawFilters() {
    int from = kScene, to = kOther;
    const auto isOn = [](const Filter& filter) { return filter.isOn; };
    auto left = std::count_if(m_Filters.begin(), m_Filters.end(), isOn);
    if (left == 0)
        drawFilter({0, "", kCopy, true}, from, kScreen);
    for (const Filter& filter : m_Filters)
        if (filter.isOn) {
            drawFilter(filter, from, --left == 0 ? kScreen : to);
            std::swap(from, to);
        }
}

} // namespace lit_room

Scene* makeLitRoom() {
    return new lit_room::LitRoom;
}
