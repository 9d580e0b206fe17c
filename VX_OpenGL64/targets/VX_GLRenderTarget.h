// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <vector>

/// Off-screen drawing surface: one framebuffer, colour textures attached in order, and an optional depth
/// attachment. Colour textures are rectangle textures, addressed in pixels, or 2D textures, addressed from 0
/// to 1, as the `Add` operation chosen for each says.
///
/// Order of use: `SetResolution`, `CreateFrameBuffer` or `CreateFrameBufferDepthTexture2D`, one `Add` for
/// each colour texture; each frame `Bind` or `Binds`, drawing, `Unbind`; then `DrawFullScreen` or
/// `DrawFullScreen2D`. A change of size drops framebuffer and textures, and all of them have to be made anew.
///
/// Everything but the constructor needs a context with GL_EXT_framebuffer_object (and
/// GL_ARB_texture_rectangle for rectangle textures) current on the calling thread, the destructor included:
/// the one under which the framebuffer was made. Under another GL deletes what has the same name there.
/// All GL objects named in the fields belong to the target, the texture names it hands out too.
class VX_EXPORT VX_GLRenderTarget {
public:
    /// Without size or GL objects; makes no GL call.
    VX_GLRenderTarget() = default;
    /// As `FreeTextures`.
    virtual ~VX_GLRenderTarget();
    VX_GLRenderTarget(const VX_GLRenderTarget&) = delete;
    VX_GLRenderTarget& operator=(const VX_GLRenderTarget&) = delete;

    /// Deletes colour textures, depth attachment and framebuffer; the size stays. A depth texture of
    /// `CreateFrameBufferDepthTexture2D` is taken for a renderbuffer and lives on: who wants it gone deletes
    /// the texture `m_DepthBuffer` first. Without a context all of it stays, and the log says so. GL:
    /// glDeleteTextures for each name, glDeleteRenderbuffersEXT (for a depth texture only where
    /// glIsRenderbufferEXT denies the name), glDeleteFramebuffersEXT.
    virtual void FreeTextures();

    /// Makes the framebuffer anew, with a depth renderbuffer if `m_UseDepth`, after freeing everything.
    /// Returns the framebuffer status of the depth attachment alone, or GL_FRAMEBUFFER_COMPLETE_EXT without
    /// asking when there is none; nothing is reported. Framebuffer 0 is bound afterwards, and the
    /// renderbuffer stays bound. GL: glGenFramebuffersEXT, glBindFramebufferEXT, glGenRenderbuffersEXT,
    /// glBindRenderbufferEXT, glRenderbufferStorageEXT, glFramebufferRenderbufferEXT,
    /// glCheckFramebufferStatusEXT.
    virtual unsigned int CreateFrameBuffer();

    /// The same with a 24 bit depth texture (GL_TEXTURE_2D, nearest, read as intensity) in the renderbuffer's
    /// place; it stays bound to GL_TEXTURE_2D of the active unit.
    /// GL: glGenTextures, glBindTexture, glTexParameterf, glTexParameteri, glTexImage2D,
    /// glFramebufferTexture2DEXT beside those above.
    virtual unsigned int CreateFrameBufferDepthTexture2D();

    /// Size in pixels. When it differs from the present one: frees everything, stores it and returns true;
    /// the framebuffer must then be created. Otherwise returns false and does nothing.
    bool SetResolution(int width, int height);

    /// Adds a rectangle texture at the next colour attachment and returns its name, owned by the target;
    /// entry i of `m_Textures` is attachment i. `internalFormat` and `type` as for glTexImage2D, with GL_RGBA
    /// as the format; a negative width or height means that of the target. 0 when there is no framebuffer
    /// (nothing is done then), or when the framebuffer is incomplete with it: one line is logged, the texture
    /// deleted, and a 0 takes its place in the list; the framebuffer stays incomplete, whatever is added to
    /// it, until it is created anew. A texture beyond the attachments that the driver has
    /// (GL_MAX_COLOR_ATTACHMENTS_EXT, at least 4, often 8) gets its name and its place, and is attached to
    /// nothing: a GL error is left behind, and `Bind` of it too. Afterwards framebuffer 0 is bound,
    /// GL_TEXTURE_RECTANGLE_ARB is disabled and the texture stays bound to it. GL: glBindFramebufferEXT,
    /// glGenTextures, glEnable, glBindTexture, glTexParameteri, glTexImage2D, glFramebufferTexture2DEXT,
    /// glCheckFramebufferStatusEXT, glDeleteTextures, glDisable.
    unsigned int AddTextureBuffer(unsigned int internalFormat, unsigned int type, int width, int height);
    /// The same with GL_TEXTURE_2D.
    unsigned int AddTexture2DBuffer(unsigned int internalFormat, unsigned int type, int width, int height);

    /// Directs drawing to colour attachment `index`, from 0; it stays so until `Unbind`. The viewport becomes
    /// the target's size and is not brought back. GL: glBindFramebufferEXT, glDrawBuffer, glViewport.
    void Bind(int index);
    /// Directs drawing to `count` attachments, given as GL enumerants (GL_COLOR_ATTACHMENT0_EXT and so on)
    /// and borrowed for the call. GL: glBindFramebufferEXT, glDrawBuffers, glViewport.
    void Binds(int count, unsigned int* buffers);
    /// Back to framebuffer 0 and GL_BACK; the viewport stays. GL: glBindFramebufferEXT, glDrawBuffer.
    void Unbind();

    /// One unit is one pixel of the target, origin at the lower left, depth -1 to 1. Replaces both matrices
    /// and leaves the matrix mode at GL_PROJECTION. GL: glMatrixMode, glLoadIdentity, glOrtho.
    void SetDefaultProjection();

    /// Draws a rectangle of the target's size from (0, 0), counter-clockwise from the lower left, with
    /// texture coordinates in pixels, for rectangle textures. GL: glBegin, glTexCoord2f, glVertex2f, glEnd.
    void Quads();
    /// `Quads` drawn 10 units in from the left and the right edge, so that the edges of a pass can be seen.
    void QuadsDEBUG();
    /// `Quads` with texture coordinates from 0 to 1, for 2D textures.
    void QuadsNorm();

    /// Draws colour texture `index`, a rectangle texture, with `Quads` under the caller's matrices and
    /// viewport. An index outside the list draws with texture 0. Unit 0 becomes the active one, the texture
    /// stays bound, GL_TEXTURE_RECTANGLE_ARB is disabled at the end. Call it with unit 0 active: what is
    /// enabled is the unit that was active before, and there texturing stays on, so that later drawing by the
    /// fixed functions is black. GL: glEnable, glActiveTexture,
    /// glBindTexture, glBegin and so on, glDisable.
    void DrawFullScreen(int index);
    /// The same for a 2D texture, with `QuadsNorm` and GL_TEXTURE_2D.
    void DrawFullScreen2D(int index);

    /// 0 means none.
    unsigned int m_FrameBuffer = 0;
    /// Entry i is attached at colour attachment i; 0 where the attachment failed.
    std::vector<unsigned int> m_Textures;
    /// Renderbuffer, or texture after `CreateFrameBufferDepthTexture2D`; 0 means none.
    unsigned int m_DepthBuffer = 0;
    /// Size in pixels; -1 until `SetResolution`.
    int m_Width = -1;
    int m_Height = -1;
    /// Whether a depth attachment is made; to be written before the framebuffer is created.
    bool m_UseDepth = true;

private:
    bool m_DepthIsTexture = false;

    unsigned int createFrameBuffer(unsigned int (*attachDepth)(int width, int height));
    unsigned int addTexture(unsigned int target, const char* failure, unsigned int internalFormat,
                            unsigned int type, int width, int height);
    unsigned int textureAt(int index) const;
};
