// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>

#include <vector>

namespace vx::test {

/// The pixel of the bound framebuffer as 0xRRGGBBAA; y counts from the bottom row.
inline unsigned pixelAt(int x, int y) {
    unsigned char rgba[4] = {9, 9, 9, 9}; // no picture: a read that fails is seen
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    return unsigned(rgba[0]) << 24 | rgba[1] << 16 | rgba[2] << 8 | rgba[3];
}

/// What `glGetIntegerv` says for each name; of a name with several values the first.
template <class... Names>
std::vector<int> stateOf(Names... names) {
    std::vector<int> values;
    for (const GLenum name : {GLenum(names)...}) {
        int value[16] = {};
        glGetIntegerv(name, value);
        values.push_back(value[0]);
    }
    return values;
}

/// What GL objects and enumerants are compared with.
template <class... Values>
std::vector<int> ints(Values... values) {
    return {int(values)...};
}

inline void clearTo(float red, float green, float blue) {
    glClearColor(red, green, blue, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

/// Clears a part of the framebuffer alone.
inline void clearTo(float red, float green, float blue, int x, int y, int width, int height) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    clearTo(red, green, blue);
    glDisable(GL_SCISSOR_TEST);
}

} // namespace vx::test
