// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <array>
#include <map>
#include <string>

namespace vx {
class LiveShaders;
}

/// Owns one GL geometry shader, compiled from source text in memory. Primitive types and vertex count are
/// given to `VX_Program::attachGeometryShader`, not in the text.
///
/// A driver with GL_EXT_geometry_shader4 is handed every text as it stands. Where the extension is missing
/// and OpenGL 3.2 is there (Mesa and others), it depends on the text:
///
/// - One with the word `layout` outside comments says its primitive types itself and is handed on as it
///   stands; the parameters of `attachGeometryShader` are not looked at.
/// - One of `#version 150` or higher without that word gets the parameters as its layout.
/// - Any other one is in the dialect of the extension (`gl_PositionIn`, `gl_VerticesIn`, `varying in` and so
///   on) and is compiled as GLSL 3.30 of the compatibility profile, 1.50 below OpenGL 3.3, with the
///   parameters as its layout. It links with vertex and fragment shaders of GLSL 1.10 and 1.20. The driver's
///   words name the lines of the text as it was given; `gl_PositionIn` is called `vx_PositionIn` in them, and
///   so are the other words. A variable whose name became a word of the language since (`smooth`, `common`,
///   `active`, `filter`) does not compile. Texture coordinates are those of sets 0 to 7, or 0 to 3 without
///   GL_ARB_arrays_of_arrays.
///
/// In the last two cases there is a further GL shader for each set of parameters that the shader is attached
/// with, made with the first program that uses them. They end with this object, in GL when the last program
/// that has them ends too.
///
/// Without either no text compiles, and a program with a geometry shader does not link.
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

    /// Compiles `source`: NUL-terminated, not null, borrowed for the call, handed to GL as told above. True
    /// on success. On failure the GL shader is deleted, the info log goes to standard output and the object
    /// is empty. What depends on the parameters, like an index behind the input's vertices, fails later, in
    /// `attachGeometryShader`. A shader already held is overwritten without being deleted: call `freeShader`
    /// first. GL: glCreateShader, glShaderSource, glCompileShader, glGetShaderiv, glGetShaderInfoLog,
    /// glDeleteShader; several times where the text is adapted.
    bool loadAndCompile(const char* source);
    /// Deletes the GL shader, if there is one, and those made for parameters. GL: glDeleteShader.
    void freeShader();
    /// The driver's words on the last `loadAndCompile`; empty when it succeeded. Makes no GL call.
    const std::string& failure() const { return m_Failure; }
    /// The GL name, owned by this object; 0 when empty. Of an adapted text it is a shader without a layout,
    /// for a look at it, not for a program.
    unsigned int shader() const { return m_Shader; }

    /// The most vertices that one invocation may emit on this driver; works on an empty object too. 0 where
    /// the driver has no geometry shaders. GL: glGetIntegerv with GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT.
    int GetMaxVertices();

    /// What `shader` tells; written by this class alone.
    unsigned int m_Shader = 0;

private:
    friend class VX_Program;
    friend class vx::LiveShaders;
    unsigned int shaderFor(const std::array<int, 3>& parameters, std::string& failure);
    void freeVariants();

    std::string m_Failure;
    /// A text that is adapted; else empty.
    std::string m_Source;
    /// GL shaders made of it, by input type, output type and vertices out.
    std::map<std::array<int, 3>, unsigned int> m_Variants;
};
