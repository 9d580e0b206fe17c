// SPDX-License-Identifier: MIT
// One winding stair seen by three views: the main one, and two in windows of their own, whose contexts share
// its meshes, programs and textures. What they have drawn hangs as pictures in the main view.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/host/VX_GLSharedView.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace views {

struct Eye {
    const char* name;
    glm::vec3 at, up, ground, ink;
    float half; // the tangent of half its angle
};
constexpr Eye kMain{"", {0.0f, 1.9f, 6.4f}, {0.0f, 1.0f, 0.0f}, {0.11f, 0.31f, 0.38f}, {}, 0.29f};
constexpr std::array<Eye, 2> kOthers = {{{"from above",
                                          {0.0f, 7.2f, 0.01f},
                                          {0.0f, 0.0f, -1.0f},
                                          {0.93f, 0.72f, 0.42f},
                                          {0.36f, 0.16f, 0.16f},
                                          0.23f},
                                         {"from below",
                                          {2.6f, -2.9f, 2.6f},
                                          {0.0f, 1.0f, 0.0f},
                                          {0.62f, 0.24f, 0.30f},
                                          {1.0f, 0.94f, 0.86f},
                                          0.36f}}};
constexpr glm::vec3 kCreamy{0.98f, 0.93f, 0.84f}, kCoral{0.95f, 0.42f, 0.33f}, kSunny{0.98f, 0.74f, 0.32f};
constexpr int kSteps = 40, kBalls = 4;
constexpr float kRise = 2.9f / kSteps, kStepTurn = 0.33f;

class Views : public Scene {
public:
    Views() : Scene("views") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;
    void renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) override;

private:
    void draw(const Eye& eye, int width, int height);
    void drawAt(VX_Program* program, const glm::vec3& center, const glm::vec3& extent, const glm::vec3& color,
                float turn, bool isBall = false);
    void drawGround(const glm::vec3& ground);
    void drawStair(VX_Program* program);
    void drawPictures();
    void drawPicture(int number, const glm::vec2& from, float side);

    std::unique_ptr<Passes> m_Passes;
    VX_GLMeshDataRenderer m_Box, m_Ball;
    VX_GLCamera m_Camera;
    std::array<unsigned, kOthers.size()> m_Pictures{};
    std::array<Label, kOthers.size()> m_Names;
};

void Views::doStartRender() {
    openShaders();
    m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{{"stair.vert", "stair.frag"}});
    VX_GLGeometryCube box;
    box.m_HalfSize = glm::vec3(1.0f);
    box.Generate(VX_GLVertexPN);
    m_Box.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    VX_GLGeometryUVSphere ball;
    ball.m_Radius = 1.0f;
    ball.m_Divisions = 40;
    ball.Generate(VX_GLVertexPN);
    m_Ball.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
    glGenTextures(static_cast<int>(m_Pictures.size()), m_Pictures.data());
    for (const unsigned picture : m_Pictures) {
        glBindTexture(GL_TEXTURE_2D, picture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, 1, 1, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
}

void Views::doStopRender() {
    m_Passes.reset();
    m_Box.ClearAll();
    m_Ball.ClearAll();
    for (Label& name : m_Names)
        name.clear();
    glDeleteTextures(static_cast<int>(m_Pictures.size()), m_Pictures.data());
    Scene::doStopRender();
}

// The main view's part is left of the pictures, in a tall picture above them.
void Views::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    glClearColor(kMain.ground.r, kMain.ground.g, kMain.ground.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawGround(kMain.ground);
    const int column = std::min(m_Width, m_Height) / 2;
    const bool isWide = m_Width > m_Height;
    glViewport(0, isWide ? 0 : column, m_Width - (isWide ? column : 0), m_Height - (isWide ? 0 : column));
    draw(kMain, m_Width - (isWide ? column : 0), m_Height - (isWide ? 0 : column));
    glViewport(0, 0, m_Width, m_Height);
    drawPictures();
}

// In the context of that view: the meshes and the program are the main one's, and so is the texture that
// keeps what is drawn here.
void Views::renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) {
    const auto* const number =
        static_cast<NSNumber*>(view->objectForKey(NSString::stringWithUTF8String("number")));
    const int width = static_cast<int>(bounds->size.width), height = static_cast<int>(bounds->size.height);
    if (!number || number->intValue() >= static_cast<int>(kOthers.size()) ||
        !m_Passes->fit(m_Width, m_Height))
        return;
    const auto index = static_cast<std::size_t>(number->intValue());
    const glm::vec3& ground = kOthers[index].ground;
    glViewport(0, 0, width, height);
    glClearColor(ground.r, ground.g, ground.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawGround(ground);
    draw(kOthers[index], width, height);
    glBindTexture(GL_TEXTURE_2D, m_Pictures[index]);
    const int side = std::min(width, height); // the middle of it
    glCopyTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, (width - side) / 2, (height - side) / 2, side, side, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
    glFlush();
}

// Lighter toward the top; below it is what the stair fades into.
void Views::drawGround(const glm::vec3& ground) {
    const glm::vec3 sky = glm::mix(ground, kCreamy, 0.38f);
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glLoadIdentity();
    }
    glBegin(GL_QUADS);
    for (const auto& [x, y] : {std::pair(-1.0f, -1.0f), {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}}) {
        glColor3fv(&(y < 0.0f ? ground : sky)[0]);
        glVertex2f(x, y);
    }
    glEnd();
}

void Views::draw(const Eye& eye, int width, int height) {
    const float shape = static_cast<float>(width) / static_cast<float>(std::max(height, 1));
    const float half = std::max(eye.half, 0.21f / shape);
    const float sway = eye.up.y > 0.0f ? 0.25f * std::sin(0.3f * time()) : 0.0f;
    m_Camera.m_Fovy = 2.0f * glm::degrees(std::atan(half));
    m_Camera.m_Aspect = shape;
    m_Camera.m_EyeAt = {eye.at.x * std::cos(sway) + eye.at.z * std::sin(sway), eye.at.y,
                        eye.at.z * std::cos(sway) - eye.at.x * std::sin(sway)};
    m_Camera.m_Up = eye.up;
    glMatrixMode(GL_PROJECTION);
    m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
    glEnable(GL_DEPTH_TEST);
    VX_Program* const program = m_Passes->use(0);
    program->set3fv("eye", 1, &m_Camera.m_EyeAt[0]);
    program->set3fv("ground", 1, &eye.ground[0]);
    drawStair(program);
    program->deactiveProgram();
    glDisable(GL_DEPTH_TEST);
}

void Views::drawAt(VX_Program* program, const glm::vec3& center, const glm::vec3& extent,
                   const glm::vec3& color, float turn, bool isBall) {
    program->set3fv("center", 1, &center[0]);
    program->set3fv("extent", 1, &extent[0]);
    program->set3fv("color", 1, &color[0]);
    program->set3f("right", std::cos(turn), 0.0f, -std::sin(turn));
    program->set3f("ahead", std::sin(turn), 0.0f, std::cos(turn));
    (isBall ? m_Ball : m_Box).Draw(isBall ? GL_TRIANGLE_STRIP : GL_QUADS, VX_GLVertexPN, 0, 0);
}

// It turns, while balls hop down from step to step.
void Views::drawStair(VX_Program* program) {
    const float turned = 0.2f * time(), foot = -0.5f * kRise * kSteps;
    const auto place = [&](float step, float radius, float up) {
        const float turn = turned + kStepTurn * step;
        return glm::vec3(radius * std::cos(turn), foot + kRise * step + up, -radius * std::sin(turn));
    };
    for (int i = 0; i < kSteps; ++i) {
        const float step = static_cast<float>(i), part = step / kSteps;
        const glm::vec3 color = part < 0.5f ? glm::mix(kCoral, kSunny, 2.0f * part)
                                            : glm::mix(kSunny, kCreamy, 2.0f * part - 1.0f);
        drawAt(program, place(step, 0.62f, 0.0f), {0.48f, 0.032f, 0.17f}, color, turned + kStepTurn * step);
    }
    drawAt(program, {0.0f, 0.0f, 0.0f}, {0.07f, 1.62f, 0.07f}, kCreamy, turned);
    for (int i = 0; i < kBalls; ++i) {
        const float down =
            std::fmod(1.6f * time() + static_cast<float>(i * kSteps) / kBalls, static_cast<float>(kSteps));
        const float step = static_cast<float>(kSteps) - 1.0f - down, hop = down - std::floor(down);
        const float up = 0.17f + kRise * (std::ceil(step) - step) + 0.5f * hop * (1.0f - hop);
        drawAt(program, place(step, 0.8f, up), glm::vec3(0.13f), {0.35f, 0.80f, 0.78f}, 0.0f, true);
    }
}

void Views::drawPictures() {
    const bool isWide = m_Width > m_Height;
    const float shorter = static_cast<float>(std::min(m_Width, m_Height)), side = 0.44f * shorter;
    const float gap = (shorter - 2.0f * side) / 3.0f;
    for (int i = 0; i < static_cast<int>(kOthers.size()); ++i) {
        const float along = gap + static_cast<float>(isWide ? 1 - i : i) * (side + gap);
        const float across = isWide ? static_cast<float>(m_Width) - side - gap : gap;
        drawPicture(i, isWide ? glm::vec2(across, along) : glm::vec2(along, across), side);
    }
}

void Views::drawPicture(int number, const glm::vec2& from, float side) {
    const auto index = static_cast<std::size_t>(number);
    const float edge = std::max(2.0f, std::round(0.02f * side)),
                size = std::max(9.0f, std::round(0.075f * side));
    m_Names[index].set(kOthers[index].name, "sans-serif", size, kOthers[index].ink);
    const PixelState state(m_Width, m_Height);
    const auto draw = [&](float out, float shift) {
        const glm::vec2 low = glm::round(from) - out + glm::vec2(shift, -shift),
                        high = low + side + 2.0f * out;
        glBegin(GL_QUADS);
        for (const auto& [s, t] : {std::pair(0.0f, 0.0f), {1.0f, 0.0f}, {1.0f, 1.0f}, {0.0f, 1.0f}}) {
            glTexCoord2f(s, t);
            glVertex2f(low.x + s * (high.x - low.x), low.y + t * (high.y - low.y));
        }
        glEnd();
    };
    glColor4f(0.0f, 0.0f, 0.0f, 0.3f);
    draw(edge, 1.5f * edge);
    glColor3fv(&kCreamy[0]);
    draw(edge, 0.0f);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, m_Pictures[index]);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    draw(0.0f, 0.0f);
    glBindTexture(GL_TEXTURE_2D, 0);
    glDisable(GL_TEXTURE_2D);
    m_Names[index].draw(from, m_Names[index].size().x);
}

} // namespace views

Scene* makeViews() {
    return new views::Views;
}
