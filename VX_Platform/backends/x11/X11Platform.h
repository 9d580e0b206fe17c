// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformTable.h>

namespace vx {

/// Why X11 would do: a server is named.
std::string x11Presence();
/// Windows and input by SDL, surfaces by EGL on child windows.
std::unique_ptr<Platform> startX11Platform(PlatformEvents& events, const HeadlessOptions& headless);
/// An alert in a window of its own; in the log where no window can be had.
int presentX11Alert(const AlertContents& contents);
/// SDL.
VX_Library x11Library();

} // namespace vx
