// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/ShaderObject.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

bool vx::compileShader(unsigned int& shader, std::string& failure, unsigned int type, const char* source,
                       const char* className) {
    needContext(className, "loadAndCompile");
    shader = compileText(type, source, failure);
    if (!shader)
        NSLog("%s::loadAndCompile Failed: %s", className, failure.c_str());
    return shader != 0;
}

unsigned int vx::compileText(unsigned int type, const char* source, std::string& failure) {
    failure.clear();
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);

    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled)
        return shader;

    char log[4096] = {};
    glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    failure = log;
    if (shader)
        glDeleteShader(shader);
    return 0;
}

void vx::deleteShader(unsigned int& shader, const char* className) {
    if (!shader || !mayDelete(className, shader))
        return;
    glDeleteShader(shader);
    shader = 0;
}
