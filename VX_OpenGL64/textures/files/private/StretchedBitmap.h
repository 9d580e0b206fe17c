// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/files/VX_GLTextureLoader.h>
#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <string>

namespace vx {

/// Reads the picture into the record, whose former pixels are the caller's to free: stretched to sides that
/// are powers of two, each not below 1, or in its own size. False, with the record as it was and the reason
/// in `why`, for a damaged picture and for want of memory. No GL.
bool readBitmap(PictureReader& picture, bool powersOfTwo, GLImageBitmap& bitmap, std::string& why);

} // namespace vx
