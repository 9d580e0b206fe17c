// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>

class NSString;

// Picture files as textures for drawing with plain alpha: unscaled, the picture's top row at t = 0, colours
// not premultiplied (but those of LA88 are). The file's pixels, whatever its name ends with, decide how they
// are kept: gray as L8 or, with alpha, LA88; colours with alpha as RGBA8888; without, as RGBA5551 when the
// file has 16 bits a pixel, else as RGB565. On the canvas around the picture all bits are 0, but RGBA5551 is
// opaque.
//
// All of them block their caller while they read, on the thread of the current context that they need,
// without a buffer bound to GL_PIXEL_UNPACK_BUFFER. Rows are laid out for the unpack alignment and row length
// in force, skipped rows and pixels are made up for; GL_UNPACK_SWAP_BYTES applies. A row length below the
// texture's width, as texts and drawn textures may leave it, cannot be made up for: rows would overlap. A
// damaged picture is none, and nothing of it is uploaded. With diagnostics on the log tells of both, and
// VX_GLTextureFailure in any case.

/// Loads a picture into the corner of a texture whose sides are powers of two. `size` receives the picture's
/// size in pixels, `texCoordSize` the texture coordinates it ends at; both may be null. `mipmap` makes the
/// smaller levels and filters between them, else filtering is linear; wrapping repeats.
///
/// Returns the new texture's name, the caller's to delete. Returns 1281 (the number of GL_INVALID_VALUE,
/// which is not 0), with the two sizes as they were: for a null path or a file that is no picture without a
/// GL call, for want of memory ("Texture Loader: Failed creating CGBitmapContext." in the log), and for any
/// GL error found behind the upload, be it older ("Texture Loader: OpenGL error ..."); then the texture
/// stays.
///
/// GL: glGenTextures, glGetIntegerv, glEnable, glBindTexture, glTexParameteri, glTexImage2D or
/// gluBuild2DMipmaps, glDisable, glGetError. Left changed: GL_TEXTURE_2D is disabled on the active unit.
VX_EXPORT unsigned int VX_GLTextureLoader2D(NSString* path, CGSize* size, CGSize* texCoordSize, bool mipmap);

/// The same as a rectangle texture of the picture's own size, with `texCoordSize` (1, 1) and no parameters
/// set. GL: glGetIntegerv, glPixelStorei, glGenTextures, glEnable, glBindTexture, glTexImage2D, glDisable,
/// glGetError. Left changed: the texture stays bound to GL_TEXTURE_RECTANGLE, which is disabled.
VX_EXPORT unsigned int VX_GLTextureLoader2DRect(NSString* path, CGSize* size, CGSize* texCoordSize);

/// Loads six pictures as the faces of a cube map. `path` names one of them; what is in front of the first "_"
/// of its file name begins the names of all: stem_0 to stem_5, with the same extension in the same folder, or
/// stem_right, _down, _back, _left, _up and _front. These are the faces -x, -y, -z, +x, +y, +z in this order.
/// Where one is found by its word alone, all six are looked for by their words.
///
/// Returns the new texture's name, the caller's to delete; 0, without a GL call, for a null path, a file name
/// without "_" and a set that is not complete. A face that is no picture, finds no memory or meets a GL error
/// (which are told to the log as above) is passed by, and the name is returned; the last face uploaded
/// decides the two sizes. Wrapping clamps to the edge.
///
/// GL: glGetIntegerv, glGenTextures, glBindTexture, glPixelStorei, glTexImage2D or gluBuild2DMipmaps,
/// glGetError, glTexParameteri. Left changed: nothing is bound to GL_TEXTURE_CUBE_MAP.
VX_EXPORT unsigned int VX_GLTextureLoaderCubeMap2D(NSString* path, CGSize* size, CGSize* texCoordSize,
                                                   bool mipmap);
