// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/private/Clock.h>

#include <optional>
#include <utility>

namespace vx {

/// Keeps what happens at each frame from filling the log. Used by one thread at a time.
class LineAMinute {
public:
    /// For something that happens at `now`, in nanoseconds: nothing while the last line is younger than a
    /// minute; else how many times it has gone untold since that line.
    std::optional<unsigned> ask(std::uint64_t now) {
        if (m_Last && now - *m_Last < 60 * Clock::kSecond) {
            ++m_Untold;
            return std::nullopt;
        }
        m_Last = now;
        return std::exchange(m_Untold, 0u);
    }
    /// What happens next is told at once.
    void beginAnew() { m_Last.reset(); }

private:
    std::optional<std::uint64_t> m_Last;
    unsigned m_Untold = 0;
};

} // namespace vx
