// SPDX-License-Identifier: MIT
// Two textures in half float that draw each other: in each step the one takes what the other holds, larger
// and turned, and moving ribbons are added to it.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <epoxy/gl.h>

#include <array>
#include <cmath>
#include <utility>

namespace feedback {

constexpr double kStepsPerSecond = 60.0;
// A longer gap, after another scene for example, is left out.
constexpr int kMostSteps = 15;
// Each ribbon is drawn so often around the middle.
constexpr int kTurns = 3;

// Where a ribbon goes: how fast in x and y, from where, and its colour.
struct Ribbon {
    glm::vec2 speed, phase;
    glm::vec3 color;
};
constexpr std::array<Ribbon, 5> kRibbons = {{{{0.83f, 1.27f}, {0.0f, 1.0f}, {1.0f, 0.45f, 0.12f}},
                                             {{1.13f, 0.71f}, {2.1f, 0.4f}, {0.95f, 0.16f, 0.34f}},
                                             {{0.61f, 1.03f}, {4.0f, 2.7f}, {0.12f, 0.62f, 0.85f}},
                                             {{1.37f, 0.89f}, {5.2f, 4.4f}, {0.95f, 0.75f, 0.3f}},
                                             {{0.97f, 1.51f}, {1.3f, 5.6f}, {0.45f, 0.25f, 0.9f}}}};

enum Program { kAgain, kShow };

class Feedback : public Scene {
public:
    Feedback() : Scene("feedback") {}

    void doStartRender() override {
        openShaders();
        const Passes::Rows rows{{"pass.vert", "again.frag"}, {"pass.vert", "show.frag"}};
        m_Passes = std::make_unique<Passes>(m_Shaders.get(), rows, 2, GL_RGBA16F_ARB);
    }
    void doStopRender() override {
        m_Passes.reset();
        Scene::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override;
    std::vector<std::string> keys() const override { return {"Mouse: how it turns, and how it grows"}; }

private:
    void step();
    void drawRibbon(const Ribbon& ribbon, float time, float turn);
    glm::vec2 placeOf(const Ribbon& ribbon, float time, float turn) const;

    std::unique_ptr<Passes> m_Passes;
    int m_Steps = 0;
    int m_Now = 0;
};

void Feedback::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    if (!m_Passes->fit(m_Width, m_Height))
        return;
    // As many steps as the time asks for, so that it moves alike on every display.
    const int steps = static_cast<int>(std::lround(time() * kStepsPerSecond));
    if (steps < m_Steps || steps > m_Steps + kMostSteps)
        m_Steps = steps - 1;
    while (m_Steps < steps)
        step();
    m_Passes->read(0, m_Now);
    VX_Program* const show = m_Passes->use(kShow);
    m_Passes->drawOver();
    show->deactiveProgram();
}

void Feedback::step() {
    const float time = static_cast<float>(++m_Steps / kStepsPerSecond);
    m_Passes->read(0, m_Now);
    m_Now = 1 - m_Now;
    VX_Program* const again = m_Passes->use(kAgain);
    again->set1f("time", time);
    again->set1f("pull", 0.004f + 0.014f * m_Mouse.y);
    again->set1f("twist", 0.012f + 0.05f * (m_Mouse.x - 0.5f));
    m_Passes->Bind(m_Now);
    m_Passes->drawOver();
    again->deactiveProgram();
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    for (int turn = 0; turn < kTurns; ++turn)
        for (const Ribbon& ribbon : kRibbons)
            drawRibbon(ribbon, time, 6.2831853f * static_cast<float>(turn) / kTurns);
    glDisable(GL_BLEND);
    m_Passes->Unbind();
}

glm::vec2 Feedback::placeOf(const Ribbon& ribbon, float time, float turn) const {
    const glm::vec2 at = 0.5f * glm::sin(ribbon.speed * time + ribbon.phase) +
                         0.2f * glm::sin(2.3f * glm::vec2(ribbon.speed.y, ribbon.speed.x) * time);
    const float c = std::cos(turn), s = std::sin(turn);
    return {c * at.x - s * at.y, s * at.x + c * at.y};
}

// The way of the last quarter second, brightest along its middle.
void Feedback::drawRibbon(const Ribbon& ribbon, float time, float turn) {
    constexpr int kPieces = 16;
    constexpr float kSeconds = 0.25f;
    const glm::vec2 unit(std::min(1.0f, 1.0f / aspect()), std::min(1.0f, aspect()));
    for (const float side : {-1.0f, 1.0f}) {
        glBegin(GL_TRIANGLE_STRIP);
        for (int i = 0; i <= kPieces; ++i) {
            const float along = static_cast<float>(i) / kPieces, when = time - kSeconds * along;
            const glm::vec2 at = placeOf(ribbon, when, turn);
            const glm::vec2 way = placeOf(ribbon, when + 0.01f, turn) - at;
            const glm::vec2 across = glm::normalize(glm::vec2(-way.y, way.x) + 1e-6f);
            const float width = 0.03f * std::sin(3.14159f * (0.04f + 0.96f * along));
            const glm::vec3 color = ribbon.color * (0.30f * (1.0f - along));
            const glm::vec2 inner = at * unit, outer = (at + side * width * across) * unit;
            glColor3fv(&color[0]);
            glVertex2fv(&inner[0]);
            glColor3f(0.0f, 0.0f, 0.0f);
            glVertex2fv(&outer[0]);
        }
        glEnd();
    }
}

} // namespace feedback

Scene* makeFeedback() {
    return new feedback::Feedback;
}
