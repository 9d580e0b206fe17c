// SPDX-License-Identifier: MIT
#include <examples/support/Caption.h>

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <utility>

namespace {

constexpr float kTextSize = 15.0f, kMargin = 12.0f, kPadding = 6.0f;

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

} // namespace

Caption::~Caption() {
    VX_GLTagTexture::Release(m_Text);
}

void Caption::set(const std::vector<std::string>& lines) {
    VX_GLTagTexture::Release(std::exchange(m_Text, nullptr));
    if (lines.empty())
        return;
    const auto pool = NSInit(new NSAutoreleasePool);
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    maker->setFontName(NSString::stringWithUTF8String("monospace"));
    m_Text = maker->renderText(NSString::stringWithUTF8String(joined(lines).c_str()), kTextSize,
                               NSColor::colorWithDeviceRed(1.0, 0.8, 0.4, 1.0));
}

void Caption::draw(int width, int height) {
    if (!m_Text)
        return;
    // A long line is drawn smaller rather than cut off.
    const float wide = std::min(static_cast<float>(m_Text->contentSize().width),
                                static_cast<float>(width) - 2.0f * (kMargin + kPadding));
    const float high = wide * m_Text->aspect();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glPushMatrix();
        glLoadIdentity();
    }
    glOrtho(0.0, width, 0.0, height, -1.0, 1.0);
    for (const GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_CULL_FACE})
        glDisable(ability);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(0.0f, 0.0f, 0.0f, 0.75f);
    glRectf(kMargin, kMargin, kMargin + wide + 2.0f * kPadding, kMargin + high + 2.0f * kPadding);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    m_Text->RenderRH_W3({kMargin + kPadding, kMargin + kPadding, 0.0f}, wide);
    for (const GLenum matrix : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glPopMatrix();
    }
    glPopAttrib();
}
