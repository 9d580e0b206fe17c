// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>

#include <epoxy/gl.h>

#include <cstdio>

VX_GeometryShader::~VX_GeometryShader() {
    freeShader();
}

bool VX_GeometryShader::loadAndCompile(const char* source) {
    m_Shader = glCreateShader(GL_GEOMETRY_SHADER_EXT);
    glShaderSource(m_Shader, 1, &source, nullptr);
    glCompileShader(m_Shader);

    GLint compiled = 0;
    glGetShaderiv(m_Shader, GL_COMPILE_STATUS, &compiled);
    if (compiled)
        return true;

    char log[4096] = {};
    glGetShaderInfoLog(m_Shader, sizeof log, nullptr, log);
    std::printf("VX_GeometryShader::loadAndCompile Failed: %s\n",
                log); // this one text goes to standard output
    freeShader();
    return false;
}

void VX_GeometryShader::freeShader() {
    if (m_Shader) {
        glDeleteShader(m_Shader);
        m_Shader = 0;
    }
}

int VX_GeometryShader::GetMaxVertices() {
    GLint vertices = 0;
    glGetIntegerv(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT, &vertices);
    return vertices;
}
