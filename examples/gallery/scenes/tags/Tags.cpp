// SPDX-License-Identifier: MIT
// One tag at a point in the seven ways that a tag has to be drawn, its size swelling, and once more under a
// matrix that turns.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tags {

using Tag = VX_GLTagTexture;
using Place = glm::vec3;

struct Way {
    const char *name, *words;
    void (*draw)(Tag& tag, const Place& place, float size);
    /// Whether `size` is the height.
    bool isHeight;
    /// Where the tag's middle lies from the point, in halves of its size.
    glm::vec2 middle;
};
// The last one is any of them under another matrix.
constexpr std::array<Way, 8> kWays = {
    {{"Render",
      "from the point, mirrored",
      [](Tag& tag, const Place& place, float size) { tag.Render(place, size); },
      false,
      {1.0f, 1.0f}},
     {"RenderRH",
      "around it, mirrored, by height",
      [](Tag& tag, const Place& place, float size) { tag.RenderRH(place, size); },
      true,
      {0.0f, 0.0f}},
     {"RenderRH_W",
      "around it, by width",
      [](Tag& tag, const Place& place, float size) { tag.RenderRH_W(place, size); },
      false,
      {0.0f, 0.0f}},
     {"RenderRH_W2",
      "to the right and down",
      [](Tag& tag, const Place& place, float size) { tag.RenderRH_W2(place, size); },
      false,
      {1.0f, -1.0f}},
     {"RenderRH_W3",
      "to the right and up",
      [](Tag& tag, const Place& place, float size) { tag.RenderRH_W3(place, size); },
      false,
      {1.0f, 1.0f}},
     {"DrawQuads",
      "many, mirrored",
      [](Tag& tag, const Place& place, float size) {
          tag.BeginTexture();
          for (const float step : {-1.0f, 0.0f, 1.0f})
              tag.DrawQuads({place.x, place.y + 0.27f * step * size, 0.0f}, 0.6f * size);
          tag.EndTexture();
      },
      false,
      {0.6f, 0.6f}},
     {"DrawQuadsRH",
      "many, around, by height",
      [](Tag& tag, const Place& place, float size) {
          tag.BeginTexture();
          for (const float step : {-1.0f, 0.0f, 1.0f})
              tag.DrawQuadsRH({place.x, place.y + 0.85f * step * size, 0.0f}, 0.7f * size);
          tag.EndTexture();
      },
      true,
      {0.0f, 0.0f}},
     {"Any matrix",
      "RenderRH_W, turning",
      [](Tag& tag, const Place& place, float size) { tag.RenderRH_W(place, size); },
      false,
      {0.0f, 0.0f}}}};

constexpr glm::vec3 kText{0.98f, 0.95f, 0.88f}, kFaint{0.75f, 0.79f, 0.93f}, kPoint{1.0f, 0.84f, 0.36f};
constexpr std::array<glm::vec3, 2> kGrounds = {{{0.115f, 0.125f, 0.30f}, {0.15f, 0.165f, 0.375f}}};
constexpr glm::vec3 kGuide{0.27f, 0.31f, 0.56f};
constexpr std::array<glm::vec3, 4> kTagColors = {
    {{0.91f, 0.36f, 0.29f}, {0.16f, 0.55f, 0.58f}, {0.83f, 0.52f, 0.16f}, {0.52f, 0.35f, 0.70f}}};

class Tags : public Scene {
public:
    Tags() : Scene("tags") {}

    void doStartRender() override { openShaders(); }
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    void makeTags(float size);
    void drawCell(int number);
    void drawTag(int number, const glm::vec2& middle, const glm::vec2& cell);
    void drawPoint(const glm::vec2& at, float unit);

    std::array<Tag*, kTagColors.size()> m_Tags{};
    std::array<Label, kWays.size()> m_Names, m_Words;
    int m_MadeFor = 0;
};

void Tags::doStopRender() {
    for (Tag*& tag : m_Tags)
        Tag::Release(std::exchange(tag, nullptr));
    for (auto* labels : {&m_Names, &m_Words})
        for (Label& label : *labels)
            label.clear();
    Scene::doStopRender();
}

void Tags::makeTags(float size) {
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    maker->setFontName(NSString::stringWithUTF8String("sans-serif"));
    for (std::size_t i = 0; i < m_Tags.size(); ++i) {
        const glm::vec3& color = kTagColors[i];
        Tag::Release(m_Tags[i]);
        m_Tags[i] = maker->renderTextForMipmapLimitedSingleLine(
            NSString::stringWithUTF8String("  Tag  "), size,
            NSColor::colorWithDeviceRed(color.r, color.g, color.b, 1.0),
            NSColor::colorWithDeviceRed(kText.r, kText.g, kText.b, 1.0), 0.0f);
    }
}

void Tags::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    const int unit = std::min(m_Width, m_Height);
    if (unit != std::exchange(m_MadeFor, unit))
        makeTags(std::round(0.2f * static_cast<float>(unit)));
    glClear(GL_COLOR_BUFFER_BIT);
    for (int i = 0; i < static_cast<int>(kWays.size()); ++i)
        drawCell(i);
}

// Four beside each other, or in a tall picture two.
void Tags::drawCell(int number) {
    const int columns = aspect() > 1.0f ? 4 : 2, rows = 8 / columns;
    const int column = number % columns, row = number / columns;
    const glm::vec2 cell(static_cast<float>(m_Width) / static_cast<float>(columns),
                         static_cast<float>(m_Height) / static_cast<float>(rows));
    const glm::vec2 from = cell * glm::vec2(column, rows - 1 - row);
    const auto index = static_cast<std::size_t>(number);
    const PixelState state(m_Width, m_Height);
    glColor3fv(&kGrounds[static_cast<std::size_t>((column + row) % 2)][0]);
    glRectf(from.x, from.y, from.x + cell.x, from.y + cell.y);
    drawTag(number, from + cell * glm::vec2(0.5f, 0.62f), cell);
    const float size = std::max(9.0f, std::round(0.1f * std::min(cell.x, cell.y)));
    m_Names[index].set(kWays[index].name, "sans-serif", size, kText);
    m_Words[index].set(kWays[index].words, "sans-serif", std::max(9.0f, std::round(0.66f * size)), kFaint);
    const auto draw = [&](const Label& label, float up) {
        const float widest = std::min(label.size().x, cell.x - 0.5f * size);
        label.draw({from.x + 0.5f * (cell.x - widest), from.y + up}, widest);
    };
    draw(m_Words[index], 0.35f * size);
    draw(m_Names[index], 0.35f * size + m_Words[index].size().y * 0.8f);
}

void Tags::drawTag(int number, const glm::vec2& middle, const glm::vec2& cell) {
    const Way& way = kWays[static_cast<std::size_t>(number)];
    Tag* const tag = m_Tags[static_cast<std::size_t>(number) % m_Tags.size()];
    if (!tag)
        return;
    const float swell = 0.85f + 0.15f * std::sin(1.4f * time() + 0.8f * static_cast<float>(number));
    const float width = swell * std::min(0.76f * cell.x, 0.42f * cell.y / tag->aspect());
    const glm::vec2 extent(width, width * tag->aspect());
    const glm::vec2 point = middle - 0.5f * way.middle * extent;
    // Lines through the point, all over the cell.
    glColor3fv(&kGuide[0]);
    glLineWidth(std::max(1.0f, std::round(0.006f * std::min(cell.x, cell.y))));
    const glm::vec2 low = middle - cell * glm::vec2(0.5f, 0.28f), high = low + cell * glm::vec2(1.0f, 0.66f);
    VX_GLConvenienceDraw::drawLine(VXVector2{low.x, point.y}, VXVector2{high.x, point.y});
    VX_GLConvenienceDraw::drawLine(VXVector2{point.x, low.y}, VXVector2{point.x, high.y});
    glPushMatrix();
    glTranslatef(point.x, point.y, 0.0f);
    if (number == static_cast<int>(kWays.size()) - 1)
        glRotatef(25.0f * std::sin(0.9f * time()), 0.0f, 0.0f, 1.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    way.draw(*tag, {0.0f, 0.0f, 0.0f}, way.isHeight ? extent.y : extent.x);
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    drawPoint(point, 0.03f * std::min(cell.x, cell.y));
}

// A cross in a ring, and dark around it, so that it can be seen on the tag too.
void Tags::drawPoint(const glm::vec2& at, float unit) {
    const VXVector2 place = VXVector2{at.x, at.y};
    glColor4f(0.04f, 0.06f, 0.14f, 1.0f);
    VX_GLConvenienceDraw::drawSolidCircle(place, 0.8f * unit, 40);
    glColor3fv(&kPoint[0]);
    VX_GLConvenienceDraw::drawSolidCircle(place, 0.5f * unit, 40);
    glLineWidth(std::max(1.0f, std::round(0.25f * unit)));
    for (const glm::vec2& way : {glm::vec2(1.0f, 0.0f), glm::vec2(0.0f, 1.0f)})
        VX_GLConvenienceDraw::drawLine(VXVector2{at.x - 2.6f * unit * way.x, at.y - 2.6f * unit * way.y},
                                       VXVector2{at.x + 2.6f * unit * way.x, at.y + 2.6f * unit * way.y});
}

} // namespace tags

Scene* makeTags() {
    return new tags::Tags;
}
