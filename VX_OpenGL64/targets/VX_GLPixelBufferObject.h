// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// GL buffer object of a fixed size that takes the front buffer's pixels, lets the caller reach them, and
/// hands them to a 2D texture; the pixels pass through application memory only where it is locked. Owns the
/// GL name.
///
/// Order of use: each frame `ReadFrontBuffer`, then either a `BeginLock` operation, the caller's work and
/// `EndLock`, or `CopyToTexture2D`. While it is locked GL refuses both reading and copying.
///
/// Everything, constructor and destructor included, needs a GL 2.1 context current on the calling thread; the
/// bindings are state of that context. Rows lie in the buffer as the host's glPixelStorei has it, so that
/// rows of an odd number of bytes want alignments of 1. Nothing is checked or reported: what does not fit GL
/// refuses by an error of its own, and the buffer stays as it was.
class VX_EXPORT VX_GLPixelBufferObject {
public:
    /// Storage of `width` times `height` times `bytesPerPixel` bytes, undefined at first; none when one of
    /// them is 0. Sizes in pixels; `usage` is a GL hint such as GL_STREAM_READ. Nothing is bound to
    /// GL_PIXEL_PACK_BUFFER afterwards. GL: glGenBuffers, glBindBuffer, glBufferData.
    VX_GLPixelBufferObject(int width, int height, int bytesPerPixel, unsigned int usage);
    /// GL: glDeleteBuffers, which ends a lock and every binding of the buffer.
    virtual ~VX_GLPixelBufferObject();
    VX_GLPixelBufferObject(const VX_GLPixelBufferObject&) = delete;
    VX_GLPixelBufferObject& operator=(const VX_GLPixelBufferObject&) = delete;

    /// Fills the buffer from the lower left of the front buffer: 4 bytes a pixel, blue first, the lowest row
    /// first. Does not wait for the pixels to arrive; the next lock does. The view's own framebuffer is to be
    /// bound, and the buffer made with 4 bytes a pixel. Afterwards the read buffer is GL_FRONT and the buffer
    /// stays bound to GL_PIXEL_PACK_BUFFER, so that any glReadPixels writes into it until `EndLock` or
    /// glBindBuffer ends that. GL: glReadBuffer, glBindBuffer, glReadPixels.
    void ReadFrontBuffer();

    /// Each maps the storage for the access in its name and returns it, valid until `EndLock`, or null where
    /// GL cannot: without storage, or locked already. The buffer stays bound to GL_PIXEL_PACK_BUFFER.
    /// GL: glBindBuffer, glMapBuffer.
    void* ReadOnlyBeginLock();
    void* WriteOnlyBeginLock();
    void* ReadWriteBeginLock();
    /// Ends the lock, and binds nothing to GL_PIXEL_PACK_BUFFER, locked or not; without a lock GL leaves
    /// GL_INVALID_OPERATION behind. GL: glUnmapBuffer of whatever is bound there, glBindBuffer.
    void EndLock();

    /// Copies the buffer to the origin of level 0 of a 2D texture that has at least the buffer's size;
    /// `format` and `type` say how its bytes are meant, GL_BGRA and GL_UNSIGNED_BYTE after `ReadFrontBuffer`.
    /// Afterwards nothing is bound to GL_TEXTURE_2D of the active unit and to GL_PIXEL_UNPACK_BUFFER, and
    /// GL_TEXTURE_2D is disabled; what is bound to GL_PIXEL_PACK_BUFFER stays. GL: glBindBuffer, glEnable,
    /// glBindTexture, glTexSubImage2D, glDisable.
    void CopyToTexture2D(unsigned int texture, unsigned int format, unsigned int type);

    /// GL name, owned.
    unsigned int m_Buffer = 0;
    /// Size in pixels.
    int m_Width;
    int m_Height;
    /// Sizes the storage, and nothing else.
    int m_BytesPerPixel;

private:
    void* beginLock(unsigned int access);
};
