// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>

#include <string>
#include <vector>

class VX_GLTagTexture;

/// Text that is rendered anew when it changes, by the toolkit's own means. Needs the context.
class Label {
public:
    Label() = default;
    ~Label() { clear(); }
    Label(const Label&) = delete;
    Label& operator=(const Label&) = delete;

    void clear();
    /// `size` in pixels; an empty text has no size.
    void set(const std::string& text, const char* font, float size, const glm::vec3& color);
    glm::vec2 size() const;
    /// With its lower left there, one unit being one pixel, no wider than told.
    void draw(const glm::vec2& place, float widest) const;

private:
    std::string m_Text;
    float m_Size = 0.0f;
    VX_GLTagTexture* m_Tag = nullptr;
};

/// What stands over the picture: the scene's name and keys at the lower left, and what is wrong with its
/// shaders. It grows with the picture. GL state is as before after each. Needs the context.
class Overlay {
public:
    void clear();
    void drawTitle(const std::string& title, const std::vector<std::string>& keys, int width, int height);
    void drawFailures(const std::vector<std::string>& lines, int width, int height);
    /// Size of small text for a picture of that size.
    static float textSize(int width, int height);

private:
    Label m_Title, m_Keys, m_Failures;
};

/// One unit is one pixel from the lower left, without depth, light and programs, blended by the alpha that
/// colours are multiplied with; all as before at its end.
class PixelState {
public:
    PixelState(int width, int height);
    ~PixelState();
    PixelState(const PixelState&) = delete;
    PixelState& operator=(const PixelState&) = delete;
};
