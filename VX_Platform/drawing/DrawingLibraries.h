// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/VX_Libraries.h>

namespace vx {

/// What canvas and text layout stand on. Any thread.
std::vector<VX_Library> drawingLibraries();

} // namespace vx
