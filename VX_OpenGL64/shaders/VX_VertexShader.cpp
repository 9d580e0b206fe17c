// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_VertexShader.h>

#include <VX_OpenGL64/shaders/private/ShaderObject.h>

#include <epoxy/gl.h>

VX_VertexShader::~VX_VertexShader() {
    freeShader();
}

bool VX_VertexShader::loadAndCompile(const char* source) {
    return vx::compileShader(m_Shader, m_Failure, GL_VERTEX_SHADER, source, "VX_VertexShader");
}

void VX_VertexShader::freeShader() {
    vx::deleteShader(m_Shader, "VX_VertexShader");
}
