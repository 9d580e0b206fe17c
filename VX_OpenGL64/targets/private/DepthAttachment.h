// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

// Each makes a depth attachment of the size in pixels, attaches it to the framebuffer that is bound, and
// returns its name, which is the caller's. It stays bound to its own target.

unsigned int attachDepthRenderbuffer(int width, int height);

/// A 24 bit GL_TEXTURE_2D without filtering, read as intensity.
unsigned int attachDepthTexture2D(int width, int height);

} // namespace vx
