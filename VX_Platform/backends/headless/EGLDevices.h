// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/GLDriver.h>

namespace vx {

/// Opens an EGL display that draws without a window system: the device of that index, or for a negative index
/// the first device that gives a desktop GL context, else EGL's surfaceless platform. Initialised, or null.
/// The choice and its reason are logged.
GLDriver::Handle openHeadlessDisplay(int device);

} // namespace vx
