// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformEvents.h>

union SDL_Event;

namespace vx {

/// Tells of an event of SDL if it is one of our windows'; others are left alone. Main thread only.
void reportSDLEvent(const SDL_Event& event, PlatformEvents& events);

} // namespace vx
