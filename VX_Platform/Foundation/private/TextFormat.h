// SPDX-License-Identifier: MIT
#pragma once

#include <cstdarg>
#include <string>

namespace vx {

/// The text of a `printf` format that may hold "%@" for an `NSObject*`. Positional arguments ("%1$d") and
/// "%n" are not served: a conversion that is not known ends the text where it stands.
std::string formatText(const char* format, va_list arguments);

} // namespace vx
