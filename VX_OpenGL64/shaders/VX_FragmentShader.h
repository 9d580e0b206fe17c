// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <string>

/// Owns one GL fragment shader, compiled from source text in memory.
///
/// Everything but the constructor and `shader` needs a GL 2.0 context current on the calling thread, the
/// destructor included while a shader is held. No binding is changed.
class VX_EXPORT VX_FragmentShader {
public:
    /// Makes no GL call. Nothing is promised about `m_Shader` before the first `loadAndCompile`: do not call
    /// `freeShader` or rely on `shader` before it.
    VX_FragmentShader() = default;
    /// As `freeShader`.
    virtual ~VX_FragmentShader();
    VX_FragmentShader(const VX_FragmentShader&) = delete;
    VX_FragmentShader& operator=(const VX_FragmentShader&) = delete;

    /// Compiles `source`: NUL-terminated, not null, borrowed for the call, handed to GL as it stands. True on
    /// success. On failure the GL shader is deleted, the info log goes to `NSLog` and the object is empty. A
    /// shader already held is overwritten without being deleted: call `freeShader` first.
    /// GL: glCreateShader, glShaderSource, glCompileShader, glGetShaderiv, glGetShaderInfoLog,
    /// glDeleteShader.
    bool loadAndCompile(const char* source);
    /// Deletes the GL shader, if there is one. GL: glDeleteShader.
    void freeShader();
    /// The driver's words on the last `loadAndCompile`; empty when it succeeded. Makes no GL call.
    const std::string& failure() const { return m_Failure; }
    /// The GL name, owned by this object; 0 when empty.
    unsigned int shader() const { return m_Shader; }

    /// What `shader` tells; written by this class alone.
    unsigned int m_Shader = 0;

private:
    std::string m_Failure;
};
