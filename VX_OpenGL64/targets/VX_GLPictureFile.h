// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

class VX_GLRenderTarget;

/// Writes a part of the framebuffer that is bound now as a PNG file of RGB, 8 bits a channel: width x height
/// pixels from (x, y), the lower left being (0, 0), out of the buffer that `glReadBuffer` names. The view's
/// own picture is there inside the hooks, until the swap. `path` is borrowed.
///
/// True when the file has been written; false, with one line in the log, for an empty size and for a file
/// that cannot be written. Needs a current context, on its thread; waits for the GPU. GL: glPushClientAttrib,
/// glPixelStorei, glReadPixels, glPopClientAttrib, and glBindBuffer of the pixel pack buffer, which is
/// brought back; nothing stays changed.
VX_EXPORT bool VX_GLSavePicture(const char* path, int x, int y, int width, int height);

/// The same for colour attachment `index` of a render target, from 0, in its whole size and with alpha. False
/// also for a null target, one without framebuffer, and an index without a texture, as a multisampled target
/// has none. GL beside the above: glGetIntegerv, glBindFramebufferEXT, glReadBuffer; the framebuffers that
/// were bound for drawing and reading are bound again.
VX_EXPORT bool VX_GLSaveRenderTarget(const char* path, VX_GLRenderTarget* target, int index);
