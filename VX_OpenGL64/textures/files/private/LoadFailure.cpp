// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/LoadFailure.h>

#include <VX_OpenGL64/textures/files/VX_GLTextureFailure.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <cstdio>

namespace {

std::string& lastFailure() {
    thread_local std::string failure;
    return failure;
}

} // namespace

const char* VX_GLTextureFailure() {
    return lastFailure().c_str();
}

void vx::beginLoad() {
    lastFailure().clear();
}

void vx::keepFailure(const char* path, const std::string& why) {
    lastFailure() = path ? std::string(path) + ": " + why : why;
}

void vx::tellOfFailure(const char* function, const char* path, const std::string& why) {
    keepFailure(path, why);
    if (VX_GetDiagnostics())
        NSLog("%s: %s", function, VX_GLTextureFailure());
}

void vx::keepGLError(const char* path, unsigned error) {
    char text[32];
    std::snprintf(text, sizeof text, "OpenGL error 0x%04X", error);
    keepFailure(path, text);
}
