// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/x11/X11Connection.h>

namespace vx {

/// A window that another toolkit owns. Its size, place and end are followed; its events stay with that
/// toolkit. Null, with a line in the log, where there is no such window.
std::unique_ptr<WindowBackend> makeForeignWindow(X11Connection& connection, NSWindow* owner,
                                                 unsigned long window);

/// Takes in what has happened to the windows above. Main thread, in each step of the run loop.
void followForeignWindows(X11Connection& connection);

} // namespace vx
