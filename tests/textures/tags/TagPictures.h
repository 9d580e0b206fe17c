// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <tests/support/GLTest.h>

namespace vx::test {

/// A context, and a pool around the test.
struct TagTest : testing::Test {
    HeadlessContext gl{8, 8};
    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
};

/// What is in a level of a tag's texture, as 0xRRGGBBAA, the first row first.
struct TagPicture {
    explicit TagPicture(const VX_GLTagTexture& tag, int level = 0) {
        glBindTexture(tag.target(), tag.texture());
        glGetTexLevelParameteriv(tag.target(), level, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(tag.target(), level, GL_TEXTURE_HEIGHT, &height);
        pixels.resize(std::size_t(width) * height);
        glGetTexImage(tag.target(), level, GL_RGBA, GL_UNSIGNED_INT_8_8_8_8, pixels.data());
    }
    unsigned at(int x, int y) const { return pixels.at(std::size_t(y) * width + x); }
    /// The first and last column and row whose pixels are not all as the first one.
    std::vector<int> inked() const {
        std::vector<int> box = ints(1 << 20, -1, 1 << 20, -1);
        for (int i = 0; i < width * height; ++i)
            if (pixels[i] != pixels[0]) {
                box[0] = std::min(box[0], i % width), box[1] = std::max(box[1], i % width);
                box[2] = std::min(box[2], i / width), box[3] = std::max(box[3], i / width);
            }
        return box;
    }

    int width = 0, height = 0;
    std::vector<unsigned> pixels;
};

/// Filters, wrapping, making of mipmaps and format of the texture.
inline std::vector<int> parametersOf(const VX_GLTagTexture& tag) {
    std::vector<int> values;
    glBindTexture(tag.target(), tag.texture());
    for (const GLenum name : {GL_TEXTURE_MAG_FILTER, GL_TEXTURE_MIN_FILTER, GL_TEXTURE_WRAP_S,
                              GL_TEXTURE_WRAP_T, GL_GENERATE_MIPMAP})
        glGetTexParameteriv(tag.target(), name, &values.emplace_back());
    glGetTexLevelParameteriv(tag.target(), 0, GL_TEXTURE_INTERNAL_FORMAT, &values.emplace_back());
    return values;
}

} // namespace vx::test
