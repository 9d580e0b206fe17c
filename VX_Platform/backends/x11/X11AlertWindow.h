// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Alert.h>

#include <optional>

namespace vx {

/// Shows the alert in a window of its own, on a connection of its own to the X server that DISPLAY names,
/// until a button ends it; that button's result is returned. Return, Escape and closing the window stand for
/// the first button; Tab, arrows and the space bar reach the others. Nothing when there is no server, or it
/// goes away meanwhile. Any thread; blocks the calling one only.
std::optional<int> runX11AlertWindow(const AlertContents& contents);

} // namespace vx
