// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// One refresh as a source tells of it.
struct Refresh {
    /// Nanoseconds on the monotonic clock.
    std::uint64_t time = 0;
    /// The refresh's number; only differences mean something.
    std::uint64_t count = 0;
    /// Nanoseconds to the next one, 0 where the source does not know.
    std::uint64_t period = 0;
};

/// Waits for the refreshes of what a surface shows, on the display link's thread only. Silence is no end:
/// a hidden window, a stalled server or a move makes a source silent, and it answers again afterwards.
class RefreshSource {
public:
    enum class Outcome { refresh, silent, woken };

    virtual ~RefreshSource() = default;
    /// Asks for the next refresh. Asked again before an answer, it stays one question.
    virtual void ask() = 0;
    /// Waits for the answer: `silent` when none has come by `until` (nanoseconds on the monotonic clock),
    /// `woken` when `wakeDescriptor` has become readable first.
    virtual Outcome wait(std::uint64_t until, int wakeDescriptor, Refresh& refresh) = 0;
    virtual const char* name() const = 0;
};

} // namespace vx
