// SPDX-License-Identifier: MIT
#include <examples/pictures/Sheet.h>

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSColor.h>

#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr float kMargin = 12.0f;
constexpr float kCaptionHeight = 28.0f;
constexpr float kSquare = 8.0f;

VX_GLTagTexture* makeCaption(const std::string& text) {
    const auto maker = NSInit(new VX_GLTagBoardMaker);
    maker->setFontName(NSString::stringWithUTF8String("DejaVu Sans"));
    return maker->renderTextForMipmapLimitedSingleLine(NSString::stringWithUTF8String(text.c_str()), 15.0f,
                                                       NSColor::colorWithDeviceWhite(0.0, 0.0),
                                                       NSColor::colorWithDeviceWhite(0.85, 1.0), 1000.0f);
}

/// How many columns show items of about 4:3 largest.
int columnsFor(int count, float width, float height) {
    const auto side = [&](int columns) {
        const int rows = (count + columns - 1) / columns;
        return std::min(width / float(columns) / 4.0f, height / float(rows) / 3.0f);
    };
    int best = 1;
    for (int columns = 2; columns <= count; ++columns)
        if (side(columns) > side(best))
            best = columns;
    return best;
}

void drawCheckerboard(const Place& place) {
    glDisable(GL_BLEND);
    glBegin(GL_QUADS);
    for (float y = 0; y < place.height; y += kSquare)
        for (float x = 0; x < place.width; x += kSquare) {
            const float gray = std::fmod(x + y, 2 * kSquare) < kSquare ? 0.22f : 0.28f;
            const float right = std::min(x + kSquare, place.width), top = std::min(y + kSquare, place.height);
            glColor3f(gray, gray, gray);
            glVertex2f(place.x + x, place.y + y);
            glVertex2f(place.x + right, place.y + y);
            glVertex2f(place.x + right, place.y + top);
            glVertex2f(place.x + x, place.y + top);
        }
    glEnd();
    glEnable(GL_BLEND);
    glColor3f(1, 1, 1);
}

void drawCaption(VX_GLTagTexture& caption, const Place& below) {
    const float width = std::min(float(caption.contentSize().width), below.width);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    caption.RenderRH_W({below.x + below.width / 2, below.y + below.height / 2, 0.0f}, width);
}

} // namespace

Place Place::fitted(float aspect) const {
    const float w = std::min(width, height / aspect), h = w * aspect;
    return {x + (width - w) / 2, y + (height - h) / 2, w, h};
}

void Sheet::doStartRender() {
    for (const auto& item : m_Items) {
        if (item->prepare())
            m_Shown.push_back({item.get(), makeCaption(item->caption())});
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0); // which texts leave at their own width
    }
    m_HasShown = !m_Shown.empty();
}

void Sheet::doStopRender() {
    for (const Shown& shown : m_Shown)
        VX_GLTagTexture::Release(shown.caption);
    m_Shown.clear();
    m_Items.clear();
    VX_GLRenderpipeline::doStopRender();
}

void Sheet::renderPipeline(CGRect* bounds) {
    const auto width = float(bounds->size.width), height = float(bounds->size.height);
    glViewport(0, 0, int(width), int(height));
    glClearColor(0.09f, 0.1f, 0.12f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, width, 0, height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    if (m_Shown.empty())
        return;

    const int count = int(m_Shown.size()), columns = columnsFor(count, width, height);
    const int rows = (count + columns - 1) / columns;
    const float cellWidth = width / float(columns), cellHeight = height / float(rows);
    for (int i = 0; i < count; ++i) {
        const int column = i % columns, row = i / columns;
        const float x = float(column) * cellWidth, y = height - float(row + 1) * cellHeight;
        const Place room{x + kMargin, y + kCaptionHeight, cellWidth - 2 * kMargin,
                         cellHeight - kCaptionHeight - kMargin};
        const Place place = room.fitted(m_Shown[i].item->aspect());
        drawCheckerboard(place);
        m_Shown[i].item->draw(place);
        drawCaption(*m_Shown[i].caption, {room.x, y, room.width, kCaptionHeight});
    }
}
