// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/UniformTransfer.h>

#include <epoxy/gl.h>

#include <array>
#include <map>
#include <string>
#include <vector>

namespace vx {

namespace {

constexpr GLsizei kLongestName = 256;

/// One value of a uniform: an element of an array, or all there is.
struct Value {
    GLenum type = 0;
    std::array<float, 16> floats{};
    std::array<int, 4> ints{};
    bool operator==(const Value&) const = default;
};
using Values = std::map<std::string, Value>;

using SetFloats = void (*)(GLint location, const float* values);
using SetInts = void (*)(GLint location, const int* values);

// libepoxy looks entry points up with the first call, so that none of them has an address before it.
const std::map<GLenum, SetFloats> kFloats = {
    {GL_FLOAT, [](GLint at, const float* x) { glUniform1fv(at, 1, x); }},
    {GL_FLOAT_VEC2, [](GLint at, const float* x) { glUniform2fv(at, 1, x); }},
    {GL_FLOAT_VEC3, [](GLint at, const float* x) { glUniform3fv(at, 1, x); }},
    {GL_FLOAT_VEC4, [](GLint at, const float* x) { glUniform4fv(at, 1, x); }},
    {GL_FLOAT_MAT2, [](GLint at, const float* x) { glUniformMatrix2fv(at, 1, GL_FALSE, x); }},
    {GL_FLOAT_MAT3, [](GLint at, const float* x) { glUniformMatrix3fv(at, 1, GL_FALSE, x); }},
    {GL_FLOAT_MAT4, [](GLint at, const float* x) { glUniformMatrix4fv(at, 1, GL_FALSE, x); }},
};

const std::map<GLenum, SetInts> kInts = {
    {GL_INT, [](GLint at, const int* x) { glUniform1iv(at, 1, x); }},
    {GL_INT_VEC2, [](GLint at, const int* x) { glUniform2iv(at, 1, x); }},
    {GL_INT_VEC3, [](GLint at, const int* x) { glUniform3iv(at, 1, x); }},
    {GL_INT_VEC4, [](GLint at, const int* x) { glUniform4iv(at, 1, x); }},
    {GL_BOOL, [](GLint at, const int* x) { glUniform1iv(at, 1, x); }},
    {GL_BOOL_VEC2, [](GLint at, const int* x) { glUniform2iv(at, 1, x); }},
    {GL_BOOL_VEC3, [](GLint at, const int* x) { glUniform3iv(at, 1, x); }},
    {GL_BOOL_VEC4, [](GLint at, const int* x) { glUniform4iv(at, 1, x); }},
    {GL_UNSIGNED_INT, [](GLint at, const int* x) { glUniform1ui(at, static_cast<GLuint>(*x)); }},
};

bool isSampler(GLenum type) {
    const bool isPlain = type >= GL_SAMPLER_1D && type <= GL_SAMPLER_2D_RECT_SHADOW;
    const bool isLater = type >= GL_SAMPLER_1D_ARRAY && type <= GL_UNSIGNED_INT_SAMPLER_BUFFER;
    return isPlain || (isLater && (type < GL_UNSIGNED_INT_VEC2 || type > GL_UNSIGNED_INT_VEC4)) ||
           type == GL_SAMPLER_2D_MULTISAMPLE;
}

SetInts setterOfInts(GLenum type) {
    const auto found = kInts.find(isSampler(type) ? GL_INT : type);
    return found == kInts.end() ? nullptr : found->second;
}

SetFloats setterOfFloats(GLenum type) {
    const auto found = kFloats.find(type);
    return found == kFloats.end() ? nullptr : found->second;
}

/// Of the current program.
void setValue(GLint location, const Value& value) {
    if (const SetFloats set = setterOfFloats(value.type))
        set(location, value.floats.data());
    else
        setterOfInts(value.type)(location, value.ints.data());
}

// An active uniform or attribute.
struct Variable {
    std::string name;
    GLint size = 0;
    GLenum type = 0;
};

Variable variableAt(GLuint program, GLenum count, GLuint index) {
    char name[kLongestName] = {};
    Variable found;
    if (count == GL_ACTIVE_UNIFORMS)
        glGetActiveUniform(program, index, kLongestName, nullptr, &found.size, &found.type, name);
    else
        glGetActiveAttrib(program, index, kLongestName, nullptr, &found.size, &found.type, name);
    found.name = name;
    return found;
}

// The elements of an array are listed one by one: each has a location of its own.
void readUniform(GLuint program, const Variable& uniform, Values& values) {
    const bool isFloats = setterOfFloats(uniform.type);
    if (!isFloats && !setterOfInts(uniform.type))
        return;
    const std::string stem = uniform.name.substr(0, uniform.name.rfind("[0]"));
    for (GLint i = 0; i < uniform.size; ++i) {
        const std::string element = uniform.size == 1 ? uniform.name : stem + "[" + std::to_string(i) + "]";
        const GLint location = glGetUniformLocation(program, element.c_str());
        if (location < 0) // in a block, or the driver's own
            continue;
        Value& value = values[element];
        value.type = uniform.type;
        if (isFloats)
            glGetUniformfv(program, location, value.floats.data());
        else
            glGetUniformiv(program, location, value.ints.data());
    }
}

// By what they are counted: GL_ACTIVE_UNIFORMS or GL_ACTIVE_ATTRIBUTES.
std::vector<Variable> variablesOf(GLuint program, GLenum count) {
    GLint number = 0;
    glGetProgramiv(program, count, &number);
    std::vector<Variable> all;
    for (GLint i = 0; i < number; ++i)
        all.push_back(variableAt(program, count, static_cast<GLuint>(i)));
    return all;
}

Values valuesOf(GLuint program) {
    Values values;
    for (const Variable& uniform : variablesOf(program, GL_ACTIVE_UNIFORMS))
        readUniform(program, uniform, values);
    return values;
}

} // namespace

void keepAttributeLocations(unsigned int former, unsigned int program) {
    for (const Variable& attribute : variablesOf(former, GL_ACTIVE_ATTRIBUTES)) {
        const GLint location = glGetAttribLocation(former, attribute.name.c_str());
        if (location >= 0) // those of GL itself have none
            glBindAttribLocation(program, static_cast<GLuint>(location), attribute.name.c_str());
    }
}

void transferUniforms(unsigned int former, unsigned int program) {
    const Values set = valuesOf(former), fresh = valuesOf(program);
    glLinkProgram(former);
    const Values own = valuesOf(former);
    GLint current = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    glUseProgram(program);
    for (const auto& [name, value] : set) {
        const auto there = fresh.find(name), before = own.find(name);
        const bool wasSet = before == own.end() || before->second != value;
        if (wasSet && there != fresh.end() && there->second.type == value.type)
            setValue(glGetUniformLocation(program, name.c_str()), value);
    }
    glUseProgram(static_cast<GLuint>(current));
}

} // namespace vx
