// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/backends/GLDriver.h>

#include <string>

namespace {

// "VX_Program::set1f" of "void VX_Program::set1f(const char*, float)".
std::string nameOf(const std::string& function) {
    const std::string head = function.substr(0, function.find('('));
    return head.substr(head.find_last_of(" *&") + 1);
}

// EGL itself takes longer to answer than most calls that this is asked ahead of.
bool contextIsCurrent() {
    return vx::currentOnThread || vx::GLDriver::anyContextIsCurrent();
}

} // namespace

void vx::needContext(const char* function) {
    if (!contextIsCurrent())
        fatal("%s: no OpenGL context is current on this thread", nameOf(function).c_str());
}

void vx::needForeignContext(const char* className, const char* operation) {
    if (!contextIsCurrent())
        needContext((std::string(className) + "::" + operation).c_str());
}

bool vx::mayDelete(const char* className, unsigned name) {
    if (GLDriver::anyContextIsCurrent())
        return true;
    NSLog("%s: OpenGL object %u is not deleted, since no context is current on this thread", className, name);
    return false;
}
