// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Tells what went wrong in the calling thread's last load of a picture or DDS file, by whichever texture
/// class, loader or function: the path and a few words, as in "sky_3.png: the file is cut short". Of several
/// things it is the last one: so of a cube map the last face that is missing, though the load returned a
/// name. Empty when all went well, and before the first load; never null. Borrowed, until the thread's next
/// load. Any thread; no context needed, no GL calls: an error of GL is told here by the load that found it.
VX_EXPORT const char* VX_GLTextureFailure();
