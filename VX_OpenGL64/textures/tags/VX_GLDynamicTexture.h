// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>

class NSBitmapImageRep;

/// A tag whose picture is drawn: a subclass overrides `Draw` and paints with the platform's 2D drawing; an
/// update puts that into the texture, which the operations of `VX_GLTagTexture` then show.
///
/// An update needs a GL context current on the calling thread, the texture's own after the first one. It
/// leaves the texture bound to its target on the active unit, GL_UNPACK_ALIGNMENT 1 and GL_UNPACK_ROW_LENGTH
/// the picture's width. A pixel unpack buffer must not be bound. The first one makes the texture, the
/// others write over it: glGetError tells when a picture does not fit into what is there. After an update of
/// one kind call `Resize` before one of the other. What `Draw` throws ends the update before any GL call.
class VX_EXPORT VX_GLDynamicTexture : public VX_GLTagTexture {
public:
    /// The picture's size in pixels; one that is not above 0 ends the process. Makes no GL call.
    VX_GLDynamicTexture(int width, int height);

    /// Deletes the texture, so that the next update makes a new one, and takes another size for the picture.
    /// Needs a current context when there is a texture: without one that stays where it is, and the log says
    /// so. GL: glDeleteTextures.
    void Resize(int width, int height);

    /// Paints the picture: called by an update, with a clear canvas locked on the calling thread, its origin
    /// at the top left and y downward, as large as `m_ContentSize` or larger. Nothing here.
    virtual void Draw();

    /// Paints into a rectangle texture of the picture's size. GL: glPixelStorei, glBindTexture, and
    /// glTexSubImage2D, or the first time glGenTextures, glTexParameteri and glTexImage2D.
    void UpdateRectangleTexture();
    /// The same with the pixels of a bitmap, blue first, of whatever size; it stays the caller's. The size of
    /// the picture and its aspect stay as they were. Null is a bitmap without pixels.
    void UpdateRectangleTextureByBitmap(NSBitmapImageRep* bitmap);
    /// Paints into the upper left part of a 2D texture with mipmaps whose sides are powers of two. GL: as for
    /// `UpdateRectangleTexture`, and glTexParameterf.
    void UpdateMipmapTexture();

protected:
    /// Whether the canvas's y axis runs downward.
    bool m_Flipped = true;

private:
    void takeSize(int width, int height);
    void writeRectangle(const NSBitmapImageRep* bitmap, bool blueFirst);
    void writeMipmap(const NSBitmapImageRep* bitmap, int width, int height);
};
