// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformEvents.h>

struct _XDisplay;

namespace vx {

/// Takes the events of our windows out of SDL's queue and tells of them; false where there were none. The
/// others stay there, for a host that asks SDL for them. What keys type is asked for on the connection
/// `keyboard`. Main thread only.
bool reportSDLEvents(PlatformEvents& events, _XDisplay* keyboard);

} // namespace vx
