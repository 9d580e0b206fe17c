// SPDX-License-Identifier: MIT
// The word for light in six scripts, while one sun passes behind all of them.
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>
#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace scripts {

struct Script {
    const char *font, *word, *name, *emoji;
    glm::vec3 ground, sun, ink;
};
constexpr glm::vec3 kCream{0.98f, 0.94f, 0.86f};
constexpr std::array<Script, 6> kScripts = {
    {{"DejaVu Serif", "Light", "Latin", "\U0001F31E", {0.91f, 0.36f, 0.27f}, {0.72f, 0.17f, 0.24f}, kCream},
     {"Amiri",
      "نور",
      "العربية",
      "\U0001F319",
      {0.09f, 0.16f, 0.34f},
      {0.16f, 0.44f, 0.58f},
      {0.98f, 0.80f, 0.47f}},
     {"Frank Ruehl CLM",
      "אור",
      "עברית",
      "\U0001F308",
      {0.96f, 0.76f, 0.36f},
      {0.99f, 0.90f, 0.66f},
      {0.42f, 0.12f, 0.24f}},
     {"Lohit Devanagari",
      "प्रकाश",
      "देवनागरी",
      "\U0001F525",
      {0.37f, 0.13f, 0.33f},
      {0.80f, 0.27f, 0.36f},
      {1.0f, 0.86f, 0.66f}},
     {"Loma", "แสง", "ไทย", "\u2728", {0.10f, 0.44f, 0.46f}, {0.15f, 0.60f, 0.50f}, kCream},
     {"MotoyaLCedar",
      "光",
      "日本語",
      "\U0001F338",
      {0.96f, 0.90f, 0.82f},
      {0.86f, 0.24f, 0.24f},
      {0.12f, 0.12f, 0.20f}}}};

// A text with smaller levels of itself, so that it can be anywhere between two pixels.
class Word {
public:
    Word() = default;
    ~Word() { clear(); }
    Word(const Word&) = delete;
    Word& operator=(const Word&) = delete;

    void clear() {
        VX_GLTagTexture::Release(m_Tag);
        m_Tag = nullptr;
    }
    void make(const char* text, const char* font, float size, const glm::vec3& color);
    void draw(const glm::vec2& middle, float widest) const {
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        if (m_Tag)
            m_Tag->RenderRH_W({middle, 0.0f},
                              std::min(static_cast<float>(m_Tag->contentSize().width), widest));
    }

private:
    VX_GLTagTexture* m_Tag = nullptr;
};

// In another font where that one is not installed, which then may lack the script.
void Word::make(const char* text, const char* font, float size, const glm::vec3& color) {
    clear();
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    for (const char* const name : {font, "sans-serif"}) {
        maker->setFontName(NSString::stringWithUTF8String(name));
        m_Tag = maker->renderTextForMipmap(NSString::stringWithUTF8String(text), size,
                                           NSColor::colorWithDeviceRed(color.r, color.g, color.b, 1.0));
        if (m_Tag)
            return;
    }
}

struct Tile {
    glm::vec2 from, size;
};

class Scripts : public Scene {
public:
    Scripts() : Scene("scripts") {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    Tile tile(int number) const;
    void fit();
    void drawTile(int number);

    struct Words {
        Word word, name, emoji;
    };
    std::unique_ptr<VX_GLMultiSampleRenderTarget> m_Target;
    std::array<Words, kScripts.size()> m_Words;
};

void Scripts::doStartRender() {
    openShaders();
    m_Target = std::make_unique<VX_GLMultiSampleRenderTarget>();
    m_Target->AllocateResolveCount(1);
    m_Target->m_GenerateMipmap = false;
    m_Target->m_UseDepth = false;
}

void Scripts::doStopRender() {
    if (m_Target) {
        m_Target->FreeTextures();
        m_Target->AllocateResolveCount(0);
    }
    m_Target.reset();
    for (Words& words : m_Words)
        for (Word* word : {&words.word, &words.name, &words.emoji})
            word->clear();
    Scene::doStopRender();
}

void Scripts::renderPipeline(CGRect* bounds) {
    beginFrame(bounds);
    fit();
    m_Target->Bind(0);
    glEnable(GL_SCISSOR_TEST);
    for (int i = 0; i < static_cast<int>(kScripts.size()); ++i)
        drawTile(i);
    glDisable(GL_SCISSOR_TEST);
    m_Target->Unbind();
    m_Target->Copy(0);
    const PixelState state(m_Width, m_Height);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    m_Target->DrawFullScreenMSAA();
}

// Three beside each other, or in a tall picture two; whole pixels without a gap.
Tile Scripts::tile(int number) const {
    const int columns = aspect() > 1.0f ? 3 : 2, rows = 6 / columns;
    const auto at = [](int part, int parts, int whole) {
        const int pixel = part * whole / parts;
        return static_cast<float>(pixel);
    };
    const int column = number % columns, row = rows - 1 - number / columns;
    const glm::vec2 from(at(column, columns, m_Width), at(row, rows, m_Height));
    const glm::vec2 to(at(column + 1, columns, m_Width), at(row + 1, rows, m_Height));
    return {from, to - from};
}

void Scripts::fit() {
    if (!m_Target->SetResolution(m_Width, m_Height))
        return;
    m_Target->CreateFrameBuffer();
    for (std::size_t i = 0; i < kScripts.size(); ++i) {
        const Script& script = kScripts[i];
        const glm::vec2 size = tile(static_cast<int>(i)).size;
        const float unit = std::min(size.y, 0.8f * size.x);
        m_Words[i].word.make(script.word, script.font, std::round(0.42f * unit), script.ink);
        m_Words[i].name.make(script.name, script.font, std::round(std::max(0.1f * unit, 10.0f)), script.ink);
        m_Words[i].emoji.make(script.emoji, "sans-serif", std::round(0.17f * unit), script.ink);
    }
}

void Scripts::drawTile(int number) {
    const auto index = static_cast<std::size_t>(number);
    const Script& script = kScripts[index];
    const auto [from, size] = tile(number);
    const glm::vec2 middle = from + 0.5f * size, whole(m_Width, m_Height);
    const float unit = std::min(size.y, 0.8f * size.x), t = time(), phase = 1.1f * static_cast<float>(number);
    glScissor(static_cast<int>(from.x), static_cast<int>(from.y), static_cast<int>(size.x),
              static_cast<int>(size.y));
    glClearColor(script.ground.r, script.ground.g, script.ground.b, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    const PixelState state(m_Width, m_Height);
    const glm::vec2 sun = whole * (0.5f + 0.3f * glm::vec2(std::cos(0.35f * t), std::sin(0.5f * t)));
    glColor3fv(&script.sun[0]);
    VX_GLConvenienceDraw::drawSolidCircle(VXVector2{sun.x, sun.y}, 0.62f * std::max(size.x, size.y), 160);
    const glm::vec2 drift(0.03f * std::sin(0.8f * t + phase), 0.03f * std::cos(0.9f * t + phase));
    m_Words[index].word.draw(middle + unit * (drift + glm::vec2(0.0f, 0.06f)), 0.84f * size.x);
    m_Words[index].name.draw({middle.x, from.y + 0.16f * size.y}, 0.7f * size.x);
    const float hop = 0.07f * std::abs(std::sin(1.7f * t + phase));
    m_Words[index].emoji.draw(
        {middle.x + 0.38f * size.x * std::sin(0.45f * t + phase), from.y + size.y - (0.2f - hop) * unit},
        size.x);
}

} // namespace scripts

Scene* makeScripts() {
    return new scripts::Scripts;
}
