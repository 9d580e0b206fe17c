// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/VX_Export.h>

/// A texture that knows how to draw the picture in it as one quad at a point, in fixed-function GL; counted,
/// and ended by `Release`.
///
/// The picture may fill a part of the texture. Its pixels are as they were uploaded: those of the library's
/// own tags have their colours multiplied by alpha, so blend them with glBlendFunc(GL_ONE,
/// GL_ONE_MINUS_SRC_ALPHA). They are multiplied by the current colour as well.
///
/// One thread at a time; the count is a plain integer. What draws, and the last `Release`, need a context of
/// the texture's share group current on the calling thread.
class VX_EXPORT VX_GLTagTexture {
public:
    /// Without a texture, with a count of 1. Makes no GL call.
    VX_GLTagTexture() = default;
    /// Deletes the texture, if there is one; without a context it stays, and the log says so. GL:
    /// glDeleteTextures.
    virtual ~VX_GLTagTexture();
    VX_GLTagTexture(const VX_GLTagTexture&) = delete;
    VX_GLTagTexture& operator=(const VX_GLTagTexture&) = delete;

    /// Adds one to the count.
    void Retain() { ++m_RetainCount; }
    /// Takes one from the count and ends the object when none is left.
    void Release();
    /// The same for a tag that may be null, which is left alone: some operations return null for a tag.
    static void Retain(VX_GLTagTexture* tag);
    /// As the one without an argument; a null tag is left alone.
    static void Release(VX_GLTagTexture* tag);

    /// Deletes the texture held, also when `texture` is that very name, and takes the new one over. `target`
    /// is GL_TEXTURE_RECTANGLE_EXT or GL_TEXTURE_2D; the sizes, of the texture and of the picture in it, are
    /// in pixels; `texCoords` are u and v of one corner of the picture and its extent, in pixels for a
    /// rectangle texture and from 0 to 1 for a 2D texture; `aspect` is the picture's height over its width.
    /// GL: glDeleteTextures.
    void SetTexture(unsigned int target, CGSize textureSize, CGSize contentSize,
                    const glm::tvec4<float>& texCoords, float aspect, unsigned int texture);
    /// The same without deleting: a texture held before is left to whoever else knows its name. Makes no GL
    /// call.
    void Attach(unsigned int target, CGSize textureSize, CGSize contentSize,
                const glm::tvec4<float>& texCoords, float aspect, unsigned int texture);

    // `Render` and its kin draw the picture on unit 0 under the caller's matrices and blending, all its
    // corners with the position's z. `size` is the quad's width, and its height follows from the aspect,
    // unless told otherwise. "Mirrored" means that the picture's left side lies toward +x; its top lies
    // toward +y always.
    //
    // Left changed: unit 0 is active, the texture bound, the target disabled, the texture environment's mode
    // GL_MODULATE, the texture matrix the identity and the matrix mode GL_TEXTURE. GL: glActiveTexture,
    // glEnable, glBindTexture, glTexEnvi, glMatrixMode, glLoadIdentity, glBegin, glTexCoord2f, glVertex3f,
    // glEnd, glDisable.

    /// From the position toward +x and +y, mirrored.
    void Render(const glm::tvec3<float>& position, float size);
    /// Around the position, mirrored; `size` is the height.
    void RenderRH(const glm::tvec3<float>& position, float size);
    /// Around the position.
    void RenderRH_W(const glm::tvec3<float>& position, float size);
    /// From the position, its top left corner, toward +x and -y.
    void RenderRH_W2(const glm::tvec3<float>& position, float size);
    /// From the position, its bottom left corner, toward +x and +y.
    void RenderRH_W3(const glm::tvec3<float>& position, float size);

    /// Makes ready for any number of `DrawQuads` and `DrawQuadsRH`, on the active unit. The texture stays
    /// bound. GL: glEnable, glBindTexture.
    void BeginTexture();
    /// As `Render`, the quad alone. GL: glBegin, glTexCoord2f, glVertex3f, glEnd.
    void DrawQuads(const glm::tvec3<float>& position, float size);
    /// Around the position, not mirrored (unlike `RenderRH`); `size` is the height.
    void DrawQuadsRH(const glm::tvec3<float>& position, float size);
    /// GL: glDisable.
    void EndTexture();

    /// What `SetTexture` and `Attach` were given: target, name (0 when there is no texture; it stays the
    /// object's own), sizes in pixels, corner and extent in the texture, height over width.
    unsigned int target() const { return m_Target; }
    unsigned int texture() const { return m_Texture; }
    CGSize textureSize() const { return {m_TextureSize.x, m_TextureSize.y}; }
    CGSize contentSize() const { return {m_ContentSize.x, m_ContentSize.y}; }
    glm::tvec4<float> texCoords() const { return m_TexCoords; }
    float aspect() const { return m_Aspect; }
    /// References to the object.
    int retainCount() const { return m_RetainCount; }

protected:
    /// What the questions of these names tell.
    unsigned int m_Target = 0;
    unsigned int m_Texture = 0;
    glm::tvec2<float> m_TextureSize{0.0f, 0.0f};
    glm::tvec2<float> m_ContentSize{0.0f, 0.0f};
    /// u, v and their extent.
    glm::tvec4<float> m_TexCoords{0.0f, 0.0f, 0.0f, 0.0f};
    /// Height over width.
    float m_Aspect = 0.0f;
    /// References to the object.
    int m_RetainCount = 1;
};
