// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

VX_FragmentShader::~VX_FragmentShader() {
    freeShader();
}

bool VX_FragmentShader::loadAndCompile(const char* source) {
    m_Shader = glCreateShader(GL_FRAGMENT_SHADER);
    glShaderSource(m_Shader, 1, &source, nullptr);
    glCompileShader(m_Shader);

    GLint compiled = 0;
    glGetShaderiv(m_Shader, GL_COMPILE_STATUS, &compiled);
    if (compiled)
        return true;

    char log[4096] = {};
    glGetShaderInfoLog(m_Shader, sizeof log, nullptr, log);
    NSLog("VX_FragmentShader::loadAndCompile Failed: %s", log);
    freeShader();
    return false;
}

void VX_FragmentShader::freeShader() {
    if (m_Shader) {
        glDeleteShader(m_Shader);
        m_Shader = 0;
    }
}
