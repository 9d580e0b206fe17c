// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSLog.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vx::test {

/// Collects the log while it lives, in the place of the standard sink.
class LogCollector {
public:
    LogCollector() {
        NSLogSetSink(
            [](const char* line, void* self) { static_cast<LogCollector*>(self)->lines.push_back(line); },
            this);
    }
    ~LogCollector() { NSLogSetSink(nullptr, nullptr); }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;

    /// Number of lines so far that hold the text.
    int count(const std::string& text) const {
        return int(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        }));
    }

    std::vector<std::string> lines;
};

} // namespace vx::test
