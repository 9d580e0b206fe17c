// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/private/LineAMinute.h>

#include <cstdint>

namespace vx {

/// Decides which failures of render hooks the log is told of: the change from good to failing, then at most
/// one a minute. Used by one thread at a time.
class FailureLog {
public:
    /// A failure with its text at `now`, in nanoseconds.
    void note(const char* text, std::uint64_t now);

private:
    std::uint64_t m_LastFailure = 0;
    LineAMinute m_Lines;
};

} // namespace vx
