// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// A decoded picture as `glTexImage2D` takes it: premultiplied BGRA, the picture's bottom row first.
struct GLImageBitmap {
    /// Size of the picture in its file, in pixels; the second is the height.
    int orgwidth = 0;
    int orgheight = 0;
    /// Both 0.
    int border = 0;
    int level = 0;
    /// GL_TEXTURE_2D when sides that are powers of two were asked for, else GL_TEXTURE_RECTANGLE.
    unsigned int target = 0;
    /// GL_RGBA8, GL_BGRA and GL_UNSIGNED_INT_8_8_8_8_REV.
    unsigned int internalFormat = 0;
    unsigned int format = 0;
    unsigned int type = 0;
    /// 8 and 4.
    unsigned int bitsPerComponent = 0;
    int bytesPerPixel = 0;
    /// Bytes of `data`, of which 32 bits are kept.
    unsigned int dataSize = 0;
    /// From `new[]`; whose who holds the record.
    void* data = nullptr;
    /// Size of the canvas in pixels, which is the texture's, and bytes from one row to the next.
    unsigned long height = 0;
    unsigned long width = 0;
    unsigned long rowBytes = 0;
};

/// Loads picture files as textures for drawing with premultiplied alpha: the picture is stretched, linearly,
/// over the whole texture, its bottom row at t = 0. Keeps the pixels until they are freed, the sizes until
/// the next load. The textures it makes belong to the caller.
///
/// All loads block their caller while they read, on the thread of the current context that they need, without
/// a buffer bound to GL_PIXEL_UNPACK_BUFFER. Paths are in the file system's bytes, borrowed. What is no
/// picture (so also a damaged one, or one for which there is no memory) makes no GL call, returns 0, logs
/// "couldn't load texture:" with the path, and with diagnostics on why. A GL error found behind an upload, be
/// it older, is told to the log as a warning; the name is returned all the same. `VX_GLTextureFailure` tells
/// of all these.
class VX_EXPORT VX_GLTextureLoader {
public:
    VX_GLTextureLoader() = default;
    /// As `freeImage`.
    virtual ~VX_GLTextureLoader();
    VX_GLTextureLoader(const VX_GLTextureLoader&) = delete;
    VX_GLTextureLoader& operator=(const VX_GLTextureLoader&) = delete;

    /// A 2D texture whose sides are powers of two, filtered linearly; wrapping clamps to the edge or repeats.
    /// GL: glEnable, glGenTextures, glBindTexture, glGetIntegerv, glPixelStorei, glTexParameteri,
    /// glTexImage2D, glGetError, glDisable. Left changed: the texture stays bound to GL_TEXTURE_2D, which is
    /// disabled.
    unsigned int load2DTextureFromPath(const char* path, bool clamp);
    /// The same with all smaller levels, by gluBuild2DMipmaps. They are not used before
    /// `VX_GLTexture::enableTexture` or a host chooses a filter between levels. No texture stays bound.
    unsigned int load2DMipmapTextureFromPath(const char* path, bool clamp);
    /// A rectangle texture of the picture's own size, clamped to the edge, filtered linearly. 0 at once for a
    /// null path, without a line in the log. Where GL reads textures from the client's memory
    /// (GL_APPLE_client_storage), the pixels must not be freed before the texture. GL as above with
    /// glTexParameterf, and glTexParameteri only where there is GL_APPLE_texture_range: it then asks for
    /// cached storage of the texture that was bound before. Left changed: the texture stays bound to
    /// GL_TEXTURE_RECTANGLE, which is disabled.
    unsigned int loadRectangleExtTextureFromPath(const char* path);
    /// A cube map of six pictures: for "sky.png" sky_0.png to sky_5.png, the faces -x, -y, -z, +x, +y, +z.
    /// What of them is no picture is passed by, and the name returned; 0 for a null path alone. Clamped to
    /// the edge, filtered linearly; reads no GL error. The last picture's pixels are kept. GL: glGetIntegerv,
    /// glEnable, glGenTextures, glBindTexture, glPixelStorei, glTexImage2D, glTexParameteri, glDisable. Left
    /// changed: the texture stays bound to GL_TEXTURE_CUBE_MAP, and GL_TEXTURE_2D is disabled.
    unsigned int loadCubeMapTextureFromPath(const char* path);

    /// Frees the pixels; the four sizes stay. No GL.
    void freeImage();

    /// Size of the texture last loaded, in pixels, and that of its picture; 0 before.
    int width() const { return static_cast<int>(m_Bitmap.width); }
    int height() const { return static_cast<int>(m_Bitmap.height); }
    int orgwidth() const { return m_Bitmap.orgwidth; }
    int orgheight() const { return m_Bitmap.orgheight; }
    /// The picture last loaded, without pixels once they are freed; borrowed.
    const GLImageBitmap& bitmap() const { return m_Bitmap; }

private:
    GLImageBitmap m_Bitmap;

    unsigned int load2D(const char* path, bool clamp, bool mipmap);
    bool read(const char* path, bool powerOfTwo);
    void upload(unsigned int target) const;
};
