// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/backends/GLDriver.h>

#include <mutex>

namespace vx {

/// What the driver of the calling thread's current context can do. Needs a current context of whatever owner.
GLCapabilities readGLCapabilities();

/// What contexts that share their objects have in common.
struct ShareGroup {
    GLCapabilities capabilities;

    /// Reads the capabilities and logs the driver, once for the group. Needs a current context of the group.
    void noteFirstUse(const GLDriver& driver);

private:
    std::once_flag m_Once;
};

} // namespace vx
