// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_Program.h>

#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/shaders/private/GeometryDialect.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <memory>

VX_Program::~VX_Program() {
    freeProgram();
}

void VX_Program::freeProgram() {
    if (m_Program && vx::mayDelete("VX_Program", m_Program)) {
        glDeleteProgram(m_Program);
        m_Program = 0;
    }
}

bool VX_Program::attachShader(VX_VertexShader* vertex, VX_FragmentShader* fragment, bool deferLink) {
    VX_NEEDS_CONTEXT();
    freeProgram();
    m_Program = glCreateProgram();
    if (vertex)
        glAttachShader(m_Program, vertex->shader());
    if (fragment)
        glAttachShader(m_Program, fragment->shader());
    return deferLink || execLink();
}

bool VX_Program::attachGeometryShader(VX_GeometryShader* geometry, int inputType, int outputType,
                                      int verticesOut) {
    if (!geometry || !m_Program)
        return false;
    VX_NEEDS_CONTEXT();
    const vx::GLCapabilities& driver = vx::currentGLCapabilities();
    if (!driver.geometryShaders)
        return failLink(vx::NoGeometryShaders);
    std::string failure;
    const GLuint shader = geometry->shaderFor({inputType, outputType, verticesOut}, failure);
    if (!shader && geometry->shader())
        return failLink(failure.c_str());
    glAttachShader(m_Program, shader);
    // libepoxy ends the process on an entry point that the driver does not have.
    if (driver.geometryShader4) {
        glProgramParameteriEXT(m_Program, GL_GEOMETRY_INPUT_TYPE_EXT, inputType);
        glProgramParameteriEXT(m_Program, GL_GEOMETRY_OUTPUT_TYPE_EXT, outputType);
        glProgramParameteriEXT(m_Program, GL_GEOMETRY_VERTICES_OUT_EXT, verticesOut);
    }
    return execLink();
}

bool VX_Program::execLink() {
    VX_NEEDS_CONTEXT();
    glLinkProgram(m_Program);
    GLint linked = 0;
    glGetProgramiv(m_Program, GL_LINK_STATUS, &linked);
    m_Failure.clear();
    if (linked)
        return true;

    constexpr GLsizei size = 4096;
    const auto log = std::make_unique_for_overwrite<char[]>(size);
    log[0] = '\0'; // GL writes nothing when there is no program
    GLsizei length = 0;
    glGetProgramInfoLog(m_Program, size, &length, log.get());
    return failLink(log.get());
}

bool VX_Program::failLink(const char* log) {
    m_Failure = log;
    NSLog("Link error: %s", log);
    glDeleteProgram(m_Program);
    m_Program = 0;
    return false;
}

void VX_Program::activeProgram() {
    VX_NEEDS_CONTEXT();
    glUseProgram(m_Program);
}

void VX_Program::deactiveProgram() {
    VX_NEEDS_CONTEXT();
    glUseProgram(0);
}

void VX_Program::set1f(const char* name, float x) {
    VX_NEEDS_CONTEXT();
    glUniform1f(glGetUniformLocation(m_Program, name), x);
}

void VX_Program::set1fv(const char* name, int count, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniform1fv(glGetUniformLocation(m_Program, name), count, values);
}

void VX_Program::set1i(const char* name, int x) {
    VX_NEEDS_CONTEXT();
    glUniform1i(glGetUniformLocation(m_Program, name), x);
}

void VX_Program::set2f(const char* name, float x, float y) {
    VX_NEEDS_CONTEXT();
    glUniform2f(glGetUniformLocation(m_Program, name), x, y);
}

void VX_Program::set2fv(const char* name, int count, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniform2fv(glGetUniformLocation(m_Program, name), count, values);
}

void VX_Program::set3f(const char* name, float x, float y, float z) {
    VX_NEEDS_CONTEXT();
    glUniform3f(glGetUniformLocation(m_Program, name), x, y, z);
}

void VX_Program::set3fv(const char* name, int count, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniform3fv(glGetUniformLocation(m_Program, name), count, values);
}

void VX_Program::set4f(const char* name, float x, float y, float z, float w) {
    VX_NEEDS_CONTEXT();
    glUniform4f(glGetUniformLocation(m_Program, name), x, y, z, w);
}

void VX_Program::set4fv(const char* name, int count, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniform4fv(glGetUniformLocation(m_Program, name), count, values);
}

void VX_Program::setMatrix3fv(const char* name, int count, unsigned char transpose, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniformMatrix3fv(glGetUniformLocation(m_Program, name), count, transpose, values);
}

void VX_Program::setMatrix4fv(const char* name, int count, unsigned char transpose, const float* values) {
    VX_NEEDS_CONTEXT();
    glUniformMatrix4fv(glGetUniformLocation(m_Program, name), count, transpose, values);
}

void VX_Program::setVertexAttrib3fv(const char* name, const float* values) {
    VX_NEEDS_CONTEXT();
    glVertexAttrib3fv(static_cast<GLuint>(glGetAttribLocation(m_Program, name)), values);
}

void VX_Program::setVertexAttrib3fv(unsigned int index, const float* values) {
    VX_NEEDS_CONTEXT();
    glVertexAttrib3fv(index, values);
}

int VX_Program::getAttribLocation(const char* name) {
    VX_NEEDS_CONTEXT();
    return glGetAttribLocation(m_Program, name);
}
