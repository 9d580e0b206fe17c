// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/private/Clock.h>

#include <cstdint>
#include <mutex>

#include <poll.h>

namespace vx::test {

/// The process's clock while it lives, moved by hand: time stands still but for `step` and for sleeps, which
/// end at once and take the time with them. Any thread; it must outlive the threads that sleep by it.
class SteppedClock final : public Clock {
public:
    explicit SteppedClock(std::uint64_t start = kSecond) : m_Now(start), m_Former(replace(this)) {}
    ~SteppedClock() { replace(m_Former); }

    std::uint64_t now() override {
        std::lock_guard guard(m_Lock);
        return m_Now;
    }
    bool sleepUntil(std::uint64_t time, int wakeDescriptor) override {
        pollfd descriptor{wakeDescriptor, POLLIN, 0};
        if (poll(&descriptor, 1, 0) > 0)
            return false;
        std::lock_guard guard(m_Lock);
        m_Now = time > m_Now ? time : m_Now;
        return true;
    }

    /// Moves the time on by nanoseconds.
    void step(std::uint64_t nanoseconds) {
        std::lock_guard guard(m_Lock);
        m_Now += nanoseconds;
    }

private:
    std::mutex m_Lock;
    std::uint64_t m_Now;
    Clock* m_Former;
};

} // namespace vx::test
