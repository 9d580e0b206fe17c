// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTagTexture.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <utility>

namespace {

using Position = glm::tvec3<float>;

/// A quad from (left, bottom) to (right, top), and the texture coordinates of its edges.
struct Quad {
    float left, bottom, right, top, z;
    float uLeft, uRight, vBottom, vTop;

    void vertex(bool atRight, bool atTop) const {
        glTexCoord2f(atRight ? uRight : uLeft, atTop ? vTop : vBottom);
        glVertex3f(atRight ? right : left, atTop ? top : bottom, z);
    }
    /// Clockwise from the lower left corner.
    void draw() const {
        glBegin(GL_QUADS);
        vertex(false, false);
        vertex(false, true);
        vertex(true, true);
        vertex(true, false);
        glEnd();
    }
    /// Counter-clockwise from the upper left corner.
    void drawFromTop() const {
        glBegin(GL_QUADS);
        vertex(false, true);
        vertex(false, false);
        vertex(true, false);
        vertex(true, true);
        glEnd();
    }
};

Quad quadFrom(const Position& corner, float width, float height, const glm::tvec4<float>& texCoords) {
    Quad quad;
    quad.left = corner.x;
    quad.bottom = corner.y;
    quad.right = corner.x + width;
    quad.top = corner.y + height;
    quad.z = corner.z;
    quad.uLeft = texCoords[0];
    quad.uRight = texCoords[0] + texCoords[2];
    quad.vTop = texCoords[1];
    quad.vBottom = texCoords[1] + texCoords[3];
    return quad;
}

Quad quadAround(const Position& center, float width, float height, const glm::tvec4<float>& texCoords) {
    Quad quad = quadFrom(center, width, height, texCoords);
    quad.left = center.x - width / 2.0f;
    quad.bottom = center.y - height / 2.0f;
    quad.right = center.x + width / 2.0f;
    quad.top = center.y + height / 2.0f;
    return quad;
}

// Top at the position: the lower edge is reckoned from it.
Quad quadBelow(const Position& corner, float width, float height, const glm::tvec4<float>& texCoords) {
    Quad quad = quadFrom(corner, width, height, texCoords);
    quad.bottom = corner.y - height;
    quad.top = corner.y;
    return quad;
}

Quad mirrored(Quad quad) {
    std::swap(quad.uLeft, quad.uRight);
    return quad;
}

// The matrix mode stays GL_TEXTURE: hosts set the one they want after a tag.
template <class Draw>
void drawTextured(GLenum target, GLuint texture, const Draw& draw) {
    glActiveTexture(GL_TEXTURE0);
    glEnable(target);
    glBindTexture(target, texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glMatrixMode(GL_TEXTURE);
    glLoadIdentity();
    draw();
    glDisable(target);
}

} // namespace

VX_GLTagTexture::~VX_GLTagTexture() {
    if (m_Texture && vx::mayDelete("VX_GLTagTexture", m_Texture))
        glDeleteTextures(1, &m_Texture);
}

void VX_GLTagTexture::Release() {
    if (--m_RetainCount == 0)
        delete this;
}

void VX_GLTagTexture::Retain(VX_GLTagTexture* tag) {
    if (tag)
        tag->Retain();
}

void VX_GLTagTexture::Release(VX_GLTagTexture* tag) {
    if (tag)
        tag->Release();
}

void VX_GLTagTexture::SetTexture(unsigned int target, CGSize textureSize, CGSize contentSize,
                                 const glm::tvec4<float>& texCoords, float aspect, unsigned int texture) {
    if (m_Texture && vx::mayDelete("VX_GLTagTexture::SetTexture", m_Texture))
        glDeleteTextures(1, &m_Texture);
    Attach(target, textureSize, contentSize, texCoords, aspect, texture);
}

void VX_GLTagTexture::Attach(unsigned int target, CGSize textureSize, CGSize contentSize,
                             const glm::tvec4<float>& texCoords, float aspect, unsigned int texture) {
    m_Target = target;
    m_Texture = texture;
    m_TextureSize = {static_cast<float>(textureSize.width), static_cast<float>(textureSize.height)};
    m_ContentSize = {static_cast<float>(contentSize.width), static_cast<float>(contentSize.height)};
    m_TexCoords = texCoords;
    m_Aspect = aspect;
}

void VX_GLTagTexture::Render(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    drawTextured(m_Target, m_Texture, [&] { DrawQuads(position, size); });
}

void VX_GLTagTexture::RenderRH(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    const Quad quad = mirrored(quadAround(position, size / m_Aspect, size, m_TexCoords));
    drawTextured(m_Target, m_Texture, [&] { quad.draw(); });
}

void VX_GLTagTexture::RenderRH_W(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    const Quad quad = quadAround(position, size, size * m_Aspect, m_TexCoords);
    drawTextured(m_Target, m_Texture, [&] { quad.draw(); });
}

void VX_GLTagTexture::RenderRH_W2(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    const Quad quad = quadBelow(position, size, size * m_Aspect, m_TexCoords);
    drawTextured(m_Target, m_Texture, [&] { quad.draw(); });
}

void VX_GLTagTexture::RenderRH_W3(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    const Quad quad = quadFrom(position, size, size * m_Aspect, m_TexCoords);
    drawTextured(m_Target, m_Texture, [&] { quad.drawFromTop(); });
}

void VX_GLTagTexture::BeginTexture() {
    VX_NEEDS_CONTEXT();
    glEnable(m_Target);
    glBindTexture(m_Target, m_Texture);
}

void VX_GLTagTexture::DrawQuads(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    mirrored(quadFrom(position, size, size * m_Aspect, m_TexCoords)).draw();
}

void VX_GLTagTexture::DrawQuadsRH(const Position& position, float size) {
    VX_NEEDS_CONTEXT();
    quadAround(position, size / m_Aspect, size, m_TexCoords).draw();
}

void VX_GLTagTexture::EndTexture() {
    VX_NEEDS_CONTEXT();
    glDisable(m_Target);
}
