// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <tests/support/GLTest.h>
#include <tests/support/ImagePixels.h>

namespace vx::test {

/// A context, and a pool around the test.
struct TagTest : testing::Test {
    HeadlessContext gl{8, 8};
    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
};

/// What is in a level of a tag's texture, the first row first.
inline PixelRows picture(const VX_GLTagTexture& tag, int level = 0) {
    PixelRows rows;
    glBindTexture(tag.target(), tag.texture());
    glGetTexLevelParameteriv(tag.target(), level, GL_TEXTURE_WIDTH, &rows.width);
    glGetTexLevelParameteriv(tag.target(), level, GL_TEXTURE_HEIGHT, &rows.height);
    rows.pixels.resize(std::size_t(rows.width) * rows.height);
    glGetTexImage(tag.target(), level, GL_RGBA, GL_UNSIGNED_INT_8_8_8_8, rows.pixels.data());
    return rows;
}

/// Filters, wrapping, making of mipmaps and format of the texture.
inline std::vector<int> parametersOf(const VX_GLTagTexture& tag) {
    std::vector<int> values(6);
    glBindTexture(tag.target(), tag.texture());
    const GLenum names[] = {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER, GL_TEXTURE_WRAP_S,
                            GL_TEXTURE_WRAP_T, GL_GENERATE_MIPMAP};
    for (int i = 0; i < 5; ++i)
        glGetTexParameteriv(tag.target(), names[i], &values[i]);
    glGetTexLevelParameteriv(tag.target(), 0, GL_TEXTURE_INTERNAL_FORMAT, &values[5]);
    return values;
}

} // namespace vx::test
