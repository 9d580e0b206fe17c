// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>

#include <utility>

namespace vx::test {

/// Counts textures made and errors asked for while it lives.
struct CallCounter {
    CallCounter() {
        glGenTextures(0, nullptr); // the first call of all changes the entry point itself
        while (glGetError() != GL_NO_ERROR) {
        }
        textures = errors = 0;
        s_GenTextures = std::exchange(epoxy_glGenTextures, [](GLsizei count, GLuint* names) {
            ++textures;
            s_GenTextures(count, names);
        });
        s_GetError = std::exchange(epoxy_glGetError, [] { return ++errors, s_GetError(); });
    }
    ~CallCounter() {
        epoxy_glGenTextures = s_GenTextures;
        epoxy_glGetError = s_GetError;
    }
    static inline int textures, errors;

private:
    static inline PFNGLGENTEXTURESPROC s_GenTextures;
    static inline PFNGLGETERRORPROC s_GetError;
};

} // namespace vx::test
