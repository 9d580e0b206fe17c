// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSLog.h>

#include <string>
#include <vector>

namespace vx::test {

/// Collects what is logged, in the place of the standard sink, for its lifetime.
class LogLines {
public:
    LogLines() {
        NSLogSetSink(
            [](const char* line, void* user) { static_cast<LogLines*>(user)->lines.push_back(line); }, this);
    }
    ~LogLines() { NSLogSetSink(nullptr, nullptr); }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    std::vector<std::string> lines;
};

} // namespace vx::test
