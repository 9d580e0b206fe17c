// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/ShaderObject.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

void vx::logShaderFailure(const char* line) {
    NSLog("%s", line);
}

bool vx::compileShader(unsigned int& shader, std::string& failure, unsigned int type, const char* source,
                       const char* className, ShaderReport report) {
    failure.clear();
    needContext(className, "loadAndCompile");
    shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);

    GLint compiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    if (compiled)
        return true;

    char log[4096] = {};
    glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    failure = log;
    report((std::string(className) + "::loadAndCompile Failed: " + log).c_str());
    deleteShader(shader, className);
    return false;
}

void vx::deleteShader(unsigned int& shader, const char* className) {
    if (!shader || !mayDelete(className, shader))
        return;
    glDeleteShader(shader);
    shader = 0;
}
