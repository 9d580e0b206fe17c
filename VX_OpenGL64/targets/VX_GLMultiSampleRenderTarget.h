// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>

/// Render target that is drawn to with several samples a pixel and read from as plain textures. The inherited
/// framebuffer holds multisampled renderbuffers; a second one, for the resolve, holds GL_TEXTURE_2D textures,
/// which the host reads by name from `m_ResolveTextures`.
///
/// Order of use: `AllocateResolveCount`, `SetTextureFormat` and the fields where they are to differ;
/// `SetResolution`, `CreateFrameBuffer`; each frame `Bind` or `Binds`, drawing, `Unbind`, `Copy` for each
/// attachment in use, `CopyDepth` if the depth is wanted; then `DrawFullScreenMSAA`, or the textures.
///
/// Everything but constructor, `AllocateResolveCount` and `SetTextureFormat` needs a context with
/// GL_EXT_framebuffer_multisample and GL_EXT_framebuffer_blit current on the calling thread, the destructor
/// included. The list `m_Textures` stays empty, so `DrawFullScreen`, `DrawFullScreen2D` and
/// `VX_GLFilter::GetRTexture` find nothing; `CreateFrameBufferDepthTexture2D` makes a target without samples.
///
/// In a filter: `GetMinRTCount` has to say 0. The textures that `SetupFilter` adds otherwise are plain ones
/// and would take the places of the multisampled renderbuffers, with which no framebuffer is complete.
class VX_EXPORT VX_GLMultiSampleRenderTarget : public VX_GLRenderTarget {
public:
    /// One attachment of GL_RGBA8, 4 samples, with mipmaps and depth; makes no GL call.
    VX_GLMultiSampleRenderTarget();
    /// As `FreeTextures`. The two arrays of names are not freed: `AllocateResolveCount` alone does that.
    ~VX_GLMultiSampleRenderTarget() override;

    /// Number of colour attachments on both framebuffers, 0 or more, up to what the driver has
    /// (GL_MAX_COLOR_ATTACHMENTS_EXT). Makes both arrays anew, filled with 0, and forgets the names that were
    /// in them: only before `CreateFrameBuffer` or after `FreeTextures`. A negative count, or one that memory
    /// does not suffice for, throws std::bad_alloc; no arrays are there then. Makes no GL call.
    void AllocateResolveCount(int count);
    /// Format of textures and renderbuffers alike, as for glTexImage2D, from the next `CreateFrameBuffer` on.
    /// Makes no GL call.
    void SetTextureFormat(unsigned int internalFormat, unsigned int type);

    /// Deletes textures, renderbuffers and both framebuffers; size and arrays stay. Without a context all of
    /// it stays, and the log says so. GL: glDeleteTextures, glDeleteFramebuffersEXT,
    /// glDeleteRenderbuffersEXT.
    void FreeTextures() override;
    /// Makes both framebuffers anew, after freeing everything, and returns the status of the multisampled
    /// one; another than GL_FRAMEBUFFER_COMPLETE_EXT is logged, and all objects stay. Where the driver grants
    /// fewer samples than `m_DepthSamples`, one line is logged for each attachment and the work goes on. More
    /// samples than GL_MAX_SAMPLES_EXT GL refuses altogether: an error is left behind, and the framebuffer is
    /// incomplete; `VX_CheckGLExtensions` has that number. Afterwards framebuffer 0 is bound, and the last
    /// texture and renderbuffer that were made stay bound. GL: glGenFramebuffersEXT, glBindFramebufferEXT,
    /// glGenTextures, glBindTexture, glTexParameteri, glTexParameterf, glTexImage2D, glGenerateMipmapEXT,
    /// glFramebufferTexture2DEXT, glGenRenderbuffersEXT, glBindRenderbufferEXT,
    /// glRenderbufferStorageMultisampleEXT, glGetRenderbufferParameterivEXT, glFramebufferRenderbufferEXT,
    /// glCheckFramebufferStatusEXT.
    unsigned int CreateFrameBuffer() override;

    /// Brings what was drawn into colour attachment `index`, from 0, into its texture, and makes the mipmaps
    /// where it has them; a scissor test that is enabled cuts it. Framebuffer 0 is bound afterwards, for
    /// reading and drawing; with mipmaps GL_TEXTURE_2D of the active unit is disabled and unbound. GL:
    /// glBindFramebufferEXT, glReadBuffer, glDrawBuffer, glBlitFramebufferEXT, glEnable, glBindTexture,
    /// glGenerateMipmapEXT, glDisable.
    void Copy(int index);
    /// The same for the depth, whether or not there is any: one sample of each pixel.
    /// GL: glBindFramebufferEXT, glBlitFramebufferEXT.
    void CopyDepth();

    /// Draws the first texture over the target's size, as `DrawFullScreen2D` does: unit 0 is to be the active
    /// one; the texture, or none, stays bound there, and GL_TEXTURE_2D is disabled afterwards.
    /// GL: glEnable, glActiveTexture, glBindTexture, glBegin and so on, glDisable.
    void DrawFullScreenMSAA();

    /// The framebuffer with the textures; 0 means none.
    unsigned int m_ResolveFrameBuffer = 0;
    /// Length of both arrays.
    int m_ResolveCount = 0;
    /// Colour textures; entry i is colour attachment i.
    unsigned int* m_ResolveTextures = nullptr;
    /// GL_RGBA8.
    unsigned int m_TextureInternalFormat = 0x8058;
    /// GL_UNSIGNED_BYTE.
    unsigned int m_TextureType = 0x1401;
    /// Multisampled colour renderbuffers; entry i is colour attachment i.
    unsigned int* m_ColorRenderBuffers = nullptr;
    /// Made if `m_UseDepth`; 24 bit, read as intensity. 0 means none.
    unsigned int m_ResolveDepthTexture = 0;
    /// Samples a pixel, of colour and depth; to be written before the framebuffer is created.
    int m_DepthSamples = 4;
    /// Whether the textures have mipmaps; to be written before the framebuffer is created.
    bool m_GenerateMipmap = true;

private:
    bool holdsObjects() const;
    unsigned int resolveTexture(int index) const;
    void makeResolveFrameBuffer();
    void attachResolveTexture(int index);
    void makeSampledFrameBuffer();
    void makeSamples(unsigned int renderBuffer, unsigned int format, unsigned int attachment,
                     const char* shortOfSamples);
};
