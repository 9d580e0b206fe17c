// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>

class NSString;

/// A GL texture with its target and sizes; the subclasses fill it. Pictures from files lie with their top row
/// at t = 0 and plain alpha (see VX_GLTextureFile.h). Owns its GL texture.
///
/// Everything but the constructor and the questions needs a context current on the calling thread, the
/// destructor included: that under which the texture was made, or one of its share group. Loads block
/// their caller while they read.
class VX_EXPORT VX_GLTextureBase {
public:
    VX_GLTextureBase() = default;
    /// As `discardData`.
    virtual ~VX_GLTextureBase();
    /// Loads the file, where a subclass can: here nothing is done, and false returned.
    virtual bool LoadFromPath(NSString* path, bool mipmap);
    VX_GLTextureBase(const VX_GLTextureBase&) = delete;
    VX_GLTextureBase& operator=(const VX_GLTextureBase&) = delete;

    /// Deletes the texture; target and sizes stay. Without a context it stays, and the log says so.
    /// GL: glDeleteTextures.
    void discardData();

    /// Makes a 3D texture; the arguments are those of glTexImage3D, rows without gaps, `data` borrowed for
    /// the call, or null. Filtered linearly; s and t repeat, r has GL_CLAMP, which takes in the border.
    /// Returns its name, the caller's to delete; 0 when GL refuses it or has an older error. GL:
    /// glGetIntegerv, glGenTextures, glBindTexture, glTexParameteri, glPixelStorei, glTexImage3D, glGetError,
    /// glDeleteTextures. Left changed: the texture stays bound to GL_TEXTURE_3D.
    static unsigned int Create3DTexture(unsigned int internalFormat, unsigned int format, unsigned int type,
                                        int width, int height, int depth, const void* data);

    /// Takes over the texture `name` of the caller with target and sizes, and deletes the one that was held,
    /// unless it is the same. 0 is taken too. GL: glDeleteTextures.
    void Attach(unsigned int target, unsigned int name, CGSize size, CGSize texCoordSize);
    /// Gives the texture away, undeleted. Returns its name, now the caller's to delete; 0 when there is none.
    unsigned int Detach();

    /// The texture's target and name, borrowed; 0 means none.
    unsigned int Target() const { return m_Target; }
    unsigned int Name() const { return m_Texture; }
    /// Size of what was loaded, in pixels; that of the last success when a load from a file fails.
    CGSize Size() const { return m_Size; }
    /// Where it ends: in texture coordinates after a load from a picture file, where (1, 1) stands for a
    /// whole rectangle texture too; in pixels after a load from a DDS file or from data.
    CGSize TexCoordSize() const { return m_TexCoordSize; }

protected:
    /// As `VX_GLTexture::loadTextureFromData`; target and sizes become those given, whatever comes of it.
    bool ProtectedLoadFromData(unsigned int target, unsigned int internalFormat, unsigned int format,
                               unsigned int type, int width, int height, const void* data);

    /// What the questions of these names tell.
    unsigned int m_Target = 0;
    unsigned int m_Texture = 0;
    CGSize m_Size;
    CGSize m_TexCoordSize;
};
