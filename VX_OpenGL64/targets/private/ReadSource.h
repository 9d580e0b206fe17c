// SPDX-License-Identifier: MIT
#pragma once

class VX_GLRenderTarget;

namespace vx {

/// While it lives, pixels are read from one buffer of one framebuffer; at its end both framebuffer bindings
/// and the buffer that was read from are as before. Needs a current context, on its thread. GL:
/// glGetIntegerv, glGetBooleanv, glBindFramebufferEXT, glReadBuffer.
class ReadSource {
public:
    /// What a view has drawn: framebuffer 0 and its back buffer, or, of a surface that has none, the front
    /// one.
    ReadSource();
    /// Colour attachment `index` of a target, which has one (`isThere`).
    ReadSource(const VX_GLRenderTarget& target, int index);
    ~ReadSource();
    ReadSource(const ReadSource&) = delete;
    ReadSource& operator=(const ReadSource&) = delete;

    /// Whether there is such a target with a framebuffer and a texture there. Makes no GL call.
    static bool isThere(const VX_GLRenderTarget* target, int index);

private:
    void bind(unsigned framebuffer);

    int m_DrawFrameBuffer = 0;
    int m_ReadFrameBuffer = 0;
    int m_Buffer = 0;
};

} // namespace vx
