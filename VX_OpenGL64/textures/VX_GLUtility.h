// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Returns the smallest power of two that is not below `value`; 0 for 0. Below 0 and above 2^30, where there
/// is none, what the bits give: 0 or the smallest int. Any thread; no context needed.
VX_EXPORT int VX_GLUtility_NextHighestPowerOf2FromInt(int value);

/// Deletes the texture and sets the variable to 0; nothing for 0. Needs a current context of its share group
/// on the calling thread: without one the texture and the name stay, and the log says so. GL:
/// glDeleteTextures.
VX_EXPORT void VX_GLUtility_FreeTexture(unsigned int& texture);
