// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformTable.h>

namespace vx {

/// Draws without a window system, to a pbuffer for each view, and keeps what a window system would keep.
std::unique_ptr<Platform> startHeadlessPlatform(PlatformEvents& events, const HeadlessOptions& options);

} // namespace vx
