// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <string>

class VX_FragmentShader;
class VX_GeometryShader;
class VX_VertexShader;

/// Owns one GL program: links it, activates it and sets its uniforms. It holds no pointer to the shaders it
/// was made of; one shader may be in any number of programs and may be freed after the link.
///
/// Order of use: `attachShader` (with `deferLink` followed by `attachGeometryShader`), then each frame
/// `activeProgram`, setters, drawing, `deactiveProgram`. Everything but the constructor needs a GL 2.0
/// context current on the calling thread, the destructor included while a program is held. Of the bindings
/// only the current program changes, and only in `activeProgram` and `deactiveProgram`.
class VX_EXPORT VX_Program {
public:
    /// No program; makes no GL call.
    VX_Program() = default;
    /// As `freeProgram`.
    virtual ~VX_Program();
    VX_Program(const VX_Program&) = delete;
    VX_Program& operator=(const VX_Program&) = delete;

    /// Deletes the GL program, if there is one. GL: glDeleteProgram.
    void freeProgram();

    /// Starts a new program, the former one being deleted, and attaches the vertex shader, then the fragment
    /// shader; either may be null. Returns the result of `execLink`, or true without linking when `deferLink`
    /// is true. The shaders are borrowed for the call. GL: glDeleteProgram, glCreateProgram, glAttachShader.
    bool attachShader(VX_VertexShader* vertex, VX_FragmentShader* fragment, bool deferLink);

    /// Attaches the geometry shader to the program of `attachShader`, sets the three program parameters and
    /// returns the result of `execLink`. False, with nothing done, when `geometry` is null or there is no
    /// program. `inputType` and `outputType` are GL primitive types, `verticesOut` the most vertices that one
    /// invocation emits; it is not checked against `GetMaxVertices`.
    /// GL: glAttachShader, glProgramParameteriEXT (GL_EXT_geometry_shader4). Without that extension the
    /// parameters are not set but become the shader's layout, as `VX_GeometryShader` tells, by
    /// glCreateShader, glShaderSource, glCompileShader, glGetShaderiv, glGetShaderInfoLog, glDeleteShader.
    /// Parameters that no layout can say (GL_QUADS, GL_TRIANGLES as the output, 0 vertices), a text that does
    /// not compile with them and a driver without geometry shaders end as a failed `execLink` does.
    bool attachGeometryShader(VX_GeometryShader* geometry, int inputType, int outputType, int verticesOut);

    /// Links. On failure logs "Link error: ..." with the info log, deletes the program and returns false; the
    /// shaders are untouched. GL: glLinkProgram, glGetProgramiv, glGetProgramInfoLog, glDeleteProgram.
    bool execLink();

    /// The driver's words on the last link; empty when it succeeded. Makes no GL call.
    const std::string& failure() const { return m_Failure; }

    /// GL: glUseProgram with this program, which stays current.
    void activeProgram();
    /// GL: glUseProgram(0), whichever program is current.
    void deactiveProgram();

    // `set1f` and its kin set uniforms of the current program: each looks `name` (NUL-terminated) up with
    // glGetUniformLocation on every call and passes the rest on unchanged. An unknown name is ignored by GL.
    // They act on the program that is current, so call them between `activeProgram` and `deactiveProgram`.
    // `count` is a number of vectors or matrices; arrays are borrowed for the call, matrices column by column
    // unless `transpose` is 1.

    /// GL: glUniform1f.
    void set1f(const char* name, float x);
    /// GL: glUniform1fv; `values` holds `count` floats.
    void set1fv(const char* name, int count, const float* values);
    /// GL: glUniform1i; also for samplers, with the texture unit's number.
    void set1i(const char* name, int x);
    /// GL: glUniform2f.
    void set2f(const char* name, float x, float y);
    /// GL: glUniform2fv; `values` holds 2 * `count` floats.
    void set2fv(const char* name, int count, const float* values);
    /// GL: glUniform3f.
    void set3f(const char* name, float x, float y, float z);
    /// GL: glUniform3fv; `values` holds 3 * `count` floats.
    void set3fv(const char* name, int count, const float* values);
    /// GL: glUniform4f.
    void set4f(const char* name, float x, float y, float z, float w);
    /// GL: glUniform4fv; `values` holds 4 * `count` floats.
    void set4fv(const char* name, int count, const float* values);
    /// GL: glUniformMatrix3fv; `values` holds 9 * `count` floats.
    void setMatrix3fv(const char* name, int count, unsigned char transpose, const float* values);
    /// GL: glUniformMatrix4fv; `values` holds 16 * `count` floats.
    void setMatrix4fv(const char* name, int count, unsigned char transpose, const float* values);

    /// Sets the current value of the attribute of that name to three floats. An unknown name goes to GL as
    /// the index -1 and leaves GL_INVALID_VALUE behind. GL: glGetAttribLocation, glVertexAttrib3fv.
    void setVertexAttrib3fv(const char* name, const float* values);
    /// The same for the attribute at `index`; the program is not looked at. GL: glVertexAttrib3fv.
    void setVertexAttrib3fv(unsigned int index, const float* values);
    /// The same for a location as `getAttribLocation` gives it.
    void setVertexAttrib3fv(int index, const float* values) {
        setVertexAttrib3fv(static_cast<unsigned int>(index), values);
    }
    /// Location of the attribute in the linked program, -1 for an unknown name. GL: glGetAttribLocation.
    int getAttribLocation(const char* name);

    /// GL name; 0 means no program.
    unsigned int m_Program = 0;

private:
    bool failLink(const char* log);

    std::string m_Failure;
};
