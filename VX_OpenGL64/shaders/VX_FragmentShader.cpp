// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>

#include <VX_OpenGL64/shaders/private/ShaderObject.h>

#include <epoxy/gl.h>

VX_FragmentShader::~VX_FragmentShader() {
    freeShader();
}

bool VX_FragmentShader::loadAndCompile(const char* source) {
    return vx::compileShader(m_Shader, m_Failure, GL_FRAGMENT_SHADER, source, "VX_FragmentShader");
}

void VX_FragmentShader::freeShader() {
    vx::deleteShader(m_Shader, "VX_FragmentShader");
}
