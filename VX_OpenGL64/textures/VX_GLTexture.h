// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

class VX_GLTextureLoader;

/// One texture from a picture file or from memory, for drawing with the fixed functions and premultiplied
/// alpha: the picture's bottom row is at t = 0 (see `VX_GLTextureLoader`). Owns its GL texture.
///
/// Everything but the constructor and the questions needs a context current on the calling thread, the
/// destructor included: that under which the texture was made, or one of its share group.
class VX_EXPORT VX_GLTexture {
public:
    VX_GLTexture() = default;
    /// As `discardData`.
    virtual ~VX_GLTexture();
    VX_GLTexture(const VX_GLTexture&) = delete;
    VX_GLTexture& operator=(const VX_GLTexture&) = delete;

    /// Each of the loads discards what was there, blocks while it reads `path` (the file system's bytes,
    /// borrowed), and returns whether there is a texture now; failures are told to the log. GL beside
    /// glDeleteTextures, and state left changed: the operation of the same name of `VX_GLTextureLoader`.
    ///
    /// 2D, sides powers of two, wrapping repeats.
    bool load2DTextureFromPath(const char* path);
    /// A rectangle texture of the picture's size. The pixels stay in memory as long as the texture lives,
    /// since GL may go on reading them.
    bool loadRectangleExtTextureFromPath(const char* path);
    /// 2D with smaller levels, between which `enableTexture` makes GL filter.
    bool loadMipmapTextureFromPath(const char* path, bool clamp);

    /// Discards what was there and makes a texture of pixels in memory: the arguments are those of
    /// glTexImage2D, `data` borrowed for the call, or null for a texture without contents. Filtered linearly;
    /// a rectangle texture is clamped to the edge, others wrap as GL begins them. Rows lie as the caller's
    /// unpack state says; for a rectangle texture without gaps for GL_RGBA, with alignment alone for other
    /// formats. Returns false, with one line in the log, when GL refuses it or has an older error.
    /// GL: glDeleteTextures, glGetIntegerv, glEnable, glGenTextures, glBindTexture, glTexParameteri,
    /// glTexParameterf, glPixelStorei, glTexImage2D, glGetError, glDisable. Left changed: the texture stays
    /// bound to `target`, which is disabled.
    bool loadTextureFromData(unsigned int target, unsigned int internalFormat, unsigned int format,
                             unsigned int type, int width, int height, const void* data);

    /// Switches texturing on the active unit on, with this texture bound, or off. A 2D texture gets linear
    /// filters, between levels too when it has them. GL: glEnable, glBindTexture, glTexParameterf,
    /// glTexParameteri; glDisable.
    void enableTexture(bool enable);

    /// Gives the texture away, undeleted. Returns its name, now the caller's to delete; 0 when there is none.
    unsigned int dettach();
    /// Deletes the texture and the pixels. What was a rectangle stays one for `txType` and `enableTexture`.
    /// Without a context the texture stays, and the log says so. GL: glDeleteTextures.
    void discardData();

    /// The texture's name, borrowed; 0 means none.
    unsigned int name() const { return m_Texture; }
    /// GL_TEXTURE_RECTANGLE or GL_TEXTURE_2D.
    unsigned int txType() const;
    /// 1 after `loadMipmapTextureFromPath`, else 0.
    unsigned char isMipmaped() const { return m_Mipmaped; }

    /// Size of the texture in pixels, and that of the picture in its file, also once the pixels are gone; 0
    /// without a load from a file.
    int width() const;
    int height() const;
    int orgwidth() const;
    int orgheight() const;

private:
    unsigned int m_Texture = 0;
    bool m_Mipmaped = false;
    bool m_Rectangle = false;
    VX_GLTextureLoader* m_Loader = nullptr;

    VX_GLTextureLoader& newLoader();
    bool isRectangle() const { return !m_Mipmaped && m_Rectangle; }
};
