// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <cstdint>

/// Sets how many pixels, width times height, a picture file may have to be decoded at all; 16384 x 16384 at
/// first. A larger one is no picture, which is found before any memory is taken for it. A GIF may have no
/// more than 8192 x 8192 in any case, and a file of floating-point pixels a quarter of the budget. Holds for
/// pictures opened from then on, for the whole process. Any thread; no context needed, no GL calls.
VX_EXPORT void CGImageSourceSetPixelBudget(std::uint64_t pixels);
