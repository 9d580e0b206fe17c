// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSLog.h>

#include <string>
#include <vector>

namespace vx::test {

/// Collects the log while it lives.
class LogCollector {
public:
    LogCollector() {
        NSLogSetSink(
            [](const char* line, void* self) { static_cast<LogCollector*>(self)->m_Lines.push_back(line); },
            this);
    }
    ~LogCollector() { NSLogSetSink(nullptr, nullptr); }

    /// Number of lines so far that hold the text.
    int count(const std::string& text) const {
        int found = 0;
        for (const std::string& line : m_Lines)
            found += line.find(text) != std::string::npos;
        return found;
    }

private:
    std::vector<std::string> m_Lines;
};

} // namespace vx::test
