// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

union SDL_Event;

namespace vx {

/// A top-level window of SDL, hidden at first; null with a line in the log when SDL makes none.
std::unique_ptr<WindowBackend> makeSDLWindow(NSWindow* window, CGRect frame, bool bordered);

/// Hands an event of SDL to the `NSWindow` it belongs to, if it is one for us.
void dispatchSDLEvent(const SDL_Event& event);

} // namespace vx
