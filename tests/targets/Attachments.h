// SPDX-License-Identifier: MIT
#pragma once

#include <tests/support/GLTest.h>

namespace vx::test {

/// Type and name of what is attached; no framebuffer may be bound.
inline std::vector<int> attached(unsigned frameBuffer, GLenum attachment) {
    EXPECT_EQ(stateOf(GL_FRAMEBUFFER_BINDING_EXT), ints(0));
    std::vector<int> found(2);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
    for (const int i : {0, 1})
        glGetFramebufferAttachmentParameterivEXT(
            GL_FRAMEBUFFER_EXT, attachment, GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE_EXT + GLenum(i), &found[i]);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    return found;
}

/// Wrapping, filters, mode of depth, size and format of the texture that is bound.
inline std::vector<int> boundTexture(GLenum target) {
    std::vector<int> values;
    for (const GLenum name : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_MIN_FILTER,
                              GL_TEXTURE_MAG_FILTER, GL_DEPTH_TEXTURE_MODE})
        glGetTexParameteriv(target, name, &values.emplace_back());
    for (const GLenum name : {GL_TEXTURE_WIDTH, GL_TEXTURE_HEIGHT, GL_TEXTURE_INTERNAL_FORMAT})
        glGetTexLevelParameteriv(target, 0, name, &values.emplace_back());
    return values;
}

} // namespace vx::test
