// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/VX_Libraries.h>

namespace vx {

/// The libraries of the decoders, each for the kind of picture that it is to be told for. Any thread.
VX_Library libraryOfPNG(const char* kind);
VX_Library libraryOfJPEG(const char* kind);
VX_Library libraryOfTIFF(const char* kind);
VX_Library libraryOfWebP(const char* kind);
VX_Library libraryOfGIF(const char* kind);
VX_Library libraryOfSTB(const char* kind);
/// For a decoder of our own.
VX_Library noLibrary(const char* kind);

} // namespace vx
