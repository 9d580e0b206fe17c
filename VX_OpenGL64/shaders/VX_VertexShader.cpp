// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_VertexShader.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

VX_VertexShader::~VX_VertexShader() {
    freeShader();
}

bool VX_VertexShader::loadAndCompile(const char* source) {
    m_Shader = glCreateShader(GL_VERTEX_SHADER);
    glShaderSource(m_Shader, 1, &source, nullptr);
    glCompileShader(m_Shader);

    GLint compiled = 0;
    glGetShaderiv(m_Shader, GL_COMPILE_STATUS, &compiled);
    if (compiled)
        return true;

    char log[4096] = {};
    glGetShaderInfoLog(m_Shader, sizeof log, nullptr, log);
    NSLog("VX_VertexShader::loadAndCompile Failed: %s", log);
    freeShader();
    return false;
}

void VX_VertexShader::freeShader() {
    if (m_Shader) {
        glDeleteShader(m_Shader);
        m_Shader = 0;
    }
}
