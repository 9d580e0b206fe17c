// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

#include <atomic>
#include <cstdint>
#include <memory>

namespace vx {

/// Waits for refresh after refresh: on the display's own events where they come, else on absolute deadlines
/// of the monotonic clock.
class RefreshPacer {
public:
    static constexpr const char* kDeadlines = "absolute deadlines";

    /// `source` may be null.
    RefreshPacer(std::unique_ptr<RefreshSource> source, double period);
    ~RefreshPacer();
    RefreshPacer(const RefreshPacer&) = delete;
    RefreshPacer& operator=(const RefreshPacer&) = delete;

    /// Waits for the next refresh on the calling thread. Returns its time in nanoseconds, or 0 once `wake`
    /// has been called. Asks for the one after it before it returns, so that a callback which itself waits
    /// for the retrace does not halve the rate.
    std::uint64_t wait();
    /// Ends the present wait and all later ones. Any thread.
    void wake();

    // Readable on any thread.
    const char* throttleName() const { return m_Throttle.load(std::memory_order_relaxed); }
    double measuredPeriod() const { return m_Measured.load(std::memory_order_relaxed); }
    std::uint64_t missed() const { return m_Missed.load(std::memory_order_relaxed); }

    static std::uint64_t now();

private:
    std::uint64_t waitForEvent();
    std::uint64_t waitForDeadline();
    void fallBack();
    void measure(std::uint64_t refresh);

    std::unique_ptr<RefreshSource> m_Source;
    const std::uint64_t m_Period;
    std::uint64_t m_Deadline = 0;
    std::uint64_t m_LastRefresh = 0;
    std::uint64_t m_LastWoken = 0;
    int m_WakeDescriptor;
    bool m_Asked = false;
    std::atomic<bool> m_Ending{false};
    std::atomic<const char*> m_Throttle;
    std::atomic<double> m_Measured;
    std::atomic<std::uint64_t> m_Missed{0};
};

} // namespace vx
