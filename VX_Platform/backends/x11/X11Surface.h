// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/x11/X11Connection.h>

namespace vx {

/// A view's surface: a child window of the view's window, with the visual of the view's configuration. It
/// takes no input, so that keyboard and pointer are the window's around it.
std::unique_ptr<Surface> makeX11Surface(X11Connection& connection, GLDriver& gl, GLDriver::Handle config,
                                        const WindowBackend* window, CGRect frame);

} // namespace vx
