// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vx {

/// A driver's info log line by line, each as "file:line: message" with that line of the source quoted behind
/// it; what names no line as "file: message".
std::vector<std::string> locateFailures(const std::string& file, const std::string& source,
                                        const std::string& infoLog);

} // namespace vx
