// SPDX-License-Identifier: MIT
#include <examples/pictures/Item.h>

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_OpenGL64/textures/tags/VX_GLTestPattern.h>
#include <VX_Platform/AppKit/NSColor.h>

#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <cstdio>

namespace {

constexpr float kTextSize = 64.0f;

/// Draws the tag upright with its bottom left corner at the place's. What a canvas is read back as has its
/// colours multiplied by alpha.
void drawTag(VX_GLTagTexture& tag, const Place& place) {
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    tag.RenderRH_W3({place.x, place.y, 0.0f}, place.width);
}

class TextItem : public Item {
public:
    using Render = VX_GLTagTexture* (*)(VX_GLTagBoardMaker* maker, NSString* text);

    TextItem(const char* operation, Render render, const std::string& text, const char* font)
        : m_Operation(operation), m_Render(render), m_Text(text), m_Font(font) {}
    ~TextItem() override { VX_GLTagTexture::Release(m_Tag); }
    bool prepare() override;
    float aspect() const override { return m_Tag->aspect(); }
    std::string caption() const override { return m_Operation; }
    void draw(const Place& place) override { drawTag(*m_Tag, place); }

private:
    const char* m_Operation;
    Render m_Render;
    std::string m_Text;
    const char* m_Font;
    VX_GLTagTexture* m_Tag = nullptr;
};

bool TextItem::prepare() {
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    if (m_Font)
        maker->setFontName(NSString::stringWithUTF8String(m_Font));
    try {
        m_Tag = m_Render(maker.get(), NSString::stringWithUTF8String(m_Text.c_str()));
    } catch (const std::exception&) { // the one operation that does not return null
        m_Tag = nullptr;
    }
    if (!m_Tag)
        std::fprintf(stderr, "%s: there is no font \"%s\"\n", m_Operation, m_Font);
    return m_Tag;
}

class PatternItem : public Item {
public:
    PatternItem(int width, int height) : m_Pattern(width, height) {}
    bool prepare() override {
        m_Pattern.UpdateMipmapTexture();
        return true;
    }
    float aspect() const override { return m_Pattern.aspect(); }
    std::string caption() const override { return "calibration picture"; }
    void draw(const Place& place) override { drawTag(m_Pattern, place); }

private:
    VX_GLTestPattern m_Pattern;
};

NSColor* white() {
    return NSColor::whiteColor();
}

NSColor* board() {
    return NSColor::colorWithDeviceRed(0.1, 0.3, 0.5, 1.0);
}

} // namespace

void addTextItems(Items& items, const std::string& text, const char* font) {
    const auto add = [&](const char* operation, TextItem::Render render) {
        items.push_back(std::make_unique<TextItem>(operation, render, text, font));
    };
    add("renderText", [](VX_GLTagBoardMaker* maker, NSString* string) {
        return maker->renderText(string, kTextSize, white());
    });
    add("renderTextForSingleLine", [](VX_GLTagBoardMaker* maker, NSString* string) {
        return maker->renderTextForSingleLine(string, kTextSize, board(), white(), 600.0f);
    });
    add("renderTextForMipmapLimited", [](VX_GLTagBoardMaker* maker, NSString* string) {
        return maker->renderTextForMipmapLimited(string, kTextSize, white(), 400.0f);
    });
    add("renderTextForMipmapLimitedSingleLine", [](VX_GLTagBoardMaker* maker, NSString* string) {
        return maker->renderTextForMipmapLimitedSingleLine(string, kTextSize, board(), white(), 400.0f);
    });
    add("renderTextForMipmap", [](VX_GLTagBoardMaker* maker, NSString* string) {
        return maker->renderTextForMipmap(string, kTextSize, white());
    });
}

std::unique_ptr<Item> makePatternItem(int width, int height) {
    return std::make_unique<PatternItem>(width, height);
}
