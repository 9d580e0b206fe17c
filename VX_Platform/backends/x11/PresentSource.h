// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

namespace vx {

/// Refreshes by the X server's Present events for a window, on a connection of their own. Null where the
/// server has no Present extension.
std::unique_ptr<RefreshSource> makePresentSource(unsigned long window);

} // namespace vx
