// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Writes one line to the log sink. `format` is one of `printf`, with "%@" for an `NSObject*`
/// (`NSString::stringWithFormat`); no line end is needed. Any thread.
VX_EXPORT void NSLog(const char* format, ...);

/// Receives each finished line, without a line end and borrowed for the call, and the `user` given with it.
/// Called on the thread that logs, one call at a time; it must not log itself.
using NSLogSink = void (*)(const char* line, void* user);

/// Puts `sink` in the place of the standard one, which writes to standard error with date and time. Null
/// brings the standard sink back. `user` is handed to each call and stays the caller's, who may end it once
/// the sink has been replaced: no call is in progress then. Any thread.
VX_EXPORT void NSLogSetSink(NSLogSink sink, void* user);

namespace vx {

/// Logs the text and ends the process: for a caller's bug that cannot be survived. The text begins with the
/// name of the function and holds the offending value.
[[noreturn]] VX_EXPORT void fatal(const char* format, ...);

} // namespace vx
