// SPDX-License-Identifier: MIT
#include <examples/gallery/Overlay.h>

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr glm::vec3 kBright{1.0f, 0.98f, 0.94f}, kSoft{0.93f, 0.86f, 0.74f}, kAlarm{1.0f, 0.8f, 0.4f};
constexpr const char* kGalleryKeys =
    "1 to 9, 0, arrows: scenes   F: full-screen   G: graph   H: text   Escape: end";

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text.substr(0, text.find_last_not_of('\n') + 1);
}

// The file without its folder, and the line of the shader below the message.
std::string twoLines(const std::string& failure) {
    const std::size_t folder = failure.substr(0, failure.find(':')).rfind('/');
    std::string text = failure.substr(folder == std::string::npos ? 0 : folder + 1);
    const std::size_t quote = text.find(" | ");
    return quote == std::string::npos ? text : text.replace(quote, 3, "\n    ");
}

void fill(const glm::vec2& from, const glm::vec2& to, float alpha) {
    glColor4f(0.0f, 0.0f, 0.0f, alpha);
    glRectf(from.x, from.y, to.x, to.y);
}

} // namespace

PixelState::PixelState(int width, int height) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glUseProgram(0);
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glPushMatrix();
        glLoadIdentity();
    }
    glOrtho(0.0, width, 0.0, height, -1.0, 1.0);
    glViewport(0, 0, width, height);
    for (const GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_CULL_FACE, GL_FOG, GL_ALPHA_TEST})
        glDisable(ability);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
}

PixelState::~PixelState() {
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glPopMatrix();
    }
    glPopAttrib();
}

void Label::clear() {
    VX_GLTagTexture::Release(std::exchange(m_Tag, nullptr));
    m_Text.clear();
}

void Label::set(const std::string& text, const char* font, float size, const glm::vec3& color) {
    if (text == m_Text && size == m_Size)
        return;
    clear();
    m_Text = text;
    m_Size = size;
    if (text.empty())
        return;
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    maker->setFontName(NSString::stringWithUTF8String(font));
    m_Tag = maker->renderText(NSString::stringWithUTF8String(text.c_str()), size,
                              NSColor::colorWithDeviceRed(color.r, color.g, color.b, 1.0));
}

glm::vec2 Label::size() const {
    return m_Tag ? glm::vec2(m_Tag->contentSize().width, m_Tag->contentSize().height) : glm::vec2(0.0f);
}

void Label::draw(const glm::vec2& place, float widest) const {
    if (!m_Tag)
        return;
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    m_Tag->RenderRH_W3({glm::round(place), 0.0f}, std::min(size().x, widest));
}

float Overlay::textSize(int width, int height) {
    return std::max(10.0f, std::round(0.034f * static_cast<float>(std::min(width, height))));
}

void Overlay::clear() {
    for (Label* label : {&m_Title, &m_Keys, &m_Failures})
        label->clear();
}

void Overlay::drawTitle(const std::string& title, const std::vector<std::string>& keys, int width,
                        int height) {
    const float size = textSize(width, height), widest = static_cast<float>(width) - 2.0f * size;
    m_Title.set(title, "sans-serif", 1.6f * size, kBright);
    std::vector<std::string> lines = keys;
    lines.push_back(kGalleryKeys);
    m_Keys.set(joined(lines), "sans-serif", 0.8f * size, kSoft);
    const float keysHeight = m_Keys.size().y * std::min(1.0f, widest / m_Keys.size().x);
    const float titleHeight = m_Title.size().y * std::min(1.0f, widest / m_Title.size().x);
    const PixelState state(width, height);
    // A shade from below, so that the text can be read over anything.
    const float top = keysHeight + titleHeight + 3.0f * size;
    glBegin(GL_QUADS);
    glColor4f(0.0f, 0.0f, 0.0f, 0.7f);
    glVertex2f(0.0f, 0.0f);
    glVertex2f(static_cast<float>(width), 0.0f);
    glColor4f(0.0f, 0.0f, 0.0f, 0.0f);
    glVertex2f(static_cast<float>(width), top);
    glVertex2f(0.0f, top);
    glEnd();
    m_Keys.draw({size, 0.6f * size}, widest);
    m_Title.draw({size, 0.6f * size + keysHeight}, widest);
}

void Overlay::drawFailures(const std::vector<std::string>& lines, int width, int height) {
    const float size = textSize(width, height), widest = static_cast<float>(width) - 4.0f * size;
    std::vector<std::string> told;
    std::transform(lines.begin(), lines.end(), std::back_inserter(told), twoLines);
    m_Failures.set(joined(told), "monospace", std::max(10.0f, 0.8f * size), kAlarm);
    if (lines.empty())
        return;
    const glm::vec2 area = m_Failures.size() * std::min(1.0f, widest / m_Failures.size().x);
    const glm::vec2 place(2.0f * size, static_cast<float>(height) - 2.0f * size - area.y);
    const PixelState state(width, height);
    fill(place - 0.6f * size, place + area + 0.6f * size, 0.8f);
    m_Failures.draw(place, widest);
}
