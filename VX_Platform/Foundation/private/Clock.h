// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// The time that dates, timers and pacing go by. There is one for the process, which a test may replace.
class Clock {
public:
    static constexpr std::uint64_t kSecond = 1000000000;

    /// Monotonic nanoseconds. Any thread.
    virtual std::uint64_t now() = 0;

    /// Blocks the calling thread until `time`, in nanoseconds as `now` counts them, and never ends early; at
    /// once when it lies behind. Returns false, without waiting for the time, when `wakeDescriptor` is or
    /// becomes readable; a negative descriptor wakes nobody. Any thread.
    virtual bool sleepUntil(std::uint64_t time, int wakeDescriptor) = 0;

    /// The clock in use. One atomic load; any thread.
    static Clock& current();

    /// The system's monotonic clock, whatever is in use.
    static Clock& system();

    /// Puts `clock`, borrowed, in use; null brings the system's back. Returns what was in use before, null
    /// for the system's. Who is asleep by the former clock stays so: it must outlive those sleeps.
    static Clock* replace(Clock* clock);

protected:
    constexpr Clock() = default;
    ~Clock() = default; // never deleted as a Clock, so that the system's needs no end
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
};

} // namespace vx
