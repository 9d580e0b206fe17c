// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>

#include <VX_OpenGL64/shaders/private/ShaderObject.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <cstdio>

namespace {

void printFailure(const char* line) {
    std::printf("%s\n", line);
    std::fflush(stdout);
}

} // namespace

VX_GeometryShader::~VX_GeometryShader() {
    freeShader();
}

bool VX_GeometryShader::loadAndCompile(const char* source) {
    return vx::compileShader(m_Shader, m_Failure, GL_GEOMETRY_SHADER_EXT, source, "VX_GeometryShader",
                             printFailure);
}

void VX_GeometryShader::freeShader() {
    vx::deleteShader(m_Shader, "VX_GeometryShader");
}

int VX_GeometryShader::GetMaxVertices() {
    VX_NEEDS_CONTEXT();
    GLint vertices = 0;
    glGetIntegerv(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT, &vertices);
    return vertices;
}
