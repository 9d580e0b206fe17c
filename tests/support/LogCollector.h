// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSLog.h>

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace vx::test {

/// Collects the log while it lives, in the place of the standard sink.
class LogCollector {
public:
    LogCollector() {
        NSLogSetSink([](const char* line, void* self) { static_cast<LogCollector*>(self)->add(line); }, this);
    }
    ~LogCollector() { NSLogSetSink(nullptr, nullptr); }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;

    /// Number of lines so far that hold the text.
    int count(const std::string& text) const {
        std::lock_guard guard(m_Lock);
        return int(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(text) != std::string::npos;
        }));
    }

    /// To be read while nobody else writes.
    std::vector<std::string> lines;

private:
    void add(const char* line) {
        std::lock_guard guard(m_Lock);
        lines.push_back(line);
    }

    mutable std::mutex m_Lock;
};

} // namespace vx::test
