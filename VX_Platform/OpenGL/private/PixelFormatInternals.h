// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/backends/Platform.h>

/// The platform that a format was chosen on, and its configuration there.
struct NSOpenGLPixelFormat::Internals {
    std::shared_ptr<vx::Platform> platform;
    vx::GLDriver::Handle config = nullptr;

    static const std::shared_ptr<vx::Platform>& platformOf(const NSOpenGLPixelFormat* format) {
        return format->m_Internals->platform;
    }
    static vx::GLDriver::Handle configOf(const NSOpenGLPixelFormat* format) {
        return format->m_Internals->config;
    }
};
