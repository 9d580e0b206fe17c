// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <string>

/// Owns one GL geometry shader, compiled from source text in memory. Primitive types and vertex count are
/// given to `VX_Program::attachGeometryShader`, not in the text.
///
/// Everything but the constructor and `shader` needs a GL 2.0 context with geometry shaders current on the
/// calling thread, the destructor included while a shader is held. No binding is changed.
class VX_EXPORT VX_GeometryShader {
public:
    /// Empty; makes no GL call.
    VX_GeometryShader() = default;
    /// As `freeShader`.
    virtual ~VX_GeometryShader();
    VX_GeometryShader(const VX_GeometryShader&) = delete;
    VX_GeometryShader& operator=(const VX_GeometryShader&) = delete;

    /// Compiles `source`: NUL-terminated, not null, borrowed for the call, handed to GL as it stands. True on
    /// success. On failure the GL shader is deleted, the info log goes to standard output and the object is
    /// empty. A shader already held is overwritten without being deleted: call `freeShader` first.
    /// GL: glCreateShader, glShaderSource, glCompileShader, glGetShaderiv, glGetShaderInfoLog,
    /// glDeleteShader.
    bool loadAndCompile(const char* source);
    /// Deletes the GL shader, if there is one. GL: glDeleteShader.
    void freeShader();
    /// The driver's words on the last `loadAndCompile`; empty when it succeeded. Makes no GL call.
    const std::string& failure() const { return m_Failure; }
    /// The GL name, owned by this object; 0 when empty.
    unsigned int shader() const { return m_Shader; }

    /// The most vertices that one invocation may emit on this driver; works on an empty object too. 0 where
    /// the driver does not know the question, which then leaves GL_INVALID_ENUM behind. GL: glGetIntegerv
    /// with GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT.
    int GetMaxVertices();

    unsigned int m_Shader = 0;

private:
    std::string m_Failure;
};
