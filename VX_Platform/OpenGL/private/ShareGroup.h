// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/OpenGL/GLCapabilities.h>

#include <mutex>

namespace vx {

/// What contexts that share their objects have in common.
struct ShareGroup {
    GLCapabilities capabilities;

    /// Reads the capabilities and logs the driver, once for the group. Needs a current context of the group.
    void noteFirstUse();

private:
    std::once_flag m_Once;
};

} // namespace vx
