// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/private/Clock.h>
#include <VX_Platform/backends/RefreshSource.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

namespace vx {

/// Waits for refresh after refresh: by the display's own events where they come, else by absolute deadlines
/// of the clock. While the events are missing the clock holds the beat and the question stays asked; the
/// first answer ends that.
class RefreshPacer {
public:
    static constexpr const char* kDeadlines = "absolute deadlines";

    /// `source` may be null; `period` in seconds.
    RefreshPacer(std::unique_ptr<RefreshSource> source, double period);
    ~RefreshPacer();
    RefreshPacer(const RefreshPacer&) = delete;
    RefreshPacer& operator=(const RefreshPacer&) = delete;

    /// Waits for the next refresh on the calling thread: its time, its number since the start, and the period
    /// in nanoseconds; nothing once `wake` has been called. Asks for the one after it before it returns, so
    /// that a callback which itself waits for the retrace does not halve the rate. Refreshes that went by
    /// since the last one are counted as missed.
    std::optional<Refresh> wait();
    /// Goes on with another source and period; the count of refreshes goes on too. On the thread of `wait`.
    void follow(std::unique_ptr<RefreshSource> source, double period);
    /// Ends the present wait and all later ones. Any thread.
    void wake();

    // Readable on any thread.
    const char* throttleName() const { return m_Throttle.load(std::memory_order_relaxed); }
    /// Seconds from one refresh to the next.
    double measuredPeriod() const { return m_MeasuredPeriod.load(std::memory_order_relaxed); }
    std::uint64_t missed() const { return m_Missed.load(std::memory_order_relaxed); }

private:
    void use(std::unique_ptr<RefreshSource> source, double period);
    std::optional<Refresh> waitForSource();
    std::optional<Refresh> waitForDeadline();
    std::uint64_t nextDeadline();
    std::optional<Refresh> hold();
    Refresh holdBeat();
    Refresh beat() const;
    void resume();
    Refresh numbered(const Refresh& answer);
    void measure(const Refresh& refresh);
    void believeMeasurement();
    std::uint64_t periodsIn(std::uint64_t nanoseconds) const {
        return (nanoseconds + m_Period / 2) / m_Period;
    }

    std::unique_ptr<RefreshSource> m_Source;
    std::uint64_t m_Period = 0;
    std::uint64_t m_Deadline = 0;
    bool m_Asked = false;
    // The clock stands in for a source that is silent.
    bool m_Holding = false;
    int m_HeldBeats = 0;

    // The refresh returned last, and what is added to a source's number to go on from it.
    Refresh m_Last;
    std::uint64_t m_NumberOffset = 0;
    bool m_NumberKnown = false;

    // The last refresh measured, and the one that the present run of measurements began with.
    Refresh m_Measured;
    Refresh m_RunStart;

    int m_WakeDescriptor;
    std::atomic<bool> m_Ending{false};
    std::atomic<const char*> m_Throttle{kDeadlines};
    std::atomic<double> m_MeasuredPeriod{0.0};
    std::atomic<std::uint64_t> m_Missed{0};
};

} // namespace vx
