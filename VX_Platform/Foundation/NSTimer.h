// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>

/// Calls back after an interval, once or again and again, from the run loop of the thread that scheduled it.
/// For that thread alone.
class VX_EXPORT NSTimer : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSTimer)

    /// What the timer does; the timer is borrowed for the call.
    using Handler = std::function<void(NSTimer*)>;

    /// Makes a timer that is due after an interval in seconds (one under 0.0001 counts as that, NaN is never
    /// due) and, when it repeats, after each further one; adds it to the calling thread's run loop, which
    /// retains it until it is invalid. Returns the timer; borrowed, autoreleased. Any thread.
    static NSTimer* scheduledTimerWithTimeInterval(double seconds, Handler handler, bool repeats);

    /// Stops the timer for good, from its handler too; harmless when repeated.
    void invalidate();
    /// Returns whether it is still to fire.
    bool isValid() const { return m_Valid; }
    /// Returns the interval in seconds.
    double timeInterval() const { return m_Interval; }
    /// Returns when it is due next, in seconds as `NSDate` counts them.
    double fireDate() const { return m_FireDate; }

    /// Calls the handler at once, after moving the date on: one that repeats goes on from the date it was
    /// due, skipping those already missed; another becomes invalid first. Nothing when it is invalid.
    void fire();
    /// Whether its handler is running. The run loop, run from inside the handler, leaves the timer alone.
    bool isFiring() const { return m_Firing > 0; }

protected:
    ~NSTimer() override = default;

private:
    Handler m_Handler;
    double m_Interval = 0.0;
    double m_FireDate = 0.0;
    int m_Firing = 0;
    bool m_Repeats = false;
    bool m_Valid = true;
};
