// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace vx {

/// The name that a display tells of itself in its EDID, of whatever length and bytes; empty where it tells
/// none that is text.
std::string nameInEDID(std::span<const unsigned char> edid);

} // namespace vx
