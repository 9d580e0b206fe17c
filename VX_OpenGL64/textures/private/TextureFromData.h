// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// Makes a texture of the caller's pixels, for both families of texture classes. Returns its name, bound to
/// `target`, which is disabled; 0 when GL refuses it or an error is left from before, which is logged.
unsigned makeTextureFromData(unsigned target, unsigned internalFormat, unsigned format, unsigned type,
                             int width, int height, const void* data);

} // namespace vx
