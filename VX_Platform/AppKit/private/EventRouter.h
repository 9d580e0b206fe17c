// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformEvents.h>

namespace vx {

/// Takes what the platform tells to the `NSWindow` it is about, and changes of the displays to all of them.
PlatformEvents& eventRouter();

} // namespace vx
