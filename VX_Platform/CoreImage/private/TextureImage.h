// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSImage.h>

namespace vx {

/// The picture in level 0 of a 2D or a rectangle texture of the current context's share group, as large as
/// the texture and opaque: over black, colours that are multiplied by alpha are what is seen. The texture's
/// first row is the lowest. Null for a name that is no such texture, one without a picture, and a depth
/// texture. GL: glIsTexture, glGetIntegerv, glBindTextures, glBindTexture,
/// glGetTexLevelParameteriv, glGetTexImage and those of `PlainPacking`; nothing stays changed.
NSRef<NSImage> imageOfTexture(unsigned texture);

} // namespace vx
