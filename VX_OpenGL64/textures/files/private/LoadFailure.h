// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vx {

/// A load begins, of which VX_GLTextureFailure has nothing to tell yet.
void beginLoad();
/// Keeps the reason for VX_GLTextureFailure, behind the path where there is one.
void keepFailure(const char* path, const std::string& why);
/// The same; with diagnostics on the log tells it too, with the function's name.
void tellOfFailure(const char* function, const char* path, const std::string& why);
/// Keeps the number of a GL error.
void keepGLError(const char* path, unsigned error);

} // namespace vx
