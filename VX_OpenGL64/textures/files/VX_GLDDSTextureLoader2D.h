// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Brings the compressed blocks of a DDS file (DXT1, DXT3 or DXT5) to GL as they are, level by level. Rows of
/// blocks stand as in the file, the top one first, at t = 0. Of the header only sizes, mipmap count and
/// FourCC are read: the count alone says how many levels there are, whatever the flags say, and a file that
/// has 0 there gives a texture without an image.
///
/// One thread at a time. It blocks its caller while it reads.
class VX_EXPORT VX_GLDDSTextureLoader2D {
public:
    VX_GLDDSTextureLoader2D() = default;
    /// Frees the blocks, if there are any. The texture is whose who called `Load`. No GL.
    virtual ~VX_GLDDSTextureLoader2D();
    VX_GLDDSTextureLoader2D(const VX_GLDDSTextureLoader2D&) = delete;
    VX_GLDDSTextureLoader2D& operator=(const VX_GLDDSTextureLoader2D&) = delete;

    /// `path` in the file system's bytes, borrowed. Returns the name of a new texture, the caller's to
    /// delete, with linear filtering, between levels too, and wrapping as GL begins it; `m_Width` and
    /// `m_Height` then are its size. The blocks are gone afterwards.
    ///
    /// Needs a current context with GL_EXT_texture_compression_s3tc. GL: glEnable, glGetIntegerv,
    /// glPixelStorei, glGenTextures, glBindTexture, glTexParameteri, glTexEnvi, glCompressedTexImage2D,
    /// glGetError, glDisable. Left changed: no texture is bound to GL_TEXTURE_2D, which is disabled, and the
    /// unit's texture environment is GL_REPLACE.
    ///
    /// 0, without a GL call, for a file that cannot be read, does not begin with "DDS ", ends inside its
    /// header or has another FourCC. A level that GL refuses is told to the log, and the others are tried; a
    /// level that is not wholly in the file is passed by. The name is returned in both cases. What went wrong
    /// is told by `VX_GLTextureFailure`.
    unsigned int Load(const char* path);

    /// Reads the file into the fields, without GL; what was there before is freed. Returns false as `Load`
    /// returns 0, with the fields as they were. With diagnostics on the log is told why.
    bool ReadDDS(const char* path);
    /// Uploads the levels that the fields hold to the texture bound to GL_TEXTURE_2D, 32 at most; nothing
    /// without blocks or with a count that is not positive. Needs a current context. GL:
    /// glCompressedTexImage2D, and glGetError behind each.
    void DecompressDDS();

    /// Bytes of block data.
    unsigned int m_DataSize = 0;
    /// From `new[]`, owned; null when there is none.
    unsigned char* m_Data = nullptr;
    /// Compressed internal format of GL; DXT1 is always the one with alpha.
    unsigned int m_Format = 0;
    /// 3 for DXT1, else 4.
    int m_Components = 0;
    /// Size of the largest level in pixels, as the header says.
    int m_Width = 0;
    int m_Height = 0;
    /// Levels that the header claims.
    int m_MipMapCount = 0;
    /// What `Load` returned last.
    unsigned int m_Texture = 0;

private:
    int upload(const char* path);
    void freeData();
};
